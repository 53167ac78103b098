#include "SceneFixture.h"

#include "ConsoleCtrl_cls.h"
#include "LuaErrorSink_cls.h"
#include "LuaInterpreter_cls.h"
#include "SinkCapture.h"

namespace {

class LuaFixture : public SceneFixture {
protected:
    // Runs one line and returns what it printed.
    wxString Run(const wxString& strLine) {
        const size_t before = mConsole.mStrOutput.length();
        mConsole.ProcessOneLiner(strLine);
        return mConsole.mStrOutput.Mid(before);
    }
    SinkCapture_cls mSink;
    ConsoleCtrl_cls mConsole;
};

} // namespace

TEST_F(LuaFixture, DataTableReadsTheScene) {
    RunText("SceneObjCtrl::SetToChild::Box::To::Camera\n");
    Obj("Box")->GetPCParamGroup("", "Position")->SetInitValue(1.5, -2.0, 3.0);
    EXPECT_EQ(Run("print(Data.GetParent('Camera'))"), "ROOT \n");
    EXPECT_EQ(Run("print(Data.GetParent('Box'))"), "Camera \n");
    EXPECT_EQ(Run("print(Data.GetParent('Nothing'))"), "None \n");
    EXPECT_EQ(Run("print(Data.GetActiveObject())"), "None \n");
    EXPECT_EQ(Run("print(Data.GetChildList('ROOT'))"), "World Initial Light Camera \n");
    EXPECT_EQ(Run("print(Data.GetChildList('Box'))"), "None \n");
    EXPECT_EQ(Run("print(Data.GetChild('Camera', 0), Data.GetChild('Camera', 1))"), "Box None \n");
    EXPECT_EQ(Run("print(Data.GetChild('Camera', 2 / 2 - 1), Data.GetChild('Camera', 0.5))"), "Box None \n");
    EXPECT_EQ(Run("print(Data.GetPosition('Box'))"), "1.5 -2.0 3.0 \n");
    EXPECT_EQ(Run("print(Data.GetScale('Box'))"), "1.0 1.0 1.0 \n");
    EXPECT_EQ(Run("print(select('#', Data.GetPosition('Nothing')))"), "0 \n");
    EXPECT_EQ(Run("print(Data.GetName('Box'))"), "Box \n");
    Sel({"Box"});
    EXPECT_EQ(Run("print(Data.GetActiveObject())"), "Box \n");
}

TEST_F(LuaFixture, StateIsKeptBetweenLinesAndErrorsGoToTheOutput) {
    EXPECT_EQ(Run("counter = 41"), "");
    EXPECT_EQ(Run("counter = counter + 1 print(counter)"), "42 \n");
    // A syntax error and a runtime error end the line with the message in the output.
    const wxString strSyntax = Run("print(");
    EXPECT_TRUE(strSyntax.Contains("unexpected")) << strSyntax;
    const wxString strRuntime = Run("error('stop here')");
    EXPECT_TRUE(strRuntime.Contains("stop here")) << strRuntime;
    // Messages name the line of the typed text, whatever the console wraps around it.
    EXPECT_EQ(Run("x = 1\ny = 2\nerror('third')"), "console:3: third\n");
    EXPECT_EQ(Run("x = = 1"), "console:1: unexpected symbol near '='\n");
    // The state survives both.
    EXPECT_EQ(Run("print(counter)"), "42 \n");
    EXPECT_EQ(mConsole.mVStrHistory.size(), 7u);
    EXPECT_EQ(mConsole.mVStrHistory[1], "counter = counter + 1 print(counter)");
    EXPECT_EQ(mSink.Count(), 0u);
}

TEST_F(LuaFixture, ScriptsEditThroughTheUndoRoad) {
    EXPECT_EQ(Run("print(Ops.AddPrimitive('Sphere', 'Ball'))"), "Ball \n");
    EXPECT_EQ(Run("print(Ops.AddPrimitive('Sphere', 'Ball'))"), "Ball.001 \n");
    EXPECT_EQ(Run("print(Ops.AddLight('', 'Sun'))"), "Sun \n");
    EXPECT_EQ(Run("print(Ops.AddCamera(''))"), "Camera.001 \n");
    EXPECT_EQ(Run("print(Ops.AddEmpty('Pivot'))"), "Pivot \n");
    EXPECT_EQ(Run("print(Ops.AddParticle('P'))"), "\n"); // the data layer is not there: no name
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,Ball,Ball.001,Sun,Camera.001,Pivot");
    EXPECT_EQ(Run("print(Object.GetConfItem('Sun', 'LightType'))"), "0 \n");
    EXPECT_EQ(Run("print(Object.GetConfItem('Pivot', 'PrimitiveType'))"), "5 \n");
    // Each script's block is one undo step.
    GpCUndo->Undo();
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,Ball,Ball.001,Sun,Camera.001");
    const int index = GpCUndo->GetCurrent();
    const wxString strBefore = SceneText();
    Run("Ops.SelectObject('Box', false) Ops.SelectObject('Camera', true) "
        "Ops.SelectedObject.SetChildTo('World')");
    EXPECT_EQ(Tree(), "World(Box,Camera),Initial Light,Ball,Ball.001,Sun,Camera.001");
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), index);
    Sel({""});
    EXPECT_EQ(SceneText(), strBefore);
    // Setters answer 1 or 0.
    EXPECT_EQ(Run("print(Ops.ActiveObj.SetVisibility(false))"), "0 \n"); // nothing is active
    Sel({"Ball"});
    EXPECT_EQ(Run("print(Ops.ActiveObj.SetVisibility(false), Ops.ActiveObj.GetVisibility())"), "1 0 \n");
    EXPECT_EQ(Run("print(Ops.ActiveObj.Rename('Box'))"), "1 \n");
    EXPECT_EQ(Run("print(Data.GetActiveObject())"), "Box.001 \n");
    EXPECT_EQ(Run("print(Object.SetValid('Sun', 0), Object.GetValid('Sun'))"), "1 0 \n");
    EXPECT_EQ(Run("print(Object.SetShy('Nothing', 1))"), "0 \n");
    EXPECT_EQ(Run("print(Ops.DeleteObject('Ball.001'), Ops.DeleteObject('Ball.001'))"), "1 0 \n");
}

TEST_F(LuaFixture, ParamGroupTable) {
    EXPECT_EQ(Run("print(ParamGroup.GetDimension('Box', 'Position'))"), "3 \n");
    EXPECT_EQ(Run("print(ParamGroup.GetDimension('Box', 'Material::Alpha'))"), "1 \n");
    // Too few values: 0 and no key.
    const int count = GpCUndo->GetCount();
    EXPECT_EQ(Run("print(ParamGroup.SetValueAt('Box', 'Position', 0.5, 1, 2))"), "0 \n");
    EXPECT_EQ(Run("print(ParamGroup.SetValueAt('Box', 'Position', 0.5, 1, 2, 3, 4))"), "0 \n");
    EXPECT_EQ(Run("print(ParamGroup.SetValueAt('Nothing', 'Position', 0.5, 1, 2, 3))"), "0 \n");
    EXPECT_EQ(GpCUndo->GetCount(), count);
    EXPECT_EQ(Obj("Box")->GetPCParamGroup("", "Position")->mVCParam[0].GetKeyNum(), 1);
    // Time dependency per member, then keys.
    EXPECT_EQ(Run("print(ParamGroup.SetTimeDependency('Box', 'Position', true, false))"), "1 \n");
    EXPECT_EQ(Run("print(ParamGroup.GetTimeDependency('Box', 'Position'))"), "1 0 0 \n");
    EXPECT_EQ(Run("print(ParamGroup.SetTimeDependency('Box', 'Position', 1))"), "1 \n");
    EXPECT_EQ(Run("print(ParamGroup.SetValueAt('Box', 'Position', 0.5, 1, 2, 3))"), "1 \n");
    EXPECT_EQ(Run("print(ParamGroup.GetValueAt('Box', 'Position', 0.5))"), "1.0 2.0 3.0 \n");
    EXPECT_EQ(Obj("Box")->GetPCParamGroup("", "Position")->mVCParam[0].GetKeyNum(), 2);
    // Items of a group, through the undo road.
    EXPECT_EQ(Run("print(ParamGroup.SetExpression('Box', 'Scale', 'return x*3,y,z'))"), "1 \n");
    EXPECT_EQ(Run("print(ParamGroup.SetUseExpression('Box', 'Scale', 'TRUE'))"), "1 \n");
    EXPECT_EQ(Run("print(Data.GetScale('Box'))"), "3.0 1.0 1.0 \n");
    EXPECT_EQ(Run("print(ParamGroup.GetExpression('Box', 'Scale'))"), "return x*3,y,z \n");
    EXPECT_EQ(Run("print(ParamGroup.SetLink('Box', 'Scale', 0), ParamGroup.GetLink('Box', 'Scale'))"),
              "1 0 \n");
    GpCUndo->Undo(); // the link
    GpCUndo->Undo(); // the switch
    EXPECT_EQ(Run("print(Data.GetScale('Box'))"), "1.0 1.0 1.0 \n");
    // Expressions see the Data table.
    EXPECT_EQ(
        Run("ParamGroup.SetExpression('Box', 'Scale', 'local px = Data.GetPosition(\"Initial Light\") "
            "return px,y,z') ParamGroup.SetUseExpression('Box', 'Scale', 1) print(Data.GetScale('Box'))"),
        "5.0 1.0 1.0 \n");
}

TEST_F(LuaFixture, LuaSideConstructorsKeepTheirOddities) {
    EXPECT_EQ(Run("print(Data.Object('Box').GetVisibility())"), "1 \n");
    EXPECT_EQ(Run("print(Data.Object('Box').SetVisibility(false))"), "1 \n");
    EXPECT_FALSE(Obj("Box")->mCVisible.GetBodyBOOL());
    EXPECT_EQ(Run("print(Data.Object('Box').GetAttrib('Material').GetConfItem('BlendType'))"), "0 \n");
    EXPECT_EQ(Run("print(Data.Object('Camera').GetAttribList())"), "CameraProp FocalBlur Stereo \n");
    // GetValidity forwards to a name the Object table does not have.
    EXPECT_TRUE(Run("print(Data.Object('Box').GetValidity())").Contains("GetValidity"));
    EXPECT_EQ(Run("print(Data.ParamGroup('Box', 'Position').GetDimension())"), "3 \n");
    EXPECT_EQ(Run("print(type(Data.ParamGroup('Box', 'Position').GetExpression))"), "nil \n");
    // GetUseExpression is the expression getter without arguments: it answers nothing.
    EXPECT_EQ(Run("print(select('#', Data.ParamGroup('Box', 'Position').GetUseExpression()))"), "0 \n");
    EXPECT_EQ(Run("print(Data.ParamGroup('Box', 'Position').SetValueAt(0, 7, 8, 9))"), "1 \n");
    EXPECT_EQ(Run("print(Data.GetPosition('Box'))"), "7.0 8.0 9.0 \n");
}

TEST_F(LuaFixture, AScriptErrorEndsTheScriptAndKeepsClosedBlocks) {
    const int index = GpCUndo->GetCurrent();
    const wxString strOut =
        Run("Ops.AddPrimitive('Box', 'One') Ops.AddPrimitive('Box', 'Two') error('broken') "
            "Ops.AddPrimitive('Box', 'Three')");
    EXPECT_TRUE(strOut.Contains("broken"));
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,One,Two");
    // No rollback: each closed block is one undo step.
    GpCUndo->Undo();
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,One");
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), index);
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera");
}

TEST_F(LuaFixture, GetBool) {
    const struct {
        const char* p;
        bool b;
    } cases[] = {{"", false},  {"true", true}, {"TRUE", true}, {"false", false}, {"FALSE", false},
                 {"0", false}, {"1", true},    {"-3", true},   {"abc", false},   {"True", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.p);
        EXPECT_EQ(LuaInterpreter_cls::GetBool(c.p), c.b);
    }
}
