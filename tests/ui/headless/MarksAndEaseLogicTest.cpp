// Group marks and ease factors with no display: the mark column's button toggles a group's mark
// through the undo road and the mark survives a save and a load of the project; the ease of the
// selected keys is set from the timeline's box and from the graph editor, each in one undo step;
// the shared font table keeps the rows' heights and gives the GL text its family.
#include "ServicesFixture.h"

#include "FilterCtrl_cls.h"
#include "FontProvider_cls.h"
#include "FontTable_cls.h"
#include "GlyphAtlas_cls.h"
#include "GraphKeyEdit_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TLParamLogic_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

#include <wx/filefn.h>

#include <algorithm>

namespace {

const char* const kPosition = "SceneObjCtrl::Obj::Box::Position";
const char* const kLevel = "Scene Filter::Exposure::Level";

// The ease factors of every key of a group's members, member by member.
std::vector<double> Eases(const char* strGroup) {
    std::vector<double> v;
    for (const Parameter_cls& p : GCClassProvider->GetPCParamGroup(strGroup)->mVCParam)
        for (const KeyFrame_cls& key : p.mVCKey)
            v.push_back(key.mEaseFactor);
    return v;
}

} // namespace

class MarksAndEaseLogicTest : public ServicesFixture<ServiceLayer_enum::Filter> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        ASSERT_TRUE(GpCTimeCtrl && GpCUndo && GpCSceneObjCtrl && GpCFilterCtrl);
        GCClassProvider->GetPCParamGroup(kPosition)->InsertKeyCommand(0.2, kPosition, 2, 1.0);
        ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", ""), "Exposure");
        GCClassProvider->GetPCParamGroup(kLevel)->InsertKeyCommand(0.4, "FilterCtrl::Filter::Exposure::Level",
                                                                   2, 1.0);
        GpCUndo->Clear();
    }
};

TEST_F(MarksAndEaseLogicTest, MarkColumnTogglesTheGroupsMarkAndTheProjectKeepsIt) {
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.UpdateGeometry(1000 + conf.GetSashX());
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box"};
    rows.UpdateRows();
    int row = -1;
    for (size_t i = 0; i < rows.mVCRow.size(); ++i)
        if (rows.mVCRow[i].mStrTag == kPosition)
            row = static_cast<int>(i);
    ASSERT_GE(row, 0);
    EXPECT_EQ(rows.GetButtonRect(row, TLParamLogic_cls::HIT_KILROY).mW, 0)
        << "no column while Kilroy= is off";
    conf.mCKilroy.SetBodyFromDataBOOL(true);
    const TLRect_cls r = rows.GetButtonRect(row, TLParamLogic_cls::HIT_KILROY);
    ASSERT_GT(r.mW, 0);
    ParamGroup_cls* pGroup = GCClassProvider->GetPCParamGroup(kPosition);
    const wxString strPlain = mpMain->SerializeProject();
    EXPECT_FALSE(strPlain.Contains("Kilroy=")) << "an unmarked group writes no mark";
    const struct {
        const char* what;
        bool bMarked;
    } steps[] = {{"first press marks", true}, {"second press clears", false}, {"third marks again", true}};
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        rows.PressRows(r.mX + r.mW / 2, r.mY + r.mH / 2, false, false);
        rows.ReleaseRows(r.mX + r.mW / 2, r.mY + r.mH / 2, false);
        EXPECT_EQ(pGroup->IsKilroy(), s.bMarked);
    }
    EXPECT_EQ(GpCUndo->GetCurrent(), 3) << "one undo step per press";
    const wxString strMarked = mpMain->SerializeProject();
    EXPECT_TRUE(strMarked.Contains("Kilroy=1"));
    GpCUndo->Undo();
    EXPECT_FALSE(pGroup->IsKilroy());
    GpCUndo->Redo();
    EXPECT_TRUE(pGroup->IsKilroy());
    // Saved and opened again: the mark is back, and only on that group.
    const wxString strPath = mDir.mStrPath + "/marked.ovp";
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    GpCUndo->Undo();
    ASSERT_FALSE(pGroup->IsKilroy());
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
    pGroup = GCClassProvider->GetPCParamGroup(kPosition);
    ASSERT_NE(pGroup, nullptr);
    EXPECT_TRUE(pGroup->IsKilroy());
    EXPECT_FALSE(GCClassProvider->GetPCParamGroup("SceneObjCtrl::Obj::Box::Scale")->IsKilroy());
    // Showing the marked groups opens the rows down to each, a filter's among them.
    GCClassProvider->SetParamGroupConfCommand(kLevel, "Kilroy=", true);
    rows.mSetOpen.clear();
    EXPECT_EQ(rows.OpenMarkedRows(), 2);
    std::vector<wxString> vStrShown;
    for (const TLRow_cls& shown : rows.mVCRow)
        if (shown.mKind == TLRow_cls::ROW_GROUP)
            vStrShown.push_back(shown.mStrTag);
    EXPECT_NE(std::find(vStrShown.begin(), vStrShown.end(), kPosition), vStrShown.end());
    EXPECT_NE(std::find(vStrShown.begin(), vStrShown.end(), "FilterCtrl::Filter::Exposure::Level"),
              vStrShown.end());
}

TEST_F(MarksAndEaseLogicTest, EaseOfTheSelectedKeysInOneStep) {
    // The key at 0.2 of each Position member and the filter's key at 0.4 are selected; the first
    // keys (at 0) are not.
    for (int m = 0; m < 3; ++m)
        GCClassProvider->GetPCParamGroup(kPosition)->mVCParam[m].SelectKeyByIndex(1, true, false, 1e-9);
    GCClassProvider->GetPCParamGroup(kLevel)->mVCParam[0].SelectKeyByIndex(1, true, false, 1e-9);
    const std::vector<double> before = Eases(kPosition);
    ASSERT_EQ(before, std::vector<double>(6, 1.0));
    const struct {
        const char* strText;
        bool bTaken;
        double ease; // of the selected keys afterwards
    } cases[] = {{"0.25", true, 0.25}, {"2*0.25", true, 0.5}, {"soft", false, 1.0}, {"1", false, 1.0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strText);
        const int at = GpCUndo->GetCurrent();
        EXPECT_EQ(TLParamLogic_cls::ProcessEaseInput(c.strText), c.bTaken);
        EXPECT_EQ(Eases(kPosition), (std::vector<double>{1.0, c.ease, 1.0, c.ease, 1.0, c.ease}));
        EXPECT_EQ(Eases(kLevel)[1], c.ease) << "the filters' selected keys too";
        EXPECT_EQ(Eases(kLevel)[0], 1.0);
        EXPECT_DOUBLE_EQ(TLParamLogic_cls::GetEaseOfFirstSelected(-1.0), c.ease);
        if (!c.bTaken) {
            EXPECT_EQ(GpCUndo->GetCurrent(), at) << "nothing changed, nothing pushed";
            continue;
        }
        EXPECT_GT(GpCUndo->GetCurrent(), at);
        GpCUndo->Undo();
        EXPECT_EQ(GpCUndo->GetCurrent(), at) << "one undo takes every key back";
        EXPECT_EQ(Eases(kPosition), before);
        EXPECT_EQ(Eases(kLevel)[1], 1.0);
        GpCUndo->Redo();
        EXPECT_EQ(Eases(kLevel)[1], c.ease);
        GpCUndo->Undo();
    }
    // The graph editor sets the ease of its editable channels' selected keys only.
    GpCUndo->Clear();
    GraphKeyEdit_cls edit(false);
    Parameter_cls& y = GCClassProvider->GetPCParamGroup(kPosition)->mVCParam[1];
    y.mCLocked.SetBodyFromDataBOOL(true);
    std::vector<GraphChannel_cls> vChannel;
    for (Parameter_cls& p : GCClassProvider->GetPCParamGroup(kPosition)->mVCParam)
        vChannel.push_back({wxString(kPosition) + "::" + p.GetStrName(), &p, p.GetStrName(), {}});
    edit.SetChannels(vChannel);
    edit.SetSelectedEase(0.0);
    EXPECT_EQ(Eases(kPosition), (std::vector<double>{1.0, 0.0, 1.0, 1.0, 1.0, 0.0})) << "y is locked";
    EXPECT_DOUBLE_EQ(Eases(kLevel)[1], 1.0);
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), 0) << "one undo step";
    EXPECT_EQ(Eases(kPosition), (std::vector<double>{1.0, 1.0, 1.0, 1.0, 1.0, 1.0}));
}

TEST(FontTable, RowHeightsAndTheFamilyTheGlTextResolves) {
    // The rows keep their heights at every step; steps outside 0 to 6 take the nearest.
    const int heights[] = {13, 13, 16, 19, 22, 25, 29, 34, 34};
    for (int size = -1; size <= 7; ++size) {
        SCOPED_TRACE(size);
        EXPECT_EQ(FontProvider_cls::GetHeight(size), heights[size + 1]);
        EXPECT_GT(FontProvider_cls::GetPointSize(size), 0);
        EXPECT_LT(FontProvider_cls::GetPointSize(size), FontProvider_cls::GetHeight(size));
    }
    for (const char* strFamily : {"monospace", "sans-serif"}) {
        SCOPED_TRACE(strFamily);
        FontTable_cls::SetStrFamily(strFamily);
        const wxString strFile = FontTable_cls::GetStrFontFile();
        ASSERT_FALSE(strFile.empty()) << "fontconfig finds a font for the family";
        EXPECT_TRUE(wxFileExists(strFile));
        EXPECT_EQ(strFile, GlyphAtlas_cls::FindFontFile(strFamily)) << "the GL text's default is the family";
        EXPECT_EQ(FontTable_cls::GetStrFontFile("None"), strFile);
        EXPECT_FALSE(FontTable_cls::GetStrFaceName().empty());
    }
    EXPECT_EQ(FontTable_cls::GetStrFamily(), "sans-serif");
}
