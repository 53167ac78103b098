// Depth of field, class word "FocalBlur_cls": pixels away from the focal distance blur in
// proportion to |distance - focal| / focal. The focal distance comes from the camera's focal blur
// attribute when a camera drives the frame, else from the group "FocalDistance"; the reach in
// pixels is "WidthBase" divided by tan(view angle / 2). "Type=" 1 samples a disc ("FocalBlurB"),
// other values a square ("FocalBlur"). Reads the frame's depth.
#pragma once

#include "FilterBase_cls.h"

class FocalBlur_cls : public FilterBase_cls {
public:
    explicit FocalBlur_cls(const wxString& strName);

    DepthUse_enum GetDepthUse() const override { return DEPTH_READ; }
    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(FBO_cls* pImage, const PositionAndDirection_cls* pPose, Camera_cls* pCamera, double tanHalf,
               double t);

    ConfItemINT_cls mCQuality;
    ConfItemINT_cls mCType;
    ConfItemBOOL_cls mCUseGamma;
};
