#include "TimeFixture.h"

#include <thread>

namespace {

// One step of the playback table from a given position. The work area is 10 to 20 of 100
// frames with two subframes per frame.
struct PlayRow {
    const char* name;
    bool bOutput;
    bool bRepeat;
    int direction;
    int frame, sub;
    int expFrame, expSub;
    bool expPlaying;
    bool expResult;
};

std::ostream& operator<<(std::ostream& os, const PlayRow& row) {
    return os << row.name;
}

} // namespace

class ProcPlayTableTest : public TimeFixture, public ::testing::WithParamInterface<PlayRow> {};

TEST_P(ProcPlayTableTest, OneStep) {
    const PlayRow& row = GetParam();
    SetRange(100, 2, 1);
    SetWA(10, 0, 20, 0);
    Set(mpTime->mCRepeat, row.bRepeat ? 1 : 0);
    SetPos(row.frame, row.sub);
    mpTime->mPlayDirection = row.direction;
    mpTime->mbOutputRunning = row.bOutput;
    mpTime->mbFrameWritten = true;
    const int undoCount = GpCUndo->GetCount();

    EXPECT_EQ(mpTime->ProcPlay(), row.expResult);
    EXPECT_EQ(Pos(), std::make_pair(row.expFrame, row.expSub));
    EXPECT_EQ(mpTime->IsPlaying(), row.expPlaying);
    EXPECT_TRUE(GpCQueue->IsTimeChanged());
    if (row.expPlaying) {
        // Stepping writes the items directly: no undo trail per frame.
        EXPECT_EQ(GpCUndo->GetCount(), undoCount);
        EXPECT_TRUE(Queued(TimeCtrl_cls::msStrUpdateList));
        EXPECT_EQ(mpTime->mbOutputRunning, row.bOutput);
    } else {
        ASSERT_GT(GpCUndo->GetCount(), undoCount);
        EXPECT_EQ(GpCUndo->mVStrDo[undoCount], "OpenBlock::StopPlay\n");
        EXPECT_FALSE(mpTime->mbOutputRunning);
        EXPECT_EQ(mpTime->mbFrameWritten, !row.bOutput); // cleared only with a run
        EXPECT_EQ(Queued("PROPERTY_RENDER"), row.bOutput);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ProcPlayTableTest,
    ::testing::Values(
        // low and zero: to the very start and stop, in any mode
        PlayRow{"BackToZeroStops", false, true, -1, 0, 1, 0, 0, false, true},
        PlayRow{"BackToZeroStopsDuringOutput", true, false, -1, 0, 1, 0, 0, false, true},
        // start without repeat: to the work area start and stop
        PlayRow{"ForwardBeforeWorkAreaStops", false, false, 1, 5, 1, 10, 0, false, true},
        PlayRow{"BackwardToWorkAreaStartStops", false, false, -1, 10, 1, 10, 0, false, true},
        // start with repeat: wrap to the work area end
        PlayRow{"ForwardBeforeWorkAreaWraps", false, true, 1, 5, 1, 20, 0, true, true},
        PlayRow{"BackwardWrapsToEnd", false, true, -1, 10, 1, 20, 0, true, true},
        // at the end with repeat: wrap to the start
        PlayRow{"ForwardAtEndWraps", false, true, 1, 19, 1, 10, 0, true, true},
        PlayRow{"ForwardPastEndWraps", false, true, 1, 30, 0, 10, 0, true, true},
        // start during output: to the work area start and stop, repeat or not
        PlayRow{"OutputBeforeWorkAreaStops", true, true, 1, 5, 1, 10, 0, false, true},
        PlayRow{"OutputBackwardToStartStops", true, false, -1, 10, 1, 10, 0, false, true},
        // at the end without repeat, or during output: stop at the end
        PlayRow{"ForwardAtEndStops", false, false, 1, 19, 1, 20, 0, false, true},
        PlayRow{"OutputAtEndStops", true, false, 1, 19, 1, 20, 0, false, true},
        PlayRow{"OutputAtEndIgnoresRepeat", true, true, 1, 19, 1, 20, 0, false, true},
        // otherwise: one step
        PlayRow{"ForwardStep", false, false, 1, 12, 0, 12, 1, true, true},
        PlayRow{"BackwardStep", false, true, -1, 12, 0, 11, 1, true, true},
        PlayRow{"OutputStep", true, true, 1, 12, 1, 13, 0, true, true},
        PlayRow{"BackwardIntoFrameZeroSteps", false, false, -1, 1, 0, 0, 1, true, true},
        PlayRow{"BackwardBeforeWorkAreaSubframeSteps", false, false, -1, 5, 0, 4, 1, true, true}),
    [](const ::testing::TestParamInfo<PlayRow>& paramInfo) { return std::string(paramInfo.param.name); });

class ProcPlayTest : public TimeFixture {};

TEST_F(ProcPlayTest, StoppedOrWaitingForTheWriterDoesNothing) {
    SetRange(100, 2, 1);
    SetPos(12, 0);
    EXPECT_FALSE(mpTime->ProcPlay()); // stopped
    EXPECT_EQ(Pos(), std::make_pair(12, 0));
    EXPECT_FALSE(GpCQueue->IsTimeChanged());

    mpTime->mPlayDirection = 1;
    mpTime->mbOutputRunning = true;
    mpTime->mbFrameWritten = false;
    EXPECT_FALSE(mpTime->ProcPlay()); // waits for the file writer
    EXPECT_EQ(Pos(), std::make_pair(12, 0));
    EXPECT_FALSE(mpTime->GetExpectTime().IsRunning());
    mpTime->mbFrameWritten = true;
    EXPECT_TRUE(mpTime->ProcPlay());
    EXPECT_EQ(Pos(), std::make_pair(12, 1));
    EXPECT_TRUE(mpTime->GetExpectTime().IsRunning());
    // The step holds the clock again until the new frame is recorded: no frame is skipped.
    EXPECT_FALSE(mpTime->ProcPlay());
    EXPECT_EQ(Pos(), std::make_pair(12, 1));
    mpTime->mbFrameWritten = true;
    EXPECT_TRUE(mpTime->ProcPlay());
    EXPECT_EQ(Pos(), std::make_pair(13, 0));
}

TEST_F(ProcPlayTest, AbortFromAnotherThreadStopsAndClearsTheFlag) {
    SetRange(100, 2, 1);
    SetPos(12, 0);
    mpTime->StartPlayCommand(1);
    std::thread([] { TimeCtrl_cls::msbForceAbort.store(true, std::memory_order_release); }).join();
    EXPECT_TRUE(mpTime->ProcPlay()); // the idle pass takes and clears it
    EXPECT_FALSE(TimeCtrl_cls::msbForceAbort);
    EXPECT_FALSE(mpTime->IsPlaying());
    EXPECT_EQ(Pos(), std::make_pair(12, 0));
}

TEST_F(ProcPlayTest, RepeatLoopsTheWorkAreaAndNoRepeatEndsAtItsEnd) {
    SetRange(100, 2, 1);
    SetWA(10, 0, 13, 0);
    SetPos(10, 0);
    Set(mpTime->mCRepeat, 1);
    mpTime->StartPlayCommand(1);
    std::vector<std::pair<int, int>> visited;
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(mpTime->ProcPlay());
        visited.push_back(Pos());
    }
    const std::vector<std::pair<int, int>> expected = {{10, 1}, {11, 0}, {11, 1}, {12, 0},
                                                       {12, 1}, {10, 0}, {10, 1}, {11, 0}};
    EXPECT_EQ(visited, expected);
    EXPECT_TRUE(mpTime->IsPlaying());

    Set(mpTime->mCRepeat, 0);
    int passes = 0;
    while (mpTime->IsPlaying() && passes < 100) {
        mpTime->ProcPlay();
        ++passes;
    }
    EXPECT_EQ(Pos(), std::make_pair(13, 0));
    EXPECT_EQ(passes, 4);
}
