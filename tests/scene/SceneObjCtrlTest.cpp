#include "SceneFixture.h"

#include "Camera_cls.h"
#include "LightSource_cls.h"
#include "Material_cls.h"
#include "Primitive_cls.h"
#include "SceneObjInstance_cls.h"
#include "World_cls.h"

#include <algorithm>
#include <cmath>

namespace {

const wxString kSelf = "SceneObjCtrl::";

} // namespace

TEST_F(SceneFixture, DefaultScene) {
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera");
    SceneObj_cls* pLight = Obj("Initial Light");
    ASSERT_NE(pLight, nullptr);
    EXPECT_EQ(pLight->mStrClassWord, "LightSource_cls");
    EXPECT_EQ(static_cast<LightSource_cls*>(pLight)->GetStrLightType(), "PointLight");
    double pos[3];
    pLight->GetPositionGlobal(0.0, pos);
    ExpectNear3(pos, 5.0, 5.0, 5.0, 0.0);
    std::vector<double> rot =
        pLight->GetPCParamGroup("", "RotationEuler")->GetVInterpolatedValue(0.0, true, nullptr, false);
    EXPECT_EQ(rot, (std::vector<double>{0.0, -45.0, 45.0}));
    EXPECT_EQ(static_cast<Primitive_cls*>(Obj("Box"))->GetStrPrimitiveType(), "Box");
    // The default scene is built natively: nothing is selected and nothing is undoable.
    EXPECT_EQ(Ctrl()->GetPCActiveObject(), nullptr);
    EXPECT_EQ(GpCUndo->GetCount(), 0);
}

TEST_F(SceneFixture, NewObjectsAppendAndBecomeTheOnlySelection) {
    Sel({"Box", "Camera"});
    ASSERT_EQ(Ctrl()->mVPCSelected.size(), 2u);
    const wxString strName = Ctrl()->AppendPrimitiveCommand(1, "");
    EXPECT_EQ(strName, "Sphere");
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,Sphere");
    ASSERT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    EXPECT_EQ(Ctrl()->mVPCSelected[0]->GetStrName(), "Sphere");
    EXPECT_EQ(Ctrl()->GetActiveObjectName(), "Sphere");
    // A second one of the same kind gets the next free name.
    EXPECT_EQ(Ctrl()->AppendPrimitiveCommand(1, ""), "Sphere.001");
    EXPECT_EQ(Ctrl()->AppendSceneObjCommand("Camera", ""), "Camera.001");
    EXPECT_EQ(Ctrl()->AppendLightCommand(2, ""), "SpotLight");
    EXPECT_EQ(static_cast<LightSource_cls*>(Obj("SpotLight"))->GetLightType(), 2);
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,Sphere,Sphere.001,Camera.001,SpotLight");
    // Undo removes them last first.
    GpCUndo->Undo();
    GpCUndo->Undo();
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera,Sphere,Sphere.001");
}

TEST_F(SceneFixture, RenameToAnExistingNameGetsASuffix) {
    EXPECT_EQ(Ctrl()->RenameCommand("Box", "Camera"), "Camera.001");
    EXPECT_EQ(Tree(), "World,Initial Light,Camera.001,Camera");
    SceneObj_cls* p = Obj("Camera.001");
    ASSERT_NE(p, nullptr);
    // Its addresses follow the name: the list block of the old name is no longer taken.
    EXPECT_EQ(p->GetTag(), "SceneObj::Camera.001");
    EXPECT_EQ(p->GetPCMaterial()->GetTag(), "SceneObj::Camera.001::Material");
    RunText("ConfItemList::Begin::SceneObj::Box\nVisible=0\nConfItemList::End\n");
    EXPECT_TRUE(p->mCVisible.GetBodyBOOL());
    RunText("ConfItemList::Begin::SceneObj::Camera.001\nVisible=0\nConfItemList::End\n");
    EXPECT_FALSE(p->mCVisible.GetBodyBOOL());
    GpCUndo->Undo();
    EXPECT_EQ(Tree(), "World,Initial Light,Box,Camera");
    EXPECT_EQ(Obj("Box")->GetTag(), "SceneObj::Box");
    // Bad renames make no pair.
    const int count = GpCUndo->GetCount();
    EXPECT_EQ(Ctrl()->RenameCommand("Nothing", "X"), "");
    EXPECT_EQ(Ctrl()->RenameCommand("Box", "a::b"), "");
    EXPECT_EQ(Ctrl()->RenameCommand("Box", ""), "");
    EXPECT_EQ(GpCUndo->GetCount(), count);
}

TEST_F(SceneFixture, ChildMatrixFollowsParent) {
    RunText(kSelf + "SetToChild::Box::To::Camera\n");
    EXPECT_EQ(Tree(), "World,Initial Light,Camera(Box)");
    SceneObj_cls* pCamera = Obj("Camera");
    SceneObj_cls* pBox = Obj("Box");
    pCamera->GetPCParamGroup("", "Position")->SetInitValue(1.0, 2.0, 3.0);
    pCamera->GetPCParamGroup("", "RotationEuler")->SetInitValue(0.0, 0.0, 90.0);
    pCamera->GetPCParamGroup("", "Scale")->SetInitValue(2.0, 2.0, 2.0);
    pBox->GetPCParamGroup("", "Position")->SetInitValue(1.0, 0.0, 0.0);
    double pos[3];
    pBox->GetPositionGlobal(0.0, pos);
    // Scaled by 2, turned 90 degrees about z, then moved: (1,0,0) -> (2,0,0) -> (0,2,0) -> (1,4,3).
    ExpectNear3(pos, 1.0, 4.0, 3.0, 1e-12);
    // Moving the parent moves the child.
    pCamera->GetPCParamGroup("", "Position")->SetInitValue(0.0, 0.0, 0.0);
    pBox->GetPositionGlobal(0.0, pos);
    ExpectNear3(pos, 0.0, 2.0, 0.0, 1e-12);
}

TEST_F(SceneFixture, RotationIsXThenYThenZInDegrees) {
    SceneObj_cls* pBox = Obj("Box");
    pBox->GetPCParamGroup("", "RotationEuler")->SetInitValue(90.0, 90.0, 0.0);
    double m[16];
    pBox->GetMatrix16(m, 0.0);
    // M = Rx(90) * Ry(90): the local z axis goes to +x through Ry, and Rx leaves +x alone.
    const double z[3] = {0.0, 0.0, 1.0};
    double out[3];
    TensorMath_cls::TransformVector(m, z, out);
    ExpectNear3(out, 1.0, 0.0, 0.0, 1e-12);
    const double y[3] = {0.0, 1.0, 0.0};
    TensorMath_cls::TransformVector(m, y, out);
    EXPECT_NEAR(out[2], 1.0, 1e-12); // Ry leaves y, Rx(90) turns it to +z
    // The extra translation of the call is added in the object's parent space.
    double extra[3] = {0.0, 0.0, 5.0};
    pBox->GetMatrix16(m, 0.0, extra);
    EXPECT_NEAR(m[14], 5.0, 1e-12);
}

TEST_F(SceneFixture, TagPaths) {
    SceneObj_cls* pBox = Obj("Box");
    EXPECT_EQ(Ctrl()->GetPCParamGroup(kSelf + "Obj::Box::Position"), pBox->GetPCParamGroup("", "Position"));
    EXPECT_EQ(Ctrl()->GetPCParamGroup(kSelf + "Obj::Box::Material::Diffuse"),
              pBox->GetPCMaterial()->GetPCParamGroup("Diffuse"));
    EXPECT_EQ(Ctrl()->GetPCParameter(kSelf + "Obj::Box::Scale::y"),
              pBox->GetPCParamGroup("", "Scale")->GetPCParameter("y"));
    EXPECT_EQ(Ctrl()->GetPCParameter(kSelf + "Obj::Box::Material::Diffuse::G"),
              pBox->GetPCMaterial()->GetPCParamGroup("Diffuse")->GetPCParameter("G"));
    EXPECT_EQ(Ctrl()->GetPCConfItem(kSelf + "Obj::Box::SceneObj::Visible="), &pBox->mCVisible);
    EXPECT_EQ(Ctrl()->GetPCConfItem(kSelf + "Obj::Box::Material::BlendType"),
              pBox->GetPCMaterial()->GetPCItem("BlendType="));
    EXPECT_EQ(Ctrl()->GetStrCommandParamGroup(kSelf + "Obj::Box::Material::Diffuse::R",
                                              pBox->GetPCMaterial()->GetPCParamGroup("Diffuse")),
              kSelf + "Obj::Box::Material::Diffuse");
    EXPECT_EQ(
        Ctrl()->GetStrCommandParamGroup(kSelf + "Obj::Box::Position", pBox->GetPCParamGroup("", "Position")),
        kSelf + "Obj::Box::Position");
    LogCapture_cls log;
    const char* const bad[] = {"SceneObjCtrl::Obj::Nothing::Position",
                               "SceneObjCtrl::Obj::Box::Nothing",
                               "SceneObjCtrl::Obj::Box::Material::Nothing",
                               "SceneObjCtrl::Obj::Box::Position::x::y",
                               "SceneObjCtrl::Object::Box::Position",
                               "FilterCtrl::Obj::Box::Position",
                               "SceneObjCtrl",
                               "",
                               "::::::"};
    for (const char* p : bad) {
        SCOPED_TRACE(p);
        EXPECT_EQ(Ctrl()->GetPCParamGroup(p), nullptr);
        EXPECT_EQ(Ctrl()->GetPCConfItem(p), nullptr);
        EXPECT_EQ(Ctrl()->GetPCParameter(wxString(p) + "::x"), nullptr);
    }
    wxString strTag = kSelf + "Obj::Box::Position";
    EXPECT_TRUE(SceneObjCtrl_cls::RemoveTagHeader(strTag));
    EXPECT_EQ(strTag, "Box::Position");
}

TEST_F(SceneFixture, SelectionKeepsReferenceCounts) {
    SceneObj_cls* pBox = Obj("Box");
    SceneObj_cls* pCamera = Obj("Camera");
    EXPECT_EQ(pBox->mReferenceCounter, 0);
    Sel({"Box"});
    // The active object and the selection entry each hold one.
    EXPECT_EQ(pBox->mReferenceCounter, 2);
    EXPECT_EQ(Ctrl()->GetStatus(pBox), 2);
    Ctrl()->Select("Box", true, false, false);
    EXPECT_EQ(pBox->mReferenceCounter, 2);
    EXPECT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    Ctrl()->Select("Camera", true, false, false);
    EXPECT_EQ(pBox->mReferenceCounter, 1);
    EXPECT_EQ(pCamera->mReferenceCounter, 2);
    EXPECT_EQ(Ctrl()->GetStatus(pBox), 1);
    // A toggle of the active object takes it out.
    Ctrl()->Select("Camera", true, false, true);
    EXPECT_EQ(pCamera->mReferenceCounter, 0);
    EXPECT_EQ(Ctrl()->GetPCActiveObject(), nullptr);
    ASSERT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    // A plain select replaces the selection.
    Sel({"Camera"});
    EXPECT_EQ(pBox->mReferenceCounter, 0);
    EXPECT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    // An unknown name clears the selection and leaves no active object.
    Sel({"Nothing"});
    EXPECT_EQ(Ctrl()->GetPCActiveObject(), nullptr);
    EXPECT_TRUE(Ctrl()->mVPCSelected.empty());
    EXPECT_EQ(pCamera->mReferenceCounter, 0);
    // Draw instances hold references too, and an object deleted while one is held lives until
    // its release.
    std::vector<SceneObjInstance_cls*> vInstance = pBox->GetVNewPCInstance();
    ASSERT_EQ(vInstance.size(), 1u);
    EXPECT_EQ(pBox->mReferenceCounter, 1);
    RunText(kSelf + "Delete::Box\n");
    EXPECT_EQ(Obj("Box"), nullptr);
    EXPECT_TRUE(pBox->mbDetached);
    EXPECT_EQ(vInstance[0]->mpCSceneObj->GetStrName(), "Box");
    delete vInstance[0]; // the last release deletes the object (checked by the sanitizer build)
}

TEST_F(SceneFixture, DrawOrderKeepsTheTextEntryThatNeverFires) {
    Ctrl()->AppendSceneObjCommand("TextObj", "");
    Ctrl()->AppendSceneObjCommand("Camera", "Far");
    Obj("Far")->GetPCParamGroup("", "Position")->SetInitValue(0.0, 0.0, 100.0);
    Obj("TextObj")->GetPCParamGroup("", "Position")->SetInitValue(0.0, 0.0, 10.0);
    std::vector<SceneObj_cls*> vList;
    Ctrl()->GetVPCList(vList);
    std::vector<SceneObjInstance_cls*> vInstance;
    for (SceneObj_cls* p : vList)
        for (SceneObjInstance_cls* q : p->GetVNewPCInstance())
            vInstance.push_back(q);
    Position_cls camera;
    for (SceneObjInstance_cls* p : vInstance)
        p->SetDistance(camera, 0.0);
    std::stable_sort(vInstance.begin(), vInstance.end(), SceneObjInstance_cls::ComparePointer);
    wxArrayString astr;
    for (SceneObjInstance_cls* p : vInstance)
        astr.Add(p->mpCSceneObj->GetStrName());
    // The light first (4 beats 2), the world next among the rest (3); the text object, whose
    // draw order is 1, sorts by distance like a plain object because no class is "Text_cls".
    EXPECT_EQ(wxJoin(astr, ','), "Initial Light,World,Far,TextObj,Box,Camera");
    for (SceneObjInstance_cls* p : vInstance)
        delete p;
}

TEST_F(SceneFixture, UndoOfADeleteRestoresPropertiesAndChildLinks) {
    RunText(kSelf + "SetToChild::Box::To::Camera\n" + kSelf + "SetToChild::Initial Light::To::Camera\n");
    Ctrl()->AppendPrimitiveCommand(2, "Floor");
    RunText(kSelf + "SetToChild::Floor::To::Box\n");
    ASSERT_EQ(Tree(), "World,Camera(Box(Floor),Initial Light)");
    SceneObj_cls* pCamera = Obj("Camera");
    pCamera->mCVisible.PushCommandPair("0");
    pCamera->GetPCParamGroup("", "Position")
        ->mVCParam[0]
        .SetValueAtCommand(4.0, 0.5, kSelf + "Obj::Camera::Position::x", 1, 1.0);
    pCamera->AddModifierCommand("TestMod_cls", "");
    Sel({"Camera"});
    const wxString strBefore = SceneText();
    const int index = GpCUndo->GetCurrent();

    Ctrl()->DeleteItemsCommand();
    EXPECT_EQ(Tree(), "World,Box(Floor),Initial Light");
    EXPECT_EQ(Obj("Camera"), nullptr);
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), index);
    EXPECT_EQ(Tree(), "World,Camera(Box(Floor),Initial Light)");
    EXPECT_EQ(SceneText(), strBefore);
    SceneObj_cls* pBack = Obj("Camera");
    EXPECT_FALSE(pBack->mCVisible.GetBodyBOOL());
    EXPECT_DOUBLE_EQ(pBack->GetPCParamGroup("", "Position")->mVCParam[0].GetValue(0.5), 4.0);
    EXPECT_NE(pBack->GetPCAttribute("TestMod", 1), nullptr);
    GpCUndo->Redo();
    EXPECT_EQ(Tree(), "World,Box(Floor),Initial Light");
    GpCUndo->Undo();
    EXPECT_EQ(SceneText(), strBefore);

    // A parent and its child deleted together come back in one undo.
    Sel({"Box", "Floor", "Camera"});
    const wxString strBefore2 = SceneText();
    Ctrl()->DeleteItemsCommand();
    EXPECT_EQ(Tree(), "World,Initial Light");
    GpCUndo->Undo();
    EXPECT_EQ(Tree(), "World,Camera(Box(Floor),Initial Light)");
    Sel({"Camera"});
    EXPECT_EQ(SceneText(), strBefore2);
}

// Every structure command as do, undo and redo: the scene text after undo equals the text
// before, and after redo the text after the do.
TEST_F(SceneFixture, EveryStructureCommandDoUndoRedo) {
    Ctrl()->AppendPrimitiveCommand(3, "Cone");
    Ctrl()->AppendSceneObjCommand("World", "Second");
    RunText(kSelf + "SetToChild::Cone::To::Box\n");
    Obj("Box")->AddModifierCommand("TestMod_cls", "A");
    Obj("Box")->AddModifierCommand("TestMod_cls", "B");
    Obj("Box")->AddDataProcCommand("TestProc_cls", "P");
    GpCUndo->Clear();
    // Each command runs on the selection given with it.
    struct Step {
        const char* pName;
        std::vector<const char*> selection;
        std::function<void()> func;
    };
    double v[3] = {1.0, 2.0, 3.0};
    const std::vector<Step> steps = {
        {"Append", {}, [&] { Ctrl()->AppendSceneObjCommand("MeshObj", ""); }},
        {"AppendPrimitive", {}, [&] { Ctrl()->AppendPrimitiveCommand(4, "Can"); }},
        {"AppendLight", {}, [&] { Ctrl()->AppendLightCommand(0, ""); }},
        {"Rename", {}, [&] { Ctrl()->RenameCommand("Box", "Crate"); }},
        {"DeleteItems", {"Box"}, [&] { Ctrl()->DeleteItemsCommand(); }},
        {"SetToChild", {"Camera"}, [&] { Ctrl()->SetToChildCommand("World"); }},
        {"SetToChildRoot", {"Cone"}, [&] { Ctrl()->SetToChildCommand("ROOT"); }},
        {"SetMultipleToChild",
         {"Camera", "Initial Light"},
         [&] { Ctrl()->SetMultipleToChildCommand("Second"); }},
        {"MoveItemTo", {"Camera"}, [&] { Ctrl()->MoveItemToCommand("World", false); }},
        {"MoveItemToAfter", {"World"}, [&] { Ctrl()->MoveItemToCommand("Cone", true); }},
        {"MoveItemMultipleTo", {"Camera", "Box"}, [&] { Ctrl()->MoveItemMultipleToCommand("World", false); }},
        {"SetVisibleMultiple", {"Camera", "Box"}, [&] { Ctrl()->SetVisibleMultipleCommand(false); }},
        {"ToggleVisible", {}, [&] { Ctrl()->ToggleVisibleCommand("World"); }},
        {"SetValidMultiple", {"Initial Light", "Box"}, [&] { Ctrl()->SetValidMultipleCommand(false); }},
        {"ToggleValid", {}, [&] { Ctrl()->ToggleValidCommand("Initial Light"); }},
        {"AddModifier", {}, [&] { Obj("Camera")->AddModifierCommand("TestMod_cls", ""); }},
        {"DeleteModifier", {}, [&] { Obj("Box")->DeleteModifierCommand("A"); }},
        {"MoveModifier", {"Box"}, [&] { Ctrl()->MoveModifierCommand("B", 0); }},
        {"SetModifierValidity", {}, [&] { Obj("Box")->SetModifierValidityCommand("B", false); }},
        {"AddDataProc", {}, [&] { Obj("Box")->AddDataProcCommand("TestProc_cls", "Q"); }},
        {"DeleteDataProc", {}, [&] { Obj("Box")->DeleteDataProcCommand("P"); }},
        {"SetDataProcValidity", {}, [&] { Obj("Box")->SetDataProcValidityCommand("P", false); }},
        {"SetParam3", {}, [&] { Obj("Box")->SetParam3Command("Position", v); }},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.pName);
        Sel({""});
        const wxString strBefore = SceneText();
        const int index = GpCUndo->GetCurrent();
        if (step.selection.size() > 0)
            Sel(step.selection);
        step.func();
        // The text's last line names the active object, which a command may change: compare
        // the objects.
        Sel({""});
        const wxString strAfter = SceneText();
        ASSERT_NE(strAfter, strBefore);
        ASSERT_GT(GpCUndo->GetCurrent(), index);
        GpCUndo->Undo();
        EXPECT_EQ(GpCUndo->GetCurrent(), index);
        Sel({""});
        EXPECT_EQ(SceneText(), strBefore);
        GpCUndo->Redo();
        Sel({""});
        EXPECT_EQ(SceneText(), strAfter);
        GpCUndo->Undo();
        Sel({""});
        ASSERT_EQ(SceneText(), strBefore);
    }
}

TEST_F(SceneFixture, BadStructureInputLeavesTheSceneIntact) {
    RunText(kSelf + "SetToChild::Box::To::Camera\n");
    const wxString strBefore = SceneText();
    LogCapture_cls log;
    const char* const lines[] = {
        "SceneObjCtrl::New::Nothing_cls::ANY::X",
        "SceneObjCtrl::New::Text_cls::ANY::X",
        "SceneObjCtrl::New::Primitive_cls::ANY::Box", // the name exists
        "SceneObjCtrl::New::Primitive_cls::ANY::",    // no name
        "SceneObjCtrl::New::Primitive_cls::ANY::ROOT",
        "SceneObjCtrl::New::Particle_cls::ANY::P", // the data layer is not there
        "SceneObjCtrl::New",
        "SceneObjCtrl::Delete::Nothing",
        "SceneObjCtrl::Rename::Nothing::To::X",
        "SceneObjCtrl::Rename::Box::To::Camera", // exists
        "SceneObjCtrl::Rename::Box::Camera",
        "SceneObjCtrl::SetToChild::Camera::To::Box", // under its own child
        "SceneObjCtrl::SetToChild::Camera::To::Camera",
        "SceneObjCtrl::SetToChild::Box::To::Nothing",
        "SceneObjCtrl::SetToChild::Box::Camera",
        "SceneObjCtrl::Move::Camera::Box::0",
        "SceneObjCtrl::Move::Box::Nothing::0",
        "SceneObjCtrl::Move::Box::ROOT::x",
        "SceneObjCtrl::Obj::Nothing::Visible=0",
        "SceneObjCtrl::Obj::Box::Nothing::x::Key::0::SetValue::3",
        "SceneObjCtrl::Obj::Box::New::Modifier::Unknown_cls::M",
        "SceneObjCtrl::Obj::World::New::Modifier::TestMod_cls::M",      // does not fit a world
        "SceneObjCtrl::Obj::Box::New::Modifier::TestMod_cls::Material", // name taken
        "SceneObjCtrl::Obj::Box::Delete::Modifier::Nothing",
        "SceneObjCtrl::Obj::Box::Delete::Material::Material", // the only material stays
        "SceneObjCtrl::Obj::Box::Move::Modifier::Nothing::0",
        "SceneObjCtrl::Obj::Box::New::ColorCurve::C", // no colour curves here
        "SceneObjCtrl::Rubbish::Box",
        "SceneObjCtrl::ReadProperties::Nothing\nConfItemList::Begin::SceneObj::Box\nVisible=0\nConfItemList::"
        "End\n"
        "ReadProperties::End",
    };
    for (const char* p : lines) {
        SCOPED_TRACE(p);
        RunText(p);
        ASSERT_EQ(SceneText(), strBefore);
    }
    // A refused command pushes no pair.
    Sel({"Camera"});
    const int count = GpCUndo->GetCount();
    EXPECT_FALSE(Ctrl()->SetToChildCommand("Box"));
    EXPECT_FALSE(Ctrl()->SetToChildCommand("Camera"));
    EXPECT_FALSE(Ctrl()->SetToChildCommand("Nothing"));
    EXPECT_FALSE(Ctrl()->MoveItemToCommand("Box", false));
    EXPECT_EQ(Ctrl()->AppendSceneObjCommand("Nothing", ""), "");
    EXPECT_EQ(Ctrl()->AppendSceneObjCommand("Particle", ""), "");
    EXPECT_EQ(Ctrl()->AppendPrimitiveCommand(17, ""), "");
    EXPECT_EQ(Ctrl()->AppendLightCommand(-1, ""), "");
    EXPECT_EQ(GpCUndo->GetCount(), count);
}

TEST_F(SceneFixture, ObjectOneLinersReachGroupsAndItems) {
    RunText(kSelf + "Obj::Box::Position::x::Key::0::SetValue::2.5\n" + kSelf +
            "Obj::Box::Material::Diffuse::G::Key::0::SetValue::0.25\n" + kSelf +
            "Obj::Box::Scale::Linked=0\n" + kSelf + "Obj::Box::Position::UseExpr=1\n" + kSelf +
            "Obj::Box::Position::Expression=return x*2,y,z\n");
    SceneObj_cls* pBox = Obj("Box");
    double pos[3];
    pBox->GetPositionGlobal(0.0, pos);
    EXPECT_DOUBLE_EQ(pos[0], 5.0);
    EXPECT_DOUBLE_EQ(pBox->GetPCMaterial()->GetPCParamGroup("Diffuse")->mVCParam[1].GetValue(0.0), 0.25);
    EXPECT_FALSE(pBox->GetPCParamGroup("", "Scale")->IsLinked());
    // A group command through the undo road and the controller's helper.
    ASSERT_TRUE(
        Ctrl()->SetParamGroupConfCommand(kSelf + "Obj::Box::Position", "Expression=", "return x,\ny*3,z"));
    EXPECT_EQ(pBox->GetPCParamGroup("", "Position")->mCExpression.GetBodySTR(), "return x,\ny*3,z");
    GpCUndo->Undo();
    EXPECT_EQ(pBox->GetPCParamGroup("", "Position")->mCExpression.GetBodySTR(), "return x*2,y,z");
    ASSERT_TRUE(Ctrl()->SetParameterConfCommand(kSelf + "Obj::Box::Scale::x", "TimeDepend=", true, true));
    for (const Parameter_cls& param : pBox->GetPCParamGroup("", "Scale")->mVCParam)
        EXPECT_TRUE(param.IsTimeDepend());
    GpCUndo->Undo();
    EXPECT_FALSE(pBox->GetPCParamGroup("", "Scale")->IsTimeDepend());
    EXPECT_FALSE(Ctrl()->SetParamGroupConfCommand(kSelf + "Obj::Box::Nothing", "Linked=", "1"));
}

TEST_F(SceneFixture, ModifierListVerbs) {
    SceneObj_cls* pBox = Obj("Box");
    pBox->AddModifierCommand("TestMod_cls", "");
    pBox->AddModifierCommand("TestMod_cls", "");
    pBox->AddModifierCommand("TestMod_cls", "Last");
    EXPECT_EQ(wxJoin(pBox->GetAstrAttribList(), ','), "Material,TestMod,TestMod.001,Last");
    EXPECT_EQ(pBox->GetPCAttribute("TestMod.001", 1)->GetTag(), "SceneObj::Box::TestMod.001");
    pBox->MoveModifierCommand("Last", 0);
    EXPECT_EQ(wxJoin(pBox->GetAstrAttribList(), ','), "Material,Last,TestMod,TestMod.001");
    pBox->SetModifierValidityCommand("TestMod", false);
    EXPECT_FALSE(pBox->GetPCItemInAttrib("TestMod", "Validity")->GetBodyBOOL());
    EXPECT_EQ(pBox->GetPCValidModifier("TestMod_cls"), pBox->GetPCAttribute("Last", 1));
    // A modifier group keyed through its tag.
    RunText(kSelf + "Obj::Box::TestMod.001::Influence::Value::Key::0::SetValue::0.5\n");
    EXPECT_DOUBLE_EQ(pBox->GetPCParamGroup("TestMod.001", "Influence")->mVCParam[0].GetValue(0.0), 0.5);
    pBox->DeleteModifierCommand("TestMod.001");
    EXPECT_EQ(wxJoin(pBox->GetAstrAttribList(), ','), "Material,Last,TestMod");
    GpCUndo->Undo();
    EXPECT_EQ(wxJoin(pBox->GetAstrAttribList(), ','), "Material,Last,TestMod,TestMod.001");
    EXPECT_DOUBLE_EQ(pBox->GetPCParamGroup("TestMod.001", "Influence")->mVCParam[0].GetValue(0.0), 0.5);
    // The built-in attributes of a camera stay in front and cannot be moved or deleted.
    SceneObj_cls* pCamera = Obj("Camera");
    EXPECT_EQ(pCamera->GetIndexModifierInit(), 3);
    pCamera->AddModifierCommand("TestMod_cls", "T");
    const int count = GpCUndo->GetCount();
    pCamera->MoveModifierCommand("T", 0);
    pCamera->DeleteModifierCommand("Stereo");
    EXPECT_EQ(GpCUndo->GetCount(), count);
    EXPECT_EQ(wxJoin(pCamera->GetAstrAttribList(), ','), "CameraProp,FocalBlur,Stereo,T");
    RunText(kSelf + "Obj::Camera::Delete::Modifier::CameraProp\n" + kSelf +
            "Obj::Camera::Move::Modifier::T::0\n");
    EXPECT_EQ(wxJoin(pCamera->GetAstrAttribList(), ','), "CameraProp,FocalBlur,Stereo,T");
}
