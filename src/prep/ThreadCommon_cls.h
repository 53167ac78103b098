// Mixin of every class that spreads a pass over index ranges on short-lived worker threads: how many
// threads a pass gets, which range each takes, and the wait for their finish flags.
#pragma once

#include <atomic>

class ThreadInstance_cls;

class ThreadCommon_cls {
public:
    // Number of processors, set once at start-up from wxThread::GetCPUCount(). It only chooses between
    // the two columns of the thread-count table.
    static std::atomic<int> msCPUCount;

    // How many threads a pass over elementCount elements gets. background is true for the frame that is
    // prepared ahead on the background path, false for the frame that is due now. Never above 12.
    static int GetThreadCount(int elementCount, bool background);

    // Decides the thread count of a pass, writes it to threadCount and returns a new list of that many
    // finish flags, all false. The caller hands it to WaitThreadsAndDeleteFlag.
    static std::atomic<bool>* GetNewPCbFinishList(int& threadCount, int elementCount, bool background);

    // The half-open range of one thread: equal shares, the last takes the remainder.
    static void GetIniAndFin(int& ini, int& fin, int threadIndex, int threadCount, int elementCount);

    // Waits until every flag of the list is set, looking at the slots in order and sleeping sleepMs
    // between looks. The second form then frees the list. A count below 1 returns at once.
    static void WaitThreadsNOTDeleteFlag(std::atomic<bool>* list, int count, int sleepMs);
    static void WaitThreadsAndDeleteFlag(std::atomic<bool>* list, int count, int sleepMs);

    // Hands the worker its flag and range and starts its thread. Should the system refuse a thread, the
    // work is done here on the calling thread instead and the worker deleted, so the pass still completes
    // and its wait still ends. Either way the caller must not touch the worker afterwards.
    static void StartWorker(ThreadInstance_cls* pWorker, std::atomic<bool>* pbFinish, int ini, int fin);
};
