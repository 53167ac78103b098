#include "ThreadInstanceTypeB_cls.h"

#include "ThreadCommonTypeB_cls.h"

bool ThreadInstanceTypeB_cls::CreateThread(std::atomic<int>* status) {
    mpStatus = status;
    if (mpStatus)
        mpStatus->store(ThreadCommonTypeB_cls::kStatusRunning, std::memory_order_release);
    if (Create() == wxTHREAD_NO_ERROR)
        return true;
    if (mpStatus)
        mpStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
    return false;
}

void ThreadInstanceTypeB_cls::RunOnThisThread() {
    Work();
    if (mpStatus)
        mpStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
}

wxThread::ExitCode ThreadInstanceTypeB_cls::Entry() {
    std::atomic<int>* pStatus = mpStatus;
    Work();
    if (pStatus)
        pStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
    return nullptr;
}
