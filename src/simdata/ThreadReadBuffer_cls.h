// A helper thread that does one read of a stream into a buffer, so the binary particle reader can
// decode one chunk while the next is read. At most one of these works on a stream at a time.
#pragma once

#include <atomic>
#include <istream>
#include <thread>

class ThreadReadBuffer_cls {
public:
    ThreadReadBuffer_cls() = default;
    // Collects the thread if the owner did not.
    ~ThreadReadBuffer_cls();
    ThreadReadBuffer_cls(const ThreadReadBuffer_cls&) = delete;
    ThreadReadBuffer_cls& operator=(const ThreadReadBuffer_cls&) = delete;

    // Stores the flag that is set when the read has ended, the stream, the buffer and the byte
    // count. Not owned, all of them.
    void SetParameters(std::atomic<bool>* pbFinished, std::istream* pStream, char* pBuffer, long long size);
    // Starts the read on its own thread.
    void Run();
    // Waits until the read has ended. The flag is set by then.
    void Wait();
    // Bytes actually read; valid after Wait.
    long long GetReadBytes() const { return mReadBytes; }

private:
    void Entry();

    std::atomic<bool>* mpbFinished = nullptr;
    std::istream* mpStream = nullptr;
    char* mpBuffer = nullptr;
    long long mSize = 0;
    long long mReadBytes = 0;
    std::thread mThread;
};
