// The depth of field of a camera, class word "FocalBlurProp_cls", attribute name "FocalBlur":
// the focal distance the focal-blur filter reads and the lens aperture the ensemble steps
// sample. Built in to every camera.
#pragma once

#include "Attribute_cls.h"

class PositionAndDirection_cls;

class FocalBlurProp_cls : public Attribute_cls {
public:
    FocalBlurProp_cls();

    bool IsUsed() const { return mCUseFocalBlur.GetBodyBOOL(); }
    double GetFocalDistance(double t);
    double GetAperture(double t);
    // Moves the eye of an ensemble step across the lens and aims it back at the point in focus,
    // so points at the focal distance stay sharp over the steps. Step 0, or the switch off,
    // leaves the pose alone. The lens points are the Halton points of bases 7 and 3 inside the
    // unit disk, as the ensemble table makes them.
    void BlurRotate(PositionAndDirection_cls* pPose, int step, double t);
    // The lens offset of a step in units of the aperture, both in -1..1.
    static void GetLensPoint(int step, double& x, double& y);

    ConfItemBOOL_cls mCUseFocalBlur;
};
