#include "ParticleSnap_cls.h"

#include "ClassProvider_cls.h"
#include "ParticleFileStream_cls.h"
#include "ParticleFormatClone_cls.h"
#include "ParticleSequence_cls.h"
#include "Preference_cls.h"
#include "ThreadParticleAsciiRead.h"
#include "ThreadParticleBinaryRead.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>

namespace {

// The size of the substitute data of a step that gave no particles.
constexpr int kDefaultNumber = 32768;

template <typename T> std::unique_ptr<T[]> NewZeroed(size_t count) {
    return std::unique_ptr<T[]>(new (std::nothrow) T[count]());
}

namespace FlagBit {
constexpr unsigned int FB_VELOCITY = 1u << 0, FB_TYPE = 1u << 1, FB_SIZE = 1u << 2, FB_ID = 1u << 3,
                       FB_IDLONG = 1u << 4, FB_VALUE0 = 1u << 5, FB_VALUE1 = 1u << 6, FB_VALUE2 = 1u << 7;
} // namespace FlagBit
using namespace FlagBit;

} // namespace

ParticleSnap_cls::ParticleSnap_cls(ParticleSequence_cls* pSequence, int index)
    : DataSnap_cls(pSequence, 1, index) {}

ParticleSnap_cls::~ParticleSnap_cls() {
    Clear();
}

void ParticleSnap_cls::SetStrFile(const wxString& strName) {
    mFile = strName;
    if (wxFileName::FileExists(strName))
        return;
    wxString strOther;
    if (wxFileName(strName).GetExt() == "gz")
        strOther = strName.Left(strName.length() >= 3 ? strName.length() - 3 : 0);
    else
        strOther = strName + ".gz";
    if (wxFileName::FileExists(strOther))
        mFile = strOther;
}

unsigned int ParticleSnap_cls::GetFlagBits() const {
    return (mHasVelocity ? FB_VELOCITY : 0) | (mHasType ? FB_TYPE : 0) | (mHasSize ? FB_SIZE : 0) |
           (mHasID ? FB_ID : 0) | (mHasIDLong ? FB_IDLONG : 0) | (mHasValue0 ? FB_VALUE0 : 0) |
           (mHasValue1 ? FB_VALUE1 : 0) | (mHasValue2 ? FB_VALUE2 : 0);
}

std::unique_ptr<ParticleFileStream_cls> ParticleSnap_cls::OpenHeaderFile() const {
    auto pFile = std::make_unique<ParticleFileStream_cls>();
    if (pFile->Open(mFile))
        return pFile;
    printf("Read Header Fails!!\n");
    wxLogMessage("Read Header Fails!! %s", mFile);
    return nullptr;
}

void ParticleSnap_cls::ReadHeaderBinary(ParticleFormatClone_cls* pFormat, long long& n, double& time) {
    std::unique_ptr<ParticleFileStream_cls> pFile = OpenHeaderFile();
    if (!pFile) {
        n = 0;
        return;
    }
    ParticleFileStream_cls& file = *pFile;
    std::istream& stream = file.GetStream();
    const long long bytes = file.GetSize();
    const long long headerBytes = pFormat->GetHeaderByte();
    const long long recordBytes = pFormat->GetBodyParticleByte();
    if (recordBytes <= 0) {
        wxLogMessage("Particle format has an empty binary body (record size 0): no data read from %s", mFile);
        n = 0;
        return;
    }
    // A short last record is dropped.
    n = bytes > headerBytes ? (bytes - headerBytes) / recordBytes : 0;
    bool bHasCount = false;
    int count = 0;
    for (int item : pFormat->GetVFormatHeader()) {
        switch (item) {
        case PH_PARTICLE_NUMBER:
            if (stream.read(reinterpret_cast<char*>(&count), 4))
                bHasCount = true;
            break;
        case PH_TIME: {
            float t = 0.0f;
            if (stream.read(reinterpret_cast<char*>(&t), 4))
                time = t;
            break;
        }
        case PH_BOX_BOUNDS: {
            float bounds[6];
            if (stream.read(reinterpret_cast<char*>(bounds), sizeof bounds))
                SetBox(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]);
            break;
        }
        default:
            stream.seekg(ParticleFormatTable_cls::GetHeaderItemByte(item), std::ios::cur);
            break;
        }
    }
    // The number in the file can only lower the count, never raise it.
    if (bHasCount && count < n)
        n = count;
    KeepHeaderFile(std::move(pFile));
}

void ParticleSnap_cls::SetBox(double xlo, double xhi, double ylo, double yhi, double zlo, double zhi) {
    const double lo[3] = {xlo, ylo, zlo}, hi[3] = {xhi, yhi, zhi};
    mHasBox = true;
    for (int k = 0; k < 3; ++k) {
        mBoxLo[k] = lo[k];
        mBoxHi[k] = hi[k];
        if (!(hi[k] > lo[k]) || !std::isfinite(hi[k] - lo[k]))
            mHasBox = false;
    }
    if (!mHasBox)
        wxLogMessage("The box bounds in the header of %s are not a box: no periodic box", mFile);
}

bool ParticleSnap_cls::ReadBoxLines(std::istream& stream, std::string& line) {
    // LAMMPS writes "lo hi" on each line, and a tilt factor behind them for a triclinic box.
    double bounds[6] = {0, 0, 0, 0, 0, 0};
    for (int k = 0; k < 3; ++k) {
        if (k > 0 && !std::getline(stream, line))
            return false;
        char* pEnd = nullptr;
        bounds[2 * k] = strtod(line.c_str(), &pEnd);
        bounds[2 * k + 1] = strtod(pEnd, nullptr);
    }
    SetBox(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]);
    return true;
}

void ParticleSnap_cls::ReadHeaderAscii(ParticleFormatClone_cls* pFormat, long long& n, double& time) {
    std::unique_ptr<ParticleFileStream_cls> pFile = OpenHeaderFile();
    if (!pFile) {
        n = 0;
        return;
    }
    ParticleFileStream_cls& file = *pFile;
    std::istream& stream = file.GetStream();
    std::string line;
    long long count = -1;
    auto skipLines = [&](int k) {
        for (int i = 0; i < k; ++i)
            if (!std::getline(stream, line))
                return false;
        return true;
    };
    bool bOk = true;
    for (int item : pFormat->GetVFormatHeader()) {
        if (!std::getline(stream, line))
            break;
        if (item == PH_PARTICLE_NUMBER)
            count = strtol(line.c_str(), nullptr, 10);
        else if (item == PH_TIME)
            time = strtod(line.c_str(), nullptr);
        else if (item == PH_DUMMYX3)
            bOk = skipLines(2);
        else if (item == PH_DUMMYX10)
            bOk = skipLines(9);
        else if (item == PH_BOX_BOUNDS)
            bOk = ReadBoxLines(stream, line);
        if (!bOk)
            break;
    }
    // A count larger than the body is a count still: the lines that are there are read and the
    // rest stays zero, and the limit of ParticleMax= keeps a wild number from taking the memory.
    if (count >= 0) {
        n = count;
        KeepHeaderFile(std::move(pFile));
        return;
    }
    // Every line is counted, as getline counts them (a last line without its newline too), in the
    // whole file in memory, which the body read then takes over.
    if (!file.GetData() && !file.Open(mFile, true)) {
        n = 0;
        return;
    }
    const char* data = file.GetData();
    const size_t size = static_cast<size_t>(file.GetSize());
    long long lines = 0;
    for (const char* p = data; (p = static_cast<const char*>(memchr(p, '\n', data + size - p))); ++p)
        ++lines;
    if (size > 0 && data[size - 1] != '\n')
        ++lines;
    const long long headerLines = pFormat->GetHeaderLine();
    if (lines <= headerLines) {
        n = 0;
        return;
    }
    if (pFormat->GetArrayDirection() == 1) {
        const long long perParticle = pFormat->GetBodyParticleLineAsciiVertical();
        if (perParticle <= 0) {
            wxLogMessage(
                "Particle format has no line per particle in a vertical text body: no data read from %s",
                mFile);
            n = 0;
            return;
        }
        n = (lines - headerLines) / perParticle;
    } else {
        n = lines - headerLines;
    }
    KeepHeaderFile(std::move(pFile));
}

void ParticleSnap_cls::KeepHeaderFile(std::unique_ptr<ParticleFileStream_cls> pFile) {
    mpHeaderFile.reset();
    if (pFile && pFile->GetData())
        mpHeaderFile = std::move(pFile);
}

bool ParticleSnap_cls::ReadHeader(ParticleFormatClone_cls* pFormat) {
    if (mHeaderFile == mFile)
        return false;
    // The arrays may be reallocated below: a running read must end first.
    if (IsReading())
        WaitReadingThread(3);
    mpHeaderFile.reset();
    double time = static_cast<double>(mIndex);
    long long n = 0;
    mHasBox = false;
    if (pFormat->GetDataType() == 1)
        ReadHeaderBinary(pFormat, n, time);
    else
        ReadHeaderAscii(pFormat, n, time);
    mTime = time;
    if (n < 0) {
        wxLogMessage("Negative particle count %lld in %s: no data read", n, mFile);
        n = 0;
    }
    const long long limit = GpCPreference ? GpCPreference->GetParticleMax() * 1000LL : 20000000LL;
    if (n > limit)
        n = limit > 0 ? limit : 0;
    if (n > INT_MAX)
        n = INT_MAX;
    mHeaderFile = mFile;
    mHeaderOK = true;
    if (n == 0) {
        mHeaderOK = false;
        n = kDefaultNumber;
    }
    if (pFormat->GetDataType() == 1)
        pFormat->GetInfoBinary(mHasVelocity, mHasType, mHasSize, mHasID, mHasIDLong, mHasValue0, mHasValue1,
                               mHasValue2, mByID);
    else
        pFormat->GetInfoAscii(mHasVelocity, mHasType, mHasSize, mHasID, mHasIDLong, mHasValue0, mHasValue1,
                              mHasValue2, mByID);
    // A new allocation clears the snap, the kept file with it.
    std::unique_ptr<ParticleFileStream_cls> pKept = std::move(mpHeaderFile);
    AllocateIfNot(static_cast<int>(n));
    mpHeaderFile = std::move(pKept);
    return true;
}

void ParticleSnap_cls::AllocateIfNot(int n) {
    if (n < 0)
        n = 0;
    const unsigned int flags = GetFlagBits();
    if (mAllocated && n == mAllocNumber && flags == mAllocFlags) {
        mNumber.store(n, std::memory_order_relaxed);
        return;
    }
    Clear();
    const size_t count = static_cast<size_t>(n);
    bool bOk = true;
    auto make = [&](auto& p, size_t elements) {
        using T = typename std::remove_reference_t<decltype(p)>::element_type;
        p = NewZeroed<T>(elements);
        if (!p)
            bOk = false;
    };
    make(mXYZ, count * 3);
    if (mHasVelocity)
        make(mVelocity, count * 3);
    if (mHasType)
        make(mType, count);
    if (mHasSize)
        make(mSize, count);
    if (mHasID)
        make(mID, count);
    if (mHasIDLong)
        make(mIDLong, count);
    if (mHasValue0)
        make(mValue[0], count);
    if (mHasValue1)
        make(mValue[1], count);
    if (mHasValue2)
        make(mValue[2], count);
    if (!bOk) {
        wxLogMessage("Particle arrays for %d particles could not be allocated: %s", n, mFile);
        Clear();
        return;
    }
    mNumber.store(n, std::memory_order_relaxed);
    mAllocNumber = n;
    mAllocFlags = flags;
    mAllocated = true;
}

void ParticleSnap_cls::Clear() {
    WaitReadingThread(3);
    mXYZ.reset();
    mVelocity.reset();
    mID.reset();
    mIDLong.reset();
    mNextIndex.reset();
    mPrevIndex.reset();
    mType.reset();
    mSize.reset();
    for (auto& p : mValue)
        p.reset();
    mpHeaderFile.reset();
    mAllocNumber = 0;
    mAllocFlags = 0;
    mAllocated = false;
    mReadStarted = false;
    mReadFinished.store(false, std::memory_order_release);
    NewGeneration();
}

void ParticleSnap_cls::NewGeneration() {
    mGeneration.fetch_add(1, std::memory_order_acq_rel);
    mNextKey = MatchKey_cls();
    mPrevKey = MatchKey_cls();
    mIDsAscending = -1;
}

bool ParticleSnap_cls::AreIDsAscending() {
    const unsigned generation = GetGeneration();
    if (mIDsAscending >= 0 && mIDsAscendingGeneration == generation)
        return mIDsAscending == 1;
    const size_t n = static_cast<size_t>(std::max(0, mNumber.load(std::memory_order_relaxed)));
    bool bAscending = true;
    if (mHasID && mID)
        bAscending = std::adjacent_find(mID.get(), mID.get() + n, std::greater_equal<int>()) == mID.get() + n;
    else if (mHasIDLong && mIDLong)
        bAscending = std::adjacent_find(mIDLong.get(), mIDLong.get() + n, std::greater_equal<long long>()) ==
                     mIDLong.get() + n;
    mIDsAscending = bAscending ? 1 : 0;
    mIDsAscendingGeneration = generation;
    return bAscending;
}

void ParticleSnap_cls::CheckAllocateNextIndex(bool bAllocate) {
    if (!bAllocate) {
        mNextIndex.reset();
        mPrevIndex.reset();
        mNextKey = MatchKey_cls();
        mPrevKey = MatchKey_cls();
        return;
    }
    if (mNextIndex && mPrevIndex)
        return;
    mNextKey = MatchKey_cls();
    mPrevKey = MatchKey_cls();
    const size_t n = static_cast<size_t>(mAllocNumber);
    mNextIndex.reset(new (std::nothrow) int[n]);
    mPrevIndex.reset(new (std::nothrow) int[n]);
    if (!mNextIndex || !mPrevIndex) {
        mNextIndex.reset();
        mPrevIndex.reset();
        return;
    }
    for (size_t i = 0; i < n; ++i) {
        mNextIndex[i] = static_cast<int>(i);
        mPrevIndex[i] = -1;
    }
}

long long ParticleSnap_cls::GetUsedMemoryByte() const {
    if (!mAllocated)
        return 0;
    const long long n = mAllocNumber;
    long long bytes = 0;
    if (mXYZ)
        bytes += 12 * n;
    if (mVelocity)
        bytes += 12 * n;
    if (mType)
        bytes += n;
    if (mSize)
        bytes += 4 * n;
    if (mID)
        bytes += 4 * n;
    for (const auto& p : mValue)
        if (p)
            bytes += 4 * n;
    if (mNextIndex)
        bytes += 4 * n;
    if (mIDLong)
        bytes += 8 * n;
    return bytes;
}

bool ParticleSnap_cls::DefaultData() {
    if (mReadFile == "#DefaultData")
        return false;
    const size_t n = static_cast<size_t>(mAllocNumber);
    auto r = []() { return rand() * (1.0 / 2147483648.0); };
    for (size_t i = 0; i < n; ++i) {
        for (int k = 0; k < 3; ++k) {
            if (mXYZ)
                mXYZ[3 * i + k] = static_cast<float>(2.0 * r() - 1.0);
            if (mVelocity)
                mVelocity[3 * i + k] = static_cast<float>(2.0 * r() - 1.0);
        }
        if (mType)
            mType[i] = static_cast<unsigned char>(static_cast<int>(4.0 * r()));
        if (mSize)
            mSize[i] = static_cast<float>(3.0 * r() + 1.0);
        for (auto& p : mValue)
            if (p)
                p[i] = static_cast<float>(r());
    }
    mReadFile = "#DefaultData";
    NewGeneration();
    mReadStarted = true;
    mReadFinished.store(true, std::memory_order_release);
    return true;
}

bool ParticleSnap_cls::ReadData(ParticleFormatClone_cls* pFormat, bool async) {
    // Never two reads on one snap: a synchronous request waits for the running one.
    if (IsReading())
        WaitReadingThread(3);
    // The header's decompressed file goes to this read or nowhere.
    std::unique_ptr<ParticleFileStream_cls> pHeaderFile = std::move(mpHeaderFile);
    if (!mAllocated)
        return false;
    if (mReadFinished.load(std::memory_order_acquire) && mReadFile == mFile)
        return false;
    if (!mHeaderOK)
        return DefaultData();
    mReadStarted = true;
    mReadDone.store(0, std::memory_order_relaxed);
    mReadTotal.store(0, std::memory_order_relaxed);
    mbReadAborted.store(false, std::memory_order_relaxed);
    mReadFinished.store(false, std::memory_order_release);
    std::shared_ptr<ParticleReadBase_cls> pReader;
    if (pFormat->GetDataType() == 1)
        pReader = std::make_shared<ThreadParticleBinaryRead>();
    else
        pReader = std::make_shared<ThreadParticleAsciiRead>();
    pReader->SetParameters(&mReadFinished, this, mFile, *pFormat);
    if (pHeaderFile && pHeaderFile->GetPath() == mFile)
        pReader->mpFile = std::move(pHeaderFile);
    wxLogMessage("Read Stert :: index = %d", mIndex);
    mReadFile = mFile;
    NewGeneration();
    if (async) {
        // The lock is taken here, before the thread exists, so that the next idle pass already
        // sees the read; the thread gives it back.
        mSequence->PushLock();
        StartReadingThread([pReader]() { pReader->Entry(); });
    } else {
        pReader->DummyEntry();
        mReadFinished.store(true, std::memory_order_release);
    }
    return true;
}

bool ParticleSnap_cls::PrefetchData(ParticleFormatClone_cls* pFormat) {
    if (!ReadHeader(pFormat))
        return false;
    return ReadData(pFormat, true);
}

int ParticleSnap_cls::GetReadPercent() const {
    const long long total = mReadTotal.load(std::memory_order_relaxed);
    if (total <= 0)
        return mReadFinished.load(std::memory_order_acquire) ? 100 : 0;
    const long long done = std::min(total, mReadDone.load(std::memory_order_relaxed));
    return static_cast<int>(done * 100 / total);
}

wxString ParticleSnap_cls::GetStrInfo(int index) const {
    wxString str = wxString::Format("Snap %d: %s\n", index, mReadFile);
    str += wxString::Format("Particles: %d  Time: %g  Memory: %lld bytes",
                            mNumber.load(std::memory_order_relaxed), mTime, GetUsedMemoryByte());
    if (mbReadAborted.load(std::memory_order_acquire))
        str += wxString::Format("\nAborted at %d%%", GetReadPercent());
    return str;
}
