#include "ArrayCopy_cls.h"

#include <algorithm>
#include <cmath>

ArrayCopy_cls::ArrayCopy_cls(const wxString& strName)
    : ModifierBase_cls("ArrayCopy_cls", strName, "VIEW3D::PROPERTY_MODIFIER") {
    Add(&mCTarget, "Target=", "None", mStrTag);
    Add(&mCCoord, "Coord=", "0", mStrTag);
    Add(&mCAxisX, "AxisX=", "1 0 0", mStrTag);
    Add(&mCAxisY, "AxisY=", "0 1 0", mStrTag);
    Add(&mCAxisZ, "AxisZ=", "0 0 1", mStrTag);
    for (const char* pAxis : {"X Min/Max", "Y Min/Max", "Z Min/Max"})
        InitializeAndPushParam(GetPCNewParamGroup(pAxis, "Min", "Max"), 0.0, 0.0);
}

void ArrayCopy_cls::GetRanges(double nt, long long lo[3], long long hi[3]) {
    const char* names[3] = {"X Min/Max", "Y Min/Max", "Z Min/Max"};
    for (int k = 0; k < 3; ++k) {
        lo[k] = hi[k] = 0;
        ParamGroup_cls* p = GetPCParamGroup(names[k]);
        if (!p)
            continue;
        std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
        if (v.size() < 2 || !std::isfinite(v[0]) || !std::isfinite(v[1]))
            continue;
        // Bounded so that the product below cannot overflow.
        const double a = std::clamp(std::round(std::min(v[0], v[1])), -1.0e5, 1.0e5);
        const double b = std::clamp(std::round(std::max(v[0], v[1])), -1.0e5, 1.0e5);
        lo[k] = static_cast<long long>(a);
        hi[k] = static_cast<long long>(b);
    }
}

std::array<double, 3> ArrayCopy_cls::GetAxis(int k) const {
    const ConfItemFLOATARRAY_cls* items[3] = {&mCAxisX, &mCAxisY, &mCAxisZ};
    std::vector<double> v = items[k]->GetBodyFLOATARRAY();
    v.resize(3, 0.0);
    return {v[0], v[1], v[2]};
}

int ArrayCopy_cls::GetCopyCount(double nt) {
    if (!IsValid())
        return 0;
    long long lo[3], hi[3];
    GetRanges(nt, lo, hi);
    long long n = 1;
    for (int k = 0; k < 3; ++k)
        n = std::min<long long>(n * (hi[k] - lo[k] + 1), kMaxCopies + 1LL);
    bool origin = true;
    for (int k = 0; k < 3; ++k)
        origin = origin && lo[k] <= 0 && hi[k] >= 0;
    return static_cast<int>(std::min<long long>(origin ? n - 1 : n, kMaxCopies));
}

bool ArrayCopy_cls::GetCopyOffset(int copyIndex, double nt, double* out) {
    if (copyIndex < 1 || copyIndex > GetCopyCount(nt) || !out)
        return false;
    long long lo[3], hi[3];
    GetRanges(nt, lo, hi);
    const long long ny = hi[1] - lo[1] + 1, nz = hi[2] - lo[2] + 1;
    // Position in the full grid: skip the object's own place when the grid holds it.
    long long c = copyIndex - 1;
    const bool origin = lo[0] <= 0 && hi[0] >= 0 && lo[1] <= 0 && hi[1] >= 0 && lo[2] <= 0 && hi[2] >= 0;
    if (origin) {
        const long long o = ((0 - lo[0]) * ny + (0 - lo[1])) * nz + (0 - lo[2]);
        if (c >= o)
            ++c;
    }
    const long long s[3] = {lo[0] + c / (ny * nz), lo[1] + (c / nz) % ny, lo[2] + c % nz};
    for (int k = 0; k < 3; ++k)
        out[k] = 0.0;
    for (int a = 0; a < 3; ++a) {
        const std::array<double, 3> axis = GetAxis(a);
        for (int k = 0; k < 3; ++k)
            out[k] += static_cast<double>(s[a]) * axis[k];
    }
    return true;
}
