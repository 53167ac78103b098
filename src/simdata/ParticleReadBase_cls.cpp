#include "ParticleReadBase_cls.h"

#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>

namespace {

// Rewrites one array of count elements of width values each in the order of keys, leaving out
// the tagged ones. The copy aside goes to scratch, which serves every array in turn: fresh pages
// for each copy would cost a fault per 4 KB, as much as the rewriting itself.
template <typename T>
void Permute(T* p, int width, const std::vector<LongLongArrayAndIndex_cls>& keys,
             const std::vector<unsigned char>& tags, std::unique_ptr<char[]>& scratch, size_t& scratchBytes) {
    if (!p)
        return;
    const size_t n = keys.size();
    const size_t bytes = n * width * sizeof(T);
    if (scratchBytes < bytes) {
        scratch.reset(new char[bytes]);
        scratchBytes = bytes;
    }
    std::memcpy(scratch.get(), p, bytes);
    const T* copy = reinterpret_cast<const T*>(scratch.get());
    size_t j = 0;
    for (size_t i = 0; i < n; ++i) {
        if (!tags.empty() && tags[i])
            continue;
        std::memcpy(p + j * width, copy + static_cast<size_t>(keys[i].mIndex) * width, sizeof(T) * width);
        ++j;
    }
    // The tail behind the survivors keeps stale values; mNumber hides it.
}

} // namespace

void ParticleReadBase_cls::SetParameters(std::atomic<bool>* pbFinished, ParticleSnap_cls* pSnap,
                                         const wxString& strFile, const ParticleFormatClone_cls& format) {
    mpbFinished = pbFinished;
    mpSnap = pSnap;
    mpSequence = static_cast<ParticleSequence_cls*>(pSnap->mSequence);
    mNumber = pSnap->mNumber.load(std::memory_order_relaxed);
    mXYZ = pSnap->mXYZ.get();
    mVelocity = pSnap->mVelocity.get();
    mID = pSnap->mID.get();
    mIDLong = pSnap->mIDLong.get();
    mType = pSnap->mType.get();
    mSize = pSnap->mSize.get();
    for (int k = 0; k < 3; ++k)
        mValue[k] = pSnap->mValue[k].get();
    // A deep copy: the thread must share no string buffer with the main thread.
    mStrFile = wxString(strFile.wc_str());
    mpFormat = std::make_unique<ParticleFormatClone_cls>();
    mpFormat->CloneFromClone(format);
}

void ParticleReadBase_cls::DummyEntry() {
    ReadBody();
    const bool bSort = mpFormat->IsPreSortByID();
    const bool bRemove = mpFormat->IsRemoveDupli();
    if (bSort || bRemove)
        SortDataByID(bSort, bRemove);
    mpFormat.reset();
}

void ParticleReadBase_cls::Entry() {
    const auto start = std::chrono::steady_clock::now();
    DummyEntry();
    DataSequence_cls::FinishRead(start, mStrFile, mpbFinished, mpSequence);
}

int ParticleReadBase_cls::SetTagForRemoveDupli(const std::vector<LongLongArrayAndIndex_cls>& keys,
                                               std::vector<unsigned char>& tags) {
    tags.assign(keys.size(), 0);
    for (size_t i = 1; i < keys.size(); ++i) {
        // Both of the pair go: a particle whose ID is not unique cannot be matched.
        if (keys[i].mID == keys[i - 1].mID) {
            tags[i] = 1;
            tags[i - 1] = 1;
        }
    }
    int count = 0;
    for (unsigned char t : tags)
        count += t;
    return count;
}

void ParticleReadBase_cls::SortDataByID(bool sort, bool removeDuplicates) {
    if (!mID && !mIDLong)
        return;
    const int n = mNumber;
    if (n <= 0)
        return;
    std::vector<LongLongArrayAndIndex_cls> keys(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        keys[i].mIndex = i;
        keys[i].mID = mID ? static_cast<long long>(mID[i]) : mIDLong[i];
    }
    if (sort)
        std::sort(keys.begin(), keys.end());
    std::vector<unsigned char> tags;
    int k = 0;
    if (removeDuplicates) {
        k = SetTagForRemoveDupli(keys, tags);
        if (k == 0)
            tags.clear();
    }
    // Unsorted and nothing dropped: the index order is the identity, nothing to rewrite.
    if (!sort && k == 0)
        return;
    // One array at a time, so that at most one extra copy exists at once; the widest goes first
    // and its copy space serves the rest.
    std::unique_ptr<char[]> scratch;
    size_t scratchBytes = 0;
    Permute(mXYZ, 3, keys, tags, scratch, scratchBytes);
    Permute(mVelocity, 3, keys, tags, scratch, scratchBytes);
    Permute(mIDLong, 1, keys, tags, scratch, scratchBytes);
    Permute(mID, 1, keys, tags, scratch, scratchBytes);
    Permute(mType, 1, keys, tags, scratch, scratchBytes);
    Permute(mSize, 1, keys, tags, scratch, scratchBytes);
    for (int v = 0; v < 3; ++v)
        Permute(mValue[v], 1, keys, tags, scratch, scratchBytes);
    if (k > 0) {
        mNumber = n - k;
        if (mpSnap)
            mpSnap->mNumber.store(n - k, std::memory_order_relaxed);
        wxLogMessage("Detect duplicated ID: num= %d", k);
    }
}
