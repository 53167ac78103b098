// The worker of a particle preparation: over one range of snap A it matches particles to snap B
// by ID (or by index), interpolates position and size, sets the type and the colour coordinates,
// and writes them to consecutive outputs of a ParticleForRender_cls from mStartOut on.
#pragma once

#include "ThreadInstance_cls.h"

struct lua_State;
class ParticleForRender_cls;
class ParticleSnap_cls;
class PrepareSetting_cls;

class ThreadInterpStep_cls : public ThreadInstance_cls {
public:
    // Not owned: the snaps belong to their sequence, the setting and the output to the caller,
    // which keeps them alive until this worker's flag is set. pSnap2, pSnap0, pSnap3 may be null.
    void SetParameters(ParticleForRender_cls* pOut, ParticleSnap_cls* pSnap1, ParticleSnap_cls* pSnap2,
                       ParticleSnap_cls* pSnap0, ParticleSnap_cls* pSnap3, const PrepareSetting_cls* pSetting,
                       bool bIDOnly);
    void SetParametersTime(double t, int step, int frame, int subframe);
    // The mode is type when the snap has 32-bit IDs; without them 0, or 2 when it has 64-bit IDs
    // and type is 1.
    void SetParametersDownsize(int startOut, int downsize, int type);

    // Searches ids[0..n) for id from hint in widening windows; -1 when absent. ids must ascend: an ID
    // that falls between two neighbours of a window is absent, and no wider window is tried.
    static int SearchIDFrom(const int* ids, int n, int hint, int id);
    static int SearchIDLongFrom(const long long* ids, int n, int hint, long long id);
    // The single stages.
    static int SearchIDNear10(const int* ids, int n, int hint, int id);
    static int SearchIDNear(const int* ids, int n, int hint, int id, int window, int look);
    static int SearchIDFull(const int* ids, int n, int id);

    // Catmull-Rom, and the smooth Bezier whose handles lengthen at sharp turns; per component of 3.
    static void ExecBezier(double* out, const double* p0, const double* p1, const double* p2,
                           const double* p3, double t);
    static void ExecBezier2(double* out, const double* p0, const double* p1, const double* p2,
                            const double* p3, double t);

    // Fills mNextIndex of this range of snap A and mPrevIndex of B. The caller marks A's
    // mIDStarted and mIDRan before the pass: one writer for the flags.
    void SearchNextIndexByID();

    ParticleSnap_cls* mpCSnap1 = nullptr;
    ParticleSnap_cls* mpCSnap2 = nullptr;
    ParticleSnap_cls* mpCSnap0 = nullptr;
    ParticleSnap_cls* mpCSnap3 = nullptr;
    ParticleForRender_cls* mpCOut = nullptr;
    const PrepareSetting_cls* mpCSetting = nullptr;
    int mStartOut = 0;
    int mDownsize = 1;
    int mDownsizeType = 0;
    bool mIDOnly = false;
    bool mByID = false;
    // This pass builds A's tables before it interpolates; decided once by the caller, which claimed them.
    bool mbSearch = false;
    // A's predecessor table was built against this frame's snap before A, and B's next table against
    // the snap after B; a table built for another pair is never read.
    bool mbPrevAValid = false;
    bool mbNextBValid = false;
    double mT = 0.0;
    // The frame's normalised time: "nt" of the classification expression.
    double mNT = 0.0;
    int mStep = 0;
    int mFrame = 0;
    int mSubframe = 0;

protected:
    void Work() override;

private:
    // The pass over the range: position, type, size and colour of each kept element. bLinear selects
    // the inline linear form; the others go through InterpolatePosition.
    template <bool bLinear, class KeyFn> void Interpolate(KeyFn key);
    // The interpolated position of element i of A.
    void InterpolatePosition(int i, int interp, bool byID, double* p) const;
    // Sets the type of the outputs of this range by the expression; false when no state could be had.
    bool ClassifyByExpression(int firstOut, int count, const int* pElement);
    // The minimum image of p next to ref in the periodic box, and p wrapped into the box.
    void NearestImage(const double* ref, double* p) const;
    void WrapIntoBox(double* p) const;
    int mInterp = 1;
    bool mbByIDActive = false;
    // The periodic box of this pass, when there is one.
    bool mbPeriodic = false;
    double mBoxLo[3] = {0.0, 0.0, 0.0};
    double mBoxLen[3] = {1.0, 1.0, 1.0};
    // A's predecessors, when the search that writes them has finished; else null, as if none were known.
    const int* mpPrevA = nullptr;
};
