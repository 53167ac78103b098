// Worker passes: the thread-count table, the index ranges, a threaded pass over an array, and the
// bounded job list.
#include "TestSupport.h"
#include "ThreadCommonTypeB_cls.h"
#include "ThreadCommon_cls.h"
#include "ThreadInstanceTypeB_cls.h"
#include "ThreadInstance_cls.h"

#include <gtest/gtest.h>
#include <wx/debug.h>

#include <chrono>
#include <climits>
#include <thread>
#include <vector>

namespace {

// Polls cond for up to ten seconds; for waiting on other threads, not for timing them.
template <class Cond> bool WaitUntil(Cond cond) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!cond()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

class CPUCountScope {
public:
    explicit CPUCountScope(int count) : mOld(ThreadCommon_cls::msCPUCount.load()) {
        ThreadCommon_cls::msCPUCount = count;
    }
    ~CPUCountScope() { ThreadCommon_cls::msCPUCount = mOld; }

private:
    int mOld;
};

TEST(ThreadCommonTest, ThreadCountFollowsTheTable) {
    // Elements at the top of each band: threads now and in the background, up to 12 CPUs and from 13.
    const int rows[][5] = {{10000, 1, 1, 1, 1},    {100000, 2, 2, 1, 1},     {1000000, 3, 3, 2, 2},
                           {10000000, 4, 8, 3, 3}, {100000000, 5, 10, 4, 8}, {INT_MAX, 6, 12, 5, 10}};
    // Only the threshold between 12 and 13 processors matters, never the count itself.
    for (int cpus : {1, 12, 13, 64}) {
        CPUCountScope scope(cpus);
        const int many = cpus >= 13 ? 1 : 0;
        for (size_t r = 0; r < std::size(rows); ++r) {
            SCOPED_TRACE(testing::Message() << rows[r][0] << " elements, " << cpus << " CPUs");
            EXPECT_EQ(ThreadCommon_cls::GetThreadCount(rows[r][0], false), rows[r][1 + many]);
            EXPECT_EQ(ThreadCommon_cls::GetThreadCount(rows[r][0], true), rows[r][3 + many]);
            // One more element takes the next band.
            if (r + 1 < std::size(rows)) {
                EXPECT_EQ(ThreadCommon_cls::GetThreadCount(rows[r][0] + 1, false), rows[r + 1][1 + many]);
                EXPECT_EQ(ThreadCommon_cls::GetThreadCount(rows[r][0] + 1, true), rows[r + 1][3 + many]);
            }
        }
    }

    CPUCountScope scope(13);
    int n = 0;
    std::atomic<bool>* list = ThreadCommon_cls::GetNewPCbFinishList(n, 20000000, false);
    ASSERT_EQ(n, 10);
    for (int i = 0; i < n; ++i)
        EXPECT_FALSE(list[i].load());
    for (int i = 0; i < n; ++i)
        list[i] = true;
    ThreadCommon_cls::WaitThreadsAndDeleteFlag(list, n, 1); // all set: returns and frees
}

TEST(ThreadCommonTest, RangesCoverTheElementsOnceLastTakesTheRemainder) {
    int ini = -1, fin = -1;
    // Fewer elements than threads included: all ranges but the last are empty.
    for (int threads = 1; threads <= 12; ++threads) {
        for (int count : {0, 1, 2, 7, 10, 11, 12, 13, 99, 1001}) {
            SCOPED_TRACE(testing::Message() << count << " elements on " << threads << " threads");
            int expectedIni = 0;
            for (int t = 0; t < threads; ++t) {
                ThreadCommon_cls::GetIniAndFin(ini, fin, t, threads, count);
                EXPECT_EQ(ini, expectedIni);
                EXPECT_EQ(fin - ini,
                          t == threads - 1 ? count - (count / threads) * (threads - 1) : count / threads);
                expectedIni = fin;
            }
            EXPECT_EQ(expectedIni, count);
        }
    }

    LogCapture_cls log;
    ThreadCommon_cls::GetIniAndFin(ini, fin, 0, 0, 10);
    EXPECT_EQ(ini, 0);
    EXPECT_EQ(fin, 0);
    EXPECT_TRUE(log.Contains("thread count 0"));
}

std::atomic<int> gFillWorkersAlive{0};

class FillWorker_cls : public ThreadInstance_cls {
public:
    FillWorker_cls() { ++gFillWorkersAlive; }
    ~FillWorker_cls() override { --gFillWorkersAlive; }
    void SetParameters(int* out) { mpOut = out; }

protected:
    void Work() override {
        for (int i = mIni; i < mFin; ++i)
            mpOut[i] = 3 * i + 1;
    }

private:
    int* mpOut = nullptr;
};

TEST(ThreadCommonTest, ThreadedPassFillsEveryElementOfItsRange) {
    for (bool background : {false, true}) {
        SCOPED_TRACE(background ? "background" : "now");
        const int count = 250001;
        std::vector<int> out(count, -1);
        int n = 0;
        std::atomic<bool>* list = ThreadCommon_cls::GetNewPCbFinishList(n, count, background);
        ASSERT_EQ(n, background ? 2 : 3);
        for (int i = 0; i < n; ++i) {
            int ini, fin;
            ThreadCommon_cls::GetIniAndFin(ini, fin, i, n, count);
            auto* pWorker = new FillWorker_cls;
            pWorker->SetParameters(out.data());
            ThreadCommon_cls::StartWorker(pWorker, &list[i], ini, fin);
        }
        ThreadCommon_cls::WaitThreadsAndDeleteFlag(list, n, 1);
        int wrong = 0;
        for (int i = 0; i < count; ++i)
            if (out[i] != 3 * i + 1 && wrong++ < 5)
                ADD_FAILURE() << "element " << i << " is " << out[i];
        EXPECT_EQ(wrong, 0);
        // Each worker has deleted itself before its flag was set.
        EXPECT_EQ(gFillWorkersAlive.load(), 0);
    }
}

TEST(ThreadCommonTest, WorkOnThisThreadSetsTheFlag) {
    std::vector<int> out(10, -1);
    std::atomic<bool> flag{false};
    FillWorker_cls worker;
    worker.mpbFinish = &flag;
    worker.mIni = 2;
    worker.mFin = 5;
    worker.SetParameters(out.data());
    worker.RunOnThisThread();
    EXPECT_TRUE(flag.load());
    EXPECT_EQ(out, (std::vector<int>{-1, -1, 7, 10, 13, -1, -1, -1, -1, -1}));
}

// A job that holds until the test opens its gate, recording how many run at once.
struct JobBoard {
    std::atomic<int> running{0};
    std::atomic<int> maxRunning{0};
    std::atomic<int> started{0};
    std::atomic<int> finished{0};
    std::atomic<int> deleted{0};
    std::atomic<bool> gates[6] = {};
};

class GateJob_cls : public ThreadInstanceTypeB_cls {
public:
    GateJob_cls(JobBoard* board, int index) : mpBoard(board), mIndex(index) {}
    ~GateJob_cls() override { ++mpBoard->deleted; }

protected:
    void Work() override {
        ++mpBoard->started;
        const int now = ++mpBoard->running;
        int seen = mpBoard->maxRunning.load();
        while (now > seen && !mpBoard->maxRunning.compare_exchange_weak(seen, now)) {
        }
        while (!mpBoard->gates[mIndex].load())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        --mpBoard->running;
        ++mpBoard->finished;
    }

private:
    JobBoard* mpBoard;
    int mIndex;
};

TEST(ThreadCommonTypeBTest, NoMoreJobsRunThanTheThreadNumber) {
    JobBoard board;
    std::atomic<bool> producerDone{false};
    std::thread producer([&] {
        ThreadCommonTypeB_cls jobs;
        jobs.SetThreadNumber(2);
        std::atomic<int>* status = jobs.GetNewPStatusList(6);
        for (int i = 0; i < 6; ++i) {
            jobs.WaitForThread(status);
            auto* pJob = new GateJob_cls(&board, i);
            pJob->CreateThread(&status[i]);
            if (!pJob->Run()) {
                pJob->RunOnThisThread();
                delete pJob;
            }
        }
        jobs.WaitFinishAndDeleteFlag(status, -1);
        producerDone = true;
    });

    ASSERT_TRUE(WaitUntil([&] { return board.started.load() == 2; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(board.started.load(), 2); // the third waits for a free place
    board.gates[0] = true;
    ASSERT_TRUE(WaitUntil([&] { return board.started.load() == 3; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(board.started.load(), 3);
    EXPECT_FALSE(producerDone.load());
    for (auto& gate : board.gates)
        gate = true;
    producer.join();
    EXPECT_TRUE(producerDone.load());
    EXPECT_EQ(board.finished.load(), 6);
    EXPECT_EQ(board.deleted.load(), 6); // every job deleted itself before it reported finished
    EXPECT_EQ(board.maxRunning.load(), 2);
}

void CountAssert(const wxString&, int, const wxString&, const wxString&, const wxString&);
int gAssertCount = 0;
void CountAssert(const wxString&, int, const wxString&, const wxString&, const wxString&) {
    ++gAssertCount;
}

TEST(ThreadCommonTypeBTest, StatusListLengthAndThreadNumberAreChecked) {
    ThreadCommonTypeB_cls jobs;
    jobs.WaitForThread(nullptr); // no list yet: returns at once

    gAssertCount = 0;
    wxAssertHandler_t old = wxSetAssertHandler(CountAssert);
    EXPECT_EQ(jobs.GetNewPStatusList(0), nullptr);
    EXPECT_EQ(jobs.GetNewPStatusList(513), nullptr);
    wxSetAssertHandler(old);
    EXPECT_EQ(gAssertCount, 2);
    EXPECT_EQ(jobs.mStatusNumber, 0);

    std::atomic<int>* status = jobs.GetNewPStatusList(512);
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(jobs.mStatusNumber, 512);
    for (int i = 0; i < 512; ++i)
        EXPECT_EQ(status[i].load(), ThreadCommonTypeB_cls::kStatusWaiting);
    status[0] = ThreadCommonTypeB_cls::kStatusRunning;
    jobs.SetThreadNumber(2);
    jobs.WaitForThread(status); // one running, two allowed: returns

    LogCapture_cls log;
    jobs.SetThreadNumber(0);
    EXPECT_EQ(jobs.mThreadNumber, 1);
    EXPECT_TRUE(log.Contains("SetThreadNumber"));

    // A count other than -1 replaces the length: only the first three slots are waited for.
    for (int i = 0; i < 3; ++i)
        status[i] = ThreadCommonTypeB_cls::kStatusFinished;
    jobs.WaitFinishAndDeleteFlag(status, 3);
    EXPECT_EQ(jobs.mStatusNumber, 3);
}

} // namespace
