// The snap cache: which steps the playback window protects, which snap goes first when memory
// runs short, frame-to-index folding, and the one-read-per-sequence rule of prefetching.
#include "DataSequence_cls.h"
#include "ParticleSequence_cls.h"
#include "SequenceRemapBase_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

// The remap of the tests: a step number as a function of normalised time.
class TestRemap_cls : public SequenceRemapBase_cls {
public:
    explicit TestRemap_cls(std::function<double(double)> func, bool repeat = false)
        : mFunc(std::move(func)), mbRepeat(repeat) {}
    double GetRemapValue(double nt) override { return mFunc(nt); }
    bool GetRemapRepeat() override { return mbRepeat; }
    int GetRemappedFrame(double time, int, int) override {
        return static_cast<int>(std::floor(mFunc(time) + 1e-7));
    }
    std::function<double(double)> mFunc;
    bool mbRepeat;
};

class DataSequenceTest : public DataFileFixture_cls {
protected:
    // count numbered files p0000.dat ... on disk, counted into the sequence; every slot filled.
    void MakeSequence(ParticleSequence_cls& seq, int count, bool fill = true) {
        Bytes_cls b;
        b.F(1).F(2).F(3);
        for (int i = 0; i < count; ++i)
            ASSERT_TRUE(WriteBytes(mDir.Path(wxString::Format("p%04d.dat", i)), b.mStr));
        seq.FileSequence_cls::Set(mDir.Path("p0000.dat"), 0, 1);
        seq.CalcMaxOffset(true);
        seq.mIsSequence = count != 1;
        ASSERT_EQ(seq.GetSnapCount(), count);
        if (fill)
            for (int i = 0; i < count; ++i)
                seq.GenerateIfNot(i);
    }
};

TEST_F(DataSequenceTest, EvictionPrefersOldDrawsAndFarFrames) {
    ParticleSequence_cls seq;
    MakeSequence(seq, 5);
    struct Stamp {
        int draw, distance;
        bool priority;
    };
    struct Case {
        const char* name;
        Stamp s[5];
        int expected;
    } cases[] = {
        {"never drawn goes before every drawn one",
         {{3, 0, 0}, {-1, 0, 0}, {0, 0, 0}, {5, 0, 0}, {2, 0, 0}},
         1},
        {"one frame of distance weighs half a draw",
         {{4, 0, 0}, {5, 4, 0}, {6, 0, 0}, {7, 0, 0}, {8, 0, 0}},
         1},
        {"a tie keeps the lower index", {{5, 2, 0}, {4, 0, 0}, {9, 0, 0}, {4, 0, 0}, {9, 0, 0}}, 0},
        {"protected snaps are skipped", {{0, 0, 1}, {1, 0, 1}, {9, 0, 0}, {8, 0, 0}, {0, 0, 1}}, 3},
        {"all protected: nothing", {{0, 0, 1}, {1, 0, 1}, {9, 0, 1}, {8, 0, 1}, {0, 0, 1}}, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (int i = 0; i < 5; ++i) {
            seq.GetPCSnap(i)->mDrawStamp = c.s[i].draw;
            seq.GetPCSnap(i)->mDistance = c.s[i].distance;
            seq.GetPCSnap(i)->mPriority = c.s[i].priority;
        }
        EXPECT_EQ(seq.GetOldestDrawnIndex(), c.expected);
    }
    seq.mSnaps[2].reset();
    seq.mSnaps[3].reset();
    EXPECT_EQ(seq.GetOldestDrawnIndex(), -1) << "empty slots are skipped";
}

TEST_F(DataSequenceTest, PriorityWindowCoversTheNextPrefetchFrames) {
    ParticleSequence_cls seq;
    MakeSequence(seq, 20);
    struct Case {
        int current, prefetch;
        int first, last; // protected steps
    } cases[] = {{5, 3, 5, 8}, {0, 10, 0, 10}, {17, 10, 17, 19}, {5, 0, 5, 5}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "current " << c.current << " prefetch " << c.prefetch);
        mServices.SetFrames(20, c.current);
        mServices.SetPrefetch(c.prefetch);
        seq.MarkPriority(nullptr, false);
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(seq.GetPCSnap(i)->mPriority, i >= c.first && i <= c.last) << i;
            EXPECT_EQ(seq.GetPCSnap(i)->mDistance, std::abs(i - c.current)) << i;
        }
    }
}

TEST_F(DataSequenceTest, ALaterFrameOfTheSameStepDecidesItsMark) {
    // Steps 0..3 again and again: frames 1 and 2 are in the window, but frames 5, 6, 9, 10 map to
    // the same steps later, and the frames are walked in rising order.
    ParticleSequence_cls seq;
    MakeSequence(seq, 4);
    mServices.SetFrames(12, 1);
    mServices.SetPrefetch(1);
    TestRemap_cls remap([](double nt) { return std::fmod(std::floor(nt * 12 + 1e-9), 4.0); });
    seq.MarkPriority(&remap, false);
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_FALSE(seq.GetPCSnap(i)->mPriority);
        EXPECT_EQ(seq.GetPCSnap(i)->mDistance, 8 + i - 1); // the last frame of the step, 8 + i
    }
    // A remap that stays on step 2 from frame 1 on protects it.
    TestRemap_cls hold([](double nt) { return nt * 12 < 0.5 ? 0.0 : 2.0; });
    mServices.SetFrames(4, 1);
    seq.MarkPriority(&hold, false);
    EXPECT_FALSE(seq.GetPCSnap(2)->mPriority) << "frame 3 lies outside the window and maps there too";
    mServices.SetPrefetch(5);
    seq.MarkPriority(&hold, false);
    EXPECT_TRUE(seq.GetPCSnap(2)->mPriority);
}

TEST_F(DataSequenceTest, SingleStepIsNeverProtectedNorEvicted) {
    ParticleSequence_cls seq;
    MakeSequence(seq, 1);
    seq.GetPCSnap(0)->mPriority = true;
    mServices.SetFrames(10, 0);
    seq.MarkPriority(nullptr, false);
    EXPECT_FALSE(seq.GetPCSnap(0)->mPriority);
    EXPECT_EQ(seq.GetOldestDrawnIndex(), -1);
    EXPECT_FALSE(seq.ReleaseMemoryData(nullptr));
    EXPECT_NE(seq.GetPCSnap(0), nullptr);
}

TEST_F(DataSequenceTest, ReleaseFreesOneSnapPerCall) {
    LogCapture_cls log;
    ParticleSequence_cls seq;
    MakeSequence(seq, 6);
    for (int i = 0; i < 6; ++i)
        seq.GetPCSnap(i)->mFile = mDir.Path(wxString::Format("p%04d.dat", i));
    mServices.SetFrames(6, 2);
    mServices.SetPrefetch(1);
    // Steps 2 and 3 are protected; of the rest, 0 is furthest and oldest.
    EXPECT_TRUE(seq.ReleaseMemoryData(nullptr));
    EXPECT_EQ(seq.GetPCSnap(0), nullptr);
    EXPECT_TRUE(log.Contains("ReleaseLog :: " + mDir.Path("p0000.dat") + "\n"));
    int left = 0;
    while (seq.ReleaseMemoryData(nullptr))
        ++left;
    EXPECT_EQ(left, 3) << "steps 1, 4, 5 go one per call";
    EXPECT_NE(seq.GetPCSnap(2), nullptr);
    EXPECT_NE(seq.GetPCSnap(3), nullptr);
    seq.mSnaps[3].reset();
    EXPECT_FALSE(seq.ReleaseMemoryData(nullptr)) << "the protected step stays until the cursor moves";
    mServices.SetFrames(6, 4);
    EXPECT_TRUE(seq.ReleaseMemoryData(nullptr));
    EXPECT_EQ(seq.GetPCSnap(2), nullptr);
}

TEST_F(DataSequenceTest, FramesFoldIntoTheSteps) {
    ParticleSequence_cls seq;
    MakeSequence(seq, 5, false);
    mServices.SetFrames(100, 0);
    EXPECT_EQ(seq.GetRemappedIndex(3, nullptr, 0.0, false), 3);
    EXPECT_EQ(seq.GetRemappedIndex(7, nullptr, 0.0, false), 4) << "the last step stays current";
    EXPECT_EQ(seq.GetRemappedIndex(7, nullptr, 0.0, true), 2) << "the numbering wraps";
    EXPECT_EQ(seq.GetRemappedIndex(-2, nullptr, 0.0, true), -2) << "only the upper side folds";
    TestRemap_cls remap([](double t) { return t * 10.0 - 1e-7; });
    EXPECT_EQ(seq.GetRemappedIndex(0, &remap, 0.3, false), 3) << "2.9999999 is step 3";
    EXPECT_EQ(seq.GetRemappedIndex(0, &remap, 0.8, true), 3);
    // The dual count folds as well once it is known.
    seq.FileSequenceDual_cls::mMaxOffset = 3;
    EXPECT_EQ(seq.GetRemappedIndex(4, nullptr, 0.0, false), 2);
    EXPECT_EQ(seq.GetRemappedIndex(4, nullptr, 0.0, true), 1);
}

TEST_F(DataSequenceTest, ModFrameClampsOrWraps) {
    struct Case {
        int frame, count;
        bool repeat;
        int expected;
    } cases[] = {{3, 5, false, 3}, {5, 5, false, 4}, {-3, 5, false, 0}, {5, 5, true, 0},
                 {12, 5, true, 2}, {-1, 5, true, 4}, {-6, 5, true, 4},  {3, 0, false, 0}};
    for (const Case& c : cases) {
        int frame = c.frame;
        DataSequence_cls::ModFrame(frame, c.count, c.repeat);
        EXPECT_EQ(frame, c.expected) << c.frame << " of " << c.count << (c.repeat ? " repeat" : "");
    }
}

TEST_F(DataSequenceTest, SwitchedOffSequenceUsesSlotZero) {
    ParticleSequence_cls seq;
    Bytes_cls b;
    ASSERT_TRUE(WriteBytes(mDir.Path("one0007.dat"), b.F(1).F(2).F(3).mStr));
    seq.FileSequence_cls::Set(mDir.Path("one0007.dat"), 0, 1);
    seq.CalcMaxOffset(false);
    ASSERT_EQ(seq.GetSnapCount(), 1);
    EXPECT_TRUE(seq.IsDataValid());
    EXPECT_EQ(seq.GenerateIfNot(7), seq.GenerateIfNot(0));
    EXPECT_EQ(seq.GetStrFileOfIndex(5), mDir.Path("one0007.dat"));

    ParticleSequence_cls missing;
    missing.FileSequence_cls::Set(mDir.Path("none.dat"), 0, 1);
    missing.CalcMaxOffset(false);
    EXPECT_FALSE(missing.IsDataValid());
    EXPECT_EQ(ParticleSequence_cls().GenerateIfNot(0), nullptr) << "no slots before counting";
}

TEST_F(DataSequenceTest, PrefetchStartsOneReadPerCall) {
    LogCapture_cls log;
    ParticleSequence_cls seq;
    MakeSequence(seq, 6, false);
    mServices.SetFrames(6, 0);
    mServices.SetPrefetch(3);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({}), Names({"XYZ(float)"}));
    auto started = [&seq]() {
        int n = 0;
        for (int i = 0; i < seq.GetSnapCount(); ++i)
            if (seq.GetPCSnap(i) && seq.GetPCSnap(i)->mReadStarted)
                ++n;
        return n;
    };
    // While a reader runs on the sequence nothing else starts, not even a header read.
    seq.PushLock();
    EXPECT_FALSE(seq.PrefetchData(&clone, nullptr));
    EXPECT_EQ(seq.GetPCSnap(0), nullptr);
    seq.PopLock();
    // Frames 0..2 and the step after each: steps 0..3, one per call.
    for (int call = 1; call <= 4; ++call) {
        SCOPED_TRACE(call);
        ASSERT_TRUE(seq.PrefetchData(&clone, nullptr));
        EXPECT_EQ(started(), call);
        seq.GetPCSnap(call - 1)->WaitReadingThread(1);
        EXPECT_EQ(seq.mReadingLock.load(), 0);
    }
    EXPECT_FALSE(seq.PrefetchData(&clone, nullptr)) << "everything in reach is read";
    EXPECT_EQ(seq.GetPCSnap(4), nullptr);
    FlushThreadLogs();
    EXPECT_TRUE(log.Contains("ReadLog :: " + mDir.Path("p0003.dat") + "::"));
    EXPECT_FLOAT_EQ(seq.GetPCSnap(3)->mXYZ[2], 3.0f);

    // A remap sends the prefetch elsewhere; steps out of range are passed over.
    TestRemap_cls remap([](double) { return 4.0; });
    ASSERT_TRUE(seq.PrefetchData(&clone, &remap));
    seq.GetPCSnap(4)->WaitReadingThread(1);
    TestRemap_cls outside([](double) { return 40.0; });
    EXPECT_FALSE(seq.PrefetchData(&clone, &outside));
    FlushThreadLogs();
}

TEST_F(DataSequenceTest, MemoryIsSummedInWholeMegabytes) {
    ParticleSequence_cls seq;
    MakeSequence(seq, 3, false);
    ParticleSnap_cls* pSnap = seq.GenerateIfNot(1);
    pSnap->mHasType = true;
    pSnap->mHasID = true;
    pSnap->AllocateIfNot(100000);
    EXPECT_EQ(pSnap->GetUsedMemoryByte(), 100000LL * (12 + 1 + 4));
    pSnap->CheckAllocateNextIndex(true);
    EXPECT_EQ(pSnap->mPrevIndex[5], -1);
    EXPECT_EQ(pSnap->mNextIndex[5], 5);
    EXPECT_EQ(pSnap->GetUsedMemoryByte(), 100000LL * (12 + 1 + 4 + 4));
    seq.GenerateIfNot(2)->AllocateIfNot(100000);
    EXPECT_EQ(seq.GetTotalUsedMemoryMB(), (100000 * 21 + 100000 * 12) / 1048576);
    EXPECT_EQ(seq.mTotalMB, 3);
    // Draw stamps count up.
    seq.GetPCSnap(2)->MarkDraw();
    pSnap->MarkDraw();
    EXPECT_EQ(seq.GetPCSnap(2)->mDrawStamp, -1);
    EXPECT_EQ(pSnap->mDrawStamp, 0);
    EXPECT_EQ(seq.mDrawCounter, 1);
}

} // namespace
