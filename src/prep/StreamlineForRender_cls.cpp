#include "StreamlineForRender_cls.h"

#include "StreamlineSnap_cls.h"

#include <algorithm>
#include <cmath>

namespace {

double Distance(const float* a, const float* b) {
    const double dx = a[0] - b[0], dy = a[1] - b[1], dz = a[2] - b[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool IsInside(const float* p, const StreamlineSetting_cls& s) {
    for (int i = 0; i < 3; ++i)
        if (p[i] < s.mClipLow[i] || p[i] > s.mClipHigh[i])
            return false;
    return true;
}

} // namespace

void StreamlineForRender_cls::Clear() {
    mOffsets.clear();
    mXYZ.clear();
    mValue.clear();
}

void StreamlineForRender_cls::ResampleByArcLength(const float* pXYZ, const float* pValue, int count, int n,
                                                  std::vector<float>& xyzOut, std::vector<float>& valueOut) {
    xyzOut.assign(static_cast<size_t>(n) * 3, 0.0f);
    valueOut.assign(pValue ? static_cast<size_t>(n) : 0, 0.0f);
    if (count < 1 || n < 1)
        return;
    std::vector<double> length(static_cast<size_t>(count), 0.0);
    for (int i = 1; i < count; ++i)
        length[i] = length[i - 1] + Distance(pXYZ + 3 * (i - 1), pXYZ + 3 * i);
    const double total = length.back();
    int seg = 0;
    for (int k = 0; k < n; ++k) {
        const double s = n == 1 ? 0.0 : total * k / (n - 1);
        while (seg + 1 < count - 1 && length[seg + 1] < s)
            ++seg;
        const int next = std::min(seg + 1, count - 1);
        const double span = length[next] - length[seg];
        const double f = span > 0.0 ? std::clamp((s - length[seg]) / span, 0.0, 1.0) : 0.0;
        for (int c = 0; c < 3; ++c)
            xyzOut[3 * k + c] = static_cast<float>(pXYZ[3 * seg + c] * (1.0 - f) + pXYZ[3 * next + c] * f);
        if (pValue)
            valueOut[k] = static_cast<float>(pValue[seg] * (1.0 - f) + pValue[next] * f);
    }
}

void StreamlineForRender_cls::AppendLine(const float* pXYZ, const float* pValue, int count,
                                         const StreamlineSetting_cls& setting) {
    double arc = 0.0;
    int runStart = -1; // index in mXYZ (points) where the open run began
    auto closeRun = [&]() {
        if (runStart < 0)
            return;
        const int points = GetPointCount() - runStart;
        // A line of one point stays (drawn as a point); a run of one point that the clip box
        // cut off goes.
        if (points >= 2 || !setting.mbClip) {
            mOffsets.push_back(GetPointCount());
        } else {
            mXYZ.resize(static_cast<size_t>(runStart) * 3);
            mValue.resize(static_cast<size_t>(runStart));
        }
        runStart = -1;
    };
    for (int i = 0; i < count; ++i) {
        const float* p = pXYZ + 3 * i;
        if (i > 0)
            arc += Distance(p - 3, p);
        if (setting.mbClip && !IsInside(p, setting)) {
            closeRun();
            continue;
        }
        if (runStart < 0)
            runStart = GetPointCount();
        mXYZ.insert(mXYZ.end(), p, p + 3);
        mValue.push_back(setting.mValueType == 1 ? static_cast<float>(arc) : pValue ? pValue[i] : 0.0f);
    }
    closeRun();
}

bool StreamlineForRender_cls::PrepareData(const StreamlineSnap_cls* pA, const StreamlineSnap_cls* pB,
                                          double t, int step, const StreamlineSetting_cls& setting) {
    Clear();
    mLastStep = step;
    mLastInterp = static_cast<float>(t);
    ++mDataCounter;
    if (!pA)
        return false;
    mOffsets.push_back(0);
    const int thin = std::max(1, setting.mThin);
    const bool bBlend = setting.mInterpType == 1 && pB && pB != pA && t > 0.0;
    const int linesA = pA->GetLineCount();
    const int linesB = bBlend ? pB->GetLineCount() : 0;
    std::vector<float> xyzA, valA, xyzB, valB, xyz, val;
    for (int k = 0; k < linesA; k += thin) {
        const int nA = pA->GetLinePointCount(k);
        const float* pXA = pA->mXYZ.data() + 3 * static_cast<size_t>(pA->mOffsets[k]);
        const float* pVA = pA->HasValue() ? pA->mValue.data() + pA->mOffsets[k] : nullptr;
        if (k >= linesB) {
            AppendLine(pXA, pVA, nA, setting);
            continue;
        }
        const int nB = pB->GetLinePointCount(k);
        const float* pXB = pB->mXYZ.data() + 3 * static_cast<size_t>(pB->mOffsets[k]);
        const float* pVB = pB->HasValue() ? pB->mValue.data() + pB->mOffsets[k] : nullptr;
        const int n = std::max(nA, nB);
        if (nA != n) {
            ResampleByArcLength(pXA, pVA, nA, n, xyzA, valA);
            pXA = xyzA.data();
            pVA = pVA ? valA.data() : nullptr;
        }
        if (nB != n) {
            ResampleByArcLength(pXB, pVB, nB, n, xyzB, valB);
            pXB = xyzB.data();
            pVB = pVB ? valB.data() : nullptr;
        }
        xyz.resize(static_cast<size_t>(n) * 3);
        val.resize(static_cast<size_t>(n));
        for (int i = 0; i < 3 * n; ++i)
            xyz[i] = static_cast<float>(pXA[i] * (1.0 - t) + pXB[i] * t);
        for (int i = 0; i < n; ++i)
            val[i] = pVA && pVB ? static_cast<float>(pVA[i] * (1.0 - t) + pVB[i] * t) : pVA ? pVA[i] : 0.0f;
        AppendLine(xyz.data(), val.data(), n, setting);
    }
    return true;
}
