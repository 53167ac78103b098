#include "ThreadCommon_cls.h"

#include "ThreadInstance_cls.h"

#include <wx/log.h>
#include <wx/utils.h>

std::atomic<int> ThreadCommon_cls::msCPUCount{1};

int ThreadCommon_cls::GetThreadCount(int elementCount, bool background) {
    // The split follows the data size first; the processor count only picks the column.
    const bool bMany = msCPUCount.load(std::memory_order_relaxed) >= 13;
    if (elementCount <= 10000)
        return 1;
    if (elementCount <= 100000)
        return background ? 1 : 2;
    if (elementCount <= 1000000)
        return background ? 2 : 3;
    if (elementCount <= 10000000)
        return background ? 3 : (bMany ? 8 : 4);
    if (elementCount <= 100000000)
        return background ? (bMany ? 8 : 4) : (bMany ? 10 : 5);
    return background ? (bMany ? 10 : 5) : (bMany ? 12 : 6);
}

std::atomic<bool>* ThreadCommon_cls::GetNewPCbFinishList(int& threadCount, int elementCount,
                                                         bool background) {
    threadCount = GetThreadCount(elementCount, background);
    std::atomic<bool>* list = new std::atomic<bool>[threadCount];
    for (int i = 0; i < threadCount; ++i)
        list[i].store(false, std::memory_order_relaxed);
    return list;
}

void ThreadCommon_cls::GetIniAndFin(int& ini, int& fin, int threadIndex, int threadCount, int elementCount) {
    if (threadCount < 1) {
        wxLogMessage("GetIniAndFin: thread count %d", threadCount);
        ini = fin = 0;
        return;
    }
    const int per = elementCount / threadCount;
    ini = per * threadIndex;
    fin = ini + per;
    if (threadIndex == threadCount - 1)
        fin = elementCount;
}

void ThreadCommon_cls::WaitThreadsNOTDeleteFlag(std::atomic<bool>* list, int count, int sleepMs) {
    if (!list)
        return;
    for (int i = 0; i < count; ++i)
        while (!list[i].load(std::memory_order_acquire))
            wxMilliSleep(sleepMs);
}

void ThreadCommon_cls::WaitThreadsAndDeleteFlag(std::atomic<bool>* list, int count, int sleepMs) {
    WaitThreadsNOTDeleteFlag(list, count, sleepMs);
    delete[] list;
}

void ThreadCommon_cls::StartWorker(ThreadInstance_cls* pWorker, std::atomic<bool>* pbFinish, int ini,
                                   int fin) {
    pWorker->CreateThread(pbFinish, ini, fin);
    if (pWorker->Run())
        return;
    wxLogMessage("Worker thread could not be started; range %d to %d is done on this thread", ini, fin);
    pWorker->RunOnThisThread();
    delete pWorker;
}
