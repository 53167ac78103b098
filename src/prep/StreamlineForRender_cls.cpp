#include "StreamlineForRender_cls.h"

#include "DataSerial_cls.h"

#include "StreamlineSnap_cls.h"

#include <wx/arrstr.h>

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

bool StreamlineProc_cls::ParseIndexList(const wxString& str, std::vector<int>& vRange, wxString& strWhy) {
    vRange.clear();
    wxString strAll(str);
    strAll.Replace(",", " ");
    strAll.Replace("\t", " ");
    for (const wxString& strField : wxSplit(strAll, ' ', '\0')) {
        if (strField.empty())
            continue;
        long first = 0, last = 0;
        const int dash = strField.Find('-', false);
        const bool bOK = dash > 0 ? strField.Left(dash).ToLong(&first) && strField.Mid(dash + 1).ToLong(&last)
                                  : strField.ToLong(&first);
        if (!bOK || first < 0 || (dash > 0 && last < first)) {
            strWhy = wxString::Format("\"%s\" is no line index or range", strField);
            return false;
        }
        vRange.push_back(static_cast<int>(first));
        vRange.push_back(static_cast<int>(dash > 0 ? last : first));
    }
    return true;
}

StreamlineProc_cls StreamlineProc_cls::MakeFilter(int type, const std::vector<int>& vRange) {
    StreamlineProc_cls p;
    p.mKind = PROC_FILTER;
    p.mType = type;
    p.mVRange = vRange;
    return p;
}

StreamlineProc_cls StreamlineProc_cls::MakeAlpha(int type, float crit) {
    StreamlineProc_cls p;
    p.mKind = PROC_ALPHA;
    p.mType = type;
    p.mCrit = crit;
    return p;
}

StreamlineProc_cls StreamlineProc_cls::MakeTransform(const double* offset, const double* rotateDeg, int order,
                                                     const double* scale) {
    StreamlineProc_cls p;
    p.mKind = PROC_TRANSFORM;
    // R as a 3x3, row-major: each turn multiplies from the left in the order of application.
    double r[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const int axes[2][3] = {{0, 1, 2}, {2, 1, 0}};
    for (int a : axes[order == 1 ? 1 : 0]) {
        const double rad = rotateDeg[a] * M_PI / 180.0, c = std::cos(rad), s = std::sin(rad);
        double m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
        const int i = (a + 1) % 3, j = (a + 2) % 3; // the plane the turn moves
        m[3 * i + i] = c;
        m[3 * i + j] = -s;
        m[3 * j + i] = s;
        m[3 * j + j] = c;
        double out[9];
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 3; ++col)
                out[3 * row + col] =
                    m[3 * row] * r[col] + m[3 * row + 1] * r[3 + col] + m[3 * row + 2] * r[6 + col];
        std::copy(out, out + 9, r);
    }
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col)
            p.mMatrix[4 * row + col] = r[3 * row + col] * scale[col];
        p.mMatrix[4 * row + 3] = offset[row];
    }
    return p;
}

bool StreamlineProc_cls::IsLineKept(int index) const {
    if (mKind != PROC_FILTER || mVRange.empty())
        return true;
    bool bListed = false;
    for (size_t i = 0; i + 1 < mVRange.size() && !bListed; i += 2)
        bListed = index >= mVRange[i] && index <= mVRange[i + 1];
    return mType == 1 ? !bListed : bListed;
}

float StreamlineProc_cls::GetAlpha(float value) const {
    if (mKind != PROC_ALPHA)
        return 1.0f;
    switch (mType) {
    case 0:
        return value < mCrit ? 0.0f : 1.0f;
    case 1:
        return value > mCrit ? 0.0f : 1.0f;
    default:
        return mCrit > 0.0f ? std::clamp(value / mCrit, 0.0f, 1.0f) : 1.0f;
    }
}

void StreamlineProc_cls::Transform(const float* p, float* out) const {
    for (int row = 0; row < 3; ++row)
        out[row] = static_cast<float>(mMatrix[4 * row] * p[0] + mMatrix[4 * row + 1] * p[1] +
                                      mMatrix[4 * row + 2] * p[2] + mMatrix[4 * row + 3]);
}

void StreamlineForRender_cls::Clear() {
    mOffsets.clear();
    mXYZ.clear();
    mValue.clear();
    mAlpha.clear();
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
    // The data processes' moves, in stack order, before anything looks at the points.
    std::vector<float> vMoved;
    for (const StreamlineProc_cls& proc : setting.mVProc) {
        if (proc.mKind != StreamlineProc_cls::PROC_TRANSFORM)
            continue;
        vMoved.resize(static_cast<size_t>(count) * 3);
        for (int i = 0; i < count; ++i) {
            const float p[3] = {pXYZ[3 * i], pXYZ[3 * i + 1], pXYZ[3 * i + 2]};
            proc.Transform(p, vMoved.data() + 3 * static_cast<size_t>(i));
        }
        pXYZ = vMoved.data();
    }
    const bool bAlpha =
        std::any_of(setting.mVProc.begin(), setting.mVProc.end(),
                    [](const StreamlineProc_cls& p) { return p.mKind == StreamlineProc_cls::PROC_ALPHA; });
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
            if (!mAlpha.empty())
                mAlpha.resize(static_cast<size_t>(runStart));
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
        if (bAlpha) {
            float alpha = 1.0f;
            for (const StreamlineProc_cls& proc : setting.mVProc)
                alpha *= proc.GetAlpha(mValue.back());
            mAlpha.push_back(alpha);
        }
    }
    closeRun();
}

bool StreamlineForRender_cls::PrepareData(const StreamlineSnap_cls* pA, const StreamlineSnap_cls* pB,
                                          double t, int step, const StreamlineSetting_cls& setting) {
    Clear();
    mLastStep = step;
    mLastInterp = static_cast<float>(t);
    ++mDataCounter;
    mSerial = DataSerial_cls::Next();
    if (!pA)
        return false;
    mOffsets.push_back(0);
    const int thin = std::max(1, setting.mThin);
    const bool bBlend = setting.mInterpType == 1 && pB && pB != pA && t > 0.0;
    const int linesA = pA->GetLineCount();
    const int linesB = bBlend ? pB->GetLineCount() : 0;
    std::vector<float> xyzA, valA, xyzB, valB, xyz, val;
    for (int k = 0; k < linesA; k += thin) {
        if (!std::all_of(setting.mVProc.begin(), setting.mVProc.end(),
                         [k](const StreamlineProc_cls& p) { return p.IsLineKept(k); }))
            continue;
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
