#include "DataSequence_cls.h"

#include "Main_cls.h"
#include "Preference_cls.h"
#include "ReadEventSink_cls.h"
#include "SequenceRemapBase_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/debug.h>
#include <wx/log.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

DataSequence_cls::DataSequence_cls(int kind) : mSequenceKind(kind) {}

DataSequence_cls::~DataSequence_cls() {
    // Kinds delete their snaps in their own destructors; this catches what is left.
    ClearSequence();
}

void DataSequence_cls::ClearSequence() {
    mSnaps.clear();
    FileSequence_cls::mMaxOffset = -1;
    FileSequenceDual_cls::mMaxOffset = -1;
    FileSequenceDual_cls::mMaxOffsetZ = -1;
}

void DataSequence_cls::AllocateSlots(int count) {
    if (count <= 0)
        return;
    mSnaps.resize(static_cast<size_t>(count));
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("PROPERTY_OBJECT");
}

void DataSequence_cls::CalcMaxOffset(bool useSequence) {
    ClearSequence();
    FileSequenceDual_cls::mValid = true;
    if (!useSequence) {
        mIsSequence = false;
        FileSequence_cls::mMaxOffset = 1;
        CheckSingleFileValidity();
    } else {
        FileSequence_cls::CalcMaxOffset(true, mStrScript);
    }
    if (FileSequence_cls::mMaxOffset != 0)
        AllocateSlots(FileSequence_cls::mMaxOffset);
}

void DataSequence_cls::CalcMaxOffsetDual() {
    ClearSequence();
    FileSequenceDual_cls::mValid = true;
    FileSequenceDual_cls::CalcMaxOffsetDual(true);
    if (FileSequenceDual_cls::mMaxOffset != 0)
        AllocateSlots(FileSequenceDual_cls::mMaxOffset);
}

int DataSequence_cls::Surplus(int frame, int count) {
    if (count <= 0)
        return 0;
    int r = frame % count;
    return r < 0 ? r + count : r;
}

void DataSequence_cls::ModFrame(int& frame, int count, bool repeat) {
    if (frame >= 0 && frame < count)
        return;
    if (!repeat) {
        frame = frame >= count ? std::max(count - 1, 0) : 0;
        return;
    }
    frame = Surplus(frame, count);
    if (frame < 0)
        frame = Surplus(frame, count);
}

int DataSequence_cls::GetIndexFromFrame(int frame, double nt, SequenceRemapBase_cls* pRemap,
                                        bool repeat) const {
    int index = frame;
    if (pRemap) {
        // The value is a step number; the 1e-6 keeps 6.9999999 on step 7.
        double v = std::floor(pRemap->GetRemapValue(nt) + 1e-6);
        if (!std::isfinite(v))
            v = 0.0;
        index = static_cast<int>(std::clamp(v, -2147483648.0, 2147483647.0));
    }
    const int countSingle = FileSequence_cls::mMaxOffset;
    if (countSingle != -1 && index >= countSingle)
        index = repeat ? Surplus(index, countSingle) : countSingle - 1;
    const int countDual = FileSequenceDual_cls::mMaxOffset;
    if (countDual != -1 && index >= countDual)
        index = repeat ? Surplus(index, countDual) : countDual - 1;
    return index;
}

int DataSequence_cls::GetRemappedIndex(int frame, SequenceRemapBase_cls* pRemap, double time,
                                       bool repeat) const {
    return GetIndexFromFrame(frame, time, pRemap, repeat);
}

void DataSequence_cls::MarkPriority(SequenceRemapBase_cls* pRemap, bool repeat) {
    if (mSnaps.empty())
        return;
    if (FileSequence_cls::mMaxOffset == 1 || FileSequenceDual_cls::mMaxOffset == 1 || mSnaps.size() == 1) {
        // A single step is never protected; GetOldestDrawnIndex never evicts it either.
        if (mSnaps[0])
            mSnaps[0]->mPriority = false;
        return;
    }
    TimeCtrl_cls* pTime = GetPCTimeCtrl();
    if (!pTime)
        return;
    const int frames = pTime->GetFrameMax();
    const int current = pTime->GetFrameCurrent();
    const int prefetch = GetPCPreference() ? GetPCPreference()->GetPrefetchLength() : 10;
    if (frames < 1)
        return;
    // Rising frame order is part of the design: when a remap revisits a step, the last frame
    // that maps to it decides its mark, so a step that a later frame also needs ends unprotected.
    const long long window = std::min<long long>(frames, static_cast<long long>(prefetch) + 1 + current);
    for (int t = 0; t < frames; ++t) {
        int index = GetIndexFromFrame(t, static_cast<double>(t) / frames, pRemap, repeat);
        if (index < 0)
            continue;
        DataSnap_cls* pSnap = GetPCSnap(index);
        if (!pSnap)
            continue;
        pSnap->mPriority = t < window && current <= t;
        pSnap->mDistance = std::abs(t - current);
    }
}

int DataSequence_cls::GetOldestDrawnIndex() const {
    if (mSnaps.size() < 2)
        return -1;
    int best = -1;
    int bestScore = 999999999;
    for (size_t i = 0; i < mSnaps.size(); ++i) {
        const DataSnap_cls* pSnap = mSnaps[i].get();
        if (!pSnap || pSnap->mPriority)
            continue;
        // One frame of distance weighs as half a draw; never drawn (-1) goes first.
        int score = static_cast<int>(pSnap->mDrawStamp - pSnap->mDistance * 0.5);
        if (score < bestScore) {
            bestScore = score;
            best = static_cast<int>(i);
        }
    }
    return best;
}

bool DataSequence_cls::ReleaseMemoryData(SequenceRemapBase_cls* pRemap) {
    bool repeat = pRemap ? pRemap->GetRemapRepeat() : false;
    MarkPriority(pRemap, repeat);
    int index = GetOldestDrawnIndex();
    if (index < 0)
        return false;
    int slot = GetSlotOfIndex(index);
    if (slot < 0 || !mSnaps[slot])
        return false;
    wxLogMessage("%s", "ReleaseLog :: " + mSnaps[slot]->GetStrFile() + "\n");
    // Deleting waits for a read that is still running on the snap.
    mSnaps[slot].reset();
    return true;
}

void DataSequence_cls::PopLock() {
    int before = mReadingLock.fetch_sub(1, std::memory_order_acq_rel);
    wxASSERT(before > 0); // mReadingLock > 0
}

int DataSequence_cls::GetSlotOfIndex(int index) const {
    if (mSnaps.empty())
        return -1;
    const int last = static_cast<int>(mSnaps.size()) - 1;
    if (index > last)
        index = last;
    if (!mIsSequence || index < 0)
        index = 0;
    return index;
}

DataSnap_cls* DataSequence_cls::GenerateIfNot(int index) {
    int slot = GetSlotOfIndex(index);
    if (slot < 0)
        return nullptr;
    if (!mSnaps[slot])
        mSnaps[slot].reset(NewSnap(slot));
    return mSnaps[slot].get();
}

DataSnap_cls* DataSequence_cls::GetPCSnap(int index) const {
    int slot = GetSlotOfIndex(index);
    return slot < 0 ? nullptr : mSnaps[slot].get();
}

DataSequence_cls::StepState_enum DataSequence_cls::GetStepState(int index) const {
    if (index < 0 || index >= GetSnapCount())
        return STEP_ABSENT;
    const DataSnap_cls* pSnap = mSnaps[index].get();
    if (!pSnap || !pSnap->mReadStarted)
        return STEP_ON_DISK;
    return pSnap->IsReading() ? STEP_READING : STEP_IN_MEMORY;
}

int DataSequence_cls::GetTotalUsedMemoryMB() {
    long long bytes = 0;
    for (const auto& pSnap : mSnaps)
        if (pSnap)
            bytes += pSnap->GetUsedMemoryByte();
    mTotalMB = static_cast<int>(bytes / 1048576);
    return mTotalMB;
}

wxString DataSequence_cls::GetStrFileOfIndex(int index) const {
    if (!mIsSequence)
        return FileSequence_cls::mPath;
    return GetModifiedStr(index, 0, mStrScript);
}

bool DataSequence_cls::PrefetchLoop(SequenceRemapBase_cls* pRemap, const std::function<bool(int)>& tryIndex) {
    // One reader at a time per sequence keeps the disk sequential and bounds memory growth.
    if (mReadingLock.load(std::memory_order_acquire) >= 1)
        return false;
    TimeCtrl_cls* pTime = GetPCTimeCtrl();
    if (!pTime || mSnaps.empty())
        return false;
    const double nt = pTime->GetCurrentNT(false);
    const double dnt = pTime->GetDNT();
    int frame = 0;
    int sub = 0;
    pTime->GetFrameFromNT(nt, frame, sub);
    const int count = GetSnapCount();
    const int prefetch = GetPCPreference() ? GetPCPreference()->GetPrefetchLength() : 10;
    for (int i = 0; i < prefetch; ++i) {
        int index = frame + i;
        if (pRemap)
            index = pRemap->GetRemappedFrame(nt + i * dnt, frame + i, count);
        if (index < 0 || index >= count)
            continue;
        if (tryIndex(index))
            return true;
        // Interpolation between two steps needs the step after as well.
        if (index + 1 < count && tryIndex(index + 1))
            return true;
    }
    return false;
}

wxString DataSequence_cls::GetStrInfo(bool bDetail) const {
    int loaded = 0;
    for (const auto& pSnap : mSnaps)
        if (pSnap)
            ++loaded;
    wxString str = wxString::Format("Steps: %d  Loaded: %d  Memory: %dMB", GetSnapCount(), loaded, mTotalMB);
    if (bDetail)
        str += "\nPath: " + FileSequence_cls::mPath;
    return str;
}

void DataSequence_cls::FinishRead(std::chrono::steady_clock::time_point start, const wxString& strFile,
                                  std::atomic<bool>* pbFinished, DataSequence_cls* pSequence) {
    const long elapsed = static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
            .count());
    const wxString strLog = wxString::Format("ReadLog :: %s::%ldms\n", strFile, elapsed);
    pbFinished->store(true, std::memory_order_release);
    if (pSequence)
        pSequence->PopLock();
    ReadEventSink_cls::Post();
    wxLogMessage("%s", strLog);
}
