#include "ThreadInterpStep_cls.h"

#include "LuaBase_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleSnap_cls.h"
#include "PrepareSetting_cls.h"
#include "StreamWrite_cls.h"

#include <wx/log.h>

#include <lua.hpp>

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// One stage of the search: from lo to hi, looking look elements ahead and jumping look + 1 while
// that element is still below id; stops at the first larger ID. Returns the index, kAbsent when the
// ID falls between two neighbours of the window (or before the first, or after the last, of the
// array), so that no wider window can hold it, and kNotInWindow otherwise.
constexpr int kAbsent = -1;
constexpr int kNotInWindow = -2;

// From i on, the first place below hi where the scan of SearchStage does anything but step on: an ID not
// below id, or a look-ahead element below id (a jump). Positions it passes are ones the scan would only
// step over, so the stage's result is the same for any array, sorted or not. 64-bit IDs step one by one.
template <class T> inline int SkipSteps(const T*, int i, int, T, int) {
    return i;
}

#if defined(__SSE2__)
inline int SkipSteps(const int* ids, int i, int hi, int id, int look) {
    // Four places at a time while all four look-ahead reads stay below hi.
    const int end = hi - 3 - look;
    const __m128i vID = _mm_set1_epi32(id);
    while (i < end) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(ids + i));
        int step = _mm_movemask_ps(_mm_castsi128_ps(_mm_cmplt_epi32(here, vID)));
        if (look > 0) {
            const __m128i ahead = _mm_loadu_si128(reinterpret_cast<const __m128i*>(ids + i + look));
            step &= ~_mm_movemask_ps(_mm_castsi128_ps(_mm_cmplt_epi32(ahead, vID)));
        }
        if (step != 0xf)
            return i + __builtin_ctz(~step & 0xf);
        i += 4;
    }
    return i;
}
#endif

template <class T> int SearchStage(const T* ids, int n, int lo, int hi, T id, int look) {
    int i = lo;
    while (i < hi) {
        if (look > 0 && i + look < hi && ids[i + look] < id) {
            i += look + 1;
            continue;
        }
        if (ids[i] == id)
            return i;
        if (ids[i] > id)
            return (i > lo || lo == 0) ? kAbsent : kNotInWindow;
        // A plain step: the places after it are passed in blocks up to the next stop or jump.
        i = SkipSteps(ids, i + 1, hi, id, look);
    }
    return hi >= n ? kAbsent : kNotInWindow;
}

template <class T> int SearchFrom(const T* ids, int n, int hint, T id) {
    if (n <= 0)
        return -1;
    hint = std::clamp(hint, 0, n - 1);
    static const int kWindow[4] = {10, 100, 1000, 10000};
    static const int kLook[4] = {0, 10, 100, 1000};
    for (int s = 0; s < 4; ++s) {
        const int lo = std::max(0, hint - kWindow[s]);
        const int hi = std::min(n, hint + kWindow[s] + 1);
        const int r = SearchStage(ids, n, lo, hi, id, kLook[s]);
        if (r != kNotInWindow)
            return r;
    }
    return SearchStage(ids, n, 0, n, id, 1000);
}

inline void Load3(double* d, const float* s) {
    d[0] = s[0];
    d[1] = s[1];
    d[2] = s[2];
}

// What an element of one material needs, worked out once per worker instead of once per element.
struct MaterialRow_cls {
    double mSizeFactor = 1.0;
    bool mbSizeConst = false; // SizeType= 1, or no sizes in A: the size is the factor
    bool mbCurve = false;     // ColorCurveType= 1
    int mDepend = 3;
    float mColorT = 0.0f;
    double mRange0 = 0.0;
    double mRange1 = 1.0;
};

// Every pointer and value the per-element loop reads, fetched once before it.
struct PassArrays_cls {
    const float* mpXYZA = nullptr;
    const float* mpXYZB = nullptr;
    const float* mpXYZ0 = nullptr;
    const int* mpNext = nullptr; // null when matched by index
    const int* mpPrevA = nullptr;
    int mCount0 = 0;
    int mCountA = 0;
    int mCountB = 0;
    const float* mpSizeA = nullptr;
    const float* mpSizeB = nullptr;
    const unsigned char* mpTypeA = nullptr;
    const int* mpIDA = nullptr;
    const long long* mpIDLongA = nullptr;
    const float* mpValueA[3] = {};
    float* mpOutXYZ = nullptr;
    unsigned char* mpOutType = nullptr;
    float* mpOutSize = nullptr;
    float* mpOutS = nullptr;
    float* mpOutT = nullptr;
    int* mpOutSource = nullptr; // the element's index in A, written only when the pass thins
    double mT = 0.0;
    double mU = 1.0;           // 1 - t
    bool mbInterpSize = false; // Linear and the Bezier forms interpolate size; Step and Hermite keep A's
    bool mbExtrapolate = false;
    int mVanishSizeType = 2;
    MaterialRow_cls mRow[PrepareSetting_cls::kMaterialMax];
};

// Size and colour coordinates of output o from element i of A; n is the partner in B, -1 when the
// particle vanished (only looked at when sizes interpolate).
[[gnu::always_inline]] inline void WriteSizeAndColor(const PassArrays_cls& a, int i, int o, int n, int m) {
    const MaterialRow_cls& row = a.mRow[m];
    double size;
    if (row.mbSizeConst) {
        size = row.mSizeFactor;
    } else {
        const double sa = a.mpSizeA[i];
        if (!a.mbInterpSize)
            size = sa * row.mSizeFactor;
        else if (n >= 0)
            size = a.mpSizeB ? (sa * a.mU + a.mpSizeB[n] * a.mT) * row.mSizeFactor : sa * row.mSizeFactor;
        else if (a.mVanishSizeType == 0)
            size = row.mSizeFactor * sa;
        else if (a.mVanishSizeType == 1)
            size = row.mSizeFactor * sa * a.mU;
        else
            size = 0.0;
    }
    a.mpOutSize[o] = static_cast<float>(size);

    // Colour: S from the curve's input over its range, T the row of the material.
    a.mpOutT[o] = row.mColorT;
    if (!row.mbCurve) {
        a.mpOutS[o] = 0.0f;
        return;
    }
    double value = 0.0;
    switch (row.mDepend) {
    case 0:
        value = i;
        break;
    case 1:
        value = a.mpOutSize[o];
        break;
    case 2:
        value = a.mpIDA ? a.mpIDA[i] : (a.mpIDLongA ? static_cast<double>(a.mpIDLongA[i]) : i);
        break;
    case 3:
    case 4:
    case 5: {
        const float* pValue = a.mpValueA[row.mDepend - 3];
        value = pValue ? pValue[i] : 0.0;
        break;
    }
    case 6:
    case 7:
    case 8:
        value = a.mpOutXYZ[3 * static_cast<size_t>(o) + (row.mDepend - 6)];
        break;
    default:
        // 9, the sort index, is filled after the sort.
        return;
    }
    const double r0 = row.mRange0, r1 = row.mRange1;
    a.mpOutS[o] = static_cast<float>(r1 == r0 ? 1.0 : (value - r0) / (r1 - r0));
}

// The linear form, inline: p = pA (1 - t) + pB t with pB at the partner n, or the vanish rule.
inline void InterpolateLinear(const PassArrays_cls& a, int i, int n, float* q) {
    const float* pa = a.mpXYZA + 3 * static_cast<size_t>(i);
    const double x = pa[0], y = pa[1], z = pa[2];
    if (n >= 0) {
        const float* pb = a.mpXYZB + 3 * static_cast<size_t>(n);
        q[0] = static_cast<float>(x * a.mU + pb[0] * a.mT);
        q[1] = static_cast<float>(y * a.mU + pb[1] * a.mT);
        q[2] = static_cast<float>(z * a.mU + pb[2] * a.mT);
        return;
    }
    // Vanished in B: the location stays, or goes on along its last move.
    const int prev = a.mpPrevA ? a.mpPrevA[i] : -1;
    if (!a.mbExtrapolate || prev < 0 || prev >= a.mCount0) {
        q[0] = pa[0];
        q[1] = pa[1];
        q[2] = pa[2];
        return;
    }
    const float* p0 = a.mpXYZ0 + 3 * static_cast<size_t>(prev);
    q[0] = static_cast<float>(x + (x - p0[0]) * a.mT);
    q[1] = static_cast<float>(y + (y - p0[1]) * a.mT);
    q[2] = static_cast<float>(z + (z - p0[2]) * a.mT);
}

// InterpolateLinear without extrapolation, both component pairs at once with the same operations in the
// same order, so the results are the same to the bit: a particle that vanished (n < 0) keeps A's position,
// chosen by a mask rather than a branch, as a fifth of a shuffled numbering may vanish in no order. Reads
// one float past each position and writes one past q: neither i nor n may be the last particle of its
// snap, and q needs room for four.
inline void InterpolateLinearPair(const PassArrays_cls& a, int i, int n, float* q) {
#if defined(__SSE2__)
    const float* pa = a.mpXYZA + 3 * static_cast<size_t>(i);
    const __m128 fa = _mm_loadu_ps(pa);
    const __m128 fb = _mm_loadu_ps(n >= 0 ? a.mpXYZB + 3 * static_cast<size_t>(n) : pa);
    const __m128d u = _mm_set1_pd(a.mU), t = _mm_set1_pd(a.mT);
    const __m128d lo = _mm_add_pd(_mm_mul_pd(_mm_cvtps_pd(fa), u), _mm_mul_pd(_mm_cvtps_pd(fb), t));
    const __m128d hi = _mm_add_pd(_mm_mul_pd(_mm_cvtps_pd(_mm_movehl_ps(fa, fa)), u),
                                  _mm_mul_pd(_mm_cvtps_pd(_mm_movehl_ps(fb, fb)), t));
    const __m128 moved = _mm_movelh_ps(_mm_cvtpd_ps(lo), _mm_cvtpd_ps(hi));
    const __m128 found = _mm_castsi128_ps(_mm_set1_epi32(-static_cast<int>(n >= 0)));
    _mm_storeu_ps(q, _mm_or_ps(_mm_and_ps(found, moved), _mm_andnot_ps(found, fa)));
#else
    InterpolateLinear(a, i, n, q);
#endif
}

} // namespace

int ThreadInterpStep_cls::SearchIDFrom(const int* ids, int n, int hint, int id) {
    return SearchFrom(ids, n, hint, id);
}

int ThreadInterpStep_cls::SearchIDLongFrom(const long long* ids, int n, int hint, long long id) {
    return SearchFrom(ids, n, hint, id);
}

int ThreadInterpStep_cls::SearchIDNear10(const int* ids, int n, int hint, int id) {
    return SearchIDNear(ids, n, hint, id, 10, 0);
}

int ThreadInterpStep_cls::SearchIDNear(const int* ids, int n, int hint, int id, int window, int look) {
    if (n <= 0)
        return -1;
    hint = std::clamp(hint, 0, n - 1);
    const int r = SearchStage(ids, n, std::max(0, hint - window), std::min(n, hint + window + 1), id, look);
    return r >= 0 ? r : -1;
}

int ThreadInterpStep_cls::SearchIDFull(const int* ids, int n, int id) {
    const int r = SearchStage(ids, n, 0, std::max(0, n), id, 1000);
    return r >= 0 ? r : -1;
}

void ThreadInterpStep_cls::ExecBezier(double* out, const double* p0, const double* p1, const double* p2,
                                      const double* p3, double t) {
    for (int k = 0; k < 3; ++k)
        out[k] = p1[k] + 0.5 * t *
                             ((p2[k] - p0[k]) + t * (2.0 * p0[k] - 5.0 * p1[k] + 4.0 * p2[k] - p3[k] +
                                                     t * (p3[k] - 3.0 * p2[k] + 3.0 * p1[k] - p0[k])));
}

void ThreadInterpStep_cls::ExecBezier2(double* out, const double* p0, const double* p1, const double* p2,
                                       const double* p3, double t) {
    double d1[3], d2[3];
    for (int k = 0; k < 3; ++k) {
        d1[k] = p1[k] - p0[k];
        d2[k] = p2[k] - p1[k];
    }
    const double l1 = std::sqrt(d1[0] * d1[0] + d1[1] * d1[1] + d1[2] * d1[2]);
    const double l2 = std::sqrt(d2[0] * d2[0] + d2[1] * d2[1] + d2[2] * d2[2]);
    double k6 = 1.0 / 6.0;
    if (l1 != 0.0 && l2 != 0.0)
        k6 = 0.25 - (d1[0] * d2[0] + d1[1] * d2[1] + d1[2] * d2[2]) / (l1 * l2) / 12.0;
    const double s = 1.0 - t;
    for (int k = 0; k < 3; ++k) {
        const double c1 = p1[k] + (p2[k] - p0[k]) * k6;
        const double c2 = p2[k] + (p1[k] - p3[k]) * k6;
        // de Casteljau
        const double a = p1[k] * s + c1 * t, b = c1 * s + c2 * t, c = c2 * s + p2[k] * t;
        const double ab = a * s + b * t, bc = b * s + c * t;
        out[k] = ab * s + bc * t;
    }
}

void ThreadInterpStep_cls::SetParameters(ParticleForRender_cls* pOut, ParticleSnap_cls* pSnap1,
                                         ParticleSnap_cls* pSnap2, ParticleSnap_cls* pSnap0,
                                         ParticleSnap_cls* pSnap3, const PrepareSetting_cls* pSetting,
                                         bool bIDOnly) {
    mpCOut = pOut;
    mpCSnap1 = pSnap1;
    mpCSnap2 = pSnap2 ? pSnap2 : pSnap1;
    mpCSnap0 = pSnap0 ? pSnap0 : pSnap1;
    mpCSnap3 = pSnap3 ? pSnap3 : mpCSnap2;
    mpCSetting = pSetting;
    mIDOnly = bIDOnly;
    mByID = pSetting && pSetting->mInterpolateBy == 1;
}

void ThreadInterpStep_cls::SetParametersTime(double t, int step, int frame, int subframe) {
    mT = t;
    mStep = step;
    mFrame = frame;
    mSubframe = subframe;
}

void ThreadInterpStep_cls::SetParametersDownsize(int startOut, int downsize, int type) {
    mStartOut = startOut;
    mDownsize = std::max(1, downsize);
    if (mpCSnap1 && mpCSnap1->mHasID && mpCSnap1->mID)
        mDownsizeType = type;
    else if (mpCSnap1 && mpCSnap1->mHasIDLong && mpCSnap1->mIDLong)
        mDownsizeType = type == 1 ? 2 : 0;
    else
        mDownsizeType = 0;
}

void ThreadInterpStep_cls::SearchNextIndexByID() {
    ParticleSnap_cls* pA = mpCSnap1;
    ParticleSnap_cls* pB = mpCSnap2;
    int* pNextIndex = pA->mNextIndex.get();
    int* pPrevB = pB->mPrevIndex.get();
    wxASSERT_MSG(pNextIndex != NULL, "pNextIndex != NULL");
    if (!pNextIndex || !pPrevB)
        return;
    const int nB = pB->mNumber.load(std::memory_order_relaxed);
    const bool bTypes = pA->mHasType && pB->mHasType && pA->mType && pB->mType;
    const unsigned char* pTypeA = pA->mType.get();
    const unsigned char* pTypeB = pB->mType.get();
    const int ini = mIni, fin = mFin;
    // The hint follows the raw result of the search; a type change only drops the match afterwards.
    auto keep = [&](int i, int n) {
        if (n >= 0 && bTypes && pTypeA[i] != pTypeB[n]) {
            // A particle that changes type counts as vanished in A and new in B.
            pNextIndex[i] = -1;
            return;
        }
        pNextIndex[i] = n;
        if (n >= 0)
            pPrevB[n] = i;
    };
    int hint = ini;
    int prev = -1;
    if (pA->mID) {
        const int* pID1 = pA->mID.get();
        const int* pID2 = pB->mID.get();
        wxASSERT_MSG(pID2 != NULL, "pID2 != NULL");
        for (int i = ini; i < fin; ++i) {
            if (i > ini)
                hint = prev >= 0 ? prev + 1 : i;
            prev = pID2 ? SearchIDFrom(pID2, nB, hint, pID1[i]) : -1;
            keep(i, prev);
        }
    } else {
        const long long* pIDLong1 = pA->mIDLong.get();
        const long long* pIDLong2 = pB->mIDLong.get();
        wxASSERT_MSG(pIDLong1 != NULL, "pIDLong1 != NULL");
        if (!pIDLong1)
            return;
        for (int i = ini; i < fin; ++i) {
            if (i > ini)
                hint = prev >= 0 ? prev + 1 : i;
            prev = pIDLong2 ? SearchIDLongFrom(pIDLong2, nB, hint, pIDLong1[i]) : -1;
            keep(i, prev);
        }
    }
    wxLogInfo("Search ID %d - %d time %g", mIni, mFin, pA->mTime);
}

void ThreadInterpStep_cls::NearestImage(const double* ref, double* p) const {
    for (int k = 0; k < 3; ++k)
        p[k] -= mBoxLen[k] * std::nearbyint((p[k] - ref[k]) / mBoxLen[k]);
}

void ThreadInterpStep_cls::WrapIntoBox(double* p) const {
    for (int k = 0; k < 3; ++k) {
        p[k] -= mBoxLen[k] * std::floor((p[k] - mBoxLo[k]) / mBoxLen[k]);
        // Rounding may leave a point on the upper face: it belongs to the lower one.
        if (p[k] >= mBoxLo[k] + mBoxLen[k])
            p[k] = mBoxLo[k];
    }
}

void ThreadInterpStep_cls::InterpolatePosition(int i, int interp, bool byID, double* p) const {
    const ParticleSnap_cls* pA = mpCSnap1;
    const float* xyzA = pA->mXYZ.get() + 3 * static_cast<size_t>(i);
    double pa[3];
    Load3(pa, xyzA);
    if (interp == 0) {
        Load3(p, xyzA);
        return;
    }
    const int n = byID ? pA->mNextIndex[i] : i;
    const double t = mT;
    if (n < 0) {
        // Vanished in B: the location stays, or goes on along its last move.
        const int prev = mpPrevA ? mpPrevA[i] : -1;
        if (mpCSetting->mExtrapolateType == 0 || prev < 0 || mDownsizeType == 1 || mpCSnap0 == pA ||
            prev >= mpCSnap0->mNumber.load(std::memory_order_relaxed)) {
            Load3(p, xyzA);
            return;
        }
        double p0[3];
        Load3(p0, mpCSnap0->mXYZ.get() + 3 * static_cast<size_t>(prev));
        if (mbPeriodic)
            NearestImage(pa, p0);
        for (int k = 0; k < 3; ++k)
            p[k] = pa[k] + (pa[k] - p0[k]) * t;
        return;
    }
    double pb[3];
    Load3(pb, mpCSnap2->mXYZ.get() + 3 * static_cast<size_t>(n));
    // Across a face of a periodic box the partner is the image next to A, so the move is the short one.
    if (mbPeriodic)
        NearestImage(pa, pb);
    if (interp == 2) {
        const double h = mpCSnap2->mTime - pA->mTime;
        double va[3] = {0, 0, 0}, vb[3] = {0, 0, 0};
        if (pA->mVelocity)
            Load3(va, pA->mVelocity.get() + 3 * static_cast<size_t>(i));
        if (mpCSnap2->mVelocity)
            Load3(vb, mpCSnap2->mVelocity.get() + 3 * static_cast<size_t>(n));
        const double t2 = t * t, t3 = t2 * t;
        const double h00 = 2 * t3 - 3 * t2 + 1, h10 = t3 - 2 * t2 + t, h01 = -2 * t3 + 3 * t2, h11 = t3 - t2;
        for (int k = 0; k < 3; ++k)
            p[k] = h00 * pa[k] + h10 * h * va[k] + h01 * pb[k] + h11 * h * vb[k];
        return;
    }
    if (interp == 3 || interp == 4) {
        // The outer neighbours; a missing one falls back to the linear form.
        int i0 = -1, i3 = -1;
        if (byID) {
            i0 = mpPrevA ? mpPrevA[i] : -1;
            i3 = mbNextBValid && mpCSnap2->mNextIndex ? mpCSnap2->mNextIndex[n] : -1;
        } else if (mpCSnap0->mNumber.load(std::memory_order_relaxed) == pA->mNumber.load() &&
                   mpCSnap3->mNumber.load(std::memory_order_relaxed) == pA->mNumber.load()) {
            i0 = i3 = i;
        }
        if (i0 >= 0 && i3 >= 0) {
            double p0[3], p3[3];
            Load3(p0, mpCSnap0->mXYZ.get() + 3 * static_cast<size_t>(i0));
            Load3(p3, mpCSnap3->mXYZ.get() + 3 * static_cast<size_t>(i3));
            if (mbPeriodic) {
                NearestImage(pa, p0);
                NearestImage(pb, p3);
            }
            if (interp == 3)
                ExecBezier(p, p0, pa, pb, p3, t);
            else
                ExecBezier2(p, p0, pa, pb, p3, t);
            return;
        }
    }
    for (int k = 0; k < 3; ++k)
        p[k] = pa[k] * (1.0 - t) + pb[k] * t;
}

bool ThreadInterpStep_cls::ClassifyByExpression(int firstOut, int count, const int* pElement) {
    const bool bID = mpCSnap1->mID || mpCSnap1->mIDLong;
    wxString strChunk =
        bID ? "function script(index, x, y, z, type, id)\n" : "function script(index, x, y, z, type)\n";
    strChunk << mpCSetting->mStrClassify << "\nend";
    // A private state: one state must not be entered by two threads.
    lua_State* pL = LuaBase_cls::NewLuaState();
    if (!pL)
        return false;
    const wxScopedCharBuffer buf = strChunk.utf8_str();
    if (luaL_loadbuffer(pL, buf.data(), buf.length(), "Classify") != LUA_OK ||
        LuaBase_cls::PCall(pL, 0, 0) != LUA_OK) {
        LuaBase_cls::CheckErrorMessage(pL, "Classify");
        LuaBase_cls::CloseLuaState(pL);
        // Without a script every element reads type 0, as an empty stack top would give.
        for (int k = 0; k < count; ++k)
            mpCOut->mType[firstOut + k] = 0;
        return true;
    }
    LuaBase_cls::SetVariable(pL, mNT, "nt");
    LuaBase_cls::SetVariable(pL, mFrame, "frame");
    LuaBase_cls::SetVariable(pL, mSubframe, "subframe");
    LuaBase_cls::SetVariable(pL, mStep, "seq");
    const ParticleSnap_cls* pA = mpCSnap1;
    for (int k = 0; k < count; ++k) {
        const int i = pElement[k];
        const int o = firstOut + k;
        lua_settop(pL, 0);
        lua_getglobal(pL, "script");
        lua_pushinteger(pL, i);
        for (int c = 0; c < 3; ++c)
            lua_pushnumber(pL, mpCOut->mXYZ[3 * static_cast<size_t>(o) + c]);
        lua_pushinteger(pL, pA->mType ? pA->mType[i] : 0);
        if (bID)
            lua_pushinteger(pL, pA->mID ? pA->mID[i] : pA->mIDLong[i]);
        // The status is not examined: whatever number the top gives is the type.
        LuaBase_cls::PCall(pL, bID ? 6 : 5, 1);
        const double v = lua_gettop(pL) > 0 ? lua_tonumber(pL, -1) : 0.0;
        mpCOut->mType[o] = static_cast<unsigned char>(static_cast<int>(std::isfinite(v) ? v : 0.0));
    }
    LuaBase_cls::CloseLuaState(pL);
    return true;
}

template <bool bLinear, class KeyFn> void ThreadInterpStep_cls::Interpolate(KeyFn key) {
    const ParticleSnap_cls* pA = mpCSnap1;
    const ParticleSnap_cls* pB = mpCSnap2;
    ParticleForRender_cls* pOut = mpCOut;
    const PrepareSetting_cls& s = *mpCSetting;

    PassArrays_cls a;
    a.mpXYZA = pA->mXYZ.get();
    a.mpXYZB = pB->mXYZ.get();
    a.mpXYZ0 = mpCSnap0->mXYZ.get();
    a.mpNext = mbByIDActive ? pA->mNextIndex.get() : nullptr;
    a.mpPrevA = mpPrevA;
    a.mCount0 = mpCSnap0->mNumber.load(std::memory_order_relaxed);
    a.mCountA = pA->mNumber.load(std::memory_order_relaxed);
    a.mCountB = pB->mNumber.load(std::memory_order_relaxed);
    a.mpSizeA = pA->mSize.get();
    a.mpSizeB = pB->mSize.get();
    a.mpTypeA = pA->mType.get();
    a.mpIDA = pA->mID.get();
    a.mpIDLongA = pA->mIDLong.get();
    for (int c = 0; c < 3; ++c)
        a.mpValueA[c] = pA->mValue[c].get();
    a.mpOutXYZ = pOut->mXYZ.get();
    a.mpOutType = pOut->mType.get();
    a.mpOutSize = pOut->mSize.get();
    a.mpOutS = pOut->mColorS.get();
    a.mpOutT = pOut->mColorT.get();
    a.mpOutSource = mDownsize == 1 ? nullptr : pOut->mSource.get();
    a.mT = mT;
    a.mU = 1.0 - mT;
    a.mbInterpSize = mInterp == 1 || mInterp == 3 || mInterp == 4;
    // In downsize mode 1 a vanished particle keeps its place: extrapolation is not applied there.
    a.mbExtrapolate = s.mExtrapolateType != 0 && mDownsizeType != 1 && mpCSnap0 != pA;
    a.mVanishSizeType = s.mVanishSizeType;
    for (int m = 0; m < PrepareSetting_cls::kMaterialMax; ++m) {
        MaterialRow_cls& row = a.mRow[m];
        row.mSizeFactor = s.mSizeFactor[m];
        row.mbSizeConst = s.mSizeType[m] == 1 || !a.mpSizeA;
        row.mbCurve = s.mColorCurveType[m] == 1;
        row.mDepend = s.mColorCurveDepend[m];
        row.mColorT = static_cast<float>((m + 0.5) / std::max(1, s.mCurveCount) / 3.0);
        row.mRange0 = s.mRange0[m];
        row.mRange1 = s.mRange1[m];
    }
    constexpr int kLastMaterial = PrepareSetting_cls::kMaterialMax - 1;
    // The partner in B that the size reads: A's own index unless sizes interpolate by ID.
    auto sizePartner = [&a](int i) { return a.mbInterpSize && a.mpNext ? a.mpNext[i] : i; };

    // Bounds in locals: the byte stores of the type may alias anything, members included.
    const int ini = mIni, fin = mFin, downsize = mDownsize, startOut = mStartOut;
    const bool bClassify = s.mClassifyType == 1;
    std::vector<int> vElement;
    if (bClassify)
        vElement.reserve(static_cast<size_t>(std::max(0, fin - ini)));
    // Without downsizing no key is computed: a division per element would cost more than the rest.
    const bool bAll = downsize == 1;

    // The elements are gathered in blocks and written out past the cache. An expression reads the
    // outputs of the whole range, so with one they are written in place.
    constexpr int kBlock = StreamWrite_cls::kBlock;
    struct Block_cls {
        float mXYZ[3 * kBlock + 1]; // one more for the four-float writes
        float mSize[kBlock];
        float mS[kBlock];
        float mT[kBlock];
        int mSource[kBlock];
        int mPartner[kBlock];
        unsigned char mType[kBlock];
    };
    std::unique_ptr<Block_cls> pBlock(bClassify ? nullptr : new Block_cls);
    PassArrays_cls b = a; // where the loop writes: the block, or the outputs themselves
    int blockStart = 0, blockEnd = INT_MAX;
    if (pBlock) {
        b.mpOutXYZ = pBlock->mXYZ;
        b.mpOutType = pBlock->mType;
        b.mpOutSize = pBlock->mSize;
        b.mpOutS = pBlock->mS;
        b.mpOutT = pBlock->mT;
        b.mpOutSource = a.mpOutSource ? pBlock->mSource : nullptr;
        blockStart = startOut;
        blockEnd = (startOut / kBlock + 1) * kBlock;
    }
    auto flush = [&](int end) {
        const size_t from = static_cast<size_t>(blockStart), count = static_cast<size_t>(end - blockStart);
        StreamWrite_cls::CopyElements(a.mpOutXYZ + 3 * from, b.mpOutXYZ, 3 * count);
        StreamWrite_cls::CopyElements(a.mpOutType + from, b.mpOutType, count);
        StreamWrite_cls::CopyElements(a.mpOutSize + from, b.mpOutSize, count);
        StreamWrite_cls::CopyElements(a.mpOutS + from, b.mpOutS, count);
        StreamWrite_cls::CopyElements(a.mpOutT + from, b.mpOutT, count);
        if (!bAll && a.mpOutSource)
            StreamWrite_cls::CopyElements(a.mpOutSource + from, b.mpOutSource, count);
        blockStart = end;
        blockEnd = end + kBlock;
    };
    int o = startOut;
    const bool bBlockLoop = bLinear && bAll && pBlock;
    if (bBlockLoop) {
        // Rows whose sizes interpolate and whose colour takes no curve, the common case, for every
        // material: the per-element choices of WriteSizeAndColor are all known.
        bool bPlainRows = a.mbInterpSize && a.mpSizeB && a.mCountB > 0;
        for (const MaterialRow_cls& row : a.mRow)
            bPlainRows = bPlainRows && !row.mbSizeConst && !row.mbCurve;
        // Every element is kept: first the positions of a block, in a loop short enough that the reads
        // of B for many elements are under way at once, then the rest of the block.
        for (int i = ini; i < fin;) {
            const int count = std::min(fin - i, blockEnd - o);
            for (int k = 0; k < count; ++k) {
                const int e = i + k;
                const int n = a.mpNext ? a.mpNext[e] : e;
                pBlock->mPartner[k] = n;
                float* q = b.mpOutXYZ + 3 * static_cast<size_t>(k);
                if (!a.mbExtrapolate && e + 1 < a.mCountA && n + 1 < a.mCountB)
                    InterpolateLinearPair(a, e, n, q);
                else
                    InterpolateLinear(a, e, n, q);
            }
            for (int k = 0; k < count; ++k) {
                const int e = i + k, n = pBlock->mPartner[k];
                const unsigned char type = a.mpTypeA ? a.mpTypeA[e] : 0;
                const int m = std::min<int>(type, kLastMaterial);
                b.mpOutType[k] = type;
                if (bPlainRows) {
                    // WriteSizeAndColor's road for these rows, without its choices; the vanish rule is
                    // picked by a select, not a branch, like the position.
                    const MaterialRow_cls& row = a.mRow[m];
                    const double sa = a.mpSizeA[e];
                    const double moved = (sa * a.mU + a.mpSizeB[n >= 0 ? n : 0] * a.mT) * row.mSizeFactor;
                    const double stays = a.mVanishSizeType == 0   ? row.mSizeFactor * sa
                                         : a.mVanishSizeType == 1 ? row.mSizeFactor * sa * a.mU
                                                                  : 0.0;
                    b.mpOutSize[k] = static_cast<float>(n >= 0 ? moved : stays);
                    b.mpOutS[k] = 0.0f;
                    b.mpOutT[k] = row.mColorT;
                } else {
                    WriteSizeAndColor(b, e, k, n, m);
                }
            }
            i += count;
            o += count;
            flush(o);
        }
    }
    for (int i = bBlockLoop ? fin : ini; i < fin; ++i) {
        if (!bAll && key(i) % downsize != 0)
            continue;
        const int k = o - blockStart;
        float* q = b.mpOutXYZ + 3 * static_cast<size_t>(k);
        int n = i;
        if constexpr (bLinear) {
            n = a.mpNext ? a.mpNext[i] : i;
            InterpolateLinear(a, i, n, q);
        } else {
            double p[3];
            InterpolatePosition(i, mInterp, mbByIDActive, p);
            if (mbPeriodic)
                WrapIntoBox(p);
            q[0] = static_cast<float>(p[0]);
            q[1] = static_cast<float>(p[1]);
            q[2] = static_cast<float>(p[2]);
            n = sizePartner(i);
        }
        const unsigned char type = a.mpTypeA ? a.mpTypeA[i] : 0;
        b.mpOutType[k] = type;
        if (!bAll && b.mpOutSource)
            b.mpOutSource[k] = i;
        // The size needs the material, so with an expression it waits for the classification.
        if (bClassify)
            vElement.push_back(i);
        else
            WriteSizeAndColor(b, i, k, n, std::min<int>(type, kLastMaterial));
        if (++o == blockEnd)
            flush(o);
    }
    if (pBlock && o > blockStart)
        flush(o);
    if (bClassify) {
        ClassifyByExpression(startOut, static_cast<int>(vElement.size()), vElement.data());
        o = startOut;
        for (int i : vElement) {
            WriteSizeAndColor(a, i, o, sizePartner(i), std::min<int>(a.mpOutType[o], kLastMaterial));
            ++o;
        }
    }
    if (mDownsizeType != 0) {
        // The part of the range that no kept element filled is made invisible.
        const int end = startOut + (fin - ini);
        for (int k = o; k < end; ++k) {
            pOut->mSize[k] = 0.0f;
            pOut->mXYZ[3 * static_cast<size_t>(k)] = 0.0f;
            pOut->mXYZ[3 * static_cast<size_t>(k) + 1] = 0.0f;
            pOut->mXYZ[3 * static_cast<size_t>(k) + 2] = 0.0f;
            pOut->mType[k] = 0;
            pOut->mColorS[k] = 0.0f;
            pOut->mColorT[k] = 0.0f;
            if (a.mpOutSource)
                a.mpOutSource[k] = -1;
        }
    }
    StreamWrite_cls::Fence();
}

void ThreadInterpStep_cls::Work() {
    ParticleSnap_cls* pA = mpCSnap1;
    const bool bHasIDs = (pA->mHasID && pA->mID) || (pA->mHasIDLong && pA->mIDLong);
    if (mIDOnly) {
        if (bHasIDs)
            SearchNextIndexByID();
        return;
    }
    mInterp = mpCSetting->mInterpType;
    if (mInterp < 0 || mInterp > 4)
        mInterp = 0;
    if ((mInterp == 3 || mInterp == 4) && (mpCSnap0 == pA || mpCSnap3 == mpCSnap2))
        mInterp = 1;
    // On a step itself there is nothing to move towards: A's own values, whatever the form.
    if (mpCSnap2 == pA)
        mInterp = 0;
    mbByIDActive = mByID && bHasIDs && pA->mNextIndex && mpCSnap2->mPrevIndex;
    if (!mbByIDActive && mInterp != 0 &&
        pA->mNumber.load(std::memory_order_relaxed) != mpCSnap2->mNumber.load(std::memory_order_relaxed))
        mInterp = 0; // different counts by index: Step
    if (mbByIDActive && mbSearch)
        SearchNextIndexByID();
    // Another set may be searching the pair before A right now; its table is read only once complete.
    mpPrevA = mbPrevAValid && pA->mPrevDone.load(std::memory_order_acquire) ? pA->mPrevIndex.get() : nullptr;
    const PrepareSetting_cls& s = *mpCSetting;
    const double* pLo = s.mPeriodicType == 1 && pA->mHasBox ? pA->mBoxLo
                        : s.mPeriodicType == 2              ? s.mBoxLo
                                                            : nullptr;
    const double* pHi = s.mPeriodicType == 1 && pA->mHasBox ? pA->mBoxHi : s.mBoxHi;
    mbPeriodic = pLo != nullptr;
    for (int k = 0; pLo && k < 3; ++k) {
        mBoxLo[k] = pLo[k];
        mBoxLen[k] = pHi[k] - pLo[k];
        if (!(mBoxLen[k] > 0.0) || !std::isfinite(mBoxLen[k]))
            mbPeriodic = false;
    }
    // Linear, the common form, has its own loop with the position computed inline; the periodic box
    // goes through the general one.
    const bool bLinear = mInterp == 1 && !mbPeriodic;
    switch (mDownsizeType) {
    case 1: {
        const int* pID = pA->mID.get();
        auto key = [pID](int i) { return static_cast<long long>(pID[i]); };
        bLinear ? Interpolate<true>(key) : Interpolate<false>(key);
        break;
    }
    case 2: {
        const long long* pID = pA->mIDLong.get();
        auto key = [pID](int i) { return pID[i]; };
        bLinear ? Interpolate<true>(key) : Interpolate<false>(key);
        break;
    }
    default: {
        auto key = [](int i) { return static_cast<long long>(i); };
        bLinear ? Interpolate<true>(key) : Interpolate<false>(key);
        break;
    }
    }
}
