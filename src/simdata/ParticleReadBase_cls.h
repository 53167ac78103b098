// What both particle readers share: the copies of the snap's array pointers that one read
// fills, the thread body (read, sort, hand-over, wake the main loop, log) and the sort by ID.
// Made on the main thread by ParticleSnap_cls::ReadData; after that used by its one thread.
#pragma once

#include "AsciiReader_cls.h"
#include "LongLongArrayAndIndex_cls.h"
#include "ParticleFormatClone_cls.h"

#include <wx/string.h>

#include <atomic>
#include <memory>
#include <vector>

class ParticleSequence_cls;
class ParticleSnap_cls;

class ParticleReadBase_cls : public AsciiReader_cls {
public:
    virtual ~ParticleReadBase_cls() = default;

    // Main thread: copies the count and the array pointers of the snap, the file and a copy of
    // the format. pbFinished is the snap's hand-over flag.
    void SetParameters(std::atomic<bool>* pbFinished, ParticleSnap_cls* pSnap, const wxString& strFile,
                       const ParticleFormatClone_cls& format);
    // The reader thread: DummyEntry, then the finished flag, PopLock on the sequence (whose lock
    // the starter pushed), the wake-up event 6043 and the log line "ReadLog :: ".
    void Entry();
    // Reads the body and sorts by ID when the format asks for it; the synchronous read calls
    // it on the main thread.
    void DummyEntry();

    // Makes IDs ascending (sort) and drops every particle that shares its ID with a neighbour
    // (removeDuplicates), rewriting all arrays. Without IDs nothing happens.
    void SortDataByID(bool sort, bool removeDuplicates);
    // Tags both of every pair of neighbours with the same ID; returns the number tagged.
    static int SetTagForRemoveDupli(const std::vector<LongLongArrayAndIndex_cls>& keys,
                                    std::vector<unsigned char>& tags);

    std::atomic<bool>* mpbFinished = nullptr;
    ParticleSequence_cls* mpSequence = nullptr; // not owned
    ParticleSnap_cls* mpSnap = nullptr;         // not owned
    int mNumber = 0;
    float* mXYZ = nullptr;
    float* mVelocity = nullptr;
    int* mID = nullptr;
    long long* mIDLong = nullptr;
    unsigned char* mType = nullptr;
    float* mSize = nullptr;
    float* mValue[3] = {nullptr, nullptr, nullptr};
    wxString mStrFile;
    std::unique_ptr<ParticleFormatClone_cls> mpFormat;

protected:
    virtual void ReadBody() = 0;
};
