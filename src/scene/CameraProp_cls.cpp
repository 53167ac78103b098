#include "CameraProp_cls.h"

#include "ParamGroup_cls.h"

#include <algorithm>

CameraProp_cls::CameraProp_cls() : Attribute_cls("CameraProp_cls", "CameraProp") {
    const wxString strTag = "VIEW3D::PROPERTY_OBJECT";
    Add(&mCCameraType, "CameraType=", "0", strTag);
    Add(&mC1stBufSizeIdx, "1stBufSizeIdx=", "1", strTag);
    Add(&mCPassepartout, "Passepartout=", "0", strTag);
    Add(&mCPassepartoutAspect, "PassepartoutAspect=", "1.777778", strTag);
    Add(&mCPassepartoutAlpha, "PassepartoutAlpha=", "0.500000", strTag);
    Add(&mCSizeOverride, "SizeOverride=", "0", strTag);
    Add(&mCOverrideWidth, "OverrideWidth=", "1920", strTag);
    Add(&mCOverrideHeight, "OverrideHeight=", "1080", strTag);
    AddOneDimParam("ViewAngle", "Angle", 45.0);
    AddOneDimParam("WideAngle", "Angle", 180.0);
    InitializeAndPushParam(GetPCNewParamGroup("ClipRange", "Near", "Far"), 0.01, 1000.0);
    AddOneDimParam("DomeTilt", "Angle", 0.0);
}

double CameraProp_cls::GetOne(const wxString& strGroup, double t, double fallback, size_t index) {
    ParamGroup_cls* p = GetPCParamGroup(strGroup);
    if (!p)
        return fallback;
    std::vector<double> v = p->GetVInterpolatedValue(t, true, nullptr, false);
    return index < v.size() ? v[index] : fallback;
}

double CameraProp_cls::GetAngleL(double t) {
    const double angle = GetOne("ViewAngle", t, 45.0);
    return GetCameraType() == 0 ? std::min(angle, 120.0) : angle;
}

double CameraProp_cls::GetWideAngle(double t) {
    return GetOne("WideAngle", t, 180.0);
}

std::vector<double> CameraProp_cls::GetVMinMax(double t) {
    return {GetOne("ClipRange", t, 0.01, 0), GetOne("ClipRange", t, 1000.0, 1)};
}

double CameraProp_cls::GetDomeTilt(double t) {
    return GetOne("DomeTilt", t, 0.0);
}

std::vector<float> CameraProp_cls::GetVPasspartoutInfo() const {
    if (!mCPassepartout.GetBodyBOOL())
        return {-1.0f, -1.0f};
    return {static_cast<float>(mCPassepartoutAspect.GetBodyDOUBLE()),
            static_cast<float>(mCPassepartoutAlpha.GetBodyDOUBLE())};
}

void CameraProp_cls::GetOverrideSize(int& width, int& height) const {
    // A side is an int of the image writer: a hand-edited zero, negative or huge value is
    // held to a size that can be made.
    const auto side = [](long long v) { return static_cast<int>(std::max(1LL, std::min(v, 65536LL))); };
    width = side(mCOverrideWidth.GetBodyINT());
    height = side(mCOverrideHeight.GetBodyINT());
}
