// The tree of split panels: splitting, removing, swapping, flipping and retyping leaves, the
// size rule of splitting, and the recursive operations that reach the leaves.
#include "UiFixture.h"

#include "PanelBar_cls.h"
#include "PlaceholderPanel_cls.h"

#include <map>

namespace {

// A content panel that records what reaches it, standing in for the panel classes to come.
class RecordingPanel_cls : public wxPanelEX {
public:
    RecordingPanel_cls(SplittableWindow_cls* pOwner, int type) : wxPanelEX(pOwner, type) {}
    bool IsInnertiaExist() override { return mbInertia; }
    bool IsActiveView() override { return mbActive; }

    std::vector<wxString> mVStrSeen;    // every name that reached the panel
    std::vector<wxString> mVStrUpdates; // the names it acted on
    std::vector<wxString> mVStrAfterMath;
    bool mbInertia = false;
    bool mbActive = false;

protected:
    void UpdatePanelSelf(const wxString& strName, bool) override {
        mVStrSeen.push_back(strName);
        if (IsUpdateTarget(strName))
            mVStrUpdates.push_back(strName);
    }
    void ProcAfterMathSelf(const wxString& strWhat, const wxString&) override {
        mVStrAfterMath.push_back(strWhat);
    }
};

// Installs recording panels for the given types while it lives.
class RecordingMakers_cls {
public:
    explicit RecordingMakers_cls(std::vector<int> vTypes) : mVTypes(std::move(vTypes)) {
        for (int type : mVTypes)
            wxPanelEX::SetPanelMaker(
                type, [type](SplittableWindow_cls* pOwner) { return new RecordingPanel_cls(pOwner, type); });
    }
    ~RecordingMakers_cls() {
        for (int type : mVTypes)
            wxPanelEX::SetPanelMaker(type, nullptr);
    }

private:
    std::vector<int> mVTypes;
};

std::vector<wxString> TypeNames(const std::vector<wxPanelEX*>& vLeaves) {
    std::vector<wxString> v;
    for (wxPanelEX* pPanel : vLeaves)
        v.push_back(pPanel->GetName());
    return v;
}

// Every split node's child pointers agree with the splitter's own windows, and every leaf
// panel's owner is the node that holds it.
void ExpectTreeConsistent(SplittableWindow_cls* pNode) {
    ASSERT_NE(pNode, nullptr);
    if (pNode->IsSplit()) {
        EXPECT_EQ(pNode->GetWindow1(), pNode->mpCChildSWindow[0]);
        EXPECT_EQ(pNode->GetWindow2(), pNode->mpCChildSWindow[1]);
        for (SplittableWindow_cls* pChild : pNode->mpCChildSWindow) {
            ASSERT_NE(pChild, nullptr);
            EXPECT_EQ(pChild->mpCParentSWindow, pNode);
            EXPECT_EQ(pChild->GetParent(), pNode);
            EXPECT_FALSE(pChild->IsTop());
            ExpectTreeConsistent(pChild);
        }
        return;
    }
    EXPECT_EQ(pNode->mpCChildSWindow[0], nullptr);
    EXPECT_EQ(pNode->mpCChildSWindow[1], nullptr);
    if (wxPanelEX* pPanel = pNode->GetPCPanel()) {
        EXPECT_EQ(pPanel->GetOwner(), pNode);
        EXPECT_EQ(pPanel->GetParent(), pNode);
    }
}

const wxString gFourLeaves =
    Frame(Split('V', 600, Split('H', 400, Leaf("VIEW3D"), Leaf("TIMELINE")), Leaf("OUTLINER")));

} // namespace

using PanelTreeTest = UiFixture;

TEST_F(PanelTreeTest, SplitRemoveSwapAndFlipKeepTheTreeConsistent) {
    mpFrame->MakeSinglePanel();
    mpFrame->Layout();
    SplittableWindow_cls* pTop = mpFrame->GetPCTopWindow();
    ASSERT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D"}));

    {
        SCOPED_TRACE("a horizontal split makes two leaves of the same type, one over the other");
        ASSERT_TRUE(pTop->SeparatePanel(false));
        EXPECT_TRUE(pTop->IsSplit());
        EXPECT_EQ(pTop->GetSplitMode(), wxSPLIT_HORIZONTAL);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "VIEW3D"}));
        ExpectTreeConsistent(pTop);
    }
    SplittableWindow_cls* pLower = pTop->mpCChildSWindow[1];
    {
        SCOPED_TRACE("the lower leaf splits side by side");
        pLower->GeneratePanel("CONSOLE");
        pTop->SizeWindows();
        ASSERT_TRUE(pLower->SeparatePanel(true));
        EXPECT_EQ(pLower->GetSplitMode(), wxSPLIT_VERTICAL);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "CONSOLE", "CONSOLE"}));
        ExpectTreeConsistent(pTop);
        // 6042 went to the frame: minimum pane sizes follow the tree.
        EXPECT_EQ(pLower->GetMinimumPaneSize(), 80);
        EXPECT_EQ(pTop->GetMinimumPaneSize(), 80 + 80 + 6);
    }
    {
        SCOPED_TRACE("a split node refuses to split again");
        LogCapture_cls log;
        EXPECT_FALSE(pLower->SeparatePanel(false));
        EXPECT_TRUE(log.Contains("IsSplit() == FALSE"));
        EXPECT_EQ(pLower->GeneratePanel("OUTLINER"), nullptr);
    }
    {
        SCOPED_TRACE("swap from a leaf reaches the nearest split and keeps the pointers in step");
        SplittableWindow_cls* pLeft = pLower->mpCChildSWindow[0];
        SplittableWindow_cls* pRight = pLower->mpCChildSWindow[1];
        pLeft->GetPCPanel()->SetName("left");
        pRight->GeneratePanel("GRAPH");
        ASSERT_TRUE(pLeft->SeparationSwap());
        EXPECT_EQ(pLower->mpCChildSWindow[0], pRight);
        EXPECT_EQ(pLower->mpCChildSWindow[1], pLeft);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "GRAPH", "left"}));
        EXPECT_EQ(pLower->GetSplitMode(), wxSPLIT_VERTICAL);
        ExpectTreeConsistent(pTop);
    }
    {
        SCOPED_TRACE("flip turns the nearest split the other way with the same windows");
        ASSERT_TRUE(pLower->mpCChildSWindow[0]->SeparationDirection());
        EXPECT_EQ(pLower->GetSplitMode(), wxSPLIT_HORIZONTAL);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "GRAPH", "left"}));
        ExpectTreeConsistent(pTop);
    }
    {
        SCOPED_TRACE("removing a leaf whose sibling is a leaf moves the sibling's panel up");
        wxPanelEX* pGraph = pLower->mpCChildSWindow[0]->GetPCPanel();
        wxPanelEX* pLeftPanel = pLower->mpCChildSWindow[1]->GetPCPanel();
        pLower->mpCChildSWindow[0]->DestroyPanel(pGraph);
        EXPECT_FALSE(pLower->IsSplit());
        EXPECT_EQ(pLower->GetPCPanel(), pLeftPanel);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "left"}));
        ExpectTreeConsistent(pTop);
    }
    {
        SCOPED_TRACE("removing down to one leaf, then the last leaf stays");
        pLower->DestroyPanel(pLower->GetPCPanel());
        EXPECT_EQ(mpFrame->GetPCTopWindow(), pTop);
        EXPECT_FALSE(pTop->IsSplit());
        ASSERT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D"}));
        wxPanelEX* pOnly = pTop->GetPCPanel();
        pTop->DestroyPanel(pOnly);
        EXPECT_EQ(pTop->GetPCPanel(), pOnly);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D"}));
        ExpectTreeConsistent(pTop);
    }
}

TEST_F(PanelTreeTest, RemovingOneHalfOfTheTopWhoseOtherHalfIsSplitMakesThatHalfTheTop) {
    ReadLayout(Frame(Split('H', 500, Leaf("CONSOLE"), Split('V', 300, Leaf("OUTLINER"), Leaf("GRAPH")))));
    SplittableWindow_cls* pSplitHalf = mpFrame->GetPCTopWindow()->mpCChildSWindow[1];
    ASSERT_NE(pSplitHalf, nullptr);
    SplittableWindow_cls* pConsoleNode = mpFrame->GetPCTopWindow()->mpCChildSWindow[0];
    pConsoleNode->DestroyPanel(pConsoleNode->GetPCPanel());
    EXPECT_EQ(mpFrame->GetPCTopWindow(), pSplitHalf);
    EXPECT_TRUE(pSplitHalf->IsTop());
    EXPECT_EQ(pSplitHalf->GetParent(), mpFrame);
    EXPECT_EQ(pSplitHalf->mpCParentSWindow, nullptr);
    EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"OUTLINER", "GRAPH"}));
    ExpectTreeConsistent(pSplitHalf);

    SCOPED_TRACE("a split sibling below the top takes its parent's place under the grandparent");
    ReadLayout(gFourLeaves);
    SplittableWindow_cls* pTop = mpFrame->GetPCTopWindow();
    SplittableWindow_cls* pLeftPair = pTop->mpCChildSWindow[0];
    // Make the right leaf a split pair, then remove the left pair's lower leaf.
    SplittableWindow_cls* pRight = pTop->mpCChildSWindow[1];
    ASSERT_TRUE(pRight->SeparatePanel(false));
    SplittableWindow_cls* pRightPair = pRight;
    pRightPair->mpCChildSWindow[1]->DestroyPanel(pRightPair->mpCChildSWindow[1]->GetPCPanel());
    EXPECT_FALSE(pRightPair->IsSplit());
    SplittableWindow_cls* pTimelineNode = pLeftPair->mpCChildSWindow[1];
    pTimelineNode->DestroyPanel(pTimelineNode->GetPCPanel());
    EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "OUTLINER"}));
    ExpectTreeConsistent(mpFrame->GetPCTopWindow());
}

TEST_F(PanelTreeTest, NarrowOrLowLeavesRefuseToSplitThatWay) {
    mpFrame->MakeSinglePanel();
    SplittableWindow_cls* pTop = mpFrame->GetPCTopWindow();
    pTop->SetSize(400, 400);
    wxSize border = pTop->GetSize() - pTop->GetClientSize();
    struct Case {
        int width, height;
        bool bVertical, bExpected;
    };
    const Case vCases[] = {
        {159, 400, true, false},  {160, 400, true, true},  {159, 400, false, true},
        {400, 159, false, false}, {400, 160, false, true}, {400, 159, true, true},
    };
    for (const Case& c : vCases) {
        SCOPED_TRACE(wxString::Format("%dx%d %s", c.width, c.height, c.bVertical ? "vertical" : "horizontal")
                         .ToStdString());
        mpFrame->MakeSinglePanel();
        pTop = mpFrame->GetPCTopWindow();
        pTop->SetSize(c.width + border.x, c.height + border.y);
        ASSERT_EQ(pTop->GetClientSize(), wxSize(c.width, c.height));
        EXPECT_EQ(pTop->SeparatePanel(c.bVertical), c.bExpected);
        EXPECT_EQ(pTop->IsSplit(), c.bExpected);
        EXPECT_EQ(Leaves().size(), c.bExpected ? 2u : 1u);
    }
}

TEST_F(PanelTreeTest, BarButtonsAndMenuItemsActOnTheirLeaf) {
    mpFrame->MakeSinglePanel();
    mpFrame->Layout();
    auto* pView = dynamic_cast<PlaceholderPanel_cls*>(Leaves().at(0));
    ASSERT_NE(pView, nullptr);
    ASSERT_NE(pView->GetPanelBar(), nullptr);
    EXPECT_EQ(pView->GetPanelBar()->GetName(), "BarPanel");

    {
        SCOPED_TRACE("the split button's event climbs from the bar to the panel");
        wxWindow* pButton = pView->GetPanelBar()->FindWindow(ID_PANEL_SEPARATE_H);
        ASSERT_NE(pButton, nullptr);
        Send(pButton, wxEVT_BUTTON);
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "VIEW3D"}));
    }
    {
        SCOPED_TRACE("a type change from the menu replaces the panel after the handler returns");
        wxPanelEX* pSecond = Leaves().at(1);
        SplittableWindow_cls* pOwner = pSecond->GetOwner();
        SendMenu(pSecond, ID_MENU_PANEL_TYPE_FIRST + _PANEL_OUTLINER);
        RunPendingEvents();
        ASSERT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "OUTLINER"}));
        EXPECT_EQ(Leaves().at(1)->GetOwner(), pOwner);
        EXPECT_EQ(Leaves().at(1)->GetPanelType(), _PANEL_OUTLINER);
        EXPECT_EQ(pOwner->GetChildren().size(), 1u); // the old panel is gone
    }
    {
        SCOPED_TRACE("the same type again changes nothing");
        wxPanelEX* pOutliner = Leaves().at(1);
        SendMenu(pOutliner, ID_MENU_PANEL_TYPE_FIRST + _PANEL_OUTLINER);
        RunPendingEvents();
        EXPECT_EQ(Leaves().at(1), pOutliner);
    }
    {
        SCOPED_TRACE("choosing a display name in the type selector retypes through 6044 + type");
        wxPanelEX* pOutliner = Leaves().at(1);
        wxCommandEvent event(wxEVT_COMBOBOX, ID_PANEL_TYPE_SELECTOR);
        event.SetString("Graph Editor");
        pOutliner->GetPanelBar()->GetEventHandler()->ProcessEvent(event);
        RunPendingEvents();
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D", "GRAPH"}));
    }
    {
        SCOPED_TRACE("hide and show of the bar keep only the show button while hidden");
        PanelBar_cls* pBar = Leaves().at(0)->GetPanelBar();
        wxWindow* pSplit = pBar->FindWindow(ID_PANEL_SEPARATE_H);
        wxWindow* pShow = pBar->FindWindow(ID_PANEL_SHOW_BAR);
        EXPECT_FALSE(pShow->IsShown());
        SendMenu(Leaves().at(0), ID_MENU_PANEL_MANAGE);
        EXPECT_FALSE(pSplit->IsShown());
        EXPECT_TRUE(pShow->IsShown());
        SendMenu(Leaves().at(0), ID_MENU_PANEL_MANAGE);
        EXPECT_TRUE(pSplit->IsShown());
        EXPECT_FALSE(pShow->IsShown());
    }
    {
        SCOPED_TRACE("Destroy Panel from the menu removes the leaf after the handler returns");
        SendMenu(Leaves().at(1), ID_MENU_DESTROY_PANEL);
        EXPECT_EQ(Leaves().size(), 2u);
        RunPendingEvents();
        EXPECT_EQ(TypeNames(Leaves()), std::vector<wxString>({"VIEW3D"}));
    }
    {
        SCOPED_TRACE("the context menu holds the panel manager; Show Undo only on text editors");
        std::unique_ptr<wxMenu> pMenu(Leaves().at(0)->CreateContextMenu());
        EXPECT_EQ(pMenu->FindItem(ID_MENU_SHOW_UNDO), nullptr);
        EXPECT_NE(pMenu->FindItem(ID_MENU_SEPARATION_DIRECTION), nullptr);
        EXPECT_NE(pMenu->FindItem(ID_MENU_SEPARATION_SWAP), nullptr);
        EXPECT_NE(pMenu->FindItem(ID_MENU_DESTROY_PANEL), nullptr);
        wxPanelEX* pText = mpFrame->GetPCTopWindow()->GeneratePanel("TEXT_EDITOR");
        std::unique_ptr<wxMenu> pTextMenu(pText->CreateContextMenu());
        EXPECT_NE(pTextMenu->FindItem(ID_MENU_SHOW_UNDO), nullptr);
    }
}

TEST_F(PanelTreeTest, UpdatesAndModelEventsReachTheLeavesThatListen) {
    RecordingMakers_cls makers({_PANEL_TIMELINE, _PANEL_OUTLINER, _PANEL_PROPERTY, _PANEL_VIEW3D});
    ReadLayout(Frame(Split('V', 500, Split('H', 400, Leaf("VIEW3D"), Leaf("TIMELINE")),
                           Split('H', 300, Leaf("OUTLINER"), Leaf("PROPERTY")))));
    std::map<wxString, RecordingPanel_cls*> panels;
    for (wxPanelEX* pPanel : Leaves())
        panels[pPanel->GetName()] = dynamic_cast<RecordingPanel_cls*>(pPanel);
    ASSERT_EQ(panels.size(), 4u);
    for (auto& [name, pPanel] : panels)
        ASSERT_NE(pPanel, nullptr) << name;

    {
        SCOPED_TRACE("queued names are flushed to the panels they name; ALL reaches every one");
        mpMain->UpdatePanels("OUTLINER::TIMELINE");
        mpMain->UpdatePanels("ALL");
        mpMain->UpdatePanelsFlush();
        EXPECT_EQ(panels["OUTLINER"]->mVStrUpdates, std::vector<wxString>({"ALL", "OUTLINER"}));
        EXPECT_EQ(panels["TIMELINE"]->mVStrUpdates, std::vector<wxString>({"ALL", "TIMELINE"}));
        EXPECT_EQ(panels["VIEW3D"]->mVStrUpdates, std::vector<wxString>({"ALL"}));
        EXPECT_EQ(panels["PROPERTY"]->mVStrUpdates, std::vector<wxString>({"ALL"}));
    }
    {
        SCOPED_TRACE("model events go only to the types that listen");
        mpFrame->ProcAfterMath("SelectObject", "Box");
        mpFrame->ProcAfterMath("DeleteModifier", "");
        mpFrame->ProcAfterMath("RenameObject", "Box");
        mpFrame->ProcAfterMath("SelectParamGroup", "");
        EXPECT_EQ(panels["PROPERTY"]->mVStrAfterMath,
                  std::vector<wxString>({"SelectObject", "RenameObject"}));
        EXPECT_EQ(panels["TIMELINE"]->mVStrAfterMath,
                  std::vector<wxString>({"DeleteModifier", "RenameObject"}));
        EXPECT_EQ(panels["OUTLINER"]->mVStrAfterMath, std::vector<wxString>({"RenameObject"}));
        EXPECT_TRUE(panels["VIEW3D"]->mVStrAfterMath.empty());
    }
    {
        SCOPED_TRACE("inertia and the active view are asked of 3D views only");
        SplittableWindow_cls* pTop = mpFrame->GetPCTopWindow();
        panels["TIMELINE"]->mbInertia = true;
        panels["TIMELINE"]->mbActive = true;
        EXPECT_FALSE(pTop->IsInnertiaExist());
        EXPECT_EQ(mpFrame->GetPCActiveView3D(), nullptr);
        panels["VIEW3D"]->mbInertia = true;
        panels["VIEW3D"]->mbActive = true;
        EXPECT_TRUE(pTop->IsInnertiaExist());
        EXPECT_EQ(mpFrame->GetPCActiveView3D(), panels["VIEW3D"]);
    }
    {
        SCOPED_TRACE("the idle pass keeps the loop awake during inertia, else sends IDLE to every leaf");
        for (auto& [name, pPanel] : panels)
            pPanel->mVStrSeen.clear();
        EXPECT_TRUE(mpFrame->ProcIdle());
        for (auto& [name, pPanel] : panels)
            EXPECT_TRUE(pPanel->mVStrSeen.empty()) << name;
        panels["VIEW3D"]->mbInertia = false;
        EXPECT_FALSE(mpFrame->ProcIdle());
        for (auto& [name, pPanel] : panels)
            EXPECT_EQ(pPanel->mVStrSeen, std::vector<wxString>({"IDLE"})) << name;
    }
}

TEST_F(PanelTreeTest, ChildPanelsNeedAParentType) {
    LogCapture_cls log;
    wxPanelEX panel(mpFrame, _PANEL_UNDEFINED);
    panel.SetPanelType(_PANEL_CHILDPANEL, _PANEL_TEXT_EDITOR);
    EXPECT_EQ(panel.GetName(), "CHILDPANEL");
    EXPECT_EQ(panel.GetParentPanelType(), _PANEL_TEXT_EDITOR);
    EXPECT_FALSE(log.Contains("parentPanelType"));
    panel.SetPanelType(_PANEL_CHILDPANEL);
    EXPECT_TRUE(log.Contains("parentPanelType != _PANEL_UNDEFINED"));
}
