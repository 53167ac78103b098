// Filters that read the frame's depth, the legend, and the repaint without the scene, on frames
// the passes render.
#include "Camera_cls.h"
#include "ColorCurve_cls.h"
#include "FilterFixture.h"
#include "Legend_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "StereoProp_cls.h"

#include "CommandText.h"

namespace {

const double kFront[3] = {0, 0, -1};
const double kUp[3] = {0, 1, 0};

} // namespace

class FilterSceneTest : public FilterFixture {
protected:
    void LookFrom(double x, double y, double z) {
        PositionAndDirection_cls pose;
        pose.mPos[0] = x, pose.mPos[1] = y, pose.mPos[2] = z;
        for (int i = 0; i < 3; ++i)
            pose.mTgt[i] = kFront[i], pose.mTop[i] = kUp[i];
        pose.Normalize();
        mpView->SetPosDir(pose);
    }
    static void SetObjGroup(SceneObj_cls* p, const wxString& strAttr, const wxString& strGroup, double a,
                            double b = 0.0, double c = 0.0) {
        ParamGroup_cls* pGroup = strAttr.empty() ? p->GetPCParamGroup(strAttr, strGroup)
                                                 : p->GetPCAttribute(strAttr, 0)->GetPCParamGroup(strGroup);
        ASSERT_NE(pGroup, nullptr) << strGroup;
        pGroup->SetInitValue(a, b, c);
    }
    // A unit box that shines in one colour whatever the light, at the position.
    void AddGlowingBox(const wxString& strName, double x, double y, double z, double r, double g, double b) {
        Run("SceneObjCtrl::New::Primitive_cls::Box::" + strName);
        SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(strName);
        ASSERT_NE(p, nullptr);
        for (const char* group : {"Ambient", "Diffuse", "Specular"})
            SetObjGroup(p, "Material", group, 0, 0, 0);
        SetObjGroup(p, "Material", "Emission", r, g, b);
        SetObjGroup(p, "", "Position", x, y, z);
        GpCSceneObjCtrl->Select("", false, false, false);
    }
    void HideDefaultBox() { GpCSceneObjCtrl->GetPCFromName("Box")->mCVisible.SetBodyFromDataBOOL(false); }
    void Repaint() {
        mpPasses->RefreshEX();
        Paint();
    }
};

TEST_F(FilterSceneTest, DepthFilterMapsNearToFarMonotonically) {
    HideDefaultBox();
    // Three boxes side by side at 10, 20 and 40 from the eye; their front faces (boxes are two
    // units wide) stand one unit nearer.
    AddGlowingBox("Near", -1.5, 0, 0, 1, 0, 0);
    AddGlowingBox("Mid", 0, 0, -10, 0, 1, 0);
    AddGlowingBox("Far", 3, 0, -30, 0, 0, 1);
    LookFrom(0, 0, 10);
    Run("FilterCtrl::New::FilterDepth_cls::D");
    Repaint();
    // Box centres on the screen: x = 128 + 128 x / (z tan 22.5).
    const double k = 128.0 / std::tan(22.5 * M_PI / 180.0);
    const double expected[3] = {9, 19, 39};
    const double xs[3] = {-1.5, 0, 3};
    double last = 0;
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const int px = static_cast<int>(128 + k * xs[i] / expected[i]);
        const float d = At(px, 128).r;
        EXPECT_NEAR(d, expected[i], expected[i] * 0.01);
        EXPECT_GT(d, last);
        last = d;
        EXPECT_NEAR(At(px, 128).g, d, 1e-3); // grey
    }
    // The background lies at the far plane, beyond all of them.
    EXPECT_GT(At(5, 5).r, 500.f);
}

TEST_F(FilterSceneTest, FocalBlurKeepsTheFocalPlaneSharpAndBlursWhatIsFarBehind) {
    HideDefaultBox();
    // The camera's focal distance (10 by default) is at the near box's front.
    AddGlowingBox("Sharp", -1.5, 0, 0.5, 1, 0, 0);
    AddGlowingBox("Behind", 8, 0, -30, 0, 1, 0);
    LookFrom(0, 0, 10);
    Repaint();
    const std::vector<Pixel_cls> plain = mVFrame;
    Run("FilterCtrl::New::FocalBlur_cls::F");
    SetItem("F", "UseGamma=", "0");
    SetGroup("F", "WidthBase", 3.0);
    mpPasses->RefreshEX();
    Paint();
    const double k = 128.0 / std::tan(22.5 * M_PI / 180.0);
    auto same = [&](int x, int y) {
        const Pixel_cls& a = plain[static_cast<size_t>(y) * 256 + x];
        return PixelNear(At(x, y), a.r, a.g, a.b, a.a, 0.02f);
    };
    // Two pixels inside the left edge of each box: the sharp one keeps its colour, the far one
    // mixes with the background beside it.
    const int sharpLeft = static_cast<int>(128 + k * (-2.0) / 9.0);
    const int behindLeft = static_cast<int>(128 + k * 7.5 / 39.5);
    ASSERT_TRUE(PixelNear(plain[128 * 256 + sharpLeft + 2], 1, 0, 0, 1, 0.05f));
    ASSERT_TRUE(PixelNear(plain[128 * 256 + behindLeft + 2], 0, 1, 0, 1, 0.05f));
    EXPECT_TRUE(same(sharpLeft + 2, 128));
    EXPECT_TRUE(same(sharpLeft + 10, 128));
    EXPECT_LT(At(behindLeft + 2, 128).g, 0.9f);
}

TEST_F(FilterSceneTest, SSAODarkensTheInnerCornerOfTwoBoxesAndLeavesAnOpenFaceAlone) {
    HideDefaultBox();
    // A red box half a unit in front of a green one that continues to its right: seen straight
    // on, the green face meets the red box's side in an inner corner.
    AddGlowingBox("Front", 0, 0, 0, 1, 0, 0);
    AddGlowingBox("Back", 1, 0, -0.5, 0, 1, 0);
    LookFrom(0.5, 0, 10);
    Repaint();
    const std::vector<Pixel_cls> plain = mVFrame;
    // The first green pixel of the middle row is the corner.
    int corner = -1;
    for (int x = 0; x < 256 && corner < 0; ++x)
        if (plain[128 * 256 + x].g > 0.5f)
            corner = x;
    ASSERT_GT(corner, 100);
    Run("FilterCtrl::New::SSAO_cls::S");
    SetItem("S", "Radius=", "8");
    SetItem("S", "Factor=", "1");
    mpPasses->RefreshEX();
    Paint();
    // Beside the corner the green face darkens; further out, and in the middle of the red face,
    // nothing changes.
    EXPECT_LT(At(corner + 2, 128).g, plain[128 * 256 + corner + 2].g - 0.1f);
    EXPECT_NEAR(At(corner + 20, 128).g, plain[128 * 256 + corner + 20].g, 0.02f);
    EXPECT_NEAR(At(corner - 15, 128).r, plain[128 * 256 + corner - 15].r, 0.02f);
}

TEST_F(FilterSceneTest, FilterChangeRepaintsWithoutTheScenePass) {
    int repaints = 0;
    FrameFilter_ifc::msFuncRepaintFiltersOnly = [&] { ++repaints; };
    LookFrom(0, 0, 10);
    Run("FilterCtrl::New::Exposure_cls::E");
    Repaint();
    const long long drawn = mpPasses->GetDrawCount();
    const float before = At(128, 128).r;
    const int repaintsBefore = repaints;
    // A level change through the command road: the chain asks for a repaint of the filters only.
    ASSERT_TRUE(GpCFilterCtrl->SetFilterParamCommand("E", "Level", 1, 0.25));
    EXPECT_EQ(repaints, repaintsBefore + 1);
    Paint(); // no RefreshEX
    EXPECT_EQ(mpPasses->GetDrawCount(), drawn);
    EXPECT_GT(At(128, 128).r, before + 0.1f);
    // Switching the filter off brings the first picture back, still without the scene pass.
    ASSERT_TRUE(GpCFilterCtrl->SetFilterValidityCommand("E", false));
    Paint();
    EXPECT_NEAR(At(128, 128).r, before, kOneStep);
    EXPECT_EQ(mpPasses->GetDrawCount(), drawn);
    FrameFilter_ifc::msFuncRepaintFiltersOnly = nullptr;
}

TEST_F(FilterSceneTest, LegendShowsTheCurveEndColoursAtItsEndsAndSurvivesItsTargetGoing) {
    Run("SceneObjCtrl::New::Particle_cls::ANY::P");
    SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName("P");
    ASSERT_NE(pObj, nullptr);
    auto* pCurve = static_cast<ColorCurve_cls*>(pObj->GetPCAttributeFromAttribName("ColorCurve_cls", 0));
    ASSERT_NE(pCurve, nullptr);
    const std::array<unsigned char, 4> c0 = pCurve->GetColor(0.0, nullptr);
    const std::array<unsigned char, 4> c1 = pCurve->GetColor(1.0, nullptr);
    auto source = MakeSource(200, [] {});
    Run("FilterCtrl::New::Legend_cls::L");
    SetItem("L", "Target=", "P");
    SetItem("L", "UseTime=", "0");
    SetItem("L", "ClrCurveOffsetX=", "0.1");
    SetItem("L", "ClrCurveOffsetY=", "0.5");
    SetItem("L", "ClrCurveScaleX=", "2");
    SetItem("L", "ClrCurveScaleY=", "2");
    RunChain(*source);
    // The bar runs from x = 20 to 140, y = 100 to 116.
    EXPECT_TRUE(PixelNear(At(20, 108), c0[0] / 255.f, c0[1] / 255.f, c0[2] / 255.f, 1, 0.04f));
    EXPECT_TRUE(PixelNear(At(139, 108), c1[0] / 255.f, c1[1] / 255.f, c1[2] / 255.f, 1, 0.04f));
    EXPECT_TRUE(PixelNear(At(150, 108), 0, 0, 0, 0));
    // Tic numbers stand below the bar.
    int lit = 0;
    for (int y = 80; y < 100; ++y)
        for (int x = 10; x < 150; ++x)
            lit += At(x, y).r > 0.5f ? 1 : 0;
    EXPECT_GT(lit, 5);
    if (getenv("ORV_SAVE_FRAMES"))
        SaveFrame("LegendBar.png");

    // The target goes: one log line, no bar, the frame goes on.
    Run("SceneObjCtrl::Delete::P");
    ASSERT_EQ(GpCSceneObjCtrl->GetPCFromName("P"), nullptr);
    LogCapture_cls log;
    RunChain(*source);
    RunChain(*source);
    EXPECT_EQ(CountLines(log, {"Legend L: \"P\" has no colour curve"}), 1);
    EXPECT_TRUE(PixelNear(At(80, 108), 0, 0, 0, 0));
}

TEST_F(FilterSceneTest, LegendWritesTheTimeWithItsFormatAndScale) {
    Run("FilterCtrl::New::Legend_cls::L");
    auto* pLegend = static_cast<Legend_cls*>(Filter("L"));
    struct Case_cls {
        const char *strFormat, *strScale;
        double t;
        const char* strExpected;
    };
    for (const Case_cls& c :
         {Case_cls{"Time=%f", "1", 0.5, "Time=0.500000"}, Case_cls{"t = %.1f s", "10", 0.25, "t = 2.5 s"},
          Case_cls{"%d frames", "1", 0.5, "%d frames"}, // not a floating conversion
          Case_cls{"%f %f", "1", 0.5, "%f %f"}}) {
        SCOPED_TRACE(c.strFormat);
        SetItem("L", "FormatTime=", c.strFormat);
        SetItem("L", "TimeScale=", c.strScale);
        EXPECT_EQ(pLegend->GetStrTime(c.t), c.strExpected);
    }
    // The text is drawn near its offset, with no display.
    SetItem("L", "FormatTime=", "Time=%f");
    auto source = MakeSource(256, [] {});
    RunChain(*source);
    int lit = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 128; ++x)
            lit += At(x, y).r > 0.5f ? 1 : 0;
    EXPECT_GT(lit, 10);
}

TEST_F(FilterSceneTest, WithTwoEyesTheChainRunsForEachEyeOverTheSameDepth) {
    HideDefaultBox();
    AddGlowingBox("Near", 0, 0, 0, 0.5, 0.5, 0.5);
    auto* pCamera = static_cast<Camera_cls*>(GpCSceneObjCtrl->GetPCFromName("Camera"));
    ASSERT_NE(pCamera, nullptr);
    SetObjGroup(pCamera, "", "Position", 0, 0, 10);
    mpView->mCFollow.SetBodyFromData(wxString("1"));
    pCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData(wxString("1"));
    pCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(wxString("4"));
    ASSERT_EQ(mpPasses->GetStereoNum(), 2);
    Repaint();
    const float plain = At(128, 128).r;
    ASSERT_NEAR(plain, 0.5f, 0.05f);
    // A depth filter and an exposure: each eye's image is processed, and the shown one (the
    // red-cyan stereogram, whose red is the left eye's) is made of the processed ones.
    Run("FilterCtrl::New::FilterDepth_cls::D\nFilterCtrl::New::Exposure_cls::E");
    SetGroup("E", "Level", 0.0, 27.0);
    const long long before = mpPasses->GetDrawCount();
    Repaint();
    // Two eyes, each with its colour and its depth pass.
    EXPECT_EQ(mpPasses->GetDrawCount() - before, 4);
    EXPECT_NEAR(At(128, 128).r, 1.f / 3.f, 0.02f); // distance 9 over a level range of 27
    EXPECT_EQ(GpCFilterCtrl->GetPassCount(), 2);
}
