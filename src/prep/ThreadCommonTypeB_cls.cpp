#include "ThreadCommonTypeB_cls.h"

#include <wx/debug.h>
#include <wx/log.h>
#include <wx/utils.h>

std::atomic<int>* ThreadCommonTypeB_cls::GetNewPStatusList(int count) {
    wxASSERT_MSG(count >= 1 && count <= kMaxStatusNumber, "count >= 1 && count <= 512");
    if (count < 1 || count > kMaxStatusNumber)
        return nullptr;
    mStatusNumber = count;
    std::atomic<int>* status = new std::atomic<int>[count];
    for (int i = 0; i < count; ++i)
        status[i].store(kStatusWaiting, std::memory_order_relaxed);
    return status;
}

void ThreadCommonTypeB_cls::SetThreadNumber(int number) {
    if (number < 1) {
        wxLogMessage("SetThreadNumber: %d jobs at a time is not possible, 1 is used", number);
        number = 1;
    }
    mThreadNumber = number;
}

void ThreadCommonTypeB_cls::WaitForThread(std::atomic<int>* status) {
    if (mStatusNumber <= 0 || !status)
        return; // mThreadNumber is above 0
    // A bound below 1, written to the field directly, would never let a job start.
    const int bound = mThreadNumber > 0 ? mThreadNumber : 1;
    for (;;) {
        int running = 0;
        for (int i = 0; i < mStatusNumber; ++i)
            if (status[i].load(std::memory_order_acquire) == kStatusRunning)
                ++running;
        if (running < bound)
            return;
        wxMilliSleep(1);
    }
}

void ThreadCommonTypeB_cls::WaitFinishAndDeleteFlag(std::atomic<int>* status, int count) {
    if (count != -1)
        mStatusNumber = count;
    if (!status)
        return;
    for (int i = 0; i < mStatusNumber; ++i)
        while (status[i].load(std::memory_order_acquire) != kStatusFinished)
            wxMilliSleep(1);
    delete[] status;
}
