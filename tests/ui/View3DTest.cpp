// The 3D view panel in a real window on the test display: the demo project's objects on screen,
// navigation by the mouse, picking with the outliner following, the view's block in the layout,
// the idle loop that paints nothing while the view is still and runs inertia until it stops.
#include "ScenePanelsFixture.h"

#include "FilterCtrl_cls.h"
#include "FramePasses_cls.h"
#include "GLButton_cls.h"
#include "GLInfo_cls.h"
#include "View3DPanel_cls.h"
#include "ViewWindowFixture.h"

#include <wx/treectrl.h>

#include <set>

namespace {

using Clock = std::chrono::steady_clock;

const wxString kViewLayout = Split('V', 700, Leaf("VIEW3D"), Leaf("OUTLINER"));

// A mouse event at the canvas point with the buttons and keys held.
wxMouseEvent MouseAt(wxEventType type, int x, int y, bool bLeft, bool bShift = false) {
    wxMouseEvent event(type);
    event.m_x = x;
    event.m_y = y;
    event.m_leftDown = bLeft;
    event.m_shiftDown = bShift;
    return event;
}

double Distance(const double* a, const double* b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
                     (a[2] - b[2]) * (a[2] - b[2]));
}

} // namespace

class View3DTest : public ViewWindowFixture<ServiceLayer_enum::Filter> {
protected:
    void SetUp() override {
        ViewWindowFixture::SetUp();
        if (IsSkipped())
            return;
        ASSERT_TRUE(mpMain->OpenProjectMain(wxString(ORV_SOURCE_DIR) + "/examples/demo.ovp", true));
        // The demo puts the moon beside its planet.
        ASSERT_EQ(GpCSceneObjCtrl->GetPCFromName("Moon")
                      ->GetPCParamGroup(wxString(), "Position")
                      ->GetVInterpolatedValue(0.0, true, nullptr, false)[0],
                  2.0);
        ReadFrameLayout(kViewLayout);
        FindPanels();
        Settle();
    }
    void FindPanels() {
        mpView = FindLeaf<View3DPanel_cls>();
        mpOutliner = FindLeaf<Outliner_cls>();
        ASSERT_TRUE(mpView && mpOutliner);
        mpCanvas = mpView->GetPCCanvas();
    }
    // Runs the loop until the canvas has painted the scene and the queue is empty.
    void Settle() { ASSERT_TRUE(mpCanvas && SettleCanvas(*mpCanvas)) << "the view never painted"; }
    void Send(wxMouseEvent event) { mpCanvas->ProcessMouseEvent(event); }
    // A press, moves along the way and a release, as a quick drag.
    void Drag(wxPoint from, wxPoint to, int steps, bool bShift = false) {
        Send(MouseAt(wxEVT_LEFT_DOWN, from.x, from.y, true, bShift));
        for (int i = 1; i <= steps; ++i) {
            const wxPoint p = from + wxPoint((to.x - from.x) * i / steps, (to.y - from.y) * i / steps);
            Send(MouseAt(wxEVT_MOTION, p.x, p.y, true, bShift));
        }
        Send(MouseAt(wxEVT_LEFT_UP, to.x, to.y, false, bShift));
    }
    void Click(wxPoint p, bool bShift = false) {
        Send(MouseAt(wxEVT_LEFT_DOWN, p.x, p.y, true, bShift));
        Send(MouseAt(wxEVT_LEFT_UP, p.x, p.y, false, bShift));
        RunLoop(300);
    }
    // The canvas pixel where a point of the scene is seen from the view's default pose (at
    // 0, 0, 10 looking down -z, 45 degrees), in a window cut from the square buffer.
    wxPoint PixelOf(double x, double y) {
        const wxSize size = mpCanvas->GetClientSize();
        const double half = std::tan(22.5 * 3.14159265358979 / 180.0) * 10.0;
        const double side = std::max(size.x, size.y);
        return wxPoint(static_cast<int>(size.x / 2.0 + x / half * side / 2.0),
                       static_cast<int>(size.y / 2.0 - y / half * side / 2.0));
    }
    std::set<wxString> Selection() {
        std::set<wxString> names;
        for (SceneObj_cls* p : GpCSceneObjCtrl->mVPCSelected)
            names.insert(p->GetStrName());
        return names;
    }
    std::set<wxString> OutlinerSelection() {
        std::set<wxString> names;
        wxArrayTreeItemIds ids;
        mpOutliner->mpCTree->GetSelections(ids);
        for (const wxTreeItemId id : ids)
            names.insert(mpOutliner->mpCTree->GetItemText(id));
        return names;
    }
    PositionAndDirection_cls Pose() { return mpView->GetView().GetPosDir(); }

    View3DPanel_cls* mpView = nullptr;
    Outliner_cls* mpOutliner = nullptr;
    GLCanvas_cls* mpCanvas = nullptr;
};

TEST_F(View3DTest, DemoProjectShowsItsObjectsOnScreen) {
    SKIP_WITHOUT_SCREENSHOTS();
    mpCanvas->Refresh();
    RunLoop(300);
    wxImage image;
    ASSERT_TRUE(TakeScreenshot("view3d-demo.png", image));
    const wxPoint origin = mpCanvas->GetScreenPosition();
    auto colourAt = [&](wxPoint p) {
        const wxPoint s = origin + p;
        return std::array<int, 3>{image.GetRed(s.x, s.y), image.GetGreen(s.x, s.y), image.GetBlue(s.x, s.y)};
    };
    // The background in a corner of the canvas, away from the grid, the gizmo and the text.
    const std::array<int, 3> bg = colourAt(wxPoint(mpCanvas->GetClientSize().x - 10, 40));
    struct Case_cls {
        const char* strWhat;
        double x, y;
    };
    for (const Case_cls& c :
         {Case_cls{"the planet at the origin", 0.0, 0.3}, Case_cls{"its moon at x 2", 2.0, 0.3}}) {
        SCOPED_TRACE(c.strWhat);
        const std::array<int, 3> colour = colourAt(PixelOf(c.x, c.y));
        EXPECT_GT(std::abs(colour[0] - bg[0]) + std::abs(colour[1] - bg[1]) + std::abs(colour[2] - bg[2]), 30)
            << colour[0] << " " << colour[1] << " " << colour[2];
    }
    // Between them and far above: background.
    const std::array<int, 3> above = colourAt(PixelOf(1.0, 3.0));
    EXPECT_LE(std::abs(above[0] - bg[0]) + std::abs(above[1] - bg[1]) + std::abs(above[2] - bg[2]), 6);
}

TEST_F(View3DTest, DragOrbitsShiftDragPansWheelZooms) {
    SKIP_WITHOUT_DISPLAY();
    const wxSize size = mpCanvas->GetClientSize();
    const wxPoint centre(size.x / 2, size.y / 2);
    {
        SCOPED_TRACE("a drag a quarter of the width to the right goes 90 degrees round to the left");
        const double pivot[3] = {0, 0, 0};
        Drag(centre, centre + wxPoint(size.x / 4, 0), 8);
        mpCanvas->GetCamera().StopInertia();
        const PositionAndDirection_cls pose = Pose();
        EXPECT_NEAR(pose.mPos[0], -10.0, 0.3);
        EXPECT_NEAR(pose.mPos[2], 0.0, 0.3);
        EXPECT_NEAR(Distance(pose.mPos, pivot), 10.0, 0.01);
        // It looks at the pivot.
        ExpectNear3(pose.mTgt, 1.0, 0.0, 0.0, 0.03);
    }
    {
        SCOPED_TRACE("the wheel comes closer to the pivot by a tenth a step");
        const double before = mpCanvas->GetCamera().GetPivotDistance();
        wxMouseEvent wheel = MouseAt(wxEVT_MOUSEWHEEL, centre.x, centre.y, false);
        wheel.m_wheelRotation = 120;
        wheel.m_wheelDelta = 120;
        Send(wheel);
        EXPECT_NEAR(mpCanvas->GetCamera().GetPivotDistance(), before * 0.9, 1e-3);
        const double pivot[3] = {0, 0, 0};
        EXPECT_NEAR(Distance(Pose().mPos, pivot), before * 0.9, 0.01);
    }
    {
        SCOPED_TRACE("shift drag pans: pose and pivot move together, the direction stays");
        const PositionAndDirection_cls before = Pose();
        Drag(centre, centre + wxPoint(0, size.y / 4), 8, true);
        mpCanvas->GetCamera().StopInertia();
        const PositionAndDirection_cls after = Pose();
        ExpectNear3(after.mTgt, before.mTgt[0], before.mTgt[1], before.mTgt[2], 1e-3);
        EXPECT_GT(after.mPos[1] - before.mPos[1], 1.0); // dragging down lifts the view
        EXPECT_NEAR(mpCanvas->GetCamera().GetPivot()[1], after.mPos[1] - before.mPos[1], 1e-3);
    }
    // The drag angle is shown while a rotation drag runs.
    Send(MouseAt(wxEVT_LEFT_DOWN, centre.x, centre.y, true));
    Send(MouseAt(wxEVT_MOTION, centre.x + 40, centre.y, true));
    mpCanvas->Update();
    RunLoop(100);
    const std::vector<wxString>& lines = mpCanvas->GetStrings().GetVStrLines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0].EndsWith(" fps")) << lines[0];
    EXPECT_TRUE(lines[1].EndsWith(" deg")) << lines[1];
    Send(MouseAt(wxEVT_LEFT_UP, centre.x + 40, centre.y, false));
}

TEST_F(View3DTest, MousePreferenceInvertsTheDrag) {
    SKIP_WITHOUT_DISPLAY();
    const wxSize size = mpCanvas->GetClientSize();
    const wxPoint centre(size.x / 2, size.y / 2);
    // The preference comes as lines of the project language, as a settings file has them.
    RunText("ConfItemList::Begin::MousePreference\nInvertGyrationX=1\nConfItemList::End\n");
    Drag(centre, centre + wxPoint(size.x / 4, 0), 8);
    mpCanvas->GetCamera().StopInertia();
    EXPECT_NEAR(Pose().mPos[0], 10.0, 0.3) << "a quarter-width drag to the right goes round to the right";
}

TEST_F(View3DTest, ClickSelectsTheObjectUnderTheMouseAndTheOutlinerFollows) {
    SKIP_WITHOUT_DISPLAY();
    GpCSceneObjCtrl->Select("", false, true, false);
    RunLoop(200);
    struct Case_cls {
        const char* strWhat;
        double x, y;
        bool bShift;
        std::set<wxString> selection;
        const char* strActive; // the outliner marks the active object
    };
    const Case_cls cases[] = {
        {"the planet", 0.0, 0.3, false, {"Planet"}, "Planet"},
        {"the moon replaces it", 2.0, 0.3, false, {"Moon"}, "Moon"},
        {"empty space changes nothing", 1.0, 3.0, false, {"Moon"}, "Moon"},
        {"shift adds the planet", 0.0, 0.3, true, {"Moon", "Planet"}, "Planet"},
        {"shift on the active planet takes it out", 0.0, 0.3, true, {"Moon"}, nullptr},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strWhat);
        Click(PixelOf(c.x, c.y), c.bShift);
        EXPECT_EQ(Selection(), c.selection);
        if (c.strActive) {
            EXPECT_EQ(OutlinerSelection(), std::set<wxString>({c.strActive}));
        }
    }
}

TEST_F(View3DTest, ViewKeysAndPoseSurviveSavingAndReopeningTheLayout) {
    SKIP_WITHOUT_DISPLAY();
    View3D_cls& view = mpView->GetView();
    const wxSize size = mpCanvas->GetClientSize();
    Drag(wxPoint(size.x / 2, size.y / 2), wxPoint(size.x / 2 + 60, size.y / 2 - 30), 6);
    mpCanvas->GetCamera().StopInertia();
    view.mCDispGrid.SetBodyFromDataBOOL(false);
    view.mCViewAngleL.SetBodyFromData("30");
    view.mCFollow.SetBodyFromDataBOOL(false);
    mpView->ShowNumPanel(false);
    const PositionAndDirection_cls pose = Pose();
    wxString strBlock;
    view.Serialize(strBlock);

    const wxString strTree = mpFrame->GetStrWindows();
    EXPECT_TRUE(strTree.Contains("wxPanelEX::VIEW3D\nConfItemList::Begin::View3D\n")) << strTree;
    ReadFrameLayout(strTree);
    FindPanels();
    // A new panel starts from the default keys: the block it holds now was read from the layout.
    wxString strDefault;
    View3D_cls().Serialize(strDefault);
    EXPECT_NE(strBlock, strDefault);
    wxString strReopened;
    mpView->GetView().Serialize(strReopened);
    EXPECT_EQ(strReopened, strBlock);
    const PositionAndDirection_cls reopened = Pose();
    ExpectNear3(reopened.mPos, pose.mPos[0], pose.mPos[1], pose.mPos[2], 1e-4);
    ExpectNear3(reopened.mTgt, pose.mTgt[0], pose.mTgt[1], pose.mTgt[2], 1e-4);
    EXPECT_FALSE(mpView->IsNumPanelShown());
    // The navigation goes on from the reopened pose.
    ExpectNear3(mpCanvas->GetCamera().GetPosition().mPos, pose.mPos[0], pose.mPos[1], pose.mPos[2], 1e-4);
}

TEST_F(View3DTest, StillViewPaintsNothingInertiaRunsOutAndPaintsStopWithIt) {
    SKIP_WITHOUT_DISPLAY();
    {
        SCOPED_TRACE("two idle seconds with nothing playing and no inertia: no paint");
        const long long before = mpCanvas->GetPaintCount();
        RunLoop(2000);
        EXPECT_EQ(mpCanvas->GetPaintCount(), before);
    }
    {
        SCOPED_TRACE("a scene change paints the scene once");
        const long long before = mpCanvas->GetScenePaintCount();
        mpMain->UpdatePanels("VIEW3D");
        RunLoop(300);
        EXPECT_EQ(mpCanvas->GetScenePaintCount(), before + 1);
    }
    const wxSize size = mpCanvas->GetClientSize();
    const wxPoint centre(size.x / 2, size.y / 2);
    Drag(centre, centre + wxPoint(60, 0), 3);
    ASSERT_TRUE(mpCanvas->IsInertiaMoving());
    const PositionAndDirection_cls released = Pose();
    const long long paintsAtRelease = mpCanvas->GetScenePaintCount();
    const auto end = Clock::now() + std::chrono::seconds(10);
    while (Clock::now() < end && mpCanvas->IsInertiaMoving())
        RunLoop(20);
    EXPECT_FALSE(mpCanvas->IsInertiaMoving());
    // The view went on turning about the pivot after the release, and each step was painted.
    const PositionAndDirection_cls stopped = Pose();
    const double turned = std::fabs(std::atan2(stopped.mPos[0], stopped.mPos[2]) -
                                    std::atan2(released.mPos[0], released.mPos[2])) *
                          180.0 / 3.14159265358979;
    EXPECT_GT(std::min(turned, 360.0 - turned), 20.0);
    const double pivot[3] = {0, 0, 0};
    EXPECT_NEAR(Distance(stopped.mPos, pivot), 10.0, 0.01);
    EXPECT_GT(mpCanvas->GetScenePaintCount(), paintsAtRelease + 10);
    {
        SCOPED_TRACE("once it stopped: still, and no paint");
        RunLoop(300);
        const long long before = mpCanvas->GetPaintCount();
        RunLoop(1000);
        EXPECT_EQ(mpCanvas->GetPaintCount(), before);
        ExpectNear3(Pose().mPos, stopped.mPos[0], stopped.mPos[1], stopped.mPos[2], 1e-9);
    }
}

TEST_F(View3DTest, FollowAndLockTakeTheCamerasPose) {
    SKIP_WITHOUT_DISPLAY();
    SceneObj_cls* pCamera = GpCSceneObjCtrl->GetPCFromName("Camera");
    ASSERT_NE(pCamera, nullptr);
    pCamera->GetPCParamGroup(wxString(), "Position")->SetInitValue(1, 5, 20);
    View3D_cls& view = mpView->GetView();
    for (ConfItem_cls* pKey :
         {static_cast<ConfItem_cls*>(&view.mCFollow), static_cast<ConfItem_cls*>(&view.mCLockToCamera)}) {
        SCOPED_TRACE(pKey->mStrHead);
        view.mCFollow.SetBodyFromDataBOOL(false);
        view.mCLockToCamera.SetBodyFromDataBOOL(false);
        view.SetPosDir(PositionAndDirection_cls());
        pKey->SetBodyFromDataBOOL(true);
        mpMain->UpdatePanels("VIEW3D");
        RunLoop(300);
        ExpectNear3(Pose().mPos, 1, 5, 20, 1e-4);
        // The numeric panel shows the pose the view took.
        EXPECT_EQ(mpView->mApCField[1]->GetValue(), "5");
    }
    // Without either key the view keeps its own pose.
    view.mCLockToCamera.SetBodyFromDataBOOL(false);
    view.SetPosDir(PositionAndDirection_cls());
    mpMain->UpdatePanels("VIEW3D");
    RunLoop(300);
    ExpectNear3(Pose().mPos, 0, 0, 0, 1e-9);
}

TEST_F(View3DTest, CornerButtonOpensTheNumericPanelWhichSetsThePose) {
    SKIP_WITHOUT_DISPLAY();
    mpView->ShowNumPanel(false);
    RunLoop(200);
    const wxSize size = mpCanvas->GetClientSize();
    // The button's square in the top right corner, 4 pixels in.
    const wxPoint button(size.x - 4 - GLButton_cls::msSize / 2, 4 + GLButton_cls::msSize / 2);
    GpCSceneObjCtrl->Select("", false, true, false);
    Click(button);
    EXPECT_TRUE(mpView->IsNumPanelShown());
    EXPECT_TRUE(mpView->GetView().mCNumPanelShown.GetBodyBOOL());
    EXPECT_TRUE(Selection().empty()) << "a click on the button picks nothing";
    // The fields set the pose; a field that is no number sets nothing and shows the pose again.
    struct Case_cls {
        const char* strValue;
        int field;
        bool bTaken;
    };
    for (const Case_cls& c : {Case_cls{"3", 0, true}, Case_cls{"-2", 5, true}, Case_cls{"abc", 1, false},
                              Case_cls{"200", 6, false}}) {
        SCOPED_TRACE(c.strValue);
        const PositionAndDirection_cls before = Pose();
        mpView->mApCField[c.field]->ChangeValue(c.strValue);
        EXPECT_EQ(mpView->ApplyNumPanel(), c.bTaken);
        if (!c.bTaken)
            ExpectNear3(Pose().mPos, before.mPos[0], before.mPos[1], before.mPos[2], 1e-9);
        mpView->UpdateNumPanel();
    }
    EXPECT_NEAR(Pose().mPos[0], 3.0, 1e-6);
    // Target (0, 0, -2) is the unit target (0, 0, -1).
    ExpectNear3(Pose().mTgt, 0, 0, -1, 1e-6);
}

TEST_F(View3DTest, OpenGLInfoShowsTheDriversLimits) {
    SKIP_WITHOUT_DISPLAY();
    wxString strTitle, strText;
    mpFrame->mFuncAskUser = [&](const wxString& t, const wxString& m, const std::vector<wxString>&) {
        strTitle = t;
        strText = m;
        return 0;
    };
    SendRibbonClick(mpFrame, ID_RBN_GL_INFO);
    EXPECT_EQ(strTitle, "OpenGL Info");
    for (const char* strLabel : {"OpenGL: ", "Max Texture Size: ", "Depth Bit: ", "Max Light Num: "}) {
        SCOPED_TRACE(strLabel);
        EXPECT_TRUE(strText.Contains(strLabel)) << strText;
    }
    ASSERT_NE(GpCGLInfo, nullptr);
    EXPECT_TRUE(strText.Contains(wxString::Format("Max Texture Size: %d\n", GpCGLInfo->mMaxTextureSize)));
    EXPECT_GE(GpCGLInfo->mMaxTextureSize, 1024);
    // The window's own buffer has the stencil that the scan-line stereogram draws its stripes on.
    EXPECT_GE(GpCGLInfo->mStencilBits, 8);
}

TEST_F(View3DTest, FilterChangeRepaintsTheViewWithoutTheScenePass) {
    SKIP_WITHOUT_DISPLAY();
    ASSERT_NE(GpCFilterCtrl, nullptr);
    RunLoop(300);
    const long long scenePaints = mpCanvas->GetScenePaintCount();
    long long paints = mpCanvas->GetPaintCount();
    const wxString strName = GpCFilterCtrl->AddFilterCommand("Exposure_cls", "Bright");
    ASSERT_FALSE(strName.empty());
    RunLoop(300);
    EXPECT_GT(mpCanvas->GetPaintCount(), paints) << "adding a filter repaints";
    paints = mpCanvas->GetPaintCount();
    ASSERT_TRUE(GpCFilterCtrl->SetFilterParamCommand(strName, "Level", 1, 0.5));
    RunLoop(300);
    EXPECT_GT(mpCanvas->GetPaintCount(), paints) << "a value of a filter repaints";
    // The chain ran again over the buffers of the last frame: the scene was not drawn.
    EXPECT_EQ(mpCanvas->GetScenePaintCount(), scenePaints);
}
