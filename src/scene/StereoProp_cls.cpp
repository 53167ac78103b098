#include "StereoProp_cls.h"

#include "ParamGroup_cls.h"
#include "PositionAndDirection_cls.h"

namespace {

double GetFirst(ParamGroup_cls* p, double t, double fallback) {
    if (!p)
        return fallback;
    std::vector<double> v = p->GetVInterpolatedValue(t, true, nullptr, false);
    return v.empty() ? fallback : v[0];
}

} // namespace

StereoProp_cls::StereoProp_cls() : Attribute_cls("StereoProp_cls", "Stereo") {
    const wxString strTag = "VIEW3D::PROPERTY_OBJECT";
    Add(&mCStereoType, "StereoType=", "0", strTag);
    Add(&mCEyeType, "EyeType=", "0", strTag);
    AddOneDimParam("EyeSeparation", "Distance", 0.065);
    AddOneDimParam("FocusDistance", "Distance", 10.0);
}

int StereoProp_cls::GetStereoNum() const {
    if (GetStereoType() == 0)
        return 1;
    const long long eye = mCEyeType.GetBodyINT();
    return (eye >= 3 && eye <= 7) ? 2 : 1;
}

int StereoProp_cls::GetEyeType() const {
    return GetStereoType() == 0 ? 0 : static_cast<int>(mCEyeType.GetBodyINT());
}

double StereoProp_cls::GetEyeSeparation(double t) {
    return GetFirst(GetPCParamGroup("EyeSeparation"), t, 0.0);
}

double StereoProp_cls::GetFocusDistance(double t) {
    return GetFirst(GetPCParamGroup("FocusDistance"), t, 10.0);
}

double StereoProp_cls::GetEyeShift(int eye, double t) {
    const int eyeType = GetEyeType();
    if (eyeType == 0)
        return 0.0;
    if (eyeType == 1)
        eye = 0;
    else if (eyeType == 2)
        eye = 1;
    return GetEyeSeparation(t) * 0.5 * (eye == 0 ? -1.0 : 1.0);
}

void StereoProp_cls::StereoRotate(PositionAndDirection_cls* pPose, int eye, double t) {
    if (!pPose || GetEyeType() == 0)
        return;
    const double half = GetEyeShift(eye, t);
    double focus[3];
    const double dist = GetFocusDistance(t);
    for (int i = 0; i < 3; ++i)
        focus[i] = pPose->mPos[i] + pPose->mTgt[i] * dist;
    for (int i = 0; i < 3; ++i)
        pPose->mPos[i] += pPose->mRight[i] * half;
    if (GetStereoType() == 2) {
        for (int i = 0; i < 3; ++i)
            pPose->mTgt[i] = focus[i] - pPose->mPos[i];
        pPose->Normalize();
    }
}
