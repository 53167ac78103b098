// Group marks, the ease of the selected keys and the shared font table, with no display.
#include "ServicesFixture.h"

#include "FilterCtrl_cls.h"
#include "FontProvider_cls.h"
#include "FontTable_cls.h"
#include "GlyphAtlas_cls.h"
#include "ParamGroup_cls.h"
#include "Shortcut_cls.h"
#include "TLParamLogic_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

namespace {
const char* const kPos = "SceneObjCtrl::Obj::Box::Position";
const char* const kLevel = "Scene Filter::Exposure::Level";
ParamGroup_cls* Group(const char* strTag) {
    return GCClassProvider->GetPCParamGroup(strTag);
}
} // namespace

class MarksAndEaseLogicTest : public ServicesFixture<ServiceLayer_enum::Filter> {};

TEST_F(MarksAndEaseLogicTest, MarksToggleAndStayInTheProjectAndEaseSetsSelectedKeys) {
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", ""), "Exposure");
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.UpdateGeometry(1000 + conf.GetSashX());
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box"};
    rows.UpdateRows();
    ASSERT_EQ(rows.mVCRow[3].mStrTag, kPos); // World, Initial Light, Box, then Box's first group
    EXPECT_EQ(rows.GetButtonRect(3, TLParamLogic_cls::HIT_KILROY).mW, 0) << "no column while Kilroy= is off";
    conf.mCKilroy.SetBodyFromDataBOOL(true);
    const TLRect_cls r = rows.GetButtonRect(3, TLParamLogic_cls::HIT_KILROY);
    EXPECT_FALSE(mpMain->SerializeProject().Contains("Kilroy=")) << "unmarked groups write nothing";
    GpCUndo->Clear();
    for (bool bMarked : {true, false, true}) {
        rows.PressRows(r.mX + r.mW / 2, r.mY + r.mH / 2, false, false);
        EXPECT_EQ(Group(kPos)->IsKilroy(), bMarked);
    }
    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.mStrPath + "/marked.ovp", 0));
    GpCUndo->Undo();
    ASSERT_FALSE(Group(kPos)->IsKilroy()) << "one undo per press";
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.mStrPath + "/marked.ovp", false));
    EXPECT_TRUE(Group(kPos)->IsKilroy());
    EXPECT_FALSE(Group("SceneObjCtrl::Obj::Box::Scale")->IsKilroy());
    // Showing the marked groups opens the rows down to each, a filter's among them.
    GCClassProvider->SetParamGroupConfCommand(kLevel, "Kilroy=", true);
    rows.mSetOpen.clear();
    EXPECT_EQ(rows.OpenMarkedRows(), 2);
    wxString strShown;
    for (const TLRow_cls& shown : rows.mVCRow)
        strShown << shown.mStrTag << "\n";
    EXPECT_TRUE(strShown.Contains(wxString(kPos) + "\n") && strShown.Contains("Exposure::Level\n"))
        << strShown;

    // The ease of the selected keys: x and z of Position at 0.2 and the filter's first member at 0.4.
    Group(kPos)->InsertKeyCommand(0.2, kPos, 2, 1.0);
    Group(kLevel)->InsertKeyCommand(0.4, "FilterCtrl::Filter::Exposure::Level", 2, 1.0);
    for (Parameter_cls* p :
         {&Group(kPos)->mVCParam[0], &Group(kPos)->mVCParam[2], &Group(kLevel)->mVCParam[0]})
        p->SelectKeyByIndex(1, true, false, 1e-9);
    GpCUndo->Clear();
    auto eases = [] {
        std::vector<double> v;
        for (Parameter_cls& p : Group(kPos)->mVCParam)
            v.push_back(p.mVCKey[1].mEaseFactor);
        v.push_back(Group(kLevel)->mVCParam[0].mVCKey[1].mEaseFactor);
        return v;
    };
    const struct {
        const char* strText;
        bool bTaken;
        std::vector<double> vEase;
    } cases[] = {{"0.25", true, {0.25, 1, 0.25, 0.25}},
                 {"2*0.25", true, {0.5, 1, 0.5, 0.5}},
                 {"soft", false, {1, 1, 1, 1}},
                 {"1", false, {1, 1, 1, 1}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strText);
        EXPECT_EQ(TLParamLogic_cls::ProcessEaseInput(c.strText), c.bTaken);
        EXPECT_EQ(eases(), c.vEase);
        EXPECT_DOUBLE_EQ(TLParamLogic_cls::GetEaseOfFirstSelected(-1.0), c.vEase[0]);
        GpCUndo->Undo();
        EXPECT_EQ(eases(), std::vector<double>(4, 1.0));
    }
}

TEST(FontTable, RowHeightsStayAndTheGlTextTakesTheFamily) {
    const int heights[] = {13, 13, 16, 19, 22, 25, 29, 34, 34}; // steps -1 to 7
    for (int size = -1; size <= 7; ++size)
        EXPECT_EQ(FontProvider_cls::GetHeight(size), heights[size + 1]) << size;
    for (const char* strFamily : {"monospace", "sans-serif"}) {
        FontTable_cls::SetStrFamily(strFamily);
        EXPECT_FALSE(FontTable_cls::GetStrFontFile().empty()) << strFamily;
        EXPECT_EQ(FontTable_cls::GetStrFontFile("None"), GlyphAtlas_cls::FindFontFile(strFamily));
        EXPECT_FALSE(FontTable_cls::GetStrFaceName().empty());
    }
}

TEST(TextShortcut, DefaultsAreKeysAsEventsGiveThemAndLinesHaveTheirOwnHead) {
    for (const auto& entry : Shortcut_cls::GetVDefaultText())
        EXPECT_EQ(Shortcut_cls::NormalizeKey(entry.mStrKey), entry.mStrKey) << entry.mStrName;
    wxString strLines;
    Shortcut_cls(Shortcut_cls::msStrTextHead, Shortcut_cls::GetVDefaultText()).Serialize(strLines);
    EXPECT_TRUE(strLines.StartsWith("TextShortcut::Key::Apply Expression::Ctrl+Enter\n")) << strLines;
}
