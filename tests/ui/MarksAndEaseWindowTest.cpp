// Group marks, the ease field and the text editor's keys in a real window, driven by the display's
// pointer and keyboard: the timeline's "K" switch shows the mark column and a click on a group's
// flag marks it (seen red in a screenshot), undone in one step; the number typed into the graph
// editor's ease field becomes the ease of the selected keys; the text editor's own keys undo and
// redo typing and follow a key the user sets, which the settings text keeps.
#include "GraphEditor_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "Shortcut_cls.h"
#include "TextEntryCtrl_cls.h"
#include "TimelineParam_cls.h"
#include "Timeline_cls.h"
#include "UndoManager_cls.h"
#include "ViewWindowFixture.h"

#include <wx/uiaction.h>

namespace {

const char* const kPosition = "SceneObjCtrl::Obj::Box::Position";

// A click of the display's pointer on a client point of a window.
void ClickAt(wxWindow* pWindow, wxPoint client) {
    wxUIActionSimulator sim;
    sim.MouseMove(pWindow->ClientToScreen(client));
    RunLoop(60);
    sim.MouseClick();
    RunLoop(200);
}

} // namespace

class MarksAndEaseWindowTest : public ViewWindowFixture<ServiceLayer_enum::All> {
protected:
    void SetUp() override {
        ViewWindowFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(
            Split('H', 330, Leaf("TIMELINE"), Split('V', 560, Leaf("GRAPH"), Leaf("TEXT_EDITOR"))));
        mpTimeline = FindLeaf<Timeline_cls>();
        mpGraph = FindLeaf<GraphEditor_cls>();
        mpText = FindLeaf<TextEntryCtrl_cls>();
        ASSERT_TRUE(mpTimeline && mpGraph && mpText);
        GCClassProvider->GetPCParamGroup(kPosition)->InsertKeyCommand(0.2, kPosition, 2, 1.0);
        GpCUndo->Clear();
        mpFrame->Raise();
        RunLoop(300);
    }

    Timeline_cls* mpTimeline = nullptr;
    GraphEditor_cls* mpGraph = nullptr;
    TextEntryCtrl_cls* mpText = nullptr;
};

TEST_F(MarksAndEaseWindowTest, TheFlagOfAGroupMarksItAndOneUndoClearsIt) {
    SKIP_WITHOUT_SCREENSHOTS();
    TimelineParam_cls* pRows = mpTimeline->GetPCParam();
    pRows->mCRows.mSetOpen = {"SceneObjCtrl::Obj::Box"};
    wxWindow* pSwitch = mpTimeline->FindWindow(ID_TL_KILROY);
    ASSERT_NE(pSwitch, nullptr);
    ClickAt(pSwitch, wxPoint(pSwitch->GetSize().x / 2, pSwitch->GetSize().y / 2));
    ASSERT_TRUE(mpTimeline->mCConf.IsKilroy()) << "the switch shows the column";
    pRows->mCRows.UpdateRows();
    int row = -1;
    for (size_t i = 0; i < pRows->mCRows.mVCRow.size(); ++i)
        if (pRows->mCRows.mVCRow[i].mStrTag == kPosition)
            row = static_cast<int>(i);
    ASSERT_GE(row, 0);
    const TLRect_cls r = pRows->mCRows.GetButtonRect(row, TLParamLogic_cls::HIT_KILROY);
    ASSERT_GT(r.mW, 0);
    ClickAt(pRows, wxPoint(r.mX + r.mW / 2, r.mY + r.mH / 2));
    ParamGroup_cls* pGroup = GCClassProvider->GetPCParamGroup(kPosition);
    EXPECT_TRUE(pGroup->IsKilroy());
    Flush();
    RunLoop(300);
    wxImage image;
    ASSERT_TRUE(TakeScreenshot("timeline-group-mark.png", image));
    // Inside the pennant: red for a marked group, and not red on the unmarked Scale's row below.
    auto isRed = [&](int rowIndex) {
        const TLRect_cls rr = pRows->mCRows.GetButtonRect(rowIndex, TLParamLogic_cls::HIT_KILROY);
        const int top = rr.mY + std::max(rr.mH / 5, 2);
        const int s = std::max((rr.mY + rr.mH - std::max(rr.mH / 5, 2) - top) / 2, 3);
        const wxPoint p = pRows->ClientToScreen(wxPoint(rr.mX + rr.mW / 2, top + s / 2));
        return image.GetRed(p.x, p.y) > 170 && image.GetGreen(p.x, p.y) < 90 && image.GetBlue(p.x, p.y) < 90;
    };
    EXPECT_TRUE(isRed(row));
    int other = -1;
    for (size_t i = 0; i < pRows->mCRows.mVCRow.size(); ++i)
        if (pRows->mCRows.mVCRow[i].mKind == TLRow_cls::ROW_GROUP && static_cast<int>(i) != row)
            other = static_cast<int>(i);
    ASSERT_GE(other, 0);
    EXPECT_FALSE(isRed(other));
    EXPECT_EQ(GpCUndo->GetCurrent(), 1);
    GpCUndo->Undo();
    EXPECT_FALSE(pGroup->IsKilroy());
}

TEST_F(MarksAndEaseWindowTest, TheEaseFieldSetsTheSelectedKeysEase) {
    SKIP_WITHOUT_DISPLAY();
    mpMain->ProcAfterMath("SelectParamGroup", kPosition);
    Flush();
    RunLoop(200);
    ASSERT_EQ(mpGraph->GetEdit().GetChannels().size(), 3u);
    ParamGroup_cls* pGroup = GCClassProvider->GetPCParamGroup(kPosition);
    pGroup->mVCParam[0].SelectKeyByIndex(1, true, false, 1e-9);
    pGroup->mVCParam[2].SelectKeyByIndex(1, true, false, 1e-9);
    auto* pEase = wxDynamicCast(mpGraph->FindWindow(ID_EDITOR_EASE), wxTextCtrl);
    ASSERT_NE(pEase, nullptr);
    pEase->ChangeValue(wxString());
    ClickAt(pEase, wxPoint(pEase->GetSize().x / 2, pEase->GetSize().y / 2));
    wxUIActionSimulator sim;
    sim.Text("0.25");
    sim.Char(WXK_RETURN);
    RunLoop(300);
    const struct {
        int member;
        double ease;
    } expected[] = {{0, 0.25}, {1, 1.0}, {2, 0.25}};
    for (const auto& e : expected) {
        SCOPED_TRACE(e.member);
        EXPECT_DOUBLE_EQ(pGroup->mVCParam[e.member].mVCKey[1].mEaseFactor, e.ease);
        EXPECT_DOUBLE_EQ(pGroup->mVCParam[e.member].mVCKey[0].mEaseFactor, 1.0);
    }
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), 0) << "one undo step for both keys";
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[0].mVCKey[1].mEaseFactor, 1.0);
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[2].mVCKey[1].mEaseFactor, 1.0);
}

TEST_F(MarksAndEaseWindowTest, TheTextEditorsKeysUndoTypingAndFollowTheUsersKey) {
    SKIP_WITHOUT_DISPLAY();
    ASSERT_NE(GpCTextShortcut, nullptr);
    ASSERT_TRUE(mpText->LoadExpression(kPosition));
    const wxString strOriginal = mpText->mpCText->GetValue();
    ClickAt(mpText->mpCText, wxPoint(mpText->mpCText->GetSize().x - 10, 8));
    wxUIActionSimulator sim;
    sim.Text("q");
    RunLoop(200);
    const wxString strTyped = mpText->mpCText->GetValue();
    ASSERT_NE(strTyped, strOriginal);
    const struct {
        int key;
        int modifiers;
        const char* what;
        const wxString& strAfter;
    } steps[] = {{'z', wxMOD_CONTROL, "Ctrl+Z undoes the typing", strOriginal},
                 {'y', wxMOD_CONTROL, "Ctrl+Y redoes it", strTyped},
                 {'r', wxMOD_CONTROL, "Ctrl+R reverts to the group's text", strOriginal}};
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        sim.Char(s.key, s.modifiers);
        RunLoop(200);
        EXPECT_EQ(mpText->mpCText->GetValue(), s.strAfter);
    }
    EXPECT_EQ(GpCUndo->GetCurrent(), 0) << "the editor's typing is not the project's undo";
    // The user's key for "Undo Typing", kept with the settings.
    ASSERT_TRUE(GpCTextShortcut->SetKeyCommand("Undo Typing", "ctrl+u"));
    EXPECT_TRUE(mpMain->SerializeProject().Contains("TextShortcut::Key::Undo Typing::Ctrl+U\n"));
    sim.Text("w");
    RunLoop(200);
    ASSERT_NE(mpText->mpCText->GetValue(), strOriginal);
    sim.Char('u', wxMOD_CONTROL);
    RunLoop(200);
    EXPECT_EQ(mpText->mpCText->GetValue(), strOriginal);
    GpCUndo->Undo();
    EXPECT_EQ(
        GpCTextShortcut->mVEntry[static_cast<size_t>(GpCTextShortcut->FindEntry("Undo Typing"))].mStrKey,
        "Ctrl+Z");
}
