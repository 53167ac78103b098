#include "ThreadReadBuffer_cls.h"

#include <chrono>

ThreadReadBuffer_cls::~ThreadReadBuffer_cls() {
    if (!mThread.joinable())
        return;
    Wait();
    mbQuit.store(true, std::memory_order_release);
    Notify();
    mThread.join();
}

void ThreadReadBuffer_cls::SetParameters(std::atomic<bool>* pbFinished, std::istream* pStream, char* pBuffer,
                                         long long size) {
    mpbFinished = pbFinished;
    mpStream = pStream;
    mpBuffer = pBuffer;
    mSize = size;
    mReadBytes = 0;
}

void ThreadReadBuffer_cls::Run() {
    mpbFinished->store(false, std::memory_order_relaxed);
    // One thread per read of a file rather than one per chunk: starting a thread for every chunk
    // kept the helper from getting ahead of the decoder, and the overlapped read was slower than
    // a plain one.
    if (!mThread.joinable())
        mThread = std::thread(&ThreadReadBuffer_cls::Entry, this);
    mRequested.fetch_add(1, std::memory_order_release);
    Notify();
}

void ThreadReadBuffer_cls::Wait() {
    WaitUntil([this] {
        return mServed.load(std::memory_order_acquire) >= mRequested.load(std::memory_order_relaxed);
    });
}

template <typename Pred> void ThreadReadBuffer_cls::WaitUntil(Pred ready) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(2000);
    while (!ready()) {
        if (std::chrono::steady_clock::now() >= until) {
            std::unique_lock<std::mutex> lock(mMutex);
            mCond.wait(lock, ready);
            return;
        }
        std::this_thread::yield();
    }
}

void ThreadReadBuffer_cls::Notify() {
    // Taking the lock once orders the change before a waiter's last look under the lock, so no
    // wake-up is lost.
    { std::lock_guard<std::mutex> lock(mMutex); }
    mCond.notify_all();
}

void ThreadReadBuffer_cls::Entry() {
    long long served = 0;
    for (;;) {
        WaitUntil([this, served] {
            return mbQuit.load(std::memory_order_acquire) ||
                   mRequested.load(std::memory_order_acquire) > served;
        });
        if (mRequested.load(std::memory_order_acquire) <= served)
            return; // asked to quit with nothing left to read
        mpStream->read(mpBuffer, mSize);
        mReadBytes = mpStream->gcount();
        mpbFinished->store(true, std::memory_order_release);
        ++served;
        mServed.store(served, std::memory_order_release);
        Notify();
    }
}
