#include "ThreadReadBuffer_cls.h"

ThreadReadBuffer_cls::~ThreadReadBuffer_cls() {
    Wait();
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
    Wait();
    mpbFinished->store(false, std::memory_order_relaxed);
    mThread = std::thread(&ThreadReadBuffer_cls::Entry, this);
}

void ThreadReadBuffer_cls::Wait() {
    // A join instead of polling the flag every few milliseconds: the decoder waits for exactly
    // as long as the disk takes, which keeps the overlapped read as fast as a plain one.
    if (mThread.joinable())
        mThread.join();
}

void ThreadReadBuffer_cls::Entry() {
    mpStream->read(mpBuffer, mSize);
    mReadBytes = mpStream->gcount();
    mpbFinished->store(true, std::memory_order_release);
}
