#include "ParticleForRender_cls.h"

#include "KindTable_cls.h"
#include "ParticleSnap_cls.h"
#include "SortParallel_cls.h"
#include "TensorMath_cls.h"
#include "ThreadCurveDependOnSort_cls.h"
#include "ThreadInterpStep_cls.h"
#include "ThreadSetArrayZ_cls.h"
#include "ViewerClone_cls.h"

#include <wx/log.h>
#include <wx/stopwatch.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <new>
#include <thread>

#include <sys/mman.h>

namespace {

// Arrays of a frame are walked end to end by every pass: on large pages a pass misses the address cache
// far less often. Only a hint; where the system declines it nothing changes.
void AdviseLargePages(void* p, size_t bytes) {
#if defined(MADV_HUGEPAGE)
    constexpr uintptr_t kLarge = uintptr_t(1) << 21;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(p) + kLarge - 1) & ~(kLarge - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(p) + bytes) & ~(kLarge - 1);
    if (end > begin)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    (void)p;
    (void)bytes;
#endif
}

template <class T> bool Grow(std::unique_ptr<T[]>& p, size_t n) {
    p.reset(new (std::nothrow) T[n]);
    if (p)
        AdviseLargePages(p.get(), n * sizeof(T));
    return p != nullptr;
}

// The downsize mode a worker will use for this snap, as SetParametersDownsize decides it.
int GetEffectiveDownsizeType(const ParticleSnap_cls* pSnap, int type) {
    if (pSnap->mHasID && pSnap->mID)
        return type;
    if (pSnap->mHasIDLong && pSnap->mIDLong)
        return type == 1 ? 2 : 0;
    return 0;
}

bool HasIDs(const ParticleSnap_cls* pSnap) {
    return (pSnap->mHasID && pSnap->mID) || (pSnap->mHasIDLong && pSnap->mIDLong);
}

// Marks a snap's tables as not built when they are not there, then makes them.
void AllocateTables(ParticleSnap_cls* pSnap) {
    if (!pSnap->mNextIndex || !pSnap->mPrevIndex)
        pSnap->mIDStarted = pSnap->mIDDone = pSnap->mIDRan = pSnap->mPrevDone = false;
    pSnap->CheckAllocateNextIndex(true);
}

// Makes A's next table and B's previous table belong to the pair (A, B) as both stand now. A table
// built for another partner, or for data that has been read again since, is marked as not built, and
// B's predecessors are cleared, so the search of this pair runs again. Under the table lock.
void BindTables(ParticleSnap_cls* pA, ParticleSnap_cls* pB) {
    AllocateTables(pA);
    AllocateTables(pB);
    if (!pA->mNextIndex || !pB->mPrevIndex)
        return;
    const ParticleSnap_cls::MatchKey_cls next = pA->GetMatchKey(pB);
    const ParticleSnap_cls::MatchKey_cls prev = pB->GetMatchKey(pA);
    if (pA->mNextKey == next && pB->mPrevKey == prev)
        return;
    pA->mIDStarted = pA->mIDDone = pA->mIDRan = false;
    pA->mNextKey = next;
    pB->mPrevDone = false;
    std::fill(pB->mPrevIndex.get(), pB->mPrevIndex.get() + std::max(0, pB->mNumber.load()), -1);
    pB->mPrevKey = prev;
}

} // namespace

void ParticleForRender_cls::Clear() {
    mXYZ.reset();
    mType.reset();
    mSize.reset();
    mColorS.reset();
    mColorT.reset();
    mOrder.reset();
    mAlpha.reset();
    mSource.reset();
    mbSourceIdentity = true;
    mCapacity = 0;
    mNumber = 0;
    mLastStep = -1;
    mLastInterp = -1.0f;
    mLastSortType = -1;
    mLastProcCounter.clear();
}

bool ParticleForRender_cls::Allocate(long long n) {
    if (n < 0 || n > INT32_MAX) {
        wxLogMessage("ParticleForRender: cannot prepare %lld elements", n);
        return false;
    }
    if (n > mCapacity) {
        const size_t count = static_cast<size_t>(n);
        const bool bOk = Grow(mXYZ, count * 3) && Grow(mType, count) && Grow(mSize, count) &&
                         Grow(mColorS, count) && Grow(mColorT, count) && Grow(mOrder, count) &&
                         Grow(mAlpha, count) && Grow(mSource, count);
        if (!bOk) {
            wxLogMessage("ParticleForRender: out of memory for %lld elements", n);
            Clear();
            return false;
        }
        mCapacity = n;
    }
    mNumber = n;
    return true;
}

int ParticleForRender_cls::GetDownsize(const PrepareSetting_cls& setting, int& type) {
    type = setting.mDownsizeType;
    return std::max(1, setting.mDownsize);
}

long long ParticleForRender_cls::GetNumDownsized(long long count, int factor, int type) {
    if (count <= 0)
        return 0;
    factor = std::max(1, factor);
    // By ID the number that passes is not known ahead: room for all of A.
    return type == 0 ? (factor - 1 + count) / factor : count;
}

wxString ParticleForRender_cls::GetStrProcCounterClone(ViewerClone_cls* viewer, double time) const {
    if (!viewer)
        return "-";
    wxString str = viewer->GetStrProcCounter();
    if (viewer->IsParamGroupTimeDepend())
        str << "@" << wxString::Format("%.17g", time);
    return str;
}

ParticleForRender_cls::ModifierFunc ParticleForRender_cls::GetModifierFunc() {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find("Particle_cls", KindTable_cls::GROUP_OBJECT);
    const ModifierFunc* pFunc = pKind ? pKind->GetSlot<ModifierFunc>(KindTable_cls::SLOT_PREPARE) : nullptr;
    return pFunc ? *pFunc : nullptr;
}

bool ParticleForRender_cls::HasSizeModifier(ViewerClone_cls* viewer) {
    return viewer && (viewer->GetNumAttribute("ModifyApparentSize_cls") > 0 ||
                      viewer->GetNumAttribute("ModifyParticleSize_cls") > 0);
}

bool ParticleForRender_cls::HasActiveMerge(ViewerClone_cls* viewer) {
    if (!viewer)
        return false;
    for (const auto& pAttr : viewer->mVPCAttribute) {
        const ConfItem_cls* pValid = pAttr->GetPCItem("Validity=");
        const ConfItem_cls* pTarget = pAttr->GetPCItem("Target=");
        if (pAttr->IsAttributeSameAs("ParticleMerge_cls") && (!pValid || pValid->GetBodyINT() != 0) &&
            pTarget && pTarget->GetBodySTR() != "None")
            return true;
    }
    return false;
}

wxString ParticleForRender_cls::GetStrInfo() const {
    return wxString::Format("Elements %lld, data %d, sort %d", mNumber, mDataCounter, mSortCounter);
}

std::mutex ParticleForRender_cls::msTableMutex;

bool ParticleForRender_cls::ClaimIDSearch(ParticleSnap_cls* pSnap) {
    bool bExpected = false;
    if (!pSnap->mIDStarted.compare_exchange_strong(bExpected, true, std::memory_order_acq_rel))
        return false;
    pSnap->mIDRan = true;
    return true;
}

void ParticleForRender_cls::WaitIDDone(ParticleSnap_cls* pSnap, bool bFileName) {
    const auto start = std::chrono::steady_clock::now();
    bool bLogged = false;
    while (!pSnap->mIDDone.load(std::memory_order_acquire)) {
        const auto us =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start)
                .count();
        if (us > kWaitIDMicroSec && !bLogged) {
            wxLogMessage("Wait ID Calc Timeout B\n");
            if (bFileName)
                wxLogMessage("%s", pSnap->mFile);
            bLogged = true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(kSleepMsData));
    }
}

template <class Worker, class Setup>
void ParticleForRender_cls::RunWorkers(int count, bool bNext, int sleepMs, Setup setup) {
    int n = 0;
    std::atomic<bool>* list = GetNewPCbFinishList(n, count, bNext);
    for (int k = 0; k < n; ++k) {
        int ini = 0, fin = 0;
        GetIniAndFin(ini, fin, k, n, count);
        auto* pWorker = new Worker;
        setup(*pWorker, ini);
        StartWorker(pWorker, &list[k], ini, fin);
    }
    WaitThreadsAndDeleteFlag(list, n, sleepMs);
}

void ParticleForRender_cls::RunIDPass(ParticleSnap_cls* pSnap, ParticleSnap_cls* pNext, bool bNext) {
    pSnap->mIDStarted = true;
    pSnap->mIDRan = true;
    RunWorkers<ThreadInterpStep_cls>(pSnap->mNumber.load(std::memory_order_relaxed), bNext, kSleepMsData,
                                     [&](ThreadInterpStep_cls& w, int) {
                                         w.SetParameters(this, pSnap, pNext, nullptr, nullptr, &mCSetting,
                                                         true);
                                     });
}

void ParticleForRender_cls::TransformCameraToObject(const ViewerClone_cls* viewer,
                                                    PositionAndDirection_cls& camera) {
    // The inverse of the object's matrix times the camera.
    double inverse[16];
    if (!viewer || !TensorMath_cls::Invert(viewer->mMatrix, inverse))
        return;
    TensorMath_cls::TransformPoint(inverse, camera.mPos, camera.mPos);
    double v[3];
    TensorMath_cls::TransformVector(inverse, camera.mTgt, v);
    std::copy(v, v + 3, camera.mTgt);
    TensorMath_cls::TransformVector(inverse, camera.mTop, v);
    std::copy(v, v + 3, camera.mTop);
    camera.Normalize();
}

wxString ParticleForRender_cls::GetStrStamp(const PrepareSetting_cls& setting, ViewerClone_cls* viewer,
                                            ViewerClone_cls* material, ParticleSnap_cls* const snaps[4],
                                            double time, int frame, int subframe,
                                            const PositionAndDirection_cls& camera) const {
    // The clones' counters, the values read from them, and which data stand in the snaps.
    wxString strStamp = GetStrProcCounterClone(viewer, time);
    if (material)
        strStamp << "|" << GetStrProcCounterClone(material, time);
    strStamp << "|" << setting.GetStrValues();
    for (int k = 0; k < 4; ++k) {
        if (const ParticleSnap_cls* pSnap = snaps[k])
            strStamp << wxString::Format("|%p:%d:", static_cast<const void*>(pSnap), pSnap->mNumber.load())
                     << pSnap->mReadFile;
        else
            strStamp << "|-";
    }
    // A classification by expression reads the frame's time ("nt", "frame", "subframe"): two frames
    // on the same step and factor (past the last step, or remapped) may still classify differently.
    if (setting.mClassifyType == 1)
        strStamp << wxString::Format("|nt %.17g %d %d", time, frame, subframe);
    // The size modifiers scale the sizes of the pass in place and read the camera: with one of them a
    // new camera or sort type means a new pass, never a second scaling of the same sizes.
    if (HasSizeModifier(viewer))
        strStamp << wxString::Format("|cam %.17g,%.17g,%.17g,%.17g,%.17g,%.17g sort %d", camera.mPos[0],
                                     camera.mPos[1], camera.mPos[2], camera.mTgt[0], camera.mTgt[1],
                                     camera.mTgt[2], setting.mSortType);
    return strStamp;
}

ParticleForRender_cls::PairTables_cls ParticleForRender_cls::PrepareTables(ParticleSnap_cls* snap1,
                                                                           ParticleSnap_cls* snap2,
                                                                           ParticleSnap_cls* snap0,
                                                                           ParticleSnap_cls* snap3) {
    PairTables_cls tables;
    // A frame on a step itself (B is A) has nothing to match: every particle is its own partner,
    // and the tables that A holds for its real neighbours stay as they are.
    tables.mbByID = mCSetting.mInterpolateBy == 1 && snap2 != snap1 && HasIDs(snap1) && HasIDs(snap2);
    tables.mbNextB = tables.mbByID && snap3 && snap3 != snap2 && HasIDs(snap3);
    if (!tables.mbByID) {
        if (mCSetting.mInterpolateBy != 1) {
            snap1->CheckAllocateNextIndex(false);
            snap2->CheckAllocateNextIndex(false);
        }
        return tables;
    }
    {
        // Two sets may prepare from the same snaps at once: whichever comes first makes the tables.
        std::lock_guard<std::mutex> lock(msTableMutex);
        BindTables(snap1, snap2);
        if (tables.mbNextB)
            BindTables(snap2, snap3);
        // A's predecessors count only when they were found in the snap before A that this frame has.
        tables.mbPrevA = snap0 && snap0 != snap1 && snap1->mPrevKey == snap1->GetMatchKey(snap0);
    }
    // Tables of B against the snap after it, for the outer neighbour of the cubic forms.
    if (tables.mbNextB && !snap2->mIDDone) {
        if (!ClaimIDSearch(snap2))
            WaitIDDone(snap2, false);
        if (!snap2->mIDDone) {
            RunIDPass(snap2, snap3, false);
            snap2->mIDDone = true;
            snap3->mPrevDone = true;
        }
    }
    // A's tables: searched by this pass's workers unless another pass has them or is making them.
    if (!snap1->mIDDone) {
        if (ClaimIDSearch(snap1))
            tables.mbSearchA = true;
        else
            WaitIDDone(snap1, true);
    }
    return tables;
}

void ParticleForRender_cls::RunDataPass(ParticleSnap_cls* const snaps[4], int step, int frame, int subframe,
                                        double t, double time, ViewerClone_cls* viewer,
                                        const PositionAndDirection_cls& camera, bool bNext) {
    ParticleSnap_cls* snap1 = snaps[0];
    ParticleSnap_cls* snap2 = snaps[1];
    int type = 0;
    const int factor = GetDownsize(mCSetting, type);
    const int countA = snap1->mNumber.load(std::memory_order_relaxed);
    const int mode = GetEffectiveDownsizeType(snap1, type);
    const long long nOut = GetNumDownsized(countA, factor, mode);
    if (!Allocate(nOut) || nOut == 0) {
        mNumber = 0;
        return;
    }
    const PairTables_cls tables = PrepareTables(snap1, snap2, snaps[2], snaps[3]);
    RunWorkers<ThreadInterpStep_cls>(countA, bNext, kSleepMsData, [&](ThreadInterpStep_cls& w, int ini) {
        w.SetParameters(this, snap1, snap2, snaps[2], snaps[3], &mCSetting, false);
        w.mByID = tables.mbByID;
        w.mbSearch = tables.mbSearchA;
        w.mbPrevAValid = tables.mbPrevA;
        w.mbNextBValid = tables.mbNextB;
        w.SetParametersTime(t, step, frame, subframe);
        w.mNT = time;
        w.SetParametersDownsize(mode == 0 ? (ini + factor - 1) / factor : ini, factor, type);
    });
    if (tables.mbSearchA) {
        snap1->mIDDone = true;
        snap2->mPrevDone = true;
    }
    mbSourceIdentity = factor == 1;
    ++mDataCounter;
    // Right after the interpolation: the merges of other particle objects' frames.
    const ModifierFunc funcModifier = GetModifierFunc();
    if (funcModifier && HasActiveMerge(viewer)) {
        ParticleModifierCall_cls call{this, viewer, snap1, time, camera, mCSetting.mSortType, bNext};
        funcModifier(ParticleModifierCall_cls::kStageMerge, call);
    }
}

bool ParticleForRender_cls::IsSortDue(int s, const PositionAndDirection_cls& camera, double sortFrequency) {
    bool bNew = false;
    if (s == 1)
        bNew = !(Direction_cls::IsSimilarTgtDirection(mLastCamera, camera, sortFrequency) &&
                 sortFrequency != 1.0);
    else if (s == 3 || s == 4 || s == 6 || s == 7)
        bNew = !Position_cls::IsSimilarPosition(mLastCamera, camera, 1e-6);
    if (s != mLastSortType)
        bNew = true;
    if (bNew) {
        mLastCamera = camera;
        mLastSortType = s;
    }
    return bNew;
}

bool ParticleForRender_cls::PrepareData(ParticleSnap_cls* snap1, ParticleSnap_cls* snap2,
                                        ParticleSnap_cls* snap0, ParticleSnap_cls* snap3, int step, int frame,
                                        int subframe, double t, ViewerClone_cls* viewer,
                                        ViewerClone_cls* material, double time,
                                        PositionAndDirection_cls camera, bool bNext) {
    wxStopWatch watch;
    std::unique_ptr<ViewerClone_cls> pViewer(viewer);
    std::unique_ptr<ViewerClone_cls> pMaterial(material != viewer ? material : nullptr);
    wxASSERT_MSG(snap1 != NULL, "pCSnap1 != NULL");
    if (!snap1)
        return false;
    ParticleSnap_cls* const snaps[4] = {snap1, snap2 ? snap2 : snap1, snap0, snap3};
    TransformCameraToObject(viewer, camera);
    PrepareSetting_cls setting;
    setting.ReadFromClone(viewer, material, time);

    const wxString strStamp =
        GetStrStamp(setting, viewer, pMaterial.get(), snaps, time, frame, subframe, camera);
    // A merge appends another object's frame, whose changes leave no trace in this object's inputs: such
    // a frame is always made anew.
    const bool bRecompute =
        HasActiveMerge(viewer) ||
        !(step == mLastStep && static_cast<float>(t) == mLastInterp && strStamp == mLastProcCounter);
    mLastStep = step;
    mLastInterp = static_cast<float>(t);
    mLastProcCounter = strStamp;
    if (bRecompute) {
        mCSetting = setting;
        RunDataPass(snaps, step, frame, subframe, t, time, viewer, camera, bNext);
        if (mNumber == 0)
            return true; // nothing to order
    }
    // Sort when the data changed, the camera really moved, or the sort type changed.
    const bool bNew = IsSortDue(setting.mSortType, camera, setting.mSortFrequency);
    if ((bNew || bRecompute) && mNumber > 0)
        ProcIndexAndZ(setting, viewer, snap1, time, camera, bNext);
    wxLogInfo("PrepareData Time=%ld", watch.Time());
    return true;
}

void ParticleForRender_cls::ProcIndexAndZ(const PrepareSetting_cls& setting, ViewerClone_cls* viewer,
                                          const ParticleSnap_cls* snapA, double time,
                                          const PositionAndDirection_cls& camera, bool bNext) {
    wxStopWatch watch;
    const int count = static_cast<int>(mNumber);
    const int s = setting.mSortType;
    ParticleModifierCall_cls call{this, viewer, snapA, time, camera, s, bNext};
    // The key workers also set every filter alpha back to 1 (0 for empty places), so the filters and
    // shapes below, which only multiply it, never see the alpha of an earlier run. They read the
    // elements and not the order, so running them after the keys and before the sort is the same.
    RunWorkers<ThreadSetArrayZ_cls>(count, bNext, kSleepMsSort,
                                    [&](ThreadSetArrayZ_cls& w, int) { w.SetParameters(this, s, camera); });
    const ModifierFunc funcModifier = GetModifierFunc();
    if (funcModifier)
        funcModifier(ParticleModifierCall_cls::kStageRemove, call);
    // 0 keeps the order of the data; 7 fills the keys for later use and leaves the order.
    if (s != 0 && s != 7) {
        if (mNumber <= kParallelSortMin)
            std::sort(mOrder.get(), mOrder.get() + count);
        else
            SortParallel_cls().SortParallel(mOrder.get(), count);
    }
    // The size modifiers read the keys as depths.
    if (funcModifier && HasSizeModifier(viewer))
        funcModifier(ParticleModifierCall_cls::kStageSize, call);
    bool bDepend = false;
    for (int m = 0; m < PrepareSetting_cls::kMaterialMax; ++m)
        if (setting.mColorCurveType[m] == 1 && setting.mColorCurveDepend[m] == 9)
            bDepend = true;
    if (bDepend)
        RunWorkers<ThreadCurveDependOnSort_cls>(
            count, bNext, kSleepMsSort,
            [&](ThreadCurveDependOnSort_cls& w, int) { w.SetParameters(this, &mCSetting); });
    ++mSortCounter;
    wxLogInfo("ProcIndexAndZ Internal Time=%ld", watch.Time());
}
