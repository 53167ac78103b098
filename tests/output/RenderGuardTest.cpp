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
    const wxString strGood = mDir.Path("f%04d.png"), strBad = mDir.Path("no/f%04d.png");
    const wxString strSingle = mDir.Path("still.png"), strTagged = mDir.Path("still%04d.png");
    const wxString strAskTag = "ask: Not Sequence. Append 4-digit tag ?";
    const wxString strAskStereo = "ask: Output combined stereogram ?";
    const auto ANIM = RenderGuard_cls::RENDER_ANIM, SNAP = RenderGuard_cls::RENDER_SNAP;
    struct Case_cls {
        const char* name;
        RenderGuard_cls::Command_enum command;
        wxString pattern;
        const char* flags;   // v: a view, t: transparent background, s: stereogram, a: alpha in the file
        const char* answers; // y or n to each question
        bool ok;
        wxString text; // shown or asked, or empty
        wxString patternAfter;
        int stereoOutputAfter;
    };
    const Case_cls cases[] = {
        {"all fine", ANIM, strGood, "v", "", true, "", strGood, 0},
        {"bad path", ANIM, strBad, "v", "", false, "message: Filepath is invalid", strBad, 0},
        {"no number, yes", ANIM, strSingle, "v", "y", true, strAskTag, strTagged, 0},
        {"no number, no: one file for every frame", ANIM, strSingle, "v", "n", true, strAskTag, strSingle, 0},
        {"transparent background, stop", ANIM, strGood, "vt", "n", false,
         "ask: BG is transparent, but File format is not RGBA. Continue?", strGood, 0},
        {"transparent background with alpha", ANIM, strGood, "vta", "", true, "", strGood, 0},
        {"stereogram, no: a file per eye", ANIM, strGood, "vs", "n", true, strAskStereo, strGood, 1},
        {"stereogram, yes", SNAP, strGood, "vs", "y", true, strAskStereo, strGood, 0},
        {"no view", SNAP, strGood, "", "", false, "message: No Active 3DView Panel", strGood, 0},
        {"path only", RenderGuard_cls::RENDER_PATH, strSingle, "t", "", true, "", strSingle, 0},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.name);
        const wxString strFlags = c.flags;
        ImageOutput_cls output;
        output.mCFileFormat.SetBodyFromData(c.pattern);
        output.mCImageAlpha.SetBodyFromData(strFlags.Contains("a") ? "1" : "0");
        pCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData(strFlags.Contains("s") ? "1" : "0");
        pCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(strFlags.Contains("s") ? "3" : "0");
        RenderGuard_cls::Scene_cls scene;
        scene.mpCView = strFlags.Contains("v") ? &view : nullptr;
        scene.mbBGTransparent = strFlags.Contains("t");
        std::vector<bool> vAnswers;
        for (const char* p = c.answers; *p; ++p)
            vAnswers.push_back(*p == 'y');
        ScriptedDialog_cls dialog(vAnswers);
        bool bUpdate = false;
        EXPECT_EQ(RenderGuard_cls::Check(c.command, output, scene, dialog, bUpdate), c.ok);
        EXPECT_EQ(dialog.mVStrTexts,
                  c.text.empty() ? std::vector<wxString>() : std::vector<wxString>{c.text});
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
