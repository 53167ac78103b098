#include "SceneFixture.h"

#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "FocalBlurProp_cls.h"
#include "FogProp_cls.h"
#include "LightSource_cls.h"
#include "Material_cls.h"
#include "MeshObj_cls.h"
#include "PositionAndDirection_cls.h"
#include "Primitive_cls.h"
#include "StereoProp_cls.h"
#include "TextObj_cls.h"
#include "TextProp_cls.h"
#include "World_cls.h"

#include <cmath>

TEST_F(SceneFixture, KindsCarryTheirAttributes) {
    Ctrl()->AppendSceneObjCommand("TextObj", "");
    Ctrl()->AppendSceneObjCommand("MeshObj", "");
    const struct {
        const char* pObject;
        const char* pAttributes;
    } cases[] = {{"World", "Fog"},
                 {"Initial Light", "Material"},
                 {"Box", "Material"},
                 {"Camera", "CameraProp,FocalBlur,Stereo"},
                 {"TextObj", "Material,TextProp"},
                 {"MeshObj", "Material"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pObject);
        SceneObj_cls* p = Obj(c.pObject);
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(wxJoin(p->GetAstrAttribList(), ','), c.pAttributes);
        EXPECT_TRUE(p->IsValid());
    }
    Material_cls* pLightMaterial = Obj("Initial Light")->GetPCMaterial();
    ASSERT_NE(pLightMaterial, nullptr);
    EXPECT_TRUE(pLightMaterial->IsForLight());
    EXPECT_NE(pLightMaterial->GetPCParamGroup("SpotCutoff"), nullptr);
    EXPECT_EQ(pLightMaterial->GetPCItem("TextureFile"), nullptr);
    Material_cls* pBoxMaterial = Obj("Box")->GetPCMaterial();
    EXPECT_EQ(pBoxMaterial->GetPCParamGroup("SpotCutoff"), nullptr);
    EXPECT_NE(pBoxMaterial->GetPCItem("TextureFile"), nullptr);
    EXPECT_EQ(pBoxMaterial->GetColor("Diffuse", 0.0), (std::vector<double>{0.8, 0.8, 0.8, 1.0}));
    MaterialOption_cls::BlendFactor_enum src, dst;
    EXPECT_TRUE(pBoxMaterial->SetBlendFunc(src, dst));
    EXPECT_EQ(src, MaterialOption_cls::FACTOR_SRC_ALPHA);
    EXPECT_EQ(dst, MaterialOption_cls::FACTOR_ONE_MINUS_SRC_ALPHA);
    pBoxMaterial->mCBlendType.SetBodyFromData(wxString("3"));
    EXPECT_FALSE(pBoxMaterial->SetBlendFunc(src, dst));
    EXPECT_EQ(Obj("World")->GetActiveLightNum(true), 0); // the world has no lights below it
    EXPECT_EQ(Ctrl()->GetActiveLightNumRoot(true), 1);
    static_cast<LightSource_cls*>(Obj("Initial Light"))->mCValid.SetBodyFromData(wxString("0"));
    EXPECT_EQ(Ctrl()->GetActiveLightNumRoot(false), 0);
    EXPECT_EQ(Ctrl()->GetPCWorld(), Obj("World"));
}

TEST_F(SceneFixture, VariantsOfNewLines) {
    const char* const types[] = {"Box", "Sphere", "Plane", "Cone", "Cylinder", "Empty"};
    for (int i = 0; i < 6; ++i) {
        RunText(wxString::Format("SceneObjCtrl::New::Primitive_cls::%s::P%d\n", types[i], i));
        EXPECT_EQ(static_cast<Primitive_cls*>(Obj(wxString::Format("P%d", i)))->GetPrimitiveType(), i);
    }
    RunText("SceneObjCtrl::New::Primitive_cls::ANY::PAny\nSceneObjCtrl::New::LightSource_cls::ANY::LAny\n"
            "SceneObjCtrl::New::LightSource_cls::SpotLight::LSpot\n");
    EXPECT_EQ(static_cast<Primitive_cls*>(Obj("PAny"))->GetStrPrimitiveType(), "Box");
    EXPECT_EQ(static_cast<LightSource_cls*>(Obj("LAny"))->GetStrLightType(), "PointLight");
    EXPECT_EQ(static_cast<LightSource_cls*>(Obj("LSpot"))->GetStrLightType(), "SpotLight");
    // The default light shines from (5,5,5); its direction follows its rotation.
    double dir[3];
    static_cast<LightSource_cls*>(Obj("LAny"))->GetDirectionGlobal(0.0, dir);
    EXPECT_NEAR(dir[2], -1.0, 1e-12);
}

TEST_F(SceneFixture, CameraProperties) {
    Camera_cls* pCamera = static_cast<Camera_cls*>(Obj("Camera"));
    CameraProp_cls* pProp = pCamera->GetPCCameraProp();
    EXPECT_DOUBLE_EQ(pCamera->GetAngleL(0.0), 45.0);
    pProp->GetPCParamGroup("ViewAngle")->SetInitValue(150.0);
    EXPECT_DOUBLE_EQ(pCamera->GetAngleL(0.0), 120.0); // a plain camera renders at most 120
    pProp->mCCameraType.SetBodyFromData(wxString("1"));
    EXPECT_DOUBLE_EQ(pCamera->GetAngleL(0.0), 150.0);
    EXPECT_EQ(pCamera->GetVMinMax(0.0), (std::vector<double>{0.01, 1000.0}));
    EXPECT_EQ(pCamera->GetVPasspartoutInfo(), (std::vector<float>{-1.0f, -1.0f}));
    pProp->mCPassepartout.SetBodyFromData(wxString("1"));
    EXPECT_FLOAT_EQ(pCamera->GetVPasspartoutInfo()[0], 1.777778f);
    // The image size of the camera counts only with its switch on; a side is at least a pixel.
    int width = -1, height = -1;
    EXPECT_FALSE(pCamera->GetOverrideSize(width, height));
    EXPECT_EQ(width, -1);
    RunText("ConfItemList::Begin::SceneObj::Camera::CameraProp\nSizeOverride=1\nOverrideWidth=800\n"
            "OverrideHeight=0\nConfItemList::End\n");
    ASSERT_TRUE(pCamera->GetOverrideSize(width, height));
    EXPECT_EQ(width, 800);
    EXPECT_EQ(height, 1);
    // Its pose: at its position, looking along its -z.
    pCamera->GetPCParamGroup("", "Position")->SetInitValue(0.0, 0.0, 10.0);
    pCamera->GetPCParamGroup("", "RotationEuler")->SetInitValue(0.0, 90.0, 0.0);
    PositionAndDirection_cls pose;
    pCamera->GetPose(0.0, pose);
    EXPECT_NEAR(pose.mPos[2], 10.0, 1e-12);
    EXPECT_NEAR(pose.mTgt[0], -1.0, 1e-12);
    EXPECT_NEAR(pose.mTop[1], 1.0, 1e-12);
    EXPECT_NEAR(pose.mRight[2], -1.0, 1e-12);
}

TEST_F(SceneFixture, StereoNumbersAndEyes) {
    StereoProp_cls* pStereo = static_cast<Camera_cls*>(Obj("Camera"))->GetPCStereoProp();
    for (int stereo = 0; stereo < 3; ++stereo)
        for (int eye = 0; eye < 8; ++eye) {
            SCOPED_TRACE(wxString::Format("stereo %d eye %d", stereo, eye).ToStdString());
            pStereo->mCStereoType.SetBodyFromData(static_cast<long long>(stereo));
            pStereo->mCEyeType.SetBodyFromData(static_cast<long long>(eye));
            EXPECT_EQ(pStereo->GetStereoNum(), (stereo != 0 && eye >= 3) ? 2 : 1);
            EXPECT_EQ(pStereo->GetEyeType(), stereo == 0 ? 0 : eye);
        }
    // Off axis: the eyes move half the separation along the right vector and keep looking ahead.
    pStereo->mCStereoType.SetBodyFromData(1LL);
    pStereo->mCEyeType.SetBodyFromData(4LL);
    PositionAndDirection_cls pose;
    pStereo->StereoRotate(&pose, 0, 0.0);
    EXPECT_NEAR(pose.mPos[0], -0.0325, 1e-12);
    EXPECT_NEAR(pose.mTgt[2], -1.0, 1e-12);
    // Toe-in: the right eye turns towards the point in focus.
    pStereo->mCStereoType.SetBodyFromData(2LL);
    PositionAndDirection_cls right;
    pStereo->StereoRotate(&right, 1, 0.0);
    EXPECT_NEAR(right.mPos[0], 0.0325, 1e-12);
    EXPECT_LT(right.mTgt[0], 0.0);
    // Eye type 1 draws the left eye whatever eye is asked.
    pStereo->mCEyeType.SetBodyFromData(1LL);
    PositionAndDirection_cls left;
    pStereo->StereoRotate(&left, 1, 0.0);
    EXPECT_NEAR(left.mPos[0], -0.0325, 1e-12);
}

TEST_F(SceneFixture, FocalBlurKeepsTheFocusPoint) {
    FocalBlurProp_cls* pBlur = static_cast<Camera_cls*>(Obj("Camera"))->GetPCFocalBlurProp();
    EXPECT_DOUBLE_EQ(pBlur->GetFocalDistance(0.0), 10.0);
    PositionAndDirection_cls pose;
    pBlur->BlurRotate(&pose, 3, 0.0);
    EXPECT_DOUBLE_EQ(pose.mPos[0], 0.0); // switched off: no change
    pBlur->mCUseFocalBlur.SetBodyFromData(wxString("1"));
    pBlur->GetPCParamGroup("Aperture")->SetInitValue(0.5);
    for (int step = 1; step < 20; ++step) {
        SCOPED_TRACE(step);
        PositionAndDirection_cls p;
        pBlur->BlurRotate(&p, step, 0.0);
        const double offset = std::hypot(p.mPos[0], p.mPos[1]);
        EXPECT_LE(offset, 0.5 + 1e-12);
        // The ray of the moved eye still passes through the point in focus (0, 0, -10).
        const double k = (-10.0 - p.mPos[2]) / p.mTgt[2];
        EXPECT_NEAR(p.mPos[0] + k * p.mTgt[0], 0.0, 1e-9);
        EXPECT_NEAR(p.mPos[1] + k * p.mTgt[1], 0.0, 1e-9);
    }
    double x = 0.0, y = 0.0;
    FocalBlurProp_cls::GetLensPoint(1, x, y);
    EXPECT_LE(x * x + y * y, 1.0);
}

TEST_F(SceneFixture, WorldFogAndText) {
    World_cls* pWorld = static_cast<World_cls*>(Obj("World"));
    EXPECT_EQ(pWorld->GetFogType(), 0);
    EXPECT_FALSE(pWorld->IsFogOverwrite());
    EXPECT_EQ(pWorld->GetFogColor(0.0), (std::vector<double>{0.5, 0.5, 0.5}));
    RunText("SceneObjCtrl::Obj::World::Fog::FogColor::R::Key::0::SetValue::0.25\n"
            "ConfItemList::Begin::SceneObj::World::Fog\nFogType=2\nFogOverwrite=1\nConfItemList::End\n");
    EXPECT_EQ(pWorld->GetFogType(), 2);
    EXPECT_TRUE(pWorld->IsFogOverwrite());
    EXPECT_DOUBLE_EQ(pWorld->GetFogColor(0.0)[0], 0.25);
    Ctrl()->AppendSceneObjCommand("TextObj", "Label");
    TextObj_cls* pText = static_cast<TextObj_cls*>(Obj("Label"));
    EXPECT_EQ(pText->mDrawOrder, 1);
    EXPECT_EQ(pText->GetPCTextProp()->GetStrText(), "Text");
}

TEST_F(SceneFixture, MeshLoadsItsFileLazily) {
    Ctrl()->AppendSceneObjCommand("MeshObj", "Mesh");
    MeshObj_cls* pMesh = static_cast<MeshObj_cls*>(Obj("Mesh"));
    EXPECT_FALSE(pMesh->LoadMesh());
    EXPECT_EQ(pMesh->GetPCMesh()->GetNumTriangle(), 0);
    pMesh->mCFileName.PushCommandPair(wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj");
    EXPECT_EQ(pMesh->GetPCMesh()->GetNumTriangle(), 12);
    EXPECT_TRUE(pMesh->IsLoaded());
    LogCapture_cls log;
    pMesh->mCFileName.PushCommandPair(wxString(ORV_TEST_DATA_DIR) + "/obj/missing.obj");
    EXPECT_EQ(pMesh->GetPCMesh()->GetNumTriangle(), 0);
    GpCUndo->Undo();
    EXPECT_EQ(pMesh->GetPCMesh()->GetNumTriangle(), 12);
}

TEST_F(SceneFixture, MeshSavesTheMaterialsOfTheFileItShows) {
    Ctrl()->AppendSceneObjCommand("MeshObj", "Mesh");
    MeshObj_cls* pMesh = static_cast<MeshObj_cls*>(Obj("Mesh"));
    const wxString strDir = wxString(ORV_TEST_DATA_DIR) + "/obj/";
    const auto saved = [pMesh] {
        wxString str;
        pMesh->Serialize(str);
        return str;
    };
    pMesh->mCFileName.PushCommandPair(strDir + "cube.obj");
    ASSERT_EQ(pMesh->GetAStrMtlNames().GetCount(), 2u);
    pMesh->mCFileName.PushCommandPair(strDir + "plane.obj");
    ASSERT_EQ(pMesh->GetAStrMtlNames().GetCount(), 1u);
    EXPECT_TRUE(saved().Contains("New::Material::Mtl_Quadrants\n"));
    EXPECT_FALSE(saved().Contains("Mtl_Red"));
    // Undone, the cube's materials come back as they were and the plane's stay out of the project.
    GpCUndo->Undo();
    EXPECT_TRUE(saved().Contains("New::Material::Mtl_Red\n"));
    EXPECT_TRUE(saved().Contains("New::Material::Mtl_Blue\n"));
    EXPECT_FALSE(saved().Contains("Mtl_Quadrants"));
    // A file that cannot be read has no known library: nothing is dropped.
    LogCapture_cls log;
    pMesh->mCFileName.PushCommandPair(strDir + "missing.obj");
    EXPECT_TRUE(saved().Contains("New::Material::Mtl_Red\n"));
    EXPECT_TRUE(saved().Contains("New::Material::Mtl_Quadrants\n"));
}
