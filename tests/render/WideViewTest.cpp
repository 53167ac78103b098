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
#include "WideCamera_cls.h"

#include <cmath>

// A point of each wide image gives the direction that lands on it again.
TEST(WideViewTest, PointsOfTheImageMapBackFromTheirDirections) {
    const struct {
        int type;
        double angle, x, y;
        bool bShown;
    } cases[] = {{2, 180, 0.3, -0.4, true}, {3, 120, -0.7, 0.1, true}, {5, 360, 0.5, 0.6, true},
                 {4, 180, -0.3, 0.2, true}, {4, 180, 0.8, -0.1, true}, {6, 360, 0.9, -0.45, true},
                 {2, 180, 0.8, 0.8, false}, {6, 360, 0.0, 0.6, false}, {0, 45, 0.0, 0.0, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type * 1000 + c.x * 100);
        double dir[3], x = 9, y = 9;
        ASSERT_EQ(WideCamera_cls::GetDirectionAt(c.type, c.x, c.y, c.angle, dir), c.bShown);
        if (!c.bShown)
            continue;
        EXPECT_NEAR(std::hypot(std::hypot(dir[0], dir[1]), dir[2]), 1.0, 1e-12);
        ASSERT_TRUE(WideCamera_cls::MapDirection(c.type, dir, c.angle, c.x < 0 ? 0 : 1, &x, &y));
        EXPECT_NEAR(x, c.x, 1e-9);
        EXPECT_NEAR(y, c.y, 1e-9);
    }
}

class WideViewGLTest : public PassesFixture, public FrameFilter_ifc {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        mpView->mCDispGrid.SetBodyFromData("0");
        mpView->mC1stBufSizeIdx.SetBodyFromData("0");
        mpView->SetPosDir(PositionAndDirection_cls());
        msFuncGet = [this]() -> FrameFilter_ifc* { return this; };
    }
    void TearDown() override {
        msFuncGet = nullptr;
        PassesFixture::TearDown();
    }
    // The chain shows the image as rendered and keeps the pose it was given.
    FBO_cls* GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>&,
                                     const PositionAndDirection_cls& pose, Camera_cls*, FBO_cls*) override {
        mFilterPose = pose;
        return pSource;
    }
    bool DoesUseDepthBuffer() override { return false; }
    void ReleaseProcessed(FBO_cls*) override {}

    void AddMarker(const wxString& strName, double x, double y, double z, double radius, double r, double g,
                   double b) {
        SceneObj_cls* p = AddGlowing("Sphere", strName, r, g, b);
        SetGroup(p, "", "Position", x, y, z);
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
    // The mean column of the pixels that pass, -1 for none.
    double MeanX(int w, int h, bool (*pred)(const Pixel_cls&)) {
        double sum = 0;
        int n = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (pred(At(x, y)))
                    sum += x + 0.5, ++n;
        return n > 20 ? sum / n : -1;
    }
    PositionAndDirection_cls mFilterPose;
};

// A click picks the object under it on each wide image, and the filters see the camera's own pose.
TEST_F(WideViewGLTest, ClicksPickThroughTheFaceUnderThePointAndFiltersSeeTheFrontPose) {
    AddMarker("Ahead", 0, 0, -5, 0.5, 1, 0, 0);
    AddMarker("Right", 5, 0, 0, 0.5, 0, 1, 0);
    AddMarker("Behind", 0, 0, 5, 0.5, 0, 0, 1);
    const struct {
        int type, w, h;
        double x, y;
        const char* pHit;
    } cases[] = {{6, 128, 64, 0.5, 0.5, "Ahead"},   {6, 128, 64, 0.75, 0.5, "Right"},
                 {6, 128, 64, 0.01, 0.5, "Behind"}, {6, 128, 64, 0.5, 0.9, ""},
                 {2, 64, 64, 0.5, 0.5, "Ahead"},    {3, 64, 64, 0.5, 0.5, "Ahead"},
                 {4, 128, 64, 0.75, 0.5, "Behind"}, {5, 64, 64, 0.5, 0.5, "Ahead"},
                 {0, 64, 64, 0.5, 0.5, "Ahead"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(wxString::Format("type %d at %g %g", c.type, c.x, c.y).ToStdString());
        mpView->mCWideCameraType.SetBodyFromData(wxString::Format("%d", c.type));
        mpView->mCViewAngleL.SetBodyFromData(c.type == 0 ? "45" : "180");
        mpPasses->RequestHitTest(c.x, c.y, false);
        Paint(c.w, c.h);
        EXPECT_EQ(mpPasses->GetStrLastHit(), c.pHit);
        EXPECT_NEAR(mFilterPose.mTgt[2], -1.0, 1e-9);
    }
}

// Each eye of a wide camera stands half the separation aside; "QUAD BUFFERING" without stereo
// buffers shows the left eye and says so once.
TEST_F(WideViewGLTest, EyesOfAWideCameraStandApartAndQuadBufferingFallsBackToTheLeftEye) {
    AddMarker("Ball", 0, 0, -10, 2.0, 1, 1, 1);
    auto* pCamera = static_cast<Camera_cls*>(Obj("Camera"));
    SetGroup(pCamera, "", "Position", 0, 0, 0);
    SetGroup(pCamera, "Stereo", "EyeSeparation", 4.0);
    SetGroup(pCamera, "Stereo", "FocusDistance", 1e9);
    pCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData("1");
    pCamera->GetPCCameraProp()->mCCameraType.SetBodyFromData("6");
    mpView->mCFollow.SetBodyFromData("1");
    // Each eye sees the ball atan(2 / 10) aside: 128 * 11.31 / 360 pixels.
    const double shift = 128 * atan(0.2) / (2 * M_PI);
    const struct {
        const char* pEyeType;
        bool (*pred)(const Pixel_cls&);
        double x;
    } cases[] = {{"4", [](const Pixel_cls& p) { return p.r > 0.6f; }, 64 + shift},
                 {"4", [](const Pixel_cls& p) { return p.g > 0.6f && p.b > 0.6f; }, 64 - shift},
                 {"7", [](const Pixel_cls& p) { return p.r > 0.6f && p.g > 0.6f; }, 64 + shift}};
    LogCapture_cls log;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pEyeType);
        pCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(c.pEyeType);
        Paint(128, 64);
        EXPECT_NEAR(MeanX(128, 64, c.pred), c.x, 1.0);
    }
    Paint(128, 64);
    int fallbacks = 0;
    for (const wxString& str : log.mVStrLines)
        fallbacks += str.Contains("QUAD BUFFERING");
    EXPECT_EQ(fallbacks, 1);
}

// With the composer on, its two images show the steps before and after the time, each unblended:
// a moving particle stands at both places, a volume logs its corrected frames, and a reload or
// rescale drops the prepared volume so the next draw mixes it again.
TEST_F(WideViewGLTest, ComposedImagesShowTheStepsAroundTheTime) {
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
    GpCColorProvider->mCGLBG.SetBodyFromData("0 0 0 0");
    GpCTimeCtrl->mCFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL); // half way from step 0 to step 1
    auto drawn = [this](int x) { return At(x, 128).r > 0.5f; };
    for (const char* pComposite : {"0", "1"}) {
        SCOPED_TRACE(pComposite);
        const bool bOn = *pComposite == '1';
        GpCTimeCtrl->mCInterpolateComposite.SetBodyFromData(pComposite);
        Paint(256, 256);
        EXPECT_EQ(drawn(128), !bOn) << "the blended place";
        EXPECT_EQ(drawn(128 - 92), bOn);
        EXPECT_EQ(drawn(128 + 92), bOn);
        LogCapture_cls log;
        for (int composite = 0; composite < 2; ++composite) {
            ASSERT_TRUE(DataViewerBase_cls::PrepareDrawByKind(pVolume, composite));
            EXPECT_EQ(pVolume->mpCCurrent->mData[0], bOn ? composite * 255 : 127);
        }
        EXPECT_EQ(log.Contains("Adjusted frame1=1 frame2=1interp=0.000000 composit=1"), bOn);
        EXPECT_TRUE(log.Contains("VolumeTime NT=0.250000 frame1=0 interp=0.500000"));
    }
    for (void (VolumeBox_cls::*drop)() : {&VolumeBox_cls::Reload, &VolumeBox_cls::Rescale}) {
        (pVolume->*drop)();
        EXPECT_TRUE(pVolume->mpCCurrent->mData.empty());
        ASSERT_TRUE(DataViewerBase_cls::PrepareDrawByKind(pVolume, 0));
        EXPECT_EQ(pVolume->mpCCurrent->mDataCounter, 1);
    }
}
