// What both particle readers share: the copies of the snap's array pointers that one read
// fills, the thread body (read, sort, hand-over, wake the main loop, log) and the sort by ID.
// Made on the main thread by ParticleSnap_cls::ReadData; after that used by its one thread.
#pragma once

#include "AsciiReader_cls.h"
#include "ParticleFileStream_cls.h"
#include "ParticleFormatClone_cls.h"

#include <wx/string.h>

#include <atomic>
#include <memory>

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
    // (removeDuplicates), rewriting all arrays. Without IDs nothing happens. IDs that ascend
    // already are not sorted again; equal IDs end in no particular order.
    void SortDataByID(bool sort, bool removeDuplicates);

    // The reader thread: the size of the body in the units that ReportProgress counts.
    void SetProgressTotal(long long total);
    // The reader thread (and the pass workers of one read): done more lines or records of the
    // body. False when the user has asked to abort (TimeCtrl_cls::msbForceAbort): the snap is
    // then marked as aborted and the read should stop.
    bool ReportProgress(long long done);

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
    // The file as the header read left it in memory (a decompressed gzip file), or null: then the
    // body read opens the file itself. Handed over by the main thread before the read starts.
    std::unique_ptr<ParticleFileStream_cls> mpFile;

protected:
    virtual void ReadBody() = 0;
    // The file of this read, from its first byte: the one handed over when it is mStrFile, else
    // opened here (bWhole: into memory). Null, after the console line "Read Header Fails!!", when
    // it cannot be opened.
    ParticleFileStream_cls* OpenFile(bool bWhole);
};
