// One time step of particles: parallel arrays of position, velocity, ID, type, size and three
// values, ready for upload. The arrays are allocated on the main thread by ReadHeader; a reader
// thread fills them, and nobody else touches them while IsReading() holds.
#pragma once

#include "DataSnap_cls.h"

#include <wx/string.h>

#include <array>
#include <atomic>
#include <iosfwd>
#include <memory>
#include <string>

class ParticleFileStream_cls;
class ParticleFormatClone_cls;
class ParticleSequence_cls;

class ParticleSnap_cls : public DataSnap_cls {
public:
    ParticleSnap_cls(ParticleSequence_cls* pSequence, int index);
    ~ParticleSnap_cls() override;

    // Main thread. Takes the name; when no such file exists, the gzip or plain twin that does.
    void SetStrFile(const wxString& strName);
    // Main thread. Reads the count and time of mFile and allocates; false when this file's
    // header was read already.
    bool ReadHeader(ParticleFormatClone_cls* pFormat);
    // Main thread. Starts the body read of mFile, on a reader thread with async or here. The
    // caller keeps its format: the reader works on its own copy. True when something was read or
    // started.
    bool ReadData(ParticleFormatClone_cls* pFormat, bool async);
    // ReadHeader, and when that is true ReadData(format, true).
    bool PrefetchData(ParticleFormatClone_cls* pFormat);
    // Fills the arrays with random particles, once per name; the snap then counts as read under
    // the name "#DefaultData".
    bool DefaultData();

    // Allocates zero-filled arrays for n particles as the flags ask; a change of n or of the
    // flags frees the old ones first. Main thread.
    void AllocateIfNot(int n);
    // Waits for the reader, frees everything, clears mAllocated, mReadStarted, mReadFinished.
    void Clear();
    // Allocates (bAllocate) or frees mNextIndex (i) and mPrevIndex (-1). Tables made or freed here
    // belong to no pair yet.
    void CheckAllocateNextIndex(bool bAllocate);

    // What a match table was built for: the partner snap and the read generations of both sides. A
    // table whose key differs from the pair at hand is stale and must be built again.
    struct MatchKey_cls {
        const ParticleSnap_cls* mpPartner = nullptr;
        unsigned mPartnerGeneration = 0;
        unsigned mOwnGeneration = 0;
        bool operator==(const MatchKey_cls& o) const {
            return mpPartner == o.mpPartner && mPartnerGeneration == o.mPartnerGeneration &&
                   mOwnGeneration == o.mOwnGeneration;
        }
        bool operator!=(const MatchKey_cls& o) const { return !(*this == o); }
    };
    // The key of the tables this snap would hold when matched to pPartner (it is the next snap for
    // mNextIndex, the previous one for mPrevIndex).
    MatchKey_cls GetMatchKey(const ParticleSnap_cls* pPartner) const {
        return {pPartner, pPartner ? pPartner->GetGeneration() : 0u, GetGeneration()};
    }
    // Marks new data in the arrays: the match tables and the ID order known so far are stale. Read,
    // Clear and DefaultData call it; whoever else writes the arrays must too. Main thread.
    void NewGeneration();
    // Goes up whenever the arrays take other data: a read, the substitute data, a clear.
    unsigned GetGeneration() const { return mGeneration.load(std::memory_order_acquire); }
    // Whether the IDs ascend strictly, as matching by ID needs; cached for the data now in the snap.
    // True for a snap without IDs. Main thread, on a snap that is not being read.
    bool AreIDsAscending();
    // How far the running (or last) read came, 0 .. 100; 100 when nothing was to be decoded.
    // Any thread.
    int GetReadPercent() const;

    long long GetUsedMemoryByte() const override;
    wxString GetStrFile() const override { return mFile; }
    wxString GetStrInfo(int index) const;

    bool mHeaderOK = false;
    // Hand-over flags of the matching by ID: two render sets may prepare from the same snaps.
    std::atomic<bool> mIDStarted{false};
    std::atomic<bool> mIDDone{false};
    std::atomic<bool> mIDRan{false};
    std::atomic<bool> mPrevDone{false};
    bool mAllocated = false;
    bool mHasVelocity = false;
    bool mHasType = false;
    bool mHasID = false;
    bool mHasIDLong = false;
    bool mByID = false;
    bool mHasSize = false;
    bool mHasValue0 = false;
    bool mHasValue1 = false;
    bool mHasValue2 = false;
    // Number of particles. The reader may lower it (duplicates removed) before it sets the
    // finished flag.
    std::atomic<int> mNumber{0};
    // The reader's progress, in decoded lines or records of mReadTotal; set by the reader thread,
    // read by the main thread while it waits.
    std::atomic<long long> mReadDone{0};
    std::atomic<long long> mReadTotal{0};
    // The last read stopped early because the user asked to abort: the arrays hold what was
    // decoded until then. Set by the reader before its finished flag.
    std::atomic<bool> mbReadAborted{false};
    double mTime = 0.0;
    // The periodic box of the header's "BoxBounds" item, when the format has one.
    bool mHasBox = false;
    double mBoxLo[3] = {0.0, 0.0, 0.0};
    double mBoxHi[3] = {0.0, 0.0, 0.0};
    std::unique_ptr<float[]> mXYZ;      // 3 per particle
    std::unique_ptr<float[]> mVelocity; // 3 per particle
    std::unique_ptr<int[]> mID;
    std::unique_ptr<long long[]> mIDLong;
    // mNextIndex matches this snap to mNextKey's partner; mPrevIndex holds, for each particle, its
    // index in mPrevKey's partner (-1: none). Both are written under the preparation's table lock.
    std::unique_ptr<int[]> mNextIndex;
    std::unique_ptr<int[]> mPrevIndex;
    MatchKey_cls mNextKey;
    MatchKey_cls mPrevKey;
    std::unique_ptr<unsigned char[]> mType;
    std::unique_ptr<float[]> mSize;
    std::array<std::unique_ptr<float[]>, 3> mValue;
    wxString mFile;
    wxString mHeaderFile;
    wxString mReadFile;

private:
    // Keeps the file that the header read opened when it holds the whole file in memory (a
    // decompressed gzip file), for the body read that follows; drops it otherwise.
    void KeepHeaderFile(std::unique_ptr<ParticleFileStream_cls> pFile);
    // The file opened for its header; null, with the failure logged, when it does not open.
    std::unique_ptr<ParticleFileStream_cls> OpenHeaderFile() const;
    void ReadHeaderBinary(ParticleFormatClone_cls* pFormat, long long& n, double& time);
    void ReadHeaderAscii(ParticleFormatClone_cls* pFormat, long long& n, double& time);
    // Keeps the bounds when they make a box (hi above lo on each axis), else logs and keeps none.
    void SetBox(double xlo, double xhi, double ylo, double yhi, double zlo, double zhi);
    // The three "lo hi" lines of a text header, the first already in line.
    bool ReadBoxLines(std::istream& stream, std::string& line);
    // The particle count of the present allocation and the flags it was made for.
    int mAllocNumber = 0;
    // The decompressed file of the last header read, until the body read takes it.
    std::unique_ptr<ParticleFileStream_cls> mpHeaderFile;
    unsigned int mAllocFlags = 0;
    unsigned int GetFlagBits() const;
    std::atomic<unsigned> mGeneration{0};
    // -1 not known for this generation, 0 not ascending, 1 ascending.
    int mIDsAscending = -1;
    unsigned mIDsAscendingGeneration = 0;
};
