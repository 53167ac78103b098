#include "SceneFixture.h"

#include <algorithm>
#include <random>

#include "Material_cls.h"
#include "MeshObj_cls.h"
#include "Preference_cls.h"

namespace {

const wxString kSelf = "SceneObjCtrl::";

} // namespace

class SceneProjectTest : public SceneFixture {
protected:
    // Nested objects, attributes, animated groups of several key types and expressions.
    void BuildScene() {
        // Paths stay absolute; saving rewrites path items in place, the undo texts included.
        GpCPreference->mCRelativePath.SetBodyFromData(wxString("0"));
        Ctrl()->AppendPrimitiveCommand(1, "Ball");
        Ctrl()->AppendSceneObjCommand("TextObj", "Label");
        Ctrl()->AppendSceneObjCommand("MeshObj", "Mesh");
        Ctrl()->AppendLightCommand(2, "Spot");
        RunText(kSelf + "SetToChild::Ball::To::Box\n" + kSelf + "SetToChild::Label::To::Ball\n" + kSelf +
                "SetToChild::Spot::To::Camera\n");
        SceneObj_cls* pBall = Obj("Ball");
        // Animated transform with keys of several types.
        ParamGroup_cls* pPos = pBall->GetPCParamGroup("", "Position");
        pPos->InsertKeyCommand(0.0, kSelf + "Obj::Ball::Position", 1, 1.0);
        pPos->SetNewKeyCommand(3.0, 0.5, kSelf + "Obj::Ball::Position::x", 2, 0.5);
        pPos->SetNewKeyCommand(-1.0, 1.0, kSelf + "Obj::Ball::Position::y", 0, 1.0);
        // An expression, with a newline and a "::" in it.
        ASSERT_TRUE(Ctrl()->SetParamGroupConfCommand(kSelf + "Obj::Ball::Scale",
                                                     "Expression=", "local s = 2 -- a::b\nreturn x*s,y,z"));
        ASSERT_TRUE(Ctrl()->SetParamGroupConfCommand(kSelf + "Obj::Ball::Scale", "UseExpr=", "1"));
        // Attributes: a modifier with an animated group, a data process, material edits.
        pBall->AddModifierCommand("TestMod_cls", "Mod");
        pBall->AddDataProcCommand("TestProc_cls", "Proc");
        Attribute_cls* pMod = pBall->GetPCAttribute("Mod", 1);
        pMod->GetPCItem("Target")->PushCommandPair("Camera");
        pMod->GetPCParamGroup("Influence")
            ->InsertKeyCommand(0.25, kSelf + "Obj::Ball::Mod::Influence", 1, 1.0);
        pBall->GetPCMaterial()->GetPCItem("BlendType")->PushCommandPair("2");
        RunText(kSelf + "Obj::Ball::Material::Diffuse::B::Key::0::SetValue::0.125\n");
        Obj("Label")->GetPCItemInAttrib("TextProp", "Text")->PushCommandPair("Hello\nWorld");
        Obj("Mesh")->GetPCItem("FileName")->PushCommandPair(wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj");
        Obj("Camera")->GetPCItemInAttrib("Stereo", "EyeType")->PushCommandPair("4");
        Obj("World")->GetPCItemInAttrib("Fog", "FogType")->PushCommandPair("1");
        Obj("Spot")->mCVisible.PushCommandPair("0");
        Sel({"Label"});
    }
    // Whatever was read, the tree is consistent: every object's parent knows it, every group
    // still evaluates and the selection holds objects of the tree.
    void ExpectConsistentTree() {
        std::vector<SceneObj_cls*> vList;
        Ctrl()->GetVPCList(vList);
        for (SceneObj_cls* p : vList) {
            ASSERT_NE(p->mpParent, nullptr);
            ASSERT_GE(p->mpParent->GetIndexFromPC(p), 0);
            for (const char* pGroup : {"Position", "Scale"})
                if (ParamGroup_cls* pG = p->GetPCParamGroup("", pGroup))
                    pG->GetVInterpolatedValue(0.25, true, nullptr, false);
        }
        for (SceneObj_cls* p : Ctrl()->mVPCSelected)
            ASSERT_NE(std::find(vList.begin(), vList.end(), p), vList.end());
    }
};

// The project survives save, clear and reopen with identical text.
TEST_F(SceneProjectTest, ProjectSurvivesSaveClearAndReopen) {
    BuildScene();
    const wxString strPath = mDir.Path("scene.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    const wxString strFirst = SceneText();
    ASSERT_TRUE(strFirst.Contains("SceneObjCtrl::SetToChild::Label::To::Ball"));
    ASSERT_TRUE(strFirst.Contains("New::Modifier::TestMod_cls::Mod"));
    ASSERT_TRUE(strFirst.Contains("New::DataProc::TestProc_cls::Proc"));
    ASSERT_FALSE(strFirst.Contains("New::Modifier::StereoProp_cls")); // built in: no line

    Ctrl()->Clear();
    EXPECT_EQ(Tree(), "");
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, true));
    EXPECT_EQ(Tree(), "World,Initial Light,Box(Ball(Label)),Camera(Spot),Mesh");
    EXPECT_EQ(SceneText(), strFirst);
    EXPECT_EQ(Ctrl()->GetActiveObjectName(), "Label");
    ASSERT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    // Nothing of the load is undoable.
    EXPECT_EQ(GpCUndo->GetCount(), 0);

    // What was read is the model, not only its text.
    SceneObj_cls* pBall2 = Obj("Ball");
    ASSERT_NE(pBall2, nullptr);
    EXPECT_DOUBLE_EQ(pBall2->GetPCParamGroup("", "Position")->mVCParam[0].GetValue(0.5), 3.0);
    std::vector<double> scale =
        pBall2->GetPCParamGroup("", "Scale")->GetVInterpolatedValue(0.0, true, nullptr, false);
    ASSERT_EQ(scale.size(), 3u);
    EXPECT_DOUBLE_EQ(scale[0], 2.0);
    EXPECT_DOUBLE_EQ(pBall2->GetPCParamGroup("Mod", "Influence")->mVCParam[0].mVCKey.size(), 2u);
    EXPECT_EQ(pBall2->GetPCItemInAttrib("Mod", "Target")->GetBodySTR(), "Camera");
    EXPECT_EQ(static_cast<Material_cls*>(pBall2->GetPCMaterial())->mCBlendType.GetBodyINT(), 2);
    EXPECT_EQ(Obj("Label")->GetPCItemInAttrib("TextProp", "Text")->GetBodySTR(), "Hello\nWorld");
    EXPECT_FALSE(Obj("Spot")->mCVisible.GetBodyBOOL());
    EXPECT_EQ(static_cast<MeshObj_cls*>(Obj("Mesh"))->GetPCMesh()->GetNumTriangle(), 12);

    // Opening the text again on top of a cleared scene once more gives the same text.
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, true));
    EXPECT_EQ(SceneText(), strFirst);
}

// A saved project with random edits loads without a crash or hang, leaves a consistent tree, and
// the original then loads back to the same scene.
TEST_F(SceneProjectTest, MutatedProjectsLoadIntoAConsistentTree) {
    BuildScene();
    const wxString strPath = mDir.Path("scene.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    const std::string text = ReadBytes(strPath);
    ASSERT_FALSE(text.empty());
    const wxString strScene = SceneText();

    LogCapture_cls log;
    std::mt19937 rng(4321);
    const wxString strMutated = mDir.Path("mutated.ovp");
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        ASSERT_TRUE(WriteBytes(strMutated, MutateText(text, rng)));
        mpMain->OpenProjectMain(strMutated, true);
        EXPECT_FALSE(GbLockProjectLoading);
        ExpectConsistentTree();
    }
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, true));
    EXPECT_EQ(SceneText(), strScene);
}

// A project cut anywhere loads what it can and never breaks the scene it leaves.
TEST_F(SceneProjectTest, TruncatedProjectsLoadWhatTheyCan) {
    BuildScene();
    const wxString strFull = SceneText();
    LogCapture_cls log;
    const std::string full = strFull.ToStdString();
    // A prime step puts the cuts at every kind of place: heads, items, keys, block ends.
    for (size_t n = 0; n < full.size(); n += 97) {
        const wxString strPath = mDir.Path("cut.ovp");
        ASSERT_TRUE(WriteBytes(strPath, full.substr(0, n) + "\n"));
        mpMain->OpenProjectMain(strPath, true);
        ExpectConsistentTree();
        // And what it wrote reads back to a text that then stays the same. (A cut can leave a
        // line such as "Name=FogCol" in a group's block, which renames the group; a new object
        // has the group under its own name again, so the first rewrite may differ.)
        const wxString strLoaded = SceneText();
        Ctrl()->Clear();
        RunText(strLoaded);
        const wxString strText = SceneText();
        Ctrl()->Clear();
        RunText(strText);
        ASSERT_EQ(SceneText(), strText) << n;
    }
}
