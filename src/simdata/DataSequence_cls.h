// The in-memory side of one file sequence: one slot per time step, each empty or holding a snap.
// It decides which steps are worth keeping (MarkPriority), which goes when memory runs short
// (GetOldestDrawnIndex, ReleaseMemoryData) and which is read next (the kinds' PrefetchData).
// Every data sequence carries both name rules and uses one of them. Main thread only, except
// PushLock/PopLock, which reader threads call.
#pragma once

#include "DataSnap_cls.h"
#include "FileSequenceDual_cls.h"
#include "FileSequence_cls.h"
#include "GetPC_cls.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class SequenceRemapBase_cls;

class DataSequence_cls : public FileSequence_cls, public FileSequenceDual_cls, public GetPC_cls {
public:
    // kind: 0 volume, 1 particle, 2 image, 3 streamline.
    explicit DataSequence_cls(int kind);
    virtual ~DataSequence_cls();
    DataSequence_cls(const DataSequence_cls&) = delete;
    DataSequence_cls& operator=(const DataSequence_cls&) = delete;

    // Deletes all snaps (each waits for its read), drops the slots and sets the counts of both
    // rules to -1.
    void ClearSequence();
    // Counts the steps of the single rule (or takes the path as one file when useSequence is
    // false) and makes that many empty slots.
    void CalcMaxOffset(bool useSequence);
    // The same through the dual rule, with the number of time steps as the slot count.
    void CalcMaxOffsetDual();
    bool IsDataValid() const { return FileSequence_cls::mValid && FileSequenceDual_cls::mValid; }

    // Frame to slot index, with the remap evaluated at time.
    int GetRemappedIndex(int frame, SequenceRemapBase_cls* pRemap, double time, bool repeat) const;
    // Marks the snaps that the next PrefetchLength= frames need as protected, and every snap's
    // distance from the current frame. Frames are walked in rising order; see the source.
    void MarkPriority(SequenceRemapBase_cls* pRemap, bool repeat);
    // The slot to evict: the unprotected snap with the smallest (draw stamp - distance / 2), the
    // lower index on a tie; -1 when there is none or the sequence has fewer than two slots.
    int GetOldestDrawnIndex() const;
    // Evicts at most one snap; true when one went. Logs "ReleaseLog :: " and its file.
    bool ReleaseMemoryData(SequenceRemapBase_cls* pRemap);

    // Number of running reads. Any thread.
    void PushLock() { mReadingLock.fetch_add(1, std::memory_order_acq_rel); }
    void PopLock();
    // The last acts of a reader thread whose read began at start: logs "ReadLog :: " with the
    // file and the milliseconds, sets the finished flag, pops the lock of pSequence (may be null)
    // and wakes the main loop. Only copies are used once the flag is set, since the main thread
    // may then free the snap.
    static void FinishRead(std::chrono::steady_clock::time_point start, const wxString& strFile,
                           std::atomic<bool>* pbFinished, DataSequence_cls* pSequence);

    // The snap of index, created when the slot is empty. index is limited to the slot count - 1;
    // with mIsSequence false, or below 0, it is 0. Null before counting.
    DataSnap_cls* GenerateIfNot(int index);
    // The same lookup without creating.
    DataSnap_cls* GetPCSnap(int index) const;
    // Sum of the snaps' memory in whole MB; stored in mTotalMB.
    virtual int GetTotalUsedMemoryMB();
    // Number of slots (0 before counting).
    int GetSnapCount() const { return static_cast<int>(mSnaps.size()); }
    // What the timeline shows of a step: no such step, a step on disk not in memory, a step
    // being read, a step in memory.
    enum StepState_enum { STEP_ABSENT = 0, STEP_ON_DISK, STEP_READING, STEP_IN_MEMORY };
    StepState_enum GetStepState(int index) const;
    // The file name of step index: by the single rule with the lookup script, or the plain path
    // when the sequence is switched off.
    wxString GetStrFileOfIndex(int index) const;
    wxString GetStrInfo(bool bDetail) const;

    // Folds a frame number into 0 .. count - 1: kept in range; out of range clamped, or with
    // repeat wrapped. (The data viewer's "SeqOffset=" frame handling.)
    static void ModFrame(int& frame, int count, bool repeat);
    // frame modulo count, never negative; 0 when count is not positive.
    static int Surplus(int frame, int count);

    std::array<unsigned char, 3> mTimelineColor{{0xCC, 0xCC, 0xA4}};
    std::array<unsigned char, 3> mTimelineColorHi{{0xF8, 0xF8, 0xC4}};
    int mSequenceKind;
    std::atomic<int> mReadingLock{0};
    int mDrawCounter = -1;
    int mTotalMB = 0;
    std::vector<std::unique_ptr<DataSnap_cls>> mSnaps; // empty before counting
    bool mIsSequence = false;
    // The user's index lookup script, given by the owner; empty for none.
    wxString mStrScript;

protected:
    // A new snap of the sequence's kind for slot index.
    virtual DataSnap_cls* NewSnap(int index) = 0;
    // The loop of PrefetchData shared by the kinds: tryIndex prepares the snap of one index and
    // returns true when a read really started.
    bool PrefetchLoop(SequenceRemapBase_cls* pRemap, const std::function<bool(int)>& tryIndex);
    // Frame to index at normalised time nt: remap, then fold against both counts.
    int GetIndexFromFrame(int frame, double nt, SequenceRemapBase_cls* pRemap, bool repeat) const;
    // Slot of index as GenerateIfNot limits it; -1 when there are no slots.
    int GetSlotOfIndex(int index) const;
    void AllocateSlots(int count);
};
