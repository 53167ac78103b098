// The two render sets of a particle object: the frame prepared in the background is taken as it
// is when it is the frame now wanted, and prepared again now otherwise.
#include "ViewerFixture.h"

#include "DataMemoryCtrl_cls.h"
#include "Particle_cls.h"

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
    // The frame itself is read on the spot when its snap is missing.
    SetFrames(4, 2);
    ASSERT_TRUE(mpP->PrepareDraw(0, 0));
    EXPECT_EQ(CountLines(log, "Swap Render Snap"), 0);
    EXPECT_TRUE(AllAtStep(*mpP->mpCCurrent, 2.0f));
    mpP->WaitPrepareNext();
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
