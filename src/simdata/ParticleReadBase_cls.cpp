#include "ParticleReadBase_cls.h"

#include "TimeCtrl_cls.h"

#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"

#include "LongLongArrayAndIndex_cls.h"
#include "ParallelRun_cls.h"
#include "RadixSort_cls.h"

#include <sys/mman.h>
#include <wx/log.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

// Memory for the sort and the copies aside, in huge pages where the system gives them: the
// rewrite reads the copies at random, and with 4 KB pages nearly every read also missed the TLB.
class ScratchSpace_cls {
public:
    explicit ScratchSpace_cls(size_t bytes) : mBytes(bytes) {
        void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (p == MAP_FAILED)
            return;
        madvise(p, bytes, MADV_HUGEPAGE);
        mp = static_cast<char*>(p);
    }
    ~ScratchSpace_cls() {
        if (mp)
            munmap(mp, mBytes);
    }
    ScratchSpace_cls(const ScratchSpace_cls&) = delete;
    ScratchSpace_cls& operator=(const ScratchSpace_cls&) = delete;
    char* Get() const { return mp; }

private:
    char* mp = nullptr;
    size_t mBytes;
};

// Rewrites one array of elements of W values each so that position j takes what stood at order[j],
// for j below count. With bInOrder every order[j] is at least j and the rewrite is done in place,
// front to back; otherwise the array is copied aside into space first (at least count * W * sizeof(T)
// bytes, shared by every array in turn) and gathered back over the threads.
template <int W, typename T>
void Permute(T* p, const uint32_t* order, size_t count, size_t n, bool bInOrder, char* space, int threads) {
    if (!p)
        return;
    if (bInOrder) {
        for (size_t j = 0; j < count; ++j)
            if (order[j] != j)
                std::memcpy(p + j * W, p + static_cast<size_t>(order[j]) * W, sizeof(T) * W);
        return;
    }
    T* copy = reinterpret_cast<T*>(space);
    ParallelRun_cls::Run(threads, [&](int t) {
        size_t ini, fin;
        ParallelRun_cls::GetShare(ini, fin, t, threads, n);
        std::memcpy(copy + ini * W, p + ini * W, (fin - ini) * W * sizeof(T));
    });
    ParallelRun_cls::Run(threads, [&](int t) {
        size_t ini, fin;
        ParallelRun_cls::GetShare(ini, fin, t, threads, count);
        // The reads go all over the copy: asking for them well ahead keeps many misses in flight.
        constexpr size_t kAhead = 32;
        for (size_t j = ini; j < fin; ++j) {
            if (j + kAhead < fin)
                __builtin_prefetch(copy + static_cast<size_t>(order[j + kAhead]) * W);
            std::memcpy(p + j * W, copy + static_cast<size_t>(order[j]) * W, sizeof(T) * W);
        }
    });
    // The tail behind the survivors keeps stale values; mNumber hides it.
}

// The order of a sort: sorts elems (each made of an ID less the smallest ID and the particle's
// position) by ID and lists the positions in that order, leaving out, when asked, every particle
// that shares its ID with a neighbour. The sorted IDs are written to ids directly. Returns the
// number of positions listed.
template <typename E, typename Id, typename KeyFn, typename IndexFn>
size_t SortedOrder(E* elems, E* scratch, size_t n, int keyBits, KeyFn key, IndexFn index, long long lowest,
                   bool bRemove, Id* ids, uint32_t* order, int threads) {
    RadixSort_cls::Sort(elems, scratch, n, keyBits, key, threads);
    size_t j = 0;
    for (size_t i = 0; i < n; ++i) {
        const uint64_t k = key(elems[i]);
        // Both of a pair go: a particle whose ID is not unique cannot be matched.
        if (bRemove && ((i > 0 && key(elems[i - 1]) == k) || (i + 1 < n && key(elems[i + 1]) == k)))
            continue;
        order[j] = static_cast<uint32_t>(index(elems[i]));
        if (ids)
            ids[j] = static_cast<Id>(static_cast<long long>(static_cast<uint64_t>(lowest) + k));
        ++j;
    }
    return j;
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

ParticleFileStream_cls* ParticleReadBase_cls::OpenFile(bool bWhole) {
    if (mpFile && mpFile->GetPath() == mStrFile && (!bWhole || mpFile->GetData())) {
        mpFile->Rewind();
        return mpFile.get();
    }
    mpFile = std::make_unique<ParticleFileStream_cls>();
    if (mpFile->Open(mStrFile, bWhole))
        return mpFile.get();
    mpFile.reset();
    printf("Read Header Fails!!\n");
    wxLogMessage("Read Header Fails!! %s", mStrFile);
    return nullptr;
}

void ParticleReadBase_cls::SetProgressTotal(long long total) {
    if (mpSnap)
        mpSnap->mReadTotal.store(total, std::memory_order_relaxed);
}

bool ParticleReadBase_cls::ReportProgress(long long done) {
    if (mpSnap)
        mpSnap->mReadDone.fetch_add(done, std::memory_order_relaxed);
    if (!TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
        return true;
    if (mpSnap)
        mpSnap->mbReadAborted.store(true, std::memory_order_release);
    return false;
}

void ParticleReadBase_cls::DummyEntry() {
    ReadBody();
    const bool bSort = mpFormat->IsPreSortByID();
    const bool bRemove = mpFormat->IsRemoveDupli();
    if (bSort || bRemove)
        SortDataByID(bSort, bRemove);
    mpFormat.reset();
    mpFile.reset();
}

void ParticleReadBase_cls::Entry() {
    const auto start = std::chrono::steady_clock::now();
    DummyEntry();
    DataSequence_cls::FinishRead(start, mStrFile, mpbFinished, mpSequence);
}

void ParticleReadBase_cls::SortDataByID(bool sort, bool removeDuplicates) {
    if (!mID && !mIDLong)
        return;
    const int number = mNumber;
    if (number <= 0)
        return;
    const size_t n = static_cast<size_t>(number);
    auto idOf = [&](size_t i) { return mID ? static_cast<long long>(mID[i]) : mIDLong[i]; };

    // One look over the IDs gives their range and whether they ascend already (LAMMPS writes them
    // so with "dump_modify sort id"); then the sort has nothing to do.
    long long lowest = idOf(0), highest = lowest, previous = lowest;
    bool bAscending = true;
    for (size_t i = 1; i < n; ++i) {
        const long long v = idOf(i);
        bAscending = bAscending && v >= previous;
        previous = v;
        lowest = std::min(lowest, v);
        highest = std::max(highest, v);
    }
    const bool bInOrder = !sort || bAscending;
    if (bInOrder && !removeDuplicates)
        return;

    const int threads = ParallelRun_cls::GetThreadCount(n, 1 << 16);
    std::unique_ptr<uint32_t[]> order(new (std::nothrow) uint32_t[n]);
    if (!order) {
        wxLogMessage("SortDataByID: no memory for %d particles", number);
        return;
    }
    // The copy space of the rewrite: the radix sort's arrays when it runs, else nothing (in place).
    std::unique_ptr<ScratchSpace_cls> space;
    size_t count = 0;
    if (bInOrder) {
        // Only duplicates to drop, where they stand next to each other in the file's order.
        for (size_t i = 0; i < n; ++i) {
            const long long v = idOf(i);
            if ((i > 0 && idOf(i - 1) == v) || (i + 1 < n && idOf(i + 1) == v))
                continue;
            order[count++] = static_cast<uint32_t>(i);
        }
        if (count == n)
            return;
    } else {
        // The ID relative to the smallest and the position share one 64-bit word when both fit,
        // which halves the bytes the sort moves; otherwise they go as a pair.
        const int keyBits =
            RadixSort_cls::BitWidth(static_cast<uint64_t>(highest) - static_cast<uint64_t>(lowest));
        const int indexBits = std::max(1, RadixSort_cls::BitWidth(n - 1));
        const size_t elemBytes =
            keyBits + indexBits <= 64 ? sizeof(uint64_t) : sizeof(LongLongArrayAndIndex_cls);
        // Two arrays of elements for the sort; afterwards the same space takes the copy aside of
        // the widest data array.
        const size_t spaceBytes = std::max(2 * elemBytes * n, 3 * sizeof(float) * n);
        space = std::make_unique<ScratchSpace_cls>(spaceBytes);
        if (!space->Get()) {
            wxLogMessage("SortDataByID: no memory for %d particles", number);
            return;
        }
        int* ids = mID;
        long long* idsLong = mID ? nullptr : mIDLong;
        if (elemBytes == sizeof(uint64_t)) {
            uint64_t* words = reinterpret_cast<uint64_t*>(space->Get());
            ParallelRun_cls::Run(threads, [&](int t) {
                size_t ini, fin;
                ParallelRun_cls::GetShare(ini, fin, t, threads, n);
                for (size_t i = ini; i < fin; ++i)
                    words[i] =
                        ((static_cast<uint64_t>(idOf(i)) - static_cast<uint64_t>(lowest)) << indexBits) | i;
            });
            const uint64_t indexMask = (uint64_t(1) << indexBits) - 1;
            auto key = [indexBits](uint64_t w) { return w >> indexBits; };
            auto index = [indexMask](uint64_t w) { return w & indexMask; };
            count = ids ? SortedOrder(words, words + n, n, keyBits, key, index, lowest, removeDuplicates, ids,
                                      order.get(), threads)
                        : SortedOrder(words, words + n, n, keyBits, key, index, lowest, removeDuplicates,
                                      idsLong, order.get(), threads);
        } else {
            auto* pairs = reinterpret_cast<LongLongArrayAndIndex_cls*>(space->Get());
            for (size_t i = 0; i < n; ++i)
                pairs[i] = {static_cast<long long>(i), idOf(i)};
            auto key = [lowest](const LongLongArrayAndIndex_cls& e) {
                return static_cast<uint64_t>(e.mID) - static_cast<uint64_t>(lowest);
            };
            auto index = [](const LongLongArrayAndIndex_cls& e) { return e.mIndex; };
            count = ids ? SortedOrder(pairs, pairs + n, n, keyBits, key, index, lowest, removeDuplicates, ids,
                                      order.get(), threads)
                        : SortedOrder(pairs, pairs + n, n, keyBits, key, index, lowest, removeDuplicates,
                                      idsLong, order.get(), threads);
        }
    }
    // The ID array that gave the keys was written by the sort already.
    const uint32_t* o = order.get();
    char* s = space ? space->Get() : nullptr;
    Permute<3>(mXYZ, o, count, n, bInOrder, s, threads);
    Permute<3>(mVelocity, o, count, n, bInOrder, s, threads);
    if (bInOrder || mID)
        Permute<1>(mIDLong, o, count, n, bInOrder, s, threads);
    if (bInOrder)
        Permute<1>(mID, o, count, n, bInOrder, s, threads);
    Permute<1>(mType, o, count, n, bInOrder, s, threads);
    Permute<1>(mSize, o, count, n, bInOrder, s, threads);
    for (int v = 0; v < 3; ++v)
        Permute<1>(mValue[v], o, count, n, bInOrder, s, threads);
    const size_t k = n - count;
    if (k > 0) {
        mNumber = static_cast<int>(count);
        if (mpSnap)
            mpSnap->mNumber.store(static_cast<int>(count), std::memory_order_relaxed);
        wxLogMessage("Detect duplicated ID: num= %d", static_cast<int>(k));
    }
}
