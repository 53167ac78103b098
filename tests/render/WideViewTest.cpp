#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "FBO_cls.h"
#include "FrameFilter_ifc.h"
#include "GetPC_cls.h"
#include "Particle_cls.h"
#include "PassesFixture.h"
#include "StereoProp_cls.h"
#include "TimeCtrl_cls.h"
#include "VolumeBox_cls.h"

#include <cmath>

// The scene without the box, seen from the origin along -z; the filter chain shows the image as
// rendered and keeps the pose it was given.
class WideViewTest : public PassesFixture, public FrameFilter_ifc {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        EmptyViewFromOrigin();
        msFuncGet = [this]() -> FrameFilter_ifc* { return this; };
    }
    void TearDown() override {
        msFuncGet = nullptr;
        PassesFixture::TearDown();
    }
    FBO_cls* GetNewPCFilterProcessed(FBO_cls* p, const std::vector<float>&,
                                     const PositionAndDirection_cls& pose, Camera_cls*, FBO_cls*) override {
        mFilterPose = pose;
        return p;
    }
    bool DoesUseDepthBuffer() override { return false; }
    void ReleaseProcessed(FBO_cls*) override {}
    void AddBall(const wxString& strName, double x, double z, double radius, double r, double g, double b) {
        SceneObj_cls* p = AddGlowing("Sphere", strName, r, g, b);
        SetGroup(p, "", "Position", x, 0, z);
        SetGroup(p, "", "Scale", radius, radius, radius);
    }
    void Paint(int w, int h) {
        FBO_cls target(std::max(w, h), std::max(w, h), nullptr);
        target.SetGeometryFBO(w, h);
        target.MakeFBO(true, false);
        mpPasses->RefreshEX();
        mpPasses->PaintDirectly(w, h, w, h, target.GetFramebuffer());
        ReadTexture(target.GetTexture(), w, h);
    }
    PositionAndDirection_cls mFilterPose;
};

// A click picks the object under it on each wide image (none outside it), the filters see the
// camera's own pose, each eye of a wide camera stands half the separation aside, and "QUAD
// BUFFERING" without stereo buffers shows the left eye and says so once.
TEST_F(WideViewTest, ClicksPickUnderThePointEyesStandApartQuadBufferingFallsBack) {
    AddBall("Ahead", 0, -5, 0.5, 1, 1, 1);
    AddBall("Right", 5, 0, 0.5, 0, 1, 0);
    AddBall("Behind", 0, 5, 0.5, 0, 0, 1);
    const struct {
        int type, w;
        double x, y;
        const char* pHit;
    } picks[] = {{6, 128, 0.5, 0.5, "Ahead"},   {6, 128, 0.75, 0.5, "Right"}, {6, 128, 0.01, 0.5, "Behind"},
                 {6, 128, 0.5, 0.9, ""},        {2, 64, 0.5, 0.5, "Ahead"},   {3, 64, 0.5, 0.5, "Ahead"},
                 {4, 128, 0.75, 0.5, "Behind"}, {5, 64, 0.5, 0.5, "Ahead"},   {0, 64, 0.5, 0.5, "Ahead"}};
    for (const auto& c : picks) {
        SCOPED_TRACE(wxString::Format("type %d at %g %g", c.type, c.x, c.y).ToStdString());
        mpView->mCWideCameraType.SetBodyFromData(wxString::Format("%d", c.type));
        mpView->mCViewAngleL.SetBodyFromData(c.type == 0 ? "45" : "180");
        mpPasses->RequestHitTest(c.x, c.y, false);
        Paint(c.w, 64);
        EXPECT_EQ(mpPasses->GetStrLastHit(), c.pHit);
        EXPECT_NEAR(mFilterPose.mTgt[2], -1.0, 1e-9);
    }
    // Eyes 4 apart, the ball 5 ahead: each sees it atan(2 / 5) aside on the 360 degree width.
    auto* pCamera = static_cast<Camera_cls*>(Obj("Camera"));
    SetGroup(pCamera, "", "Position", 0, 0, 0);
    SetGroup(pCamera, "Stereo", "EyeSeparation", 4.0);
    SetGroup(pCamera, "Stereo", "FocusDistance", 1e9);
    pCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData("1");
    pCamera->GetPCCameraProp()->mCCameraType.SetBodyFromData("6");
    mpView->mCFollow.SetBodyFromData("1");
    const double shift = 128 * atan(0.4) / (2 * M_PI);
    LogCapture_cls log;
    for (const char* pEyeType : {"4", "7", "7"}) {
        pCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(pEyeType);
        Paint(128, 64);
        // Red is the left eye's (or the only one's) white ball, green the right eye's.
        EXPECT_GT(At(static_cast<int>(64 + shift), 32).r, 0.6f) << pEyeType;
        EXPECT_LT(At(static_cast<int>(64 - shift - 2), 32).r, 0.6f) << pEyeType;
        EXPECT_EQ(At(static_cast<int>(64 - shift), 32).g > 0.6f, *pEyeType == '4');
    }
    EXPECT_EQ(std::count_if(log.mVStrLines.begin(), log.mVStrLines.end(),
                            [](const wxString& s) { return s.Contains("QUAD BUFFERING"); }),
              1);
}

// With the composer on, its two images show the steps before and after the time, each unblended:
// a moving particle stands at both places, a volume logs its corrected frames; a reload or a
// rescale drops the prepared volume, so the next draw mixes it again.
TEST_F(WideViewTest, ComposedImagesShowTheStepsAroundTheTime) {
    for (int step = 0; step < 2; ++step) {
        ASSERT_TRUE(
            WriteBytes(mDir.Path(wxString::Format("Run%04d.txt", step)),
                       wxString::Format("1\n%d\n%g 0 -5 0 8\n", step, step ? 1.5 : -1.5).ToStdString()));
        ASSERT_TRUE(WriteBytes(mDir.Path(wxString::Format("Vol%03d.df3", step)),
                               std::string("\0\2\0\2\0\2", 6) + std::string(8, step ? '\xff' : '\0')));
    }
    auto* p = static_cast<Particle_cls*>(Obj(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", "Run")));
    p->mCFormat.mCDataType.SetBodyFromData("0");
    p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
    p->mCPath.SetBodyFromData(mDir.Path("Run0000.txt"));
    p->mCPointSizeFactor.SetBodyFromData("1");
    auto* pVolume =
        static_cast<VolumeBox_cls*>(Obj(GpCSceneObjCtrl->AppendSceneObjCommand("VolumeBox", "Vol")));
    pVolume->mCPath.SetBodyFromData(mDir.Path("Vol000.df3"));
    pVolume->mCVisible.SetBodyFromDataBOOL(false);
    GpCColorProvider->mCGLBG.SetBodyFromData("0 0 0 0"); // an opaque first image would hide the second
    GpCTimeCtrl->mCFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL); // half way from step 0 to step 1
    for (const bool bOn : {false, true}) {
        SCOPED_TRACE(bOn);
        GpCTimeCtrl->mCInterpolateComposite.SetBodyFromDataBOOL(bOn);
        Paint(256, 256);
        for (int x : {128 - 92, 128, 128 + 92})
            EXPECT_EQ(At(x, 128).r > 0.5f, bOn != (x == 128)) << x;
        LogCapture_cls log;
        for (int composite = 0; composite < 2; ++composite) {
            ASSERT_TRUE(DataViewerBase_cls::PrepareDrawByKind(pVolume, composite));
            EXPECT_EQ(pVolume->mpCCurrent->mData[0], bOn ? composite * 255 : 127);
        }
        EXPECT_TRUE(log.Contains("VolumeTime NT=0.250000 frame1=0 interp=0.500000"));
        EXPECT_EQ(log.Contains("Adjusted frame1=1 frame2=1interp=0.000000 composit=1"), bOn);
    }
    for (void (VolumeBox_cls::*drop)() : {&VolumeBox_cls::Reload, &VolumeBox_cls::Rescale}) {
        (pVolume->*drop)();
        EXPECT_TRUE(pVolume->mpCCurrent->mData.empty());
        ASSERT_TRUE(DataViewerBase_cls::PrepareDrawByKind(pVolume, 0));
        EXPECT_EQ(pVolume->mpCCurrent->mDataCounter, 1);
    }
}
