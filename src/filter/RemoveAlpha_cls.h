// Makes the picture opaque, class word "RemoveAlpha_cls". "ExtremeAlpha=" pushes alpha to 0 or 1
// first; "Convert=" composes the colour over the background (black, or with "BackgroundTile=" a
// grey checker of 8-pixel cells, 0.5 and 0.75) as rgb * a + background * (1 - a); without it the
// colour is kept as it is. Alpha becomes 1.
#pragma once

#include "FilterBase_cls.h"

class RemoveAlpha_cls : public FilterBase_cls {
public:
    explicit RemoveAlpha_cls(const wxString& strName);

    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin();

    ConfItemBOOL_cls mCExtremeAlpha;
    ConfItemBOOL_cls mCConvert;
    ConfItemBOOL_cls mCBackgroundTile;
};
