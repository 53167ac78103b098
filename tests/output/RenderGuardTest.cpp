#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "FogProp_cls.h"
#include "ImageOutput_cls.h"
#include "RenderGuard_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ServicesFixture.h"
#include "StereoProp_cls.h"
#include "View3D_cls.h"
#include "World_cls.h"

namespace {
// Answers the questions from a list and keeps every text shown or asked.
class ScriptedDialog_cls : public RenderGuard_cls::Dialog_cls {
public:
    explicit ScriptedDialog_cls(std::vector<bool> vAnswers) : mVAnswers(std::move(vAnswers)) {}
    void ShowMessage(const wxString& strText) override { mVStrTexts.push_back("message: " + strText); }
    bool AskYesNo(const wxString& strText) override {
        mVStrTexts.push_back("ask: " + strText);
        const bool b = mNext < mVAnswers.size() ? mVAnswers[mNext] : true;
        ++mNext;
        return b;
    }
    std::vector<bool> mVAnswers;
    size_t mNext = 0;
    std::vector<wxString> mVStrTexts;
};
} // namespace

using RenderGuardTest = ServicesFixture<ServiceLayer_enum::Output>;

TEST_F(RenderGuardTest, ChecksRunInOrderWithTheirTexts) {
    RunText("SceneObjCtrl::New::Camera_cls::ANY::Camera\n");
    Camera_cls* pCamera = static_cast<Camera_cls*>(GpCSceneObjCtrl->GetPCFromName("Camera"));
    ASSERT_NE(pCamera, nullptr);
    View3D_cls view;
    const wxString strGood = mDir.Path("f%04d.png");
    const wxString strSingle = mDir.Path("still.png");
    struct Case_cls {
        const char* name;
        RenderGuard_cls::Command_enum command;
        wxString pattern;
        bool bView, bTransparent, bStereogram, bAlpha;
        std::vector<bool> answers;
        bool ok;
        std::vector<wxString> texts;
        wxString patternAfter;
        int stereoOutputAfter;
    };
    const Case_cls cases[] = {
        {"all fine",
         RenderGuard_cls::RENDER_ANIM,
         strGood,
         true,
         false,
         false,
         false,
         {},
         true,
         {},
         strGood,
         0},
        {"bad path",
         RenderGuard_cls::RENDER_ANIM,
         mDir.Path("no/f%04d.png"),
         true,
         false,
         false,
         false,
         {},
         false,
         {"message: Filepath is invalid"},
         mDir.Path("no/f%04d.png"),
         0},
        {"no number, yes",
         RenderGuard_cls::RENDER_ANIM,
         strSingle,
         true,
         false,
         false,
         false,
         {true},
         true,
         {"ask: Not Sequence. Append 4-digit tag ?"},
         mDir.Path("still%04d.png"),
         0},
        {"no number, no: one file for every frame",
         RenderGuard_cls::RENDER_ANIM,
         strSingle,
         true,
         false,
         false,
         false,
         {false},
         true,
         {"ask: Not Sequence. Append 4-digit tag ?"},
         strSingle,
         0},
        {"transparent background, stop",
         RenderGuard_cls::RENDER_ANIM,
         strGood,
         true,
         true,
         false,
         false,
         {false},
         false,
         {"ask: BG is transparent, but File format is not RGBA. Continue?"},
         strGood,
         0},
        {"transparent background with alpha",
         RenderGuard_cls::RENDER_ANIM,
         strGood,
         true,
         true,
         false,
         true,
         {},
         true,
         {},
         strGood,
         0},
        {"stereogram, no: a file per eye",
         RenderGuard_cls::RENDER_ANIM,
         strGood,
         true,
         false,
         true,
         false,
         {false},
         true,
         {"ask: Output combined stereogram ?"},
         strGood,
         1},
        {"stereogram, yes",
         RenderGuard_cls::RENDER_SNAP,
         strGood,
         true,
         false,
         true,
         false,
         {true},
         true,
         {"ask: Output combined stereogram ?"},
         strGood,
         0},
        {"no view",
         RenderGuard_cls::RENDER_SNAP,
         strGood,
         false,
         false,
         false,
         false,
         {},
         false,
         {"message: No Active 3DView Panel"},
         strGood,
         0},
        {"path only",
         RenderGuard_cls::RENDER_PATH,
         strSingle,
         false,
         true,
         false,
         false,
         {},
         true,
         {},
         strSingle,
         0},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.name);
        ImageOutput_cls output;
        output.mCFileFormat.SetBodyFromData(c.pattern);
        output.mCImageAlpha.SetBodyFromData(c.bAlpha ? "1" : "0");
        pCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData(c.bStereogram ? "1" : "0");
        pCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(c.bStereogram ? "3" : "0");
        RenderGuard_cls::Scene_cls scene;
        scene.mpCView = c.bView ? &view : nullptr;
        scene.mbBGTransparent = c.bTransparent;
        ScriptedDialog_cls dialog(c.answers);
        bool bUpdate = false;
        EXPECT_EQ(RenderGuard_cls::Check(c.command, output, scene, dialog, bUpdate), c.ok);
        EXPECT_EQ(dialog.mVStrTexts, c.texts);
        EXPECT_EQ(output.mCFileFormat.GetBodySTR(), c.patternAfter);
        EXPECT_EQ(output.GetStereoOutput(), c.stereoOutputAfter);
        EXPECT_EQ(bUpdate, c.patternAfter != c.pattern || c.stereoOutputAfter == 1);
    }
}

TEST_F(RenderGuardTest, BackgroundTransparencyFollowsGLBGAndTheFog) {
    EXPECT_FALSE(RenderGuard_cls::IsBGTransparent());
    GpCColorProvider->mCGLBG.SetBodyFromData(std::vector<float>{0.2f, 0.2f, 0.2f, 0.5f});
    EXPECT_TRUE(RenderGuard_cls::IsBGTransparent());
    RunText("SceneObjCtrl::New::World_cls::ANY::World\n");
    World_cls* pWorld = GpCSceneObjCtrl->GetPCWorld();
    ASSERT_NE(pWorld, nullptr);
    // Fog without overwriting the background keeps it transparent; overwriting makes it opaque.
    pWorld->GetPCFogProp()->mCFogType.SetBodyFromData("1");
    EXPECT_TRUE(RenderGuard_cls::IsBGTransparent());
    pWorld->GetPCFogProp()->mCFogOverwrite.SetBodyFromData("1");
    EXPECT_FALSE(RenderGuard_cls::IsBGTransparent());
    pWorld->GetPCFogProp()->mCFogType.SetBodyFromData("0");
    EXPECT_TRUE(RenderGuard_cls::IsBGTransparent());
}
