// What both volume readers share: the copies of the snap's sizes, data pointer and file that one
// read works on, and the thread body. Made on the main thread; then used by its one thread.
#pragma once

#include <wx/string.h>

#include <atomic>

class VolumeSequence_cls;
class VolumeSnap_cls;

class VolumeReadBase_cls {
public:
    virtual ~VolumeReadBase_cls() = default;

    // Main thread: copies what the read needs from the snap.
    virtual void SetParameters(std::atomic<bool>* pbFinished, VolumeSnap_cls* pSnap);
    // The reader thread: the read, the finished flag, PopLock (the starter pushed the lock), the
    // wake-up event 6043 and the log line "ReadLog :: ".
    void Entry();
    // The work itself; the synchronous read calls it on the main thread.
    virtual void DoRead() = 0;

    std::atomic<bool>* mpbFinished = nullptr;
    VolumeSequence_cls* mpSequence = nullptr; // not owned
    int mSizeX = 0;
    int mSizeY = 0;
    int mSizeZ = 0;
    unsigned char* mData = nullptr; // not owned: the snap's array
    wxString mStrFile;
};
