// The prepared arrays of one frame of a particle object: position, type, size, colour-curve
// coordinates and the draw order with its keys, and the direction of the pass that fills them.
// A particle object keeps two: one shown, one being filled for the next frame.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "PositionAndDirection_cls.h"
#include "PrepareSetting_cls.h"
#include "ThreadCommon_cls.h"

#include <wx/string.h>

#include <functional>
#include <memory>
#include <mutex>

class ParticleForRender_cls;
class ParticleSnap_cls;
class ViewerClone_cls;

// What the particle modifiers see at their places in a pass. Not owned: all belong to the pass.
class ParticleModifierCall_cls {
public:
    // The places, in the order a pass reaches them: right after the interpolation (merges, main thread
    // only), before the order is sorted (filters and shapes set the filter alpha), after the keys (the
    // size modifiers).
    enum { kStageMerge = 0, kStageRemove = 1, kStageSize = 2 };

    ParticleForRender_cls* mpCSet = nullptr;
    ViewerClone_cls* mpCViewer = nullptr;
    const ParticleSnap_cls* mpCSnapA = nullptr; // the snap the elements come from
    double mTime = 0.0;
    PositionAndDirection_cls mCamera; // in the object's space
    int mSortType = 0;
    bool mbNext = false;
};

class ParticleForRender_cls : public ThreadCommon_cls {
public:
    // Sleeps of the waits: 3 ms for the data pass and the tables, 1 ms for the key passes.
    static constexpr int kSleepMsData = 3;
    static constexpr int kSleepMsSort = 1;
    // Above this many elements the order is sorted on four threads.
    static constexpr long long kParallelSortMin = 640000;
    // How long a pass waits for tables that another pass is building before it logs a time-out, in
    // microseconds.
    static constexpr long long kWaitIDMicroSec = 5001000;

    // Prepares the frame: snap1 is A (the step at or before the time), snap2 B (after it, may be
    // A), snap0 the one before A and snap3 the one after B (either may be null). camera is in the
    // scene's space; the viewer's matrix takes it into the object's. Deletes both clones. bNext is true on
    // the background path. Writes only this set's arrays and the index tables of the snaps. False when snap1
    // is null. One caller thread at a time per set.
    bool PrepareData(ParticleSnap_cls* snap1, ParticleSnap_cls* snap2, ParticleSnap_cls* snap0,
                     ParticleSnap_cls* snap3, int step, int frame, int subframe, double t,
                     ViewerClone_cls* viewer, ViewerClone_cls* material, double time,
                     PositionAndDirection_cls camera, bool bNext);

    // One text that changes when any input of a pass changes, time-dependent values included.
    wxString GetStrProcCounterClone(ViewerClone_cls* viewer, double time) const;
    // The product of the active downsizing factors; type gets the type of the last one.
    static int GetDownsize(const PrepareSetting_cls& setting, int& type);
    // Elements that a pass over count elements of A writes.
    static long long GetNumDownsized(long long count, int factor, int type);

    // Keys of the order with the filter alpha back to 1, the filters and shapes, the sort when due,
    // the size modifiers and the colour coordinates that depend on depth. snapA is the snap the elements
    // came from (for their IDs and values); viewer may be null.
    void ProcIndexAndZ(const PrepareSetting_cls& setting, ViewerClone_cls* viewer,
                       const ParticleSnap_cls* snapA, double time, const PositionAndDirection_cls& camera,
                       bool bNext);

    // The particle modifiers: called with the stage and the pass's arrays. The modifier layer puts
    // it in the preparation slot of the "Particle_cls" kind; without it a pass runs no modifier.
    using ModifierFunc = void (*)(int stage, ParticleModifierCall_cls& call);
    // Null when no modifier layer is registered. Any thread: the kind table only changes between
    // registries.
    static ModifierFunc GetModifierFunc();
    // Whether a clone carries an entry that changes sizes after the keys; such entries scale mSize in
    // place, so their pass must always follow a fresh data pass.
    static bool HasSizeModifier(ViewerClone_cls* viewer);
    // Whether a clone carries a merge that is switched on and names a target.
    static bool HasActiveMerge(ViewerClone_cls* viewer);

    // Frees the arrays and resets the stamps.
    void Clear();
    // Makes room for n elements; larger arrays are kept. False when memory is refused.
    bool Allocate(long long n);

    wxString GetStrInfo() const;

    long long mNumber = 0;
    std::unique_ptr<float[]> mXYZ; // 3 per element
    std::unique_ptr<unsigned char[]> mType;
    std::unique_ptr<float[]> mSize;
    std::unique_ptr<float[]> mColorS;
    std::unique_ptr<float[]> mColorT;
    std::unique_ptr<ArrayAndIndex_cls[]> mOrder;
    // The filter alpha of each element: 1 shown, 0 hidden by a filter or shape, or a place left empty by a
    // thinning by ID; the apparent-size limit may lower it.
    std::unique_ptr<float[]> mAlpha;
    // The index in snap A of each element when the pass thinned the data (-1 for an empty place); when
    // mbSourceIdentity is set, element e is particle e and the array is not filled.
    std::unique_ptr<int[]> mSource;
    bool mbSourceIdentity = true;
    int mLastStep = -1;
    float mLastInterp = -1.0f;
    int mLastSortType = -1;
    PositionAndDirection_cls mLastCamera;
    wxString mLastProcCounter;
    int mDataCounter = 0;
    int mSortCounter = 0;

    // The setting of the last pass, as its workers read it.
    PrepareSetting_cls mCSetting;

private:
    // What the tables of a frame allow its workers: matching by ID, A's search to be run by them, A's
    // predecessors and B's successors to be read.
    struct PairTables_cls {
        bool mbByID = false;
        bool mbSearchA = false;
        bool mbPrevA = false;
        bool mbNextB = false;
    };
    // The stages of PrepareData.
    static void TransformCameraToObject(const ViewerClone_cls* viewer, PositionAndDirection_cls& camera);
    wxString GetStrStamp(const PrepareSetting_cls& setting, ViewerClone_cls* viewer,
                         ViewerClone_cls* material, ParticleSnap_cls* const snaps[4], double time, int frame,
                         int subframe, const PositionAndDirection_cls& camera) const;
    // Binds the tables of the frame's pairs and builds B's against the snap after it; claims or awaits
    // A's search. Reads mCSetting.
    PairTables_cls PrepareTables(ParticleSnap_cls* snap1, ParticleSnap_cls* snap2, ParticleSnap_cls* snap0,
                                 ParticleSnap_cls* snap3);
    // Allocation, tables, the interpolation workers and the merges. snaps: A, B, before A, after B.
    void RunDataPass(ParticleSnap_cls* const snaps[4], int step, int frame, int subframe, double t,
                     double time, ViewerClone_cls* viewer, const PositionAndDirection_cls& camera,
                     bool bNext);
    // Whether the camera or the sort type changed enough for new keys; keeps the new ones.
    bool IsSortDue(int sortType, const PositionAndDirection_cls& camera, double sortFrequency);
    // Splits count elements over the workers of a pass, sets each up (setup(worker, ini)), runs them and
    // waits with sleeps of sleepMs.
    template <class Worker, class Setup> void RunWorkers(int count, bool bNext, int sleepMs, Setup setup);
    // Runs a worker pass over pSnap with the tables only (the pair pSnap, pNext).
    void RunIDPass(ParticleSnap_cls* pSnap, ParticleSnap_cls* pNext, bool bNext);
    // Takes the search of pSnap's tables for this pass: true when no other pass had begun it, which
    // then marks it begun and ran. The test and the mark are one step, so two sets never both search.
    static bool ClaimIDSearch(ParticleSnap_cls* pSnap);
    // Waits until another pass has finished pSnap's tables. The pass that claimed them always finishes
    // them, so past kWaitIDMicroSec the time-out is logged (with the file's name when bFileName) and the
    // wait goes on: building them here as well would write the same tables from two passes at once.
    static void WaitIDDone(ParticleSnap_cls* pSnap, bool bFileName);
    // Held while the tables of snaps are checked and made, by whichever set comes first.
    static std::mutex msTableMutex;
    long long mCapacity = 0;
};
