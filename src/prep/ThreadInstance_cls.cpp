#include "ThreadInstance_cls.h"

bool ThreadInstance_cls::CreateThread(std::atomic<bool>* finish, int ini, int fin) {
    mpbFinish = finish;
    mIni = ini;
    mFin = fin;
    return Create() == wxTHREAD_NO_ERROR;
}

void ThreadInstance_cls::RunOnThisThread() {
    Work();
    if (mpbFinish)
        mpbFinish->store(true, std::memory_order_release);
}

wxThread::ExitCode ThreadInstance_cls::Entry() {
    std::atomic<bool>* pbFinish = mpbFinish;
    Work();
    if (pbFinish)
        pbFinish->store(true, std::memory_order_release);
    return nullptr;
}
