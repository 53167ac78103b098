// Replaces the picture by the frame's depth turned into eye distance, class word
// "FilterDepth_cls": grey = the distance from the eye in scene units (not clamped), alpha 1.
// Filters after it work on that picture.
#pragma once

#include "FilterBase_cls.h"

class FilterDepth_cls : public FilterBase_cls {
public:
    explicit FilterDepth_cls(const wxString& strName);

    DepthUse_enum GetDepthUse() const override { return DEPTH_DRAW; }
    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(FBO_cls* pImage);
};
