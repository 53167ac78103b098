// The timeline panel in a window, driven by the display's own mouse: a key dragged along its row
// moves as one command and one undo puts it back; the work-area handle is dragged; nothing
// repaints while nothing changes; and the rows are drawn with their key marks where the geometry
// says (read back from the drawing, which is saved as a picture to look at).
#include "ViewWindowFixture.h"

#include "ClassProvider_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineAA_cls.h"
#include "TimelineParam_cls.h"
#include "TimelineTics_cls.h"
#include "TimelineWA_cls.h"
#include "Timeline_cls.h"
#include "UndoManager_cls.h"

#include <wx/dcmemory.h>
#include <wx/menu.h>
#include <wx/scrolbar.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <array>
#include <functional>
#include <memory>
#include <tuple>

namespace {

const char* const kBoxPosition = "SceneObjCtrl::Obj::Box::Position";

std::vector<double> BoxKeys() {
    std::vector<double> v;
    for (const KeyFrame_cls& key : GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0].mVCKey)
        v.push_back(key.mX);
    return v;
}

} // namespace

class TimelinePanelTest : public UiFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Scene>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        // The program's first idle pass reads the start layout: let it pass, then the timeline alone.
        RunLoop(100);
        ReadFrameLayout(Leaf("TIMELINE"));
        ASSERT_EQ(Leaves().size(), 1u);
        mpTimeline = dynamic_cast<Timeline_cls*>(Leaves()[0]);
        ASSERT_NE(mpTimeline, nullptr);
        GpCTimeCtrl->SetWAMinCommand(20);
        GpCTimeCtrl->SetWAMaxCommand(60);
        GpCTimeCtrl->SetCurrentFrameCommand(10);
        ParamGroup_cls* pPosition = GCClassProvider->GetPCParamGroup(kBoxPosition);
        ASSERT_NE(pPosition, nullptr);
        pPosition->InsertKeyCommand(0.2, kBoxPosition, 1, 1.0);
        pPosition->InsertKeyCommand(0.5, kBoxPosition, 2, 1.0);
        GpCUndo->Clear();
        mpTimeline->GetPCParam()->mCRows.mSetOpen = {"SceneObjCtrl::Obj::Box", kBoxPosition};
        mpFrame->Raise();
        GCClassProvider->UpdatePanels("ALL");
        RunLoop(300);
    }
    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    TLParamLogic_cls& Rows() { return mpTimeline->GetPCParam()->mCRows; }
    int RowOf(const wxString& strTag) {
        Rows().UpdateRows();
        for (size_t i = 0; i < Rows().mVCRow.size(); ++i)
            if (Rows().mVCRow[i].mStrTag == strTag)
                return static_cast<int>(i);
        return -1;
    }
    // A press, moves along the way and a release by the display's pointer, in window pixels.
    void Drag(wxWindow* pWindow, wxPoint from, wxPoint to) {
        wxUIActionSimulator sim;
        sim.MouseMove(pWindow->ClientToScreen(from));
        RunLoop(40);
        sim.MouseDown();
        RunLoop(40);
        for (int i = 1; i <= 6; ++i) {
            sim.MouseMove(
                pWindow->ClientToScreen(from + wxPoint((to.x - from.x) * i / 6, (to.y - from.y) * i / 6)));
            RunLoop(30);
        }
        sim.MouseUp();
        RunLoop(200);
    }
    std::array<int, 4> PaintCounts() {
        return {mpTimeline->GetPCAA()->mPaintCount, mpTimeline->GetPCTics()->mPaintCount,
                mpTimeline->GetPCWA()->mPaintCount, mpTimeline->GetPCParam()->mPaintCount};
    }

    Timeline_cls* mpTimeline = nullptr;
};

TEST_F(TimelinePanelTest, DraggingAKeyMovesItAndOneUndoPutsItBack) {
    const int row = RowOf(kBoxPosition);
    ASSERT_GE(row, 0);
    TimelineParam_cls* pParam = mpTimeline->GetPCParam();
    const int y = Rows().GetYPos(row) + Rows().GetLineHeight() / 2;
    const wxPoint from(Rows().GetDevCoordFromN(0.2, 0), y);
    const wxPoint to(Rows().GetDevCoordFromN(0.35, 0), y);
    Drag(pParam, from, to);
    ASSERT_EQ(BoxKeys(), (std::vector<double>{0.0, 0.35, 0.5})) << "the key follows the mouse to frame 35";
    EXPECT_TRUE(GpCSceneObjCtrl->IsSelected(GpCSceneObjCtrl->GetPCFromName("Box")));
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), 0) << "one move, one undo step";
    EXPECT_EQ(BoxKeys(), (std::vector<double>{0.0, 0.2, 0.5}));
    GpCUndo->Redo();
    EXPECT_EQ(BoxKeys(), (std::vector<double>{0.0, 0.35, 0.5}));
}

TEST_F(TimelinePanelTest, DraggingTheWorkAreaHandleSetsItsEnd) {
    TimelineWA_cls* pWA = mpTimeline->GetPCWA();
    const int y = pWA->GetClientSize().y / 2;
    Drag(pWA, wxPoint(pWA->GetDevCoordFromN(0.6, 0), y), wxPoint(pWA->GetDevCoordFromN(0.4, 0), y));
    EXPECT_EQ(GpCTimeCtrl->GetWAMax(), 40);
    EXPECT_EQ(GpCTimeCtrl->GetWAMin(), 20);
    GpCUndo->Undo();
    EXPECT_EQ(GpCTimeCtrl->GetWAMax(), 60);
    // The slider: a press on the ruler moves the time there.
    TimelineTics_cls* pTics = mpTimeline->GetPCTics();
    const wxPoint p(pTics->GetDevCoordFromN(0.3, 0), pTics->GetClientSize().y / 2);
    Drag(pTics, p, p);
    EXPECT_EQ(GpCTimeCtrl->GetFrameCurrent(), 30);
}

TEST_F(TimelinePanelTest, NothingRepaintsWhileNothingChanges) {
    RunLoop(300);
    const std::array<int, 4> before = PaintCounts();
    RunLoop(1000);
    EXPECT_EQ(PaintCounts(), before) << "an idle second repaints nothing";
    // A change of the clock reaches the panel by its name and repaints every strip.
    GpCTimeCtrl->SetCurrentFrameCommand(12);
    RunLoop(300);
    const std::array<int, 4> after = PaintCounts();
    for (int i = 0; i < 4; ++i)
        EXPECT_GT(after[i], before[i]) << "strip " << i;
    EXPECT_EQ(mpTimeline->GetPCFrameCurrent()->GetValue(), "12");
}

TEST_F(TimelinePanelTest, RowsDrawTheirKeysWhereTheGeometrySays) {
    // Select the key at frame 50 so that it is drawn in the selection colour.
    GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[1].SelectKeyByIndex(2, true, false, 1e-9);
    TimelineParam_cls* pParam = mpTimeline->GetPCParam();
    const wxSize size = pParam->GetClientSize();
    ASSERT_GT(size.x, 400);
    wxBitmap bitmap(size.x, size.y, 24);
    {
        wxMemoryDC dc(bitmap);
        pParam->UpdateDisplay(dc);
    }
    const wxImage image = bitmap.ConvertToImage();
    image.SaveFile(ScreenshotDir() + "/timeline-rows.png", wxBITMAP_TYPE_PNG);
    const int h = Rows().GetLineHeight();
    auto pixel = [&](double nt, int row) {
        const int x = Rows().GetDevCoordFromN(nt, 0);
        const int y = Rows().GetYPos(row) + h / 2;
        return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
    };
    const int rowY = RowOf(wxString(kBoxPosition) + "::y");
    const int rowX = RowOf(wxString(kBoxPosition) + "::x");
    ASSERT_GE(rowY, 0);
    ASSERT_GE(rowX, 0);
    EXPECT_EQ(pixel(0.5, rowY), wxColour(255, 140, 0)) << "the selected key of y";
    EXPECT_EQ(pixel(0.5, rowX), wxColour(250, 250, 250)) << "the key of x, not selected";
    EXPECT_EQ(pixel(0.35, rowX), wxColour(206, 214, 228)) << "no key: the work area";
    EXPECT_EQ(pixel(0.8, rowX), wxColour(245, 245, 245)) << "no key: outside the work area";
    const int xNow = Rows().GetDevCoordFromN(0.1, 0);
    EXPECT_EQ(wxColour(image.GetRed(xNow, 2), image.GetGreen(xNow, 2), image.GetBlue(xNow, 2)),
              wxColour(220, 40, 30))
        << "the current time";
}

TEST_F(TimelinePanelTest, ValueBoxOnAChannelRowSetsTheValueAtTheCurrentTime) {
    const int row = RowOf(wxString(kBoxPosition) + "::z");
    ASSERT_GE(row, 0);
    TimelineParam_cls* pParam = mpTimeline->GetPCParam();
    pParam->ConstructValueTextCtrl(row);
    wxTextCtrl* pBox = pParam->GetPCValueTextCtrl();
    ASSERT_NE(pBox, nullptr);
    EXPECT_EQ(pBox->GetValue(), "0") << "the box opens with the value at the current time";
    SendTextEnter(pBox, "3*3");
    EXPECT_EQ(pParam->GetPCValueTextCtrl(), nullptr) << "Enter closes the box";
    const Parameter_cls& z = GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[2];
    EXPECT_DOUBLE_EQ(z.GetValue(0.1), 9.0);
    RunLoop(100);
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(z.GetValue(0.1), 0.0);
}

TEST_F(TimelinePanelTest, RowMenuZoomsRowsAndTimeAndDeselects) {
    std::unique_ptr<wxMenu> pMenu(mpTimeline->CreateRowMenu());
    GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0].SelectKeyByIndex(1, true, false, 1e-9);
    const struct {
        int id;
        std::function<bool()> funcDone;
    } cases[] = {
        {ID_TL_MENU_ZOOM_IN, [this] { return mpTimeline->mCConf.GetFontSize() == 2; }},
        {ID_TL_MENU_ZOOM_OUT, [this] { return mpTimeline->mCConf.GetFontSize() == 1; }},
        // Half the range around the current frame 10, held inside the animation.
        {ID_TL_MENU_TL_IN,
         [this] { return mpTimeline->mCConf.GetAAMin() == 0 && mpTimeline->mCConf.GetAAMax() == 50; }},
        {ID_TL_MENU_TL_OUT, [this] { return mpTimeline->mCConf.GetAAMax() == 100; }},
        {ID_TL_MENU_DESELECT,
         [] { return !GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0].IsSelectedKeyExist(); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        EXPECT_NE(pMenu->FindItem(c.id), nullptr) << "the menu offers it";
        SendMenu(mpTimeline->GetPCParam(), c.id);
        EXPECT_TRUE(c.funcDone());
    }
}

TEST_F(TimelinePanelTest, DropMenusAndRowItemsReachTheirActions) {
    for (int id :
         {ID_TL_MENU_VIEW, ID_TL_MENU_SELECT, ID_TL_MENU_TIMELINE, ID_TL_MENU_CHANNEL, ID_TL_MENU_KEY}) {
        std::unique_ptr<wxMenu> pMenu(mpTimeline->CreateDropMenu(id));
        ASSERT_NE(pMenu, nullptr) << id;
        EXPECT_GT(pMenu->GetMenuItemCount(), 1u) << id;
    }
    Parameter_cls& x = GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0];
    GpCSceneObjCtrl->Select("Box", true, true, false);
    const struct {
        int menu, id;
        std::function<bool()> funcDone;
    } cases[] = {
        {ID_TL_MENU_KEY, ID_TL_MENU_KEY_TYPE_FIRST, [&] { return x.mVCKey[2].mType == 0; }},
        {ID_TL_MENU_KEY, ID_TL_MENU_KEY_TYPE_FIRST + 1, [&] { return x.mVCKey[2].mType == 1; }},
        {ID_TL_MENU_VIEW, ID_TL_KILROY, [this] { return mpTimeline->mCConf.mCKilroy.GetBodyBOOL(); }},
        {ID_TL_MENU_TIMELINE, ID_TL_MENU_SHY,
         [] { return GpCSceneObjCtrl->GetPCFromName("Box")->mCShy.GetBodyBOOL(); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        x.SelectKeyByIndex(2, true, false, 1e-9);
        std::unique_ptr<wxMenu> pMenu(mpTimeline->CreateDropMenu(c.menu));
        EXPECT_NE(pMenu->FindItem(c.id), nullptr) << "the menu offers it";
        SendMenu(mpTimeline, c.id);
        EXPECT_TRUE(c.funcDone());
    }
    GpCUndo->Undo(); // Box is no longer shy
    // The row menu names the row's own items: rename on an object, a key on a channel.
    TimelineParam_cls* pRows = mpTimeline->GetPCParam();
    pRows->mMenuRow = RowOf("SceneObjCtrl::Obj::Box");
    std::unique_ptr<wxMenu> pObjectMenu(mpTimeline->CreateRowMenu());
    EXPECT_NE(pObjectMenu->FindItem(TimelineParam_cls::ID_TL_RENAME), nullptr);
    EXPECT_EQ(pObjectMenu->FindItem(TimelineParam_cls::ID_TL_INSERT_KEY), nullptr);
    SendMenu(pRows, TimelineParam_cls::ID_TL_RENAME);
    ASSERT_NE(pRows->GetPCValueTextCtrl(), nullptr);
    EXPECT_EQ(pRows->GetPCValueTextCtrl()->GetValue(), "Box");
    pRows->GetPCValueTextCtrl()->ChangeValue("Crate");
    wxCommandEvent enter(wxEVT_TEXT_ENTER, pRows->GetPCValueTextCtrl()->GetId());
    enter.SetEventObject(pRows->GetPCValueTextCtrl());
    pRows->GetPCValueTextCtrl()->ProcessWindowEvent(enter);
    EXPECT_NE(GpCSceneObjCtrl->GetPCFromName("Crate"), nullptr);
    GpCUndo->Undo();
    pRows->mMenuRow = RowOf(wxString(kBoxPosition) + "::x");
    std::unique_ptr<wxMenu> pParamMenu(mpTimeline->CreateRowMenu());
    EXPECT_NE(pParamMenu->FindItem(TimelineParam_cls::ID_TL_INSERT_KEY), nullptr);
    const size_t keys = x.mVCKey.size();
    SendMenu(pRows, TimelineParam_cls::ID_TL_INSERT_KEY);
    EXPECT_EQ(x.mVCKey.size(), keys + 1) << "a key at the current frame 10";
}

TEST_F(TimelinePanelTest, ScrollBarFollowsTheRowsAndScrollsThem) {
    // Every row open, at the largest row font: more rows than the strip shows.
    for (int pass = 0; pass < 4; ++pass)
        for (const TLRow_cls& row : (Rows().UpdateRows(), Rows().mVCRow))
            if (row.mbOpenable)
                Rows().mSetOpen.insert(row.mStrTag);
    mpTimeline->Zoom(6);
    TimelineParam_cls* pRows = mpTimeline->GetPCParam();
    auto paint = [&] {
        pRows->Refresh();
        pRows->Update();
        RunLoop(100);
    };
    paint();
    const int h = Rows().GetLineHeight();
    const int rowsHeight = static_cast<int>(Rows().mVCRow.size()) * h;
    const int viewHeight = pRows->GetClientSize().y;
    ASSERT_GT(rowsHeight, viewHeight + 2 * h);
    wxScrollBar* pBar = mpTimeline->GetPCScroll();
    EXPECT_EQ(pBar->GetRange(), rowsHeight);
    EXPECT_EQ(pBar->GetThumbSize(), viewHeight);
    // The bar moves the rows: two rows down, then a line (one row) further.
    for (const auto& [type, position, scrollY] :
         {std::tuple{wxEVT_SCROLL_THUMBTRACK, 2 * h, 2 * h}, std::tuple{wxEVT_SCROLL_LINEDOWN, 0, 3 * h},
          std::tuple{wxEVT_SCROLL_THUMBTRACK, rowsHeight, rowsHeight - viewHeight}}) {
        wxScrollEvent event(type, pBar->GetId(), position, wxVERTICAL);
        event.SetEventObject(pBar);
        pBar->ProcessWindowEvent(event);
        EXPECT_EQ(Rows().mScrollY, scrollY);
    }
    // The wheel moves the rows, and the bar follows at the next drawing.
    wxMouseEvent wheel(wxEVT_MOUSEWHEEL);
    wheel.m_wheelRotation = 120;
    wheel.m_wheelDelta = 120;
    pRows->ProcessWindowEvent(wheel);
    paint();
    EXPECT_EQ(Rows().mScrollY, rowsHeight - viewHeight - 3 * h);
    EXPECT_EQ(pBar->GetThumbPosition(), Rows().mScrollY);
}
