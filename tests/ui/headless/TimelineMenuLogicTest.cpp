// What the timeline's menus and row items do to the scene and to the filter chain with no
// display: each action on the selected keys or objects is one undo step, reaches the filters'
// channels as well as the scene's, and undoes back to where it started. And the ribbon tools' help,
// which names their keys.
#include "ServicesFixture.h"

#include "FilterCtrl_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "RibbonUI_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "Shortcut_cls.h"
#include "TLParamLogic_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

#include <functional>

namespace {

const char* const kBoxPosition = "SceneObjCtrl::Obj::Box::Position";
const char* const kLevel = "Scene Filter::Exposure::Level";

class TimelineMenuLogicTest : public ServicesFixture<ServiceLayer_enum::Filter> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        ASSERT_TRUE(GpCTimeCtrl && GpCUndo && GpCSceneObjCtrl && GpCFilterCtrl);
        // Box's Position keyed at 0.2 and 0.5, the exposure filter's Level at 0.4; the key at
        // 0.5 and the filter's key selected, Box selected.
        Position()->InsertKeyCommand(0.2, kBoxPosition, 1, 1.0);
        Position()->InsertKeyCommand(0.5, kBoxPosition, 1, 1.0);
        ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", ""), "Exposure");
        Level()->InsertKeyCommand(0.4, "FilterCtrl::Filter::Exposure::Level", 1, 1.0);
        GpCSceneObjCtrl->Select("Box", true, true, false);
        GCClassProvider->SelectKeyFrame(wxString(kBoxPosition) + "::x", 2, true, true, 1e-9);
        GCClassProvider->SelectKeyFrame(wxString(kLevel) + "::Min", 1, true, true, 1e-9);
        GpCUndo->Clear();
    }

    static ParamGroup_cls* Position() { return GCClassProvider->GetPCParamGroup(kBoxPosition); }
    static ParamGroup_cls* Level() { return GCClassProvider->GetPCParamGroup(kLevel); }
    static Parameter_cls& BoxX() { return Position()->mVCParam[0]; }
    static Parameter_cls& LevelMin() { return Level()->mVCParam[0]; }

    // A snapshot of what the actions touch, to compare before, after and after the undo.
    static wxString State() {
        SceneObj_cls* pBox = GpCSceneObjCtrl->GetPCFromName("Box");
        // Channel x of Box: keys, time dependency, extrapolation, type of the last key; the
        // filter's Min: keys, time dependency, extrapolation.
        return wxString::Format("box %d x %d/%d/%d/%d min %d/%d/%d shy %d", pBox != nullptr,
                                static_cast<int>(BoxX().mVCKey.size()), BoxX().IsTimeDepend(),
                                BoxX().IsExtrapolate(), static_cast<int>(BoxX().mVCKey.back().mType),
                                static_cast<int>(LevelMin().mVCKey.size()), LevelMin().IsTimeDepend(),
                                LevelMin().IsExtrapolate(), pBox && pBox->mCShy.GetBodyBOOL());
    }
};

int RowOf(const TLParamLogic_cls& rows, const wxString& strTag) {
    for (size_t i = 0; i < rows.mVCRow.size(); ++i)
        if (rows.mVCRow[i].mStrTag == strTag)
            return static_cast<int>(i);
    return -1;
}

} // namespace

TEST_F(TimelineMenuLogicTest, SelectionActionsReachSceneAndFiltersAsOneUndoStep) {
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box", kBoxPosition, "Scene Filter", "FilterCtrl::Filter::Exposure",
                     "FilterCtrl::Filter::Exposure::Level"};
    rows.UpdateRows();
    rows.UpdateGeometry(1000);
    const int boxRow = RowOf(rows, "SceneObjCtrl::Obj::Box");
    const int levelMinRow = RowOf(rows, "FilterCtrl::Filter::Exposure::Level::Min");
    ASSERT_GE(boxRow, 0);
    ASSERT_GE(levelMinRow, 0);
    // The pixel of Box's key at 0.5 on its object row, which shows all its channels' keys.
    const int keyX = rows.GetDevCoordFromN(0.5, 0);
    const int keyY = rows.GetYPos(boxRow) + 1;
    const struct {
        const char* strName;
        std::function<bool()> funcAction;
        const char* strAfter;
    } cases[] = {
        {"delete the selected keys", [] { return TLParamLogic_cls::DeleteSelectedKeysCommand(); },
         "box 1 x 2/1/0/1 min 1/1/0 shy 0"},
        {"extrapolate on", [] { return TLParamLogic_cls::SetExtrapolateOfSelectedCommand(true); },
         "box 1 x 3/1/1/1 min 2/1/1 shy 0"},
        {"time dependency off",
         [] { return TLParamLogic_cls::SetItemOfSelectedCommand("TimeDepend=", false); },
         "box 1 x 3/0/0/1 min 2/0/0 shy 0"},
        {"shy", [] { return TLParamLogic_cls::ToggleShyOfSelectionCommand(); },
         "box 1 x 3/1/0/1 min 2/1/0 shy 1"},
        {"alt click: Hermite", [&] { return rows.ChangeKeyTypeAt(keyX, keyY, false, false); },
         "box 1 x 3/1/0/2 min 2/1/0 shy 0"},
        {"alt ctrl click: step", [&] { return rows.ChangeKeyTypeAt(keyX, keyY, false, true); },
         "box 1 x 3/1/0/0 min 2/1/0 shy 0"},
        {"time dependency of a filter row",
         [&] {
             rows.ToggleTimeDepend(levelMinRow);
             return true;
         },
         "box 1 x 3/1/0/1 min 2/0/0 shy 0"},
    };
    const wxString strBefore = State();
    ASSERT_EQ(strBefore, "box 1 x 3/1/0/1 min 2/1/0 shy 0");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strName);
        const int undoBefore = GpCUndo->GetCurrent();
        EXPECT_TRUE(c.funcAction());
        EXPECT_EQ(State(), c.strAfter);
        EXPECT_GT(GpCUndo->GetCurrent(), undoBefore);
        GpCUndo->Undo(); // one step back
        EXPECT_EQ(State(), strBefore);
        // Undo does not bring the selection back; the next case needs it.
        GCClassProvider->SelectKeyFrame(wxString(kBoxPosition) + "::x", 2, true, true, 1e-9);
        GCClassProvider->SelectKeyFrame(wxString(kLevel) + "::Min", 1, true, true, 1e-9);
    }
    // A shy object leaves the rows.
    ASSERT_TRUE(TLParamLogic_cls::ToggleShyOfSelectionCommand());
    rows.UpdateRows();
    EXPECT_EQ(RowOf(rows, "SceneObjCtrl::Obj::Box"), -1);
    GpCUndo->Undo();
    // Alt on empty key area changes nothing and pushes nothing.
    const int undoBefore = GpCUndo->GetCurrent();
    EXPECT_FALSE(rows.ChangeKeyTypeAt(rows.GetDevCoordFromN(0.8, 0), keyY, false, false));
    EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore);
}

TEST_F(TimelineMenuLogicTest, RowItemsRenameObjectsAndInsertKeysOnce) {
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box", kBoxPosition};
    rows.UpdateRows();
    const int boxRow = RowOf(rows, "SceneObjCtrl::Obj::Box");
    const int xRow = RowOf(rows, wxString(kBoxPosition) + "::x");
    ASSERT_GE(xRow, 0);
    // Renaming: only object rows, only a new non-empty name; the row stays open under its new tag.
    EXPECT_FALSE(rows.RenameRow(xRow, "Crate"));
    EXPECT_FALSE(rows.RenameRow(boxRow, "  "));
    EXPECT_FALSE(rows.RenameRow(boxRow, "Box"));
    EXPECT_TRUE(rows.RenameRow(boxRow, " Crate "));
    EXPECT_NE(GpCSceneObjCtrl->GetPCFromName("Crate"), nullptr);
    EXPECT_EQ(rows.mSetOpen.count("SceneObjCtrl::Obj::Crate"), 1u);
    GpCUndo->Undo();
    EXPECT_NE(GpCSceneObjCtrl->GetPCFromName("Box"), nullptr);
    // The text button of a group row, left of its link button; a channel row has none there.
    const int groupRow = RowOf(rows, kBoxPosition);
    const TLRect_cls text = rows.GetButtonRect(groupRow, TLParamLogic_cls::HIT_TEXT);
    const TLRect_cls link = rows.GetButtonRect(groupRow, TLParamLogic_cls::HIT_LINK);
    EXPECT_EQ(text.mX + text.mW, link.mX);
    EXPECT_EQ(rows.HitButton(groupRow, text.mX + 2, rows.GetYPos(groupRow) + 2), TLParamLogic_cls::HIT_TEXT);
    EXPECT_EQ(rows.HitButton(xRow, text.mX + 2, rows.GetYPos(xRow) + 2), TLParamLogic_cls::HIT_NAME);
    // "Insert Key" adds a key at the current time, and a second one there adds nothing.
    rows.UpdateRows();
    ASSERT_EQ(RowOf(rows, wxString(kBoxPosition) + "::x"), xRow) << "Box is open again after the undo";
    GpCTimeCtrl->SetCurrentNTCommand(0.3);
    const size_t keys = BoxX().mVCKey.size();
    rows.ToggleKey(xRow, true);
    EXPECT_EQ(BoxX().mVCKey.size(), keys + 1);
    const int undoBefore = GpCUndo->GetCurrent();
    rows.ToggleKey(xRow, true);
    EXPECT_EQ(BoxX().mVCKey.size(), keys + 1);
    EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore);
}

TEST(RibbonHelp, ToolsWithAKeyNameItInTheirHelp) {
    Shortcut_cls keys;
    EXPECT_EQ(keys.GetStrRbnHelp(ID_RBN_BOX, "Box"), "Box (Shift+B)");
    EXPECT_EQ(keys.GetStrRbnHelp(ID_RBN_UNDO, "Undo"), "Undo") << "a tool without a key of this table";
    keys.mVEntry[static_cast<size_t>(keys.FindEntry("Add Box"))].mStrKey = "F3";
    EXPECT_EQ(keys.GetStrRbnHelp(ID_RBN_BOX, "Box"), "Box (F3)");
    keys.mVEntry[static_cast<size_t>(keys.FindEntry("Add Box"))].mStrKey.clear();
    EXPECT_EQ(keys.GetStrRbnHelp(ID_RBN_BOX, "Box"), "Box");
}
