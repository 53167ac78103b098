// The whole process up to the renderer with one view and its frame passes over the default
// scene: services made over the source tree's shaders, a 256 buffer, no guides of lights and
// cameras, nothing selected.
#pragma once

#include "Attribute_cls.h"
#include "CommandText.h"
#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "RenderFixture.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"
#include "TestSupport.h"
#include "View3D_cls.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

class PassesFixture : public RenderFixture {
protected:
    static void SetUpTestSuite() {
        RenderFixture::SetUpTestSuite();
        // A suite before may have left the shared buffers of its own, gone context: forget them
        // (their names mean nothing in this one), so that the first frame makes them here.
        if (mspCContext && mspCContext->IsValid())
            FramePasses_cls::DeleteGLCommon();
    }
    static void TearDownTestSuite() {
        if (mspCContext && mspCContext->IsValid()) {
            mspCContext->MakeCurrent();
            FramePasses_cls::DeleteGLCommon();
        }
        RenderFixture::TearDownTestSuite();
    }
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mStrOldResourceDir = ShaderItem_cls::msStrResourceDir;
        ShaderItem_cls::msStrResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
        StartServices();
    }
    static SceneObj_cls* Obj(const wxString& strName) { return GpCSceneObjCtrl->GetPCFromName(strName); }
    // The initial values of a group of the object (strAttr empty) or of one of its attributes.
    static void SetGroup(SceneObj_cls* p, const wxString& strAttr, const wxString& strGroup, double a,
                         double b = 0.0, double c = 0.0) {
        ParamGroup_cls* pGroup = strAttr.empty() ? p->GetPCParamGroup(strAttr, strGroup)
                                                 : p->GetPCAttribute(strAttr, 0)->GetPCParamGroup(strGroup);
        ASSERT_NE(pGroup, nullptr) << strGroup;
        pGroup->SetInitValue(a, b, c);
    }
    void StartServices() {
        RegisterServices<ServiceLayer_enum::Render>();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
        mpView = std::make_unique<View3D_cls>();
        mpPasses = std::make_unique<FramePasses_cls>(mpView.get());
        mpView->mCBufSizeIdx.SetBodyFromData("0"); // 256
        mpView->mCDispLightCam.SetBodyFromData("0");
        GpCSceneObjCtrl->Select("", false, false, false);
    }
    void TearDown() override {
        // Buffers and programs go while the context is current.
        mpPasses.reset();
        mpMain.reset();
        ShaderItem_cls::msStrResourceDir = mStrOldResourceDir;
        // ORV_SAVE_FRAMES keeps every test's last frame, to look at while developing.
        if (getenv("ORV_SAVE_FRAMES") && !mVFrame.empty())
            SaveFrame(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png");
        RenderFixture::TearDown();
    }

    // The scene without its box, no grid, the smallest first buffer (256 wide faces), the eye at
    // the origin looking along -z: the start of the wide-camera tests.
    void EmptyViewFromOrigin() {
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        mpView->mCDispGrid.SetBodyFromData("0");
        mpView->mC1stBufSizeIdx.SetBodyFromData("0");
        mpView->SetPosDir(PositionAndDirection_cls());
    }
    // The view's eye at (x, y, z), looking along tgt with top up.
    void LookFrom(double x, double y, double z, const double* tgt, const double* top) {
        PositionAndDirection_cls pose;
        pose.mPos[0] = x, pose.mPos[1] = y, pose.mPos[2] = z;
        for (int i = 0; i < 3; ++i)
            pose.mTgt[i] = tgt[i], pose.mTop[i] = top[i];
        pose.Normalize();
        mpView->SetPosDir(pose);
    }
    // One frame into a window of the size; the main buffer is read back (and returned), or the
    // window's picture with bTarget.
    std::vector<Pixel_cls> PaintMain(int width = 64, int height = 64, bool bTarget = false) {
        FBO_cls target(std::max(width, height), std::max(width, height), nullptr);
        target.SetGeometryFBO(width, height);
        target.MakeFBO(true, false);
        mpPasses->PaintDirectly(width, height, width, height, target.GetFramebuffer());
        if (bTarget)
            return ReadTexture(target.GetTexture(), width, height);
        FBO_cls* pMain = mpPasses->GetPCFBOMain();
        return ReadTexture(pMain->GetTexture(), pMain->GetWidth(), pMain->GetHeight());
    }

    // A primitive that shines in one colour whatever the light.
    SceneObj_cls* AddGlowing(const wxString& strKind, const wxString& strName, double r, double g, double b) {
        RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::" + strKind + "::" + strName);
        SceneObj_cls* p = Obj(strName);
        for (const char* group : {"Ambient", "Diffuse", "Specular"})
            SetGroup(p, "Material", group, 0, 0, 0);
        SetGroup(p, "Material", "Emission", r, g, b);
        GpCSceneObjCtrl->Select("", false, false, false); // a new object is selected
        return p;
    }

    TempDir_cls mDir;
    wxString mStrOldResourceDir;
    std::unique_ptr<Main_cls> mpMain;
    std::unique_ptr<View3D_cls> mpView;
    std::unique_ptr<FramePasses_cls> mpPasses;
};
