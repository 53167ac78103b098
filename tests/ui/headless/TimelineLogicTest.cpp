// The timeline's plain logic with no display: time to pixel and back, the frame grid, the hit
// regions of handles and key marks, and what each drag commits to the undo road, undone again.
#include "ServicesFixture.h"

#include "DataSnap_cls.h"
#include "FilterBase_cls.h"
#include "FilterCtrl_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleSequence_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TLDragLogic_cls.h"
#include "TLParamLogic_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

#include <functional>

namespace {

// A strip 1018 pixels wide with margins 8 and 10: 1000 pixels for the range, 10 per frame.
void Shape(TLPanelGeom_cls& geom, double t0 = 0.0, double t1 = 1.0) {
    geom.mLeftMargin = 8;
    geom.mRightMargin = 10;
    geom.mWidth = 1018;
    geom.SetTLRegion(t0, t1);
}

// The index of the row with that tag, -1 when none.
int RowOf(const TLParamLogic_cls& rows, const wxString& strTag) {
    for (size_t i = 0; i < rows.mVCRow.size(); ++i)
        if (rows.mVCRow[i].mStrTag == strTag)
            return static_cast<int>(i);
    return -1;
}

// The do texts pushed since index from, joined.
wxString DoneSince(int from) {
    wxString str;
    for (int i = from; i < GpCUndo->GetCount(); ++i)
        str += GpCUndo->mVStrDo[i];
    return str;
}

const char* const kBoxPosition = "SceneObjCtrl::Obj::Box::Position";
// The drag cases on the rows of the filter chain, beside the strip kinds.
const int kKindFilterRows = 100;

} // namespace

TEST(TimelineGeometry, TimeToPixelAndBack) {
    struct Case {
        int left, right, width, offset;
        double t0, t1, n;
        int x;
    } cases[] = {
        {8, 10, 1018, 0, 0.0, 1.0, 0.0, 8},      {8, 10, 1018, 0, 0.0, 1.0, 1.0, 1008},
        {8, 10, 1018, 0, 0.0, 1.0, 0.25, 258},   {8, 10, 1018, 0, 0.2, 0.7, 0.45, 508},
        {8, 10, 1018, 0, 0.2, 0.7, 0.1, -192},   {0, 0, 110, 10, 0.0, 1.0, 0.5, 60},
        {260, 10, 1270, 0, 0.0, 0.5, 0.5, 1260}, {8, 10, 1018, 0, 0.0, 1.0, 0.3337, 341},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "t0 " << c.t0 << " t1 " << c.t1 << " n " << c.n);
        TLPanelGeom_cls geom;
        geom.mLeftMargin = c.left;
        geom.mRightMargin = c.right;
        geom.mWidth = c.width;
        geom.SetTLRegion(c.t0, c.t1);
        EXPECT_EQ(geom.GetDevCoordFromN(c.n, c.offset), c.x);
        // Back from the pixel lands within one pixel's time of n.
        const double pixel = (c.t1 - c.t0) / (c.width - c.left - c.right - c.offset);
        EXPECT_NEAR(geom.GetNFromDevCoord(c.x, c.offset), c.n, pixel);
    }
    TLPanelGeom_cls narrow;
    narrow.mWidth = 10;
    narrow.mLeftMargin = 8;
    narrow.mRightMargin = 10;
    EXPECT_EQ(narrow.GetNFromDevCoord(5, 0), narrow.mT0) << "a strip with no room maps every pixel to t0";
    EXPECT_TRUE(narrow.IsWithinRange(5, 0));
    EXPECT_FALSE(narrow.IsWithinRange(10, 0));
}

TEST(TimelineGeometry, ZoomStaysWithinTheSevenFontSizes) {
    TimelineConf_cls conf(100);
    EXPECT_EQ(conf.GetAAMax(), 100);
    const struct {
        int d, size;
        bool bChanged;
    } steps[] = {{1, 2, true}, {10, 6, true}, {1, 6, false}, {-3, 3, true}, {-10, 0, true}, {-1, 0, false}};
    int lastHeight = conf.GetLineHeight();
    for (const auto& s : steps) {
        EXPECT_EQ(conf.Zoom(s.d), s.bChanged);
        EXPECT_EQ(conf.GetFontSize(), s.size);
        EXPECT_EQ(conf.GetLineHeight() != lastHeight, s.bChanged);
        lastHeight = conf.GetLineHeight();
    }
}

class TimelineLogicTest : public ServicesFixture<ServiceLayer_enum::Filter> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        ASSERT_TRUE(GpCTimeCtrl && GpCUndo && GpCSceneObjCtrl && GpCFilterCtrl);
        GpCTimeCtrl->SetWAMinCommand(20);
        GpCTimeCtrl->SetWAMaxCommand(60);
        GpCTimeCtrl->SetCurrentFrameCommand(10);
        // Keys of Box's Position at frames 20 and 50, and of an exposure filter at frame 40.
        ParamGroup_cls* pPosition = GCClassProvider->GetPCParamGroup(kBoxPosition);
        ASSERT_NE(pPosition, nullptr);
        pPosition->InsertKeyCommand(0.2, kBoxPosition, 1, 1.0);
        pPosition->InsertKeyCommand(0.5, kBoxPosition, 1, 1.0);
        ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", ""), "Exposure");
        ParamGroup_cls* pLevel = GCClassProvider->GetPCParamGroup("Scene Filter::Exposure::Level");
        ASSERT_NE(pLevel, nullptr) << "the filter's tags reach the chain through the core";
        pLevel->InsertKeyCommand(0.4, "FilterCtrl::Filter::Exposure::Level", 1, 1.0);
        GpCUndo->Clear();
    }

    // The x of Box's Position keys.
    static std::vector<double> BoxKeys() {
        std::vector<double> v;
        for (const KeyFrame_cls& key : GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0].mVCKey)
            v.push_back(key.mX);
        return v;
    }
    static double FilterKey() {
        return GCClassProvider->GetPCParameter("Scene Filter::Exposure::Level::Min")->mVCKey.back().mX;
    }
};

TEST_F(TimelineLogicTest, QuantisationAndHandleHitRegions) {
    TimelineConf_cls conf(100);
    TLDragLogic_cls wa(TL_KIND_WA, &conf);
    Shape(wa);
    // The frame grid of the timeline and the 1/1024 grid of a colour strip.
    const struct {
        bool bColor;
        double n;
        int mode;
        double q;
    } grid[] = {{false, 0.234, 0, 0.23}, {false, 0.235, 0, 0.24}, {false, 0.239, 1, 0.23},
                {false, 0.231, 2, 0.24}, {true, 0.5004, 0, 0.5},  {true, 0.5006, 0, 0.5009765625}};
    for (const auto& g : grid) {
        SCOPED_TRACE(testing::Message() << "n " << g.n << " mode " << g.mode << " colour " << g.bColor);
        wa.mbColor = g.bColor;
        EXPECT_NEAR(wa.GetQuantized(g.n, g.mode), g.q, 1e-7);
    }
    wa.mbColor = false;
    // Work area 20 .. 60: handles at 208 and 608, the bar between them.
    wa.LayoutHandles(14);
    const struct {
        int x;
        int mode;
    } hits[] = {{203, TL_DRAG_NONE},   {204, TL_DRAG_LOWER},  {212, TL_DRAG_LOWER},
                {213, TL_DRAG_REGION}, {603, TL_DRAG_REGION}, {604, TL_DRAG_UPPER},
                {612, TL_DRAG_UPPER},  {613, TL_DRAG_NONE},   {900, TL_DRAG_NONE}};
    for (const auto& h : hits) {
        SCOPED_TRACE(testing::Message() << "x " << h.x);
        wa.PressAt(h.x, 5, 0);
        EXPECT_EQ(wa.mDragMode, h.mode);
        wa.mDragMode = TL_DRAG_NONE;
        conf.mUpdateLevel = TL_UPDATE_IDLE;
    }
    // The key marks of Box's channel x: the key at frame 20 answers within 4 pixels.
    TLParamLogic_cls rows(&conf);
    rows.UpdateGeometry(1018 + conf.GetSashX());
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box", kBoxPosition};
    rows.UpdateRows();
    const int row = RowOf(rows, wxString(kBoxPosition) + "::x");
    ASSERT_GE(row, 0);
    const int x20 = rows.GetDevCoordFromN(0.2, 0);
    for (int dx : {-5, -4, 0, 4, 5}) {
        SCOPED_TRACE(testing::Message() << "dx " << dx);
        const auto keys = rows.HitKeys(row, x20 + dx);
        EXPECT_EQ(keys.size(), std::abs(dx) <= TLParamLogic_cls::msKeyHalf ? 1u : 0u);
    }
    EXPECT_EQ(rows.HitButton(row, conf.GetSashX() - 10, rows.GetYPos(row) + 2),
              TLParamLogic_cls::HIT_KEY_TOGGLE);
    EXPECT_EQ(rows.HitButton(row, conf.GetSashX() + 1, rows.GetYPos(row) + 2), TLParamLogic_cls::HIT_SASH);
    EXPECT_EQ(rows.HitButton(row, 30, rows.GetYPos(row) + 2), TLParamLogic_cls::HIT_NAME);
}

TEST_F(TimelineLogicTest, EachDragCommitsItsCommandAndOneUndoRestores) {
    struct Case {
        const char* strName;
        int kind;
        double pressN, releaseN;
        bool bShiftSecond; // a key row drag with the second Box key added to the selection
        const char* strDo; // empty: nothing is pushed
        std::function<bool()> funcDone;
    };
    TimelineConf_cls conf(100);
    auto wa = [](int lo, int hi) {
        return [=] { return GpCTimeCtrl->GetWAMin() == lo && GpCTimeCtrl->GetWAMax() == hi; };
    };
    auto keys = [this](std::vector<double> v) {
        return [this, v] {
            const std::vector<double> now = BoxKeys();
            if (now.size() != v.size())
                return false;
            for (size_t i = 0; i < v.size(); ++i)
                if (std::abs(now[i] - v[i]) > 1e-6)
                    return false;
            return true;
        };
    };
    const Case cases[] = {
        {"upper handle", TL_KIND_WA, 0.6, 0.3, false, "TimeCtrl::SetWAMax::30", wa(20, 30)},
        {"upper handle onto the lower stops a frame above", TL_KIND_WA, 0.6, 0.05, false, "SetWAMax::21",
         wa(20, 21)},
        {"lower handle past the upper", TL_KIND_WA, 0.2, 0.9, false, "SetWAMin::59", wa(59, 60)},
        {"region to the end keeps its width", TL_KIND_WA, 0.4, 0.97, false, "OpenBlock::TimeWARegion",
         wa(60, 100)},
        {"slider", TL_KIND_TICS, 0.37, 0.37, false, "SetFrameCurrent::37",
         [] { return GpCTimeCtrl->GetFrameCurrent() == 37; }},
        {"slider released on the same frame", TL_KIND_TICS, 0.1, 0.1, false, "",
         [] { return GpCTimeCtrl->GetFrameCurrent() == 10; }},
        {"shown range, not undoable", TL_KIND_AA, 1.0, 0.5, false, "",
         [&conf] { return conf.GetAAMax() == 50; }},
        {"one key", TL_KIND_PARAM, 0.2, 0.3, false, "MoveKeyAndSort", keys({0.0, 0.3, 0.5})},
        {"a key released where it was pressed", TL_KIND_PARAM, 0.2, 0.2, false, "", keys({0.0, 0.2, 0.5})},
        {"two keys", TL_KIND_PARAM, 0.2, 0.33, true, "SetX::0.63", keys({0.0, 0.33, 0.63})},
        {"a filter key across rows", kKindFilterRows, 0.4, 0.45, false, "FilterCtrl::Filter::Exposure::Level",
         [] { return std::abs(FilterKey() - 0.45) < 1e-6; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strName);
        conf.mCAAMin.SetBodyFromData(0LL);
        conf.mCAAMax.SetBodyFromData(100LL);
        const std::vector<double> keysBefore = BoxKeys();
        const double filterBefore = FilterKey();
        const int before = GpCUndo->GetCount();
        if (c.kind == TL_KIND_PARAM || c.kind == kKindFilterRows) {
            TLParamLogic_cls rows(&conf);
            rows.UpdateGeometry(1018 + conf.GetSashX());
            rows.mSetOpen = {"SceneObjCtrl::Obj::Box", "Scene Filter", "FilterCtrl::Filter::Exposure"};
            rows.UpdateRows();
            const wxString strTag =
                c.kind == TL_KIND_PARAM ? wxString(kBoxPosition) : "FilterCtrl::Filter::Exposure::Level";
            const int row = RowOf(rows, strTag);
            ASSERT_GE(row, 0);
            const int y = rows.GetYPos(row) + 2;
            if (c.bShiftSecond) {
                rows.PressRows(rows.GetDevCoordFromN(0.5, 0), y, true, false);
                rows.ReleaseRows(rows.GetDevCoordFromN(0.5, 0), y, true);
            }
            rows.PressRows(rows.GetDevCoordFromN(c.pressN, 0), y, c.bShiftSecond, false);
            ASSERT_TRUE(rows.mbKeyMoveArmed);
            rows.DragRows(rows.GetDevCoordFromN(c.releaseN, 0), y);
            rows.ReleaseRows(rows.GetDevCoordFromN(c.releaseN, 0), y, false);
        } else {
            TLDragLogic_cls strip(c.kind, &conf);
            Shape(strip);
            strip.LayoutHandles(14);
            strip.PressAt(strip.GetDevCoordFromN(c.pressN, 0), 5, 0);
            ASSERT_NE(strip.mDragMode, TL_DRAG_NONE);
            // Past the end and back: the drag is limited on the way.
            strip.DragTo(strip.GetDevCoordFromN(1.2, 0), 5, 0);
            strip.DragTo(strip.GetDevCoordFromN(c.releaseN, 0), 5, 0);
            strip.ReleaseDrag();
            EXPECT_EQ(conf.mUpdateLevel, TL_UPDATE_IDLE);
        }
        EXPECT_TRUE(c.funcDone());
        const wxString strDone = DoneSince(before);
        if (*c.strDo == '\0') {
            EXPECT_EQ(GpCUndo->GetCount(), before) << strDone;
            continue;
        }
        EXPECT_TRUE(strDone.Contains(c.strDo)) << strDone;
        GpCUndo->Undo();
        EXPECT_EQ(GpCUndo->GetCurrent(), before) << "one undo takes the whole drag back";
        EXPECT_TRUE(wa(20, 60)());
        EXPECT_EQ(GpCTimeCtrl->GetFrameCurrent(), 10);
        EXPECT_EQ(BoxKeys(), keysBefore);
        EXPECT_DOUBLE_EQ(FilterKey(), filterBefore);
        GCClassProvider->DeselectKeyFrame(wxString());
        GpCUndo->Clear();
    }
}

TEST_F(TimelineLogicTest, RowButtonsActThroughCommandsAndUndo) {
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.UpdateGeometry(1018 + conf.GetSashX());
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box"};
    rows.UpdateRows();
    const size_t closed = rows.mVCRow.size();
    const int row = RowOf(rows, kBoxPosition);
    ASSERT_GE(row, 0);
    ParamGroup_cls* pPosition = GCClassProvider->GetPCParamGroup(kBoxPosition);
    auto press = [&](int hit) {
        const TLRect_cls r = rows.GetButtonRect(row, hit);
        ASSERT_GT(r.mW, 0);
        rows.PressRows(r.mX + r.mW / 2, r.mY + r.mH / 2, false, false);
        rows.ReleaseRows(r.mX + r.mW / 2, r.mY + r.mH / 2, false);
    };
    const struct {
        int hit;
        const char* strDo; // empty: a view change, not undone
        std::function<bool()> funcDone;
    } cases[] = {
        {TLParamLogic_cls::HIT_KEY_TOGGLE, "InsertKey::1::0.1",
         [&] {
             return BoxKeys() == std::vector<double>{0.0, 0.1, 0.2, 0.5};
         }},
        {TLParamLogic_cls::HIT_KEY_NEXT, "SetFrameCurrent::20",
         [] { return GpCTimeCtrl->GetFrameCurrent() == 20; }},
        {TLParamLogic_cls::HIT_KEY_PREV, "SetFrameCurrent::0",
         [] { return GpCTimeCtrl->GetFrameCurrent() == 0; }},
        {TLParamLogic_cls::HIT_LINK, "Position::Linked=0", [&] { return !pPosition->IsLinked(); }},
        {TLParamLogic_cls::HIT_EXPR, "Position::UseExpr=1", [&] { return pPosition->IsUseExpr(); }},
        {TLParamLogic_cls::HIT_OPEN, "", [&] { return rows.mVCRow.size() == closed + 3; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strDo);
        // An undone step is overwritten by the next command: count from the current index.
        const int before = GpCUndo->GetCurrent();
        press(c.hit);
        EXPECT_TRUE(c.funcDone());
        if (*c.strDo == '\0') {
            EXPECT_EQ(GpCUndo->GetCurrent(), before);
            continue;
        }
        EXPECT_TRUE(DoneSince(before).Contains(c.strDo)) << DoneSince(before);
        GpCUndo->Undo();
        EXPECT_EQ(BoxKeys(), (std::vector<double>{0.0, 0.2, 0.5}));
        EXPECT_EQ(GpCTimeCtrl->GetFrameCurrent(), 10);
        EXPECT_TRUE(pPosition->IsLinked());
        EXPECT_FALSE(pPosition->IsUseExpr());
    }
    // The same switch on a filter's group goes to the chain.
    ParamGroup_cls* pLevel = GCClassProvider->GetPCParamGroup("Scene Filter::Exposure::Level");
    ASSERT_TRUE(pLevel->IsLinked());
    GCClassProvider->SetParamGroupConfCommand("Scene Filter::Exposure::Level", "Linked=", false);
    EXPECT_FALSE(pLevel->IsLinked());
    GpCUndo->Undo();
    EXPECT_TRUE(pLevel->IsLinked());
    // The edge of the name column follows a drag, within its limits.
    for (const auto& [to, sash] : {std::pair{400, 400}, std::pair{20, TLParamLogic_cls::msSashMin}}) {
        rows.PressRows(conf.GetSashX() + 1, 5, false, false);
        ASSERT_TRUE(rows.mbSashDrag);
        rows.DragRows(to, 5);
        rows.ReleaseRows(to, 5, false);
        EXPECT_EQ(conf.GetSashX(), sash);
    }
}

TEST_F(TimelineLogicTest, SequenceRowShowsStepsOnDiskBeingReadAndInMemory) {
    ParticleSequence_cls seq;
    TLRow_cls row;
    row.mpCSeq = &seq;
    EXPECT_EQ(TLParamLogic_cls::GetSequenceIndex(row, 3), -1) << "no steps counted yet";
    row.mpCSeq = nullptr;
    EXPECT_EQ(TLParamLogic_cls::GetSequenceIndex(row, 3), -1) << "a row without a sequence";
    row.mpCSeq = &seq;
    seq.mSnaps.resize(4);
    seq.mIsSequence = true;
    // Step 1 read, step 2 being read, step 3 made but not read, step 0 never made.
    seq.GenerateIfNot(1)->mReadStarted = true;
    seq.GetPCSnap(1)->mReadFinished = true;
    seq.GenerateIfNot(2)->mReadStarted = true;
    seq.GenerateIfNot(3);
    const struct {
        int frame;
        int index;
        DataSequence_cls::StepState_enum state;
    } cases[] = {{0, 0, DataSequence_cls::STEP_ON_DISK},
                 {1, 1, DataSequence_cls::STEP_IN_MEMORY},
                 {2, 2, DataSequence_cls::STEP_READING},
                 {3, 3, DataSequence_cls::STEP_ON_DISK},
                 {9, 3, DataSequence_cls::STEP_ON_DISK}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "frame " << c.frame);
        // Without an object (no offset, no remap) the frame is the step, held at the last one.
        EXPECT_EQ(TLParamLogic_cls::GetSequenceIndex(row, c.frame), c.index);
        EXPECT_EQ(seq.GetStepState(c.index), c.state);
    }
    EXPECT_EQ(seq.GetStepState(4), DataSequence_cls::STEP_ABSENT);
    EXPECT_EQ(seq.GetStepState(-1), DataSequence_cls::STEP_ABSENT);
    seq.GetPCSnap(2)->mReadFinished = true; // the read ends: the sequence may free the snap
}

TEST_F(TimelineLogicTest, ValueBoxTakesNumbersAndArithmeticAtTheCurrentTime) {
    TimelineConf_cls conf(100);
    TLParamLogic_cls rows(&conf);
    rows.mSetOpen = {"SceneObjCtrl::Obj::Box", kBoxPosition};
    rows.UpdateRows();
    const int row = RowOf(rows, wxString(kBoxPosition) + "::x");
    const int groupRow = RowOf(rows, kBoxPosition);
    ASSERT_GE(row, 0);
    const Parameter_cls& x = GCClassProvider->GetPCParamGroup(kBoxPosition)->mVCParam[0];
    const struct {
        const char* strText;
        int row;
        bool bTaken;
        double value;
    } cases[] = {{"2.5", row, true, 2.5},
                 {" 2*3 ", row, true, 6.0},
                 {"abc", row, false, 0.0},
                 {"4", groupRow, false, 0.0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strText);
        const double before = x.GetValue(0.1);
        const int undoBefore = GpCUndo->GetCurrent();
        EXPECT_EQ(rows.ProcessInput(c.row, c.strText), c.bTaken);
        if (!c.bTaken) {
            EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore);
            continue;
        }
        EXPECT_DOUBLE_EQ(x.GetValue(0.1), c.value);
        EXPECT_TRUE(x.IsKeyExist(0.1)) << "a key at the current time";
        GpCUndo->Undo();
        EXPECT_DOUBLE_EQ(x.GetValue(0.1), before);
        EXPECT_FALSE(x.IsKeyExist(0.1));
    }
}

TEST_F(TimelineLogicTest, ExtrapolationOfTheChannelsWithSelectedKeys) {
    ParamGroup_cls* pPosition = GCClassProvider->GetPCParamGroup(kBoxPosition);
    EXPECT_FALSE(TLParamLogic_cls::SetExtrapolateOfSelectedCommand(true))
        << "no key selected, nothing pushed";
    EXPECT_EQ(GpCUndo->GetCount(), 0);
    pPosition->mVCParam[0].SelectKeyByIndex(1, true, false, 1e-9);
    pPosition->mVCParam[2].SelectKeyByIndex(2, true, false, 1e-9);
    ASSERT_TRUE(TLParamLogic_cls::SetExtrapolateOfSelectedCommand(true));
    const bool expected[3] = {true, false, true};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(pPosition->mVCParam[i].IsExtrapolate(), expected[i]) << i;
    EXPECT_FALSE(TLParamLogic_cls::SetExtrapolateOfSelectedCommand(true)) << "already on";
    GpCUndo->Undo();
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(pPosition->mVCParam[i].IsExtrapolate()) << i;
}
