#include "FocalBlurProp_cls.h"

#include "ParamGroup_cls.h"
#include "PositionAndDirection_cls.h"

namespace {

double RadicalInverse(int i, int base) {
    double f = 1.0, r = 0.0;
    while (i > 0) {
        f /= base;
        r += f * (i % base);
        i /= base;
    }
    return r;
}

double GetFirst(ParamGroup_cls* p, double t, double fallback) {
    if (!p)
        return fallback;
    std::vector<double> v = p->GetVInterpolatedValue(t, true, nullptr, false);
    return v.empty() ? fallback : v[0];
}

} // namespace

FocalBlurProp_cls::FocalBlurProp_cls() : Attribute_cls("FocalBlurProp_cls", "FocalBlur") {
    Add(&mCUseFocalBlur, "UseFocalBlur=", "0", "VIEW3D::PROPERTY_OBJECT");
    AddOneDimParam("FocalDistance", "Distance", 10.0);
    AddOneDimParam("Aperture", "Size", 0.05);
}

double FocalBlurProp_cls::GetFocalDistance(double t) {
    return GetFirst(GetPCParamGroup("FocalDistance"), t, 10.0);
}

double FocalBlurProp_cls::GetAperture(double t) {
    return GetFirst(GetPCParamGroup("Aperture"), t, 0.0);
}

void FocalBlurProp_cls::GetLensPoint(int step, double& x, double& y) {
    // The step-th point of the sequence that keeps only points inside the unit disk.
    int kept = 0;
    for (int i = 1; i < 100000; ++i) {
        const double px = RadicalInverse(i, 7) * 2.0 - 1.0;
        const double py = RadicalInverse(i, 3) * 2.0 - 1.0;
        if (px * px + py * py > 1.0)
            continue;
        if (kept++ == (step % 256)) {
            x = px;
            y = py;
            return;
        }
    }
    x = 0.0;
    y = 0.0;
}

void FocalBlurProp_cls::BlurRotate(PositionAndDirection_cls* pPose, int step, double t) {
    if (!pPose || step <= 0 || !IsUsed())
        return;
    const double dist = GetFocalDistance(t);
    const double aperture = GetAperture(t);
    double lx = 0.0, ly = 0.0;
    GetLensPoint(step, lx, ly);
    double focus[3];
    for (int i = 0; i < 3; ++i)
        focus[i] = pPose->mPos[i] + pPose->mTgt[i] * dist;
    for (int i = 0; i < 3; ++i)
        pPose->mPos[i] += (pPose->mRight[i] * lx + pPose->mTop[i] * ly) * aperture;
    for (int i = 0; i < 3; ++i)
        pPose->mTgt[i] = focus[i] - pPose->mPos[i];
    pPose->Normalize();
}
