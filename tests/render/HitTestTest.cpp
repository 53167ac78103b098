// Picking without a window: a click at a point of the frame selects the object drawn there,
// through the selection-mode pass at the end of the frame; the pass leaves the frame's picture
// alone; the loupe shows the scene at the mouse. The hit records are read nearest first.
#include "Hittest_cls.h"
#include "PassesFixture.h"

#include <epoxy/gl.h>

#include <set>

namespace {

// The objects selected now, by name.
std::set<wxString> Selection() {
    std::set<wxString> names;
    for (SceneObj_cls* p : GpCSceneObjCtrl->mVPCSelected)
        names.insert(p->GetStrName());
    return names;
}

} // namespace

class HitTestTest : public PassesFixture {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        // Two glowing boxes side by side, seen from the front: red at x = -2, green at x = 2.
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        AddGlowingBox("Left", -2, 1, 0, 0);
        AddGlowingBox("Right", 2, 0, 1, 0);
        GpCSceneObjCtrl->Select("", false, false, false);
    }
    void AddGlowingBox(const wxString& strName, double x, double r, double g, double b) {
        SetGroup(AddGlowing("Box", strName, r, g, b), "", "Position", x, 0, 0);
    }
    void TearDown() override {
        mpTarget.reset();
        PassesFixture::TearDown();
    }
    // One frame into a 64 by 64 target; the main buffer is read back.
    void Paint() {
        if (!mpTarget) {
            mpTarget = std::make_unique<FBO_cls>(64, 64, nullptr);
            mpTarget->MakeFBO(true, false);
        }
        mpPasses->PaintDirectly(64, 64, 64, 64, mpTarget->GetFramebuffer());
        FBO_cls* pMain = mpPasses->GetPCFBOMain();
        ReadTexture(pMain->GetTexture(), pMain->GetWidth(), pMain->GetHeight());
    }
    // A click at the point of the window (unit coordinates), picked in a frame that only refilters.
    wxString Click(double x, double y, bool bShift) {
        mpPasses->RequestHitTest(x, y, bShift);
        Paint();
        return mpPasses->GetStrLastHit();
    }

    std::unique_ptr<FBO_cls> mpTarget;
};

// At distance 10 with 45 degrees the half height of the view at the boxes is 4.14: the box
// centres fall at 0.5 -+ 0.2414 of the width, and each box is 0.24 wide.
constexpr double kLeftX = 0.2586, kRightX = 0.7414;

TEST_F(HitTestTest, ClickSelectsTheObjectDrawnThereShiftToggles) {
    Paint();
    // The picture agrees with the points clicked below: red left, green right, background between.
    const int s = mFrameWidth;
    EXPECT_TRUE(PixelNear(At(static_cast<int>(kLeftX * s), s / 2), 1, 0, 0, 1, 0.05f));
    EXPECT_TRUE(PixelNear(At(static_cast<int>(kRightX * s), s / 2), 0, 1, 0, 1, 0.05f));
    EXPECT_GT(At(s / 2, s / 2).b, 0.1f); // the blue-grey background
    SaveFrame("HitTestScene.png");

    struct Case_cls {
        const char* strWhat;
        double x, y;
        bool bShift;
        const char* strHit;
        std::set<wxString> selection;
    };
    const Case_cls cases[] = {
        {"left box", kLeftX, 0.5, false, "Left", {"Left"}},
        {"right box replaces it", kRightX, 0.5, false, "Right", {"Right"}},
        {"lower edge of the right box", kRightX, 0.39, false, "Right", {"Right"}},
        {"background changes nothing", 0.5, 0.5, false, "", {"Right"}},
        {"above the boxes is background", kLeftX, 0.8, false, "", {"Right"}},
        {"shift adds the left box", kLeftX, 0.5, true, "Left", {"Left", "Right"}},
        {"shift on the active box takes it out", kLeftX, 0.5, true, "Left", {"Right"}},
        {"plain click selects one again", kLeftX, 0.5, false, "Left", {"Left"}},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strWhat);
        EXPECT_EQ(Click(c.x, c.y, c.bShift), wxString(c.strHit));
        EXPECT_EQ(Selection(), c.selection);
    }
}

TEST_F(HitTestTest, PickingLeavesTheFramesPictureAsItWas) {
    Paint();
    const std::vector<Pixel_cls> vBefore = mVFrame;
    ReadTexture(mpTarget->GetTexture(), 64, 64);
    const std::vector<Pixel_cls> vTargetBefore = mVFrame;
    // A pick with the scene drawn anew, and one that only refilters.
    for (bool bRedraw : {true, false}) {
        SCOPED_TRACE(bRedraw ? "redraw" : "refilter");
        if (bRedraw)
            mpPasses->RefreshEX();
        GpCSceneObjCtrl->Select("", false, false, false);
        EXPECT_EQ(Click(kRightX, 0.5, false), "Right");
        ASSERT_EQ(mVFrame.size(), vBefore.size());
        for (size_t i = 0; i < mVFrame.size(); ++i) {
            const Pixel_cls &a = mVFrame[i], &b = vBefore[i];
            ASSERT_TRUE(a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a) << "main buffer pixel " << i;
        }
        ReadTexture(mpTarget->GetTexture(), 64, 64);
        for (size_t i = 0; i < mVFrame.size(); ++i) {
            const Pixel_cls &a = mVFrame[i], &b = vTargetBefore[i];
            ASSERT_TRUE(a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a) << "window pixel " << i;
        }
    }
    // No GL error is left behind by the selection mode.
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(HitTestTest, LoupeShowsTheSceneAtTheMouseWithoutPicking) {
    mpView->mCLoupe.SetBodyFromDataBOOL(true);
    struct Case_cls {
        double x;
        bool bRed, bGreen;
    };
    for (const Case_cls& c : {Case_cls{kLeftX, true, false}, Case_cls{kRightX, false, true}}) {
        SCOPED_TRACE(c.x);
        mpPasses->SetMousePoint(c.x, 0.5);
        Paint();
        ASSERT_NE(mpPasses->GetPCHittest(), nullptr);
        const FBO_cls* pLoupe = mpPasses->GetPCHittest()->GetPCLoupe();
        ASSERT_NE(pLoupe, nullptr);
        ReadTexture(pLoupe->GetTexture(), pLoupe->GetWidth(), pLoupe->GetHeight());
        // Above the middle row, where the ground grid is seen edge on.
        const Pixel_cls centre = At(mFrameWidth / 2, mFrameHeight / 2 + 6);
        EXPECT_EQ(centre.r > 0.6f, c.bRed);
        EXPECT_EQ(centre.g > 0.6f, c.bGreen);
        // The loupe selects nothing.
        EXPECT_TRUE(Selection().empty());
    }
    SaveFrame("HitTestLoupe.png");
}

TEST(HitRecordTest, NearestRecordNamesTheObjectAndXrayNamesFoldBack) {
    // The table of three objects, as the draw pass fills it.
    Hittest_cls::ClearReferTable();
    for (const char* strName : {"A", "B", "C"})
        Hittest_cls::SetReferName(strName);
    struct Case_cls {
        const char* strWhat;
        std::vector<unsigned int> buffer;
        int hits;
        long long nearest;
    };
    const Case_cls cases[] = {
        {"no hit", {}, 0, -1},
        {"one hit", {1, 500, 900, 2}, 1, 2},
        {"the nearer of two", {1, 800, 900, 0, 1, 300, 400, 1}, 2, 1},
        {"an X-ray record nearer than the object", {1, 800, 900, 1, 1, 10, 20, 4}, 2, 4},
        {"the innermost of a deeper stack", {2, 100, 200, 7, 2}, 1, 2},
        {"a record cut by the buffer's end is dropped", {1, 500, 900, 2, 1, 100}, 2, 2},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strWhat);
        EXPECT_EQ(Hittest_cls::GetNearestName(c.buffer.data(), c.hits, static_cast<int>(c.buffer.size())),
                  c.nearest);
    }
    // Names n to 2n - 1 are the X-ray entries of objects 0 to n - 1; beyond that nothing.
    const std::pair<unsigned int, const char*> names[] = {{0, "A"}, {2, "C"}, {3, "A"}, {5, "C"}, {6, ""}};
    for (const auto& [name, strObject] : names) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Hittest_cls::GetStrReferName(name), wxString(strObject));
    }
}
