// The stereo settings of a camera, class word "StereoProp_cls", attribute name "Stereo": the
// stereo type of the "StereoType" list (0 "No Stereo", 1 "Off Axis", 2 "Toe-in"), the eye type
// of the "EyeType" list (0 "No Parallax" ... 7 "QUAD BUFFERING"), the eye separation and the
// distance of the plane of zero parallax. Built in to every camera.
#pragma once

#include "Attribute_cls.h"

class PositionAndDirection_cls;

class StereoProp_cls : public Attribute_cls {
public:
    StereoProp_cls();

    int GetStereoType() const { return static_cast<int>(mCStereoType.GetBodyINT()); }
    // 1 with stereo type 0; 2 for eye types 3 to 7; else 1.
    int GetStereoNum() const;
    // 0 with stereo type 0, else the eye type.
    int GetEyeType() const;
    double GetEyeSeparation(double t);
    double GetFocusDistance(double t);
    // How far the eye that is drawn for `eye` stands right of the camera (negative: left): half
    // the separation; eye type 1 or 2 draws the left or the right eye whatever eye is asked.
    double GetEyeShift(int eye, double t);
    // Moves the pose to eye 0 (left) or 1 (right): half the separation along the right vector.
    // Eye type 1 or 2 draws one eye, the left or the right, whatever eye is asked. "Toe-in"
    // turns the eye to the point in focus; "Off Axis" keeps the direction, the frustum shift is
    // the renderer's.
    void StereoRotate(PositionAndDirection_cls* pPose, int eye, double t);

    ConfItemINT_cls mCStereoType;
    ConfItemINT_cls mCEyeType;
};
