// A helper thread that reads a stream into a buffer on request, so the binary particle reader can
// decode one chunk while the next is read. The thread starts with the first request and serves
// every later one of the same read until the object goes; one request runs at a time, so reads of
// the stream stay in order.
#pragma once

#include <atomic>
#include <condition_variable>
#include <istream>
#include <mutex>
#include <thread>

class ThreadReadBuffer_cls {
public:
    ThreadReadBuffer_cls() = default;
    // Waits for the running request and ends the thread.
    ~ThreadReadBuffer_cls();
    ThreadReadBuffer_cls(const ThreadReadBuffer_cls&) = delete;
    ThreadReadBuffer_cls& operator=(const ThreadReadBuffer_cls&) = delete;

    // Stores the flag that is set when the read has ended, the stream, the buffer and the byte
    // count of the next request. Not owned, all of them. Only between requests: after Wait.
    void SetParameters(std::atomic<bool>* pbFinished, std::istream* pStream, char* pBuffer, long long size);
    // Hands the request to the helper thread, which does one read of the stream into the buffer.
    void Run();
    // Waits until the request has ended. The flag is set by then.
    void Wait();
    // Bytes actually read by the last request; valid after Wait.
    long long GetReadBytes() const { return mReadBytes; }

private:
    void Entry();
    // Spins for a moment and then sleeps until ready() holds: a chunk from the page cache takes
    // well under a millisecond, and waking a sleeping thread costs a good part of that.
    template <typename Pred> void WaitUntil(Pred ready);
    void Notify();

    std::atomic<bool>* mpbFinished = nullptr;
    std::istream* mpStream = nullptr;
    char* mpBuffer = nullptr;
    long long mSize = 0;
    long long mReadBytes = 0;
    // Requests handed over and requests served; the parameters above change hands with them.
    std::atomic<long long> mRequested{0};
    std::atomic<long long> mServed{0};
    std::atomic<bool> mbQuit{false};
    std::mutex mMutex;
    std::condition_variable mCond;
    std::thread mThread;
};
