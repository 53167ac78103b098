#include "ThreadParticlePrepareNext_cls.h"

void ThreadParticlePrepareNext_cls::Start(std::function<bool()> job) {
    Join();
    mbFinished.store(false, std::memory_order_release);
    mbSuccess.store(false, std::memory_order_release);
    mThread = std::thread([this, job = std::move(job)]() {
        const bool bOK = job();
        mbSuccess.store(bOK, std::memory_order_release);
        mbFinished.store(true, std::memory_order_release);
    });
}

bool ThreadParticlePrepareNext_cls::Join() {
    if (mThread.joinable())
        mThread.join();
    return mbSuccess.load(std::memory_order_acquire);
}
