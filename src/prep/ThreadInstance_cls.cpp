#include "ThreadInstance_cls.h"

#include <system_error>
#include <thread>

bool ThreadInstance_cls::CreateThread(std::atomic<bool>* finish, int ini, int fin) {
    mpbFinish = finish;
    mIni = ini;
    mFin = fin;
    return true;
}

bool ThreadInstance_cls::Run() {
    try {
        std::thread(&ThreadInstance_cls::Entry, this).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void ThreadInstance_cls::RunOnThisThread() {
    Work();
    if (mpbFinish)
        mpbFinish->store(true, std::memory_order_release);
}

void ThreadInstance_cls::Entry() {
    std::atomic<bool>* pbFinish = mpbFinish;
    Work();
    delete this;
    if (pbFinish)
        pbFinish->store(true, std::memory_order_release);
}
