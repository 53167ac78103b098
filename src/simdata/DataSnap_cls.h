// One time step of data in memory (a "snap"), the base of every kind of snap. The sequence owns
// its snaps. A snap carries at most one reader thread at a time; the thread hands its result over
// through mReadFinished alone.
#pragma once

#include <wx/string.h>

#include <atomic>
#include <functional>
#include <thread>

class DataSequence_cls;

class DataSnap_cls {
public:
    // kind: 0 volume, 1 particle, 2 image, 3 streamline.
    DataSnap_cls(DataSequence_cls* pSequence, int kind, int index);
    // Waits for a running read before the snap goes.
    virtual ~DataSnap_cls();
    DataSnap_cls(const DataSnap_cls&) = delete;
    DataSnap_cls& operator=(const DataSnap_cls&) = delete;

    // Main thread: a read was started and has not ended.
    bool IsReading() const { return mReadStarted && !mReadFinished.load(std::memory_order_acquire); }
    // Main thread: sleeps ms at a time until a started read has ended, then collects the thread.
    void WaitReadingThread(int ms);
    // Main thread: stamps the snap with the sequence's draw counter, which then goes up by one.
    void MarkDraw();

    // Bytes held by the arrays that exist. Main thread.
    virtual long long GetUsedMemoryByte() const = 0;
    // The file of this step, for logs.
    virtual wxString GetStrFile() const = 0;

    DataSequence_cls* mSequence; // not owned: the owner
    int mKind;
    bool mPriority = false; // playback needs the step soon: must not be evicted
    int mDistance = -1;     // frames from the current frame at the last MarkPriority
    int mDrawStamp = -1;    // draw counter of the sequence when last drawn
    int mIndex;
    bool mReadStarted = false;
    // Reads begun on this snap (main thread): a prepared frame made from an older read is stale.
    int mReadCount = 0;
    // Written by the reader thread (release) as its hand-over; read by the main thread (acquire).
    std::atomic<bool> mReadFinished{false};

protected:
    // Main thread: runs work on the snap's reader thread. A previous thread that has already set
    // the finished flag is collected first.
    void StartReadingThread(std::function<void()> work);

private:
    std::thread mThread;
};
