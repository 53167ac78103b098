// The display's own pointer and keyboard on the timeline's mark column (a group's flag, seen red
// in a screenshot), on the graph editor's ease field and on the text editor's own keys.
#include "GraphEditor_cls.h"
#include "ParamGroup_cls.h"
#include "Shortcut_cls.h"
#include "TextEntryCtrl_cls.h"
#include "TimelineParam_cls.h"
#include "Timeline_cls.h"
#include "UndoManager_cls.h"
#include "ViewWindowFixture.h"

#include <wx/uiaction.h>

class MarksAndEaseWindowTest : public ViewWindowFixture<ServiceLayer_enum::All> {};

TEST_F(MarksAndEaseWindowTest, FlagMarksAGroupEaseFieldSetsKeysTextEditorKeysUndoTyping) {
    SKIP_WITHOUT_SCREENSHOTS();
    ReadFrameLayout(Split('H', 330, Leaf("TIMELINE"), Split('V', 560, Leaf("GRAPH"), Leaf("TEXT_EDITOR"))));
    const char* const kPos = "SceneObjCtrl::Obj::Box::Position";
    ParamGroup_cls* pGroup = GCClassProvider->GetPCParamGroup(kPos);
    pGroup->InsertKeyCommand(0.2, kPos, 2, 1.0);
    GpCUndo->Clear();
    wxUIActionSimulator sim;
    auto click = [&](wxWindow* pWindow, wxPoint p) {
        sim.MouseMove(pWindow->ClientToScreen(p));
        RunLoop(60);
        sim.MouseClick();
        RunLoop(200);
    };
    TimelineParam_cls* pRows = FindLeaf<Timeline_cls>()->GetPCParam();
    pRows->mCRows.mSetOpen = {"SceneObjCtrl::Obj::Box"};
    wxWindow* pSwitch = FindLeaf<Timeline_cls>()->FindWindow(ID_TL_KILROY);
    click(pSwitch, wxPoint(pSwitch->GetSize().x / 2, pSwitch->GetSize().y / 2));
    const TLRect_cls r = pRows->mCRows.GetButtonRect(3, TLParamLogic_cls::HIT_KILROY);
    ASSERT_GT(r.mW, 0) << "the switch shows the column";
    click(pRows, wxPoint(r.mX + r.mW / 2, r.mY + r.mH / 2));
    EXPECT_TRUE(pGroup->IsKilroy());
    wxImage image;
    ASSERT_TRUE(TakeScreenshot("timeline-group-mark.png", image));
    auto isRed = [&](int y) { // inside the pennant of the row at y
        const wxPoint p = pRows->ClientToScreen(wxPoint(r.mX + r.mW / 2, y + r.mH / 2 - 2));
        return image.GetRed(p.x, p.y) > 170 && image.GetGreen(p.x, p.y) < 90;
    };
    EXPECT_TRUE(isRed(r.mY)) << "Position is marked";
    EXPECT_FALSE(isRed(r.mY + r.mH)) << "RotationEuler is not";
    GpCUndo->Undo();
    EXPECT_FALSE(pGroup->IsKilroy());

    // The ease field: the number typed sets the selected keys' ease (x and z), one undo step.
    mpMain->ProcAfterMath("SelectParamGroup", kPos);
    Flush();
    RunLoop(200);
    pGroup->mVCParam[0].SelectKeyByIndex(1, true, false, 1e-9);
    pGroup->mVCParam[2].SelectKeyByIndex(1, true, false, 1e-9);
    auto* pEase = wxDynamicCast(FindLeaf<GraphEditor_cls>()->FindWindow(ID_EDITOR_EASE), wxTextCtrl);
    pEase->ChangeValue(wxString());
    click(pEase, wxPoint(pEase->GetSize().x / 2, pEase->GetSize().y / 2));
    sim.Text("0.25");
    sim.Char(WXK_RETURN);
    RunLoop(300);
    for (const auto& [m, ease] : {std::pair{0, 0.25}, {1, 1.0}, {2, 0.25}})
        EXPECT_DOUBLE_EQ(pGroup->mVCParam[m].mVCKey[1].mEaseFactor, ease) << m;
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), 0);
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[2].mVCKey[1].mEaseFactor, 1.0);
    // The same through the timeline's Key menu and its box.
    SendMenu(FindLeaf<Timeline_cls>(), ID_TL_MENU_KEY_EASE);
    ASSERT_EQ(pRows->GetPCValueTextCtrl()->GetValue(), "1") << "the first selected key's ease";
    SendTextEnter(pRows->GetPCValueTextCtrl(), "0.5");
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[2].mVCKey[1].mEaseFactor, 0.5);

    // The text editor's keys, ahead of the frame's Ctrl+Z; then a key of the user's choice.
    TextEntryCtrl_cls* pText = FindLeaf<TextEntryCtrl_cls>();
    ASSERT_TRUE(pText->LoadExpression(kPos));
    click(pText->mpCText, wxPoint(pText->mpCText->GetSize().x - 10, 8));
    for (int key : {'y', 'z', 'u'}) { // Ctrl+Y has nothing to redo
        if (key == 'u') {
            ASSERT_TRUE(GpCTextShortcut->SetKeyCommand("Undo Typing", "ctrl+u"));
            EXPECT_TRUE(mpMain->SerializeProject().Contains("TextShortcut::Key::Undo Typing::Ctrl+U\n"));
        }
        const wxString strBefore = pText->mpCText->GetValue();
        sim.Text("q");
        sim.Char(key, wxMOD_CONTROL);
        RunLoop(200);
        EXPECT_EQ(pText->mpCText->GetValue() == strBefore, key != 'y') << char(key);
    }
}
