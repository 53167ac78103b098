// Screen-space ambient occlusion, class word "SSAO_cls": a pixel darkens by "Factor=" times the
// share of its neighbours within "Radius=" (eye units, also the reach in pixels) that stand in
// front of it. "Type=" 1 shows the occlusion alone over "BaseColor". Reads the frame's depth.
#pragma once

#include "FilterBase_cls.h"

class SSAO_cls : public FilterBase_cls {
public:
    explicit SSAO_cls(const wxString& strName);

    DepthUse_enum GetDepthUse() const override { return DEPTH_READ; }
    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(FBO_cls* pImage, double t);

    ConfItemINT_cls mCQuality;
    ConfItemFLOAT_cls mCFactor;
    ConfItemFLOAT_cls mCRadius;
    ConfItemINT_cls mCType;
};
