// The two render sets of a particle object: the frame prepared in the background is taken as it
// is when it is the frame now wanted, and prepared again now otherwise.
#include "ViewerFixture.h"

#include "ConfItem_cls.h"
#include "DataMemoryCtrl_cls.h"
#include "ParticleSnap_cls.h"
#include "Particle_cls.h"
#include "ReadEventSink_cls.h"
#include "ThreadParticlePrepareNext_cls.h"
#include "TimeCtrl_cls.h"
#include "ViewerClone_cls.h"

#include <vector>

namespace {

// The y of every prepared particle: the generated files put the step number there.
bool AllAtStep(const ParticleForRender_cls& set, float y) {
    if (set.mNumber <= 0)
        return false;
    for (long long i = 0; i < set.mNumber; ++i)
        if (set.mXYZ[3 * i + 1] != y)
            return false;
    return true;
}

int CountLines(const LogCapture_cls& log, const wxString& str) {
    int n = 0;
    for (const wxString& line : log.mVStrLines)
        if (line.Contains(str))
            ++n;
    return n;
}

// The window's side of the reads: the progress the main thread shows while it waits.
class ProgressCapture_cls : public ReadEventSink_cls {
public:
    ProgressCapture_cls() : mpOld(Get()) { Install(this); }
    ~ProgressCapture_cls() override { Install(mpOld); }
    ProgressCapture_cls(const ProgressCapture_cls&) = delete;
    ProgressCapture_cls& operator=(const ProgressCapture_cls&) = delete;
    void PostReadFinished() override {}
    void ShowReadProgress(int percent, bool) override { mVProgress.push_back(percent); }
    ReadEventSink_cls* mpOld;
    std::vector<int> mVProgress; // main thread only
};

} // namespace

class RenderSetTest : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        // Whole frames: the next frame of the player is the next whole step.
        GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(1LL);
        GpCTimeCtrl->mCSubFrameStepping.SetBodyFromData(1LL);
        SetFrames(4, 0);
        SetPrefetch(4);
        mpP = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "")));
        ASSERT_NE(mpP, nullptr);
        mpP->mCPath.PushCommandPair(MakeParticleFiles("p", 4, 200));
        // Every step in memory before playing, as the idle passes would leave it.
        double mb = 0.0;
        for (int pass = 0; pass < 4; ++pass) {
            DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
            for (int i = 0; i < mpP->mCSequence.GetSnapCount(); ++i)
                if (DataSnap_cls* p = mpP->mCSequence.GetPCSnap(i))
                    p->WaitReadingThread(1);
        }
    }
    void TearDown() override {
        GpCTimeCtrl->mPlayDirection = 0;
        ViewerFixture::TearDown();
    }
    void Play(bool bOn) { GpCTimeCtrl->mPlayDirection = bOn ? 1 : 0; }

    Particle_cls* mpP = nullptr;
};

TEST_F(RenderSetTest, PlayingTakesThePreparedFrame) {
    LogCapture_cls log;
    Play(true);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Not Swap"), 1) << "nothing was prepared ahead of the first frame";
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 0.0f));
    ASSERT_TRUE(mpP->WaitPrepareNext()) << "the next frame was prepared in the background";
    EXPECT_TRUE(AllAtStep(*mpP->mpCNext, 1.0f));

    for (int frame = 1; frame <= 3; ++frame) {
        SCOPED_TRACE(frame);
        SetFrames(4, frame);
        ParticleForRender_cls* pSpare = mpP->mpCNext.get();
        const int dataBefore = pSpare->mDataCounter;
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        EXPECT_EQ(CountLines(log, "Swap Render Snap"), frame);
        EXPECT_EQ(mpP->mpCCurrent.get(), pSpare) << "the two sets were exchanged";
        EXPECT_EQ(pSpare->mDataCounter, dataBefore) << "no preparation on the main thread";
        EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, static_cast<float>(frame)));
        mpP->WaitPrepareNext();
    }
    EXPECT_EQ(CountLines(log, "Not Swap"), 1);
    EXPECT_TRUE(log.Contains("mpCCurrent at "));
    EXPECT_TRUE(log.Contains("mpCNext at "));
}

TEST_F(RenderSetTest, OtherFramesAndEditsArePreparedNow) {
    LogCapture_cls log;
    Play(true);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    mpP->WaitPrepareNext();
    {
        SCOPED_TRACE("a jump to another frame than the prepared one");
        SetFrames(4, 3);
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        EXPECT_EQ(CountLines(log, "Swap Render Snap"), 0);
        EXPECT_EQ(CountLines(log, "Not Swap"), 2);
        EXPECT_TRUE(log.Contains("Now is 3"));
        EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 3.0f));
        mpP->WaitPrepareNext();
    }
    {
        SCOPED_TRACE("an edit of the object after the next frame was prepared");
        SetFrames(4, 1);
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        mpP->WaitPrepareNext();
        mpP->mCPointSizeFactor.PushCommandPair("20");
        SetFrames(4, 2);
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        EXPECT_EQ(CountLines(log, "Swap Render Snap"), 0);
        EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 2.0f));
        mpP->WaitPrepareNext();
    }
    {
        SCOPED_TRACE("not playing: no background preparation");
        Play(false);
        SetFrames(4, 0);
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        EXPECT_FALSE(mpP->WaitPrepareNext());
        SetFrames(4, 1);
        ASSERT_TRUE(mpP->PrepareDraw(0, 0));
        EXPECT_EQ(CountLines(log, "Swap Render Snap"), 0);
        EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 1.0f));
    }
}

TEST_F(RenderSetTest, NextFrameWaitsForItsSnaps) {
    LogCapture_cls log;
    // Step 2 evicted: the next frame of frame 1 needs it, so nothing is started for it.
    ParticleSnap_cls* pSnap = mpP->mCSequence.GetPCSnap(2);
    ASSERT_NE(pSnap, nullptr);
    mpP->mCSequence.mSnaps[2].reset();
    SetPrefetch(0); // and not read ahead again by the draw
    Play(true);
    SetFrames(4, 1);
    mpP->mbPrefetchNext = true;
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_FALSE(mpP->WaitPrepareNext()) << "a snap of the next frame was missing";
    // The frame itself: while its snap is being read the player does not wait, and the last
    // frame stays on screen.
    SetFrames(4, 2);
    ParticleSnap_cls* pReading = mpP->mCSequence.GenerateIfNot(2);
    ASSERT_NE(pReading, nullptr);
    pReading->mReadStarted = true; // as a reader thread leaves it until it is done
    pReading->mReadFinished.store(false);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 1.0f)) << "frame 1 still shown";
    EXPECT_EQ(CountLines(log, "Now is 2"), 0) << "nothing prepared for frame 2";
    pReading->mReadStarted = false;
    pReading->mReadFinished.store(true);
    mpP->mCSequence.mSnaps[2].reset();
    // Not playing, the frame waits for its read, showing the progress to the window.
    ProgressCapture_cls sink;
    Play(false);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Swap Render Snap"), 0);
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 2.0f));
    ASSERT_FALSE(sink.mVProgress.empty());
    EXPECT_EQ(sink.mVProgress.back(), 100) << "the end of the wait is shown";
    mpP->WaitPrepareNext();

    SCOPED_TRACE("a step whose read was aborted is read again when a frame needs it");
    ParticleSnap_cls* pAborted = mpP->mCSequence.GetPCSnap(2);
    ASSERT_NE(pAborted, nullptr);
    pAborted->mbReadAborted.store(true); // as the reader leaves it after the abort button
    const int readsBefore = CountLines(log, "Read Stert");
    TimeCtrl_cls::msbForceAbort = true; // still standing: nothing is read again yet
    mpP->mCPointSizeFactor.PushCommandPair("11");
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Read Stert"), readsBefore);
    TimeCtrl_cls::msbForceAbort = false;
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Read Stert"), readsBefore + 1);
    EXPECT_FALSE(pAborted->mbReadAborted.load());
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 2.0f));
}

TEST_F(RenderSetTest, HalfFramesInterpolateAndDeletionWaitsForTheWorker) {
    LogCapture_cls log;
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
    Play(true);
    SetFrames(4, 1);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    ASSERT_TRUE(mpP->WaitPrepareNext());
    EXPECT_TRUE(AllAtStep(*mpP->mpCNext, 1.5f)) << "the next draw is half a frame on";
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Swap Render Snap"), 1);
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 1.5f));
    // A worker is running or done on the spare set; deleting the object must wait for it.
    Ctrl()->Clear();
    EXPECT_EQ(Obj("Particle"), nullptr);
    mpP = nullptr;
}

namespace {

// Snaps by ID in memory, as a reader leaves them: step s holds the IDs 0 .. count - 1 but those with
// (id + s) % 50 == 0, so particles vanish and appear between every pair; x = id / 2, y = step.
std::vector<std::unique_ptr<ParticleSnap_cls>> MakeSnapsByID(int steps, int count) {
    std::vector<std::unique_ptr<ParticleSnap_cls>> snaps;
    for (int step = 0; step < steps; ++step) {
        std::vector<int> ids;
        for (int id = 0; id < count; ++id)
            if ((id + step) % 50 != 0)
                ids.push_back(id);
        auto pSnap = std::make_unique<ParticleSnap_cls>(nullptr, step);
        pSnap->mHasID = pSnap->mHasType = pSnap->mHasSize = true;
        const int n = static_cast<int>(ids.size());
        pSnap->AllocateIfNot(n);
        for (int i = 0; i < n; ++i) {
            pSnap->mID[i] = ids[i];
            pSnap->mXYZ[3 * i] = 0.5f * ids[i];
            pSnap->mXYZ[3 * i + 1] = static_cast<float>(step);
            pSnap->mXYZ[3 * i + 2] = static_cast<float>(ids[i] % 7);
            pSnap->mType[i] = static_cast<unsigned char>(ids[i] % 2);
            pSnap->mSize[i] = 1.0f + ids[i] % 3;
        }
        pSnap->mTime = step;
        snaps.push_back(std::move(pSnap));
    }
    return snaps;
}

// By ID, linear, vanished particles shrink and move on along their last step, sorted by distance.
ViewerClone_cls* MakeByIDViewer() {
    auto* pViewer = new ViewerClone_cls;
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpolateBy=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpType=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "VanishSizeType=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "ExtrapolateType=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "SortType=", "3");
    return pViewer;
}

struct FrameArgs {
    int a, b, before, after; // indices of the snaps, -1 for none
    double t;
};

bool PrepareFrame(ParticleForRender_cls& set, std::vector<std::unique_ptr<ParticleSnap_cls>>& snaps,
                  const FrameArgs& f, bool bNext) {
    auto get = [&snaps](int k) { return k < 0 ? nullptr : snaps[k].get(); };
    PositionAndDirection_cls camera;
    camera.mPos[2] = 50.0;
    return set.PrepareData(get(f.a), get(f.b), get(f.before), get(f.after), f.a, 0, 0, f.t, MakeByIDViewer(),
                           nullptr, f.t, camera, bNext);
}

// Every prepared array, element by element, bit for bit.
void ExpectSameSet(const ParticleForRender_cls& got, const ParticleForRender_cls& want) {
    ASSERT_EQ(got.mNumber, want.mNumber);
    ASSERT_GT(got.mNumber, 0);
    for (long long i = 0; i < want.mNumber; ++i) {
        for (int k = 0; k < 3; ++k)
            ASSERT_EQ(got.mXYZ[3 * i + k], want.mXYZ[3 * i + k]) << "element " << i;
        ASSERT_EQ(got.mSize[i], want.mSize[i]) << "element " << i;
        ASSERT_EQ(got.mType[i], want.mType[i]) << "element " << i;
        ASSERT_EQ(got.mColorS[i], want.mColorS[i]) << "element " << i;
        ASSERT_EQ(got.mColorT[i], want.mColorT[i]) << "element " << i;
        ASSERT_EQ(got.mOrder[i].mIndex, want.mOrder[i].mIndex) << "element " << i;
        ASSERT_EQ(got.mOrder[i].mValue, want.mOrder[i].mValue) << "element " << i;
    }
}

int CountSearches(const LogCapture_cls& log, double time) {
    return CountLines(log, wxString::Format("time %g", time));
}

} // namespace

// The worker prepares one set while the main thread prepares the other, from the same snaps whose index
// tables neither has built yet: each pair is searched by one of them while the other waits for the
// tables, and both sets come out as if prepared one after the other.
TEST(RenderSetsAtOnce, WorkerAndMainThreadPrepareFromTheSameSnaps) {
    const int kCount = 60000; // two workers per pass due now, one in the background
    struct Case {
        const char* name;
        FrameArgs main, next;
    } cases[] = {
        // Two factors of the same pair: both need A against B and B against the snap after it.
        {"same pair", {1, 2, 0, 3, 0.25}, {1, 2, 0, 3, 0.5}},
        // The frame after: the worker's A is the main pass's B. At factor 0 its result does not depend
        // on whether the predecessors of its A are known yet.
        {"next pair", {1, 2, 0, 3, 0.75}, {2, 3, 1, -1, 0.0}},
    };
    for (const Case& c : cases) {
        for (int round = 0; round < 3; ++round) {
            SCOPED_TRACE(testing::Message() << c.name << ", round " << round);
            // The reference: fresh snaps, one set after the other on this thread.
            auto refSnaps = MakeSnapsByID(4, kCount);
            ParticleForRender_cls refBefore, refMain, refNext;
            ASSERT_TRUE(PrepareFrame(refBefore, refSnaps, {0, 1, -1, -1, 0.5}, false));
            ASSERT_TRUE(PrepareFrame(refMain, refSnaps, c.main, false));
            ASSERT_TRUE(PrepareFrame(refNext, refSnaps, c.next, true));

            auto snaps = MakeSnapsByID(4, kCount);
            ParticleForRender_cls before, current, next;
            // The pair before is searched first, as the frame before would have done.
            ASSERT_TRUE(PrepareFrame(before, snaps, {0, 1, -1, -1, 0.5}, false));
            wxLog::FlushActive(); // lines of the passes above, which the toolkit holds until a flush
            LogCapture_cls log;
            ThreadParticlePrepareNext_cls worker;
            worker.Start([&]() { return PrepareFrame(next, snaps, c.next, true); });
            const bool bMain = PrepareFrame(current, snaps, c.main, false);
            const bool bWorker = worker.Join();
            wxLog::FlushActive(); // the workers' lines wait in the toolkit's buffer until now
            ASSERT_TRUE(bMain);
            ASSERT_TRUE(bWorker);
            ExpectSameSet(current, refMain);
            ExpectSameSet(next, refNext);
            // Each pair searched by one pass only: 2 lines from a pass due now, 1 from the background.
            const int searchesA = CountSearches(log, 1.0), searchesB = CountSearches(log, 2.0);
            EXPECT_TRUE(searchesA == 1 || searchesA == 2) << searchesA << " lines for the pair 1, 2";
            EXPECT_TRUE(searchesB == 1 || searchesB == 2) << searchesB << " lines for the pair 2, 3";
            EXPECT_FALSE(log.Contains("Timeout"));
            for (int k = 1; k < 3; ++k) {
                EXPECT_TRUE(snaps[k]->mIDDone) << "snap " << k;
                EXPECT_TRUE(snaps[k + 1]->mPrevDone) << "snap " << k + 1;
            }
        }
    }
}
