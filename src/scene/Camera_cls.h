// A camera: a scene object whose pose the view can follow, with its settings in three built-in
// attributes: CameraProp_cls ("CameraProp"), FocalBlurProp_cls ("FocalBlur") and
// StereoProp_cls ("Stereo"). It looks along its local -z with +y up. Main thread only.
#pragma once

#include "SceneObj_cls.h"

#include <vector>

class CameraProp_cls;
class FocalBlurProp_cls;
class PositionAndDirection_cls;
class StereoProp_cls;

class Camera_cls : public SceneObj_cls {
public:
    explicit Camera_cls(ParentObj_cls* pParent);

    CameraProp_cls* GetPCCameraProp() { return mpCCameraProp; }
    FocalBlurProp_cls* GetPCFocalBlurProp() { return mpCFocalBlurProp; }
    StereoProp_cls* GetPCStereoProp() { return mpCStereoProp; }

    int GetCameraType() const;
    double GetAngleL(double t);
    std::vector<double> GetVMinMax(double t);
    std::vector<float> GetVPasspartoutInfo() const;
    // True when the camera's own size replaces the output size; then width and height are set.
    bool GetOverrideSize(int& width, int& height) const;
    int GetStereoNum() const;
    int GetEyeType() const;
    // The camera's pose at t, from its matrix through the parent chain.
    void GetPose(double t, PositionAndDirection_cls& pose);

    ConfItemBOOL_cls mCValid;

private:
    CameraProp_cls* mpCCameraProp = nullptr; // owned by the modifier list
    FocalBlurProp_cls* mpCFocalBlurProp = nullptr;
    StereoProp_cls* mpCStereoProp = nullptr;
};
