#include "Camera_cls.h"

#include "CameraProp_cls.h"
#include "FocalBlurProp_cls.h"
#include "PositionAndDirection_cls.h"
#include "StereoProp_cls.h"

Camera_cls::Camera_cls(ParentObj_cls* pParent) : SceneObj_cls(pParent, "Camera_cls") {
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    mpCCameraProp = new CameraProp_cls();
    mpCFocalBlurProp = new FocalBlurProp_cls();
    mpCStereoProp = new StereoProp_cls();
    AddBuiltInModifier(mpCCameraProp);
    AddBuiltInModifier(mpCFocalBlurProp);
    AddBuiltInModifier(mpCStereoProp);
}

int Camera_cls::GetCameraType() const {
    return mpCCameraProp->GetCameraType();
}

double Camera_cls::GetAngleL(double t) {
    return mpCCameraProp->GetAngleL(t);
}

std::vector<double> Camera_cls::GetVMinMax(double t) {
    return mpCCameraProp->GetVMinMax(t);
}

std::vector<float> Camera_cls::GetVPasspartoutInfo() const {
    return mpCCameraProp->GetVPasspartoutInfo();
}

bool Camera_cls::GetOverrideSize(int& width, int& height) const {
    if (!mpCCameraProp->IsSizeOverride())
        return false;
    mpCCameraProp->GetOverrideSize(width, height);
    return true;
}

int Camera_cls::GetStereoNum() const {
    return mpCStereoProp->GetStereoNum();
}

int Camera_cls::GetEyeType() const {
    return mpCStereoProp->GetEyeType();
}

void Camera_cls::GetPose(double t, PositionAndDirection_cls& pose) {
    double m[16];
    GetMatrix16(m, t, nullptr);
    pose.SetFromMatrix(m);
}
