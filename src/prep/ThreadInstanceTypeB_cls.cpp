#include "ThreadInstanceTypeB_cls.h"

#include "ThreadCommonTypeB_cls.h"

#include <system_error>
#include <thread>

bool ThreadInstanceTypeB_cls::CreateThread(std::atomic<int>* status) {
    mpStatus = status;
    if (mpStatus)
        mpStatus->store(ThreadCommonTypeB_cls::kStatusRunning, std::memory_order_release);
    return true;
}

bool ThreadInstanceTypeB_cls::Run() {
    try {
        std::thread(&ThreadInstanceTypeB_cls::Entry, this).detach();
    } catch (const std::system_error&) {
        if (mpStatus)
            mpStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
        return false;
    }
    return true;
}

void ThreadInstanceTypeB_cls::RunOnThisThread() {
    Work();
    if (mpStatus)
        mpStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
}

void ThreadInstanceTypeB_cls::Entry() {
    std::atomic<int>* pStatus = mpStatus;
    Work();
    delete this;
    if (pStatus)
        pStatus->store(ThreadCommonTypeB_cls::kStatusFinished, std::memory_order_release);
}
