// Glare, class word "Glare_cls": light above the critical value spreads along "Number=" rays
// ("Type=" 0) or a round halo (1), over "Width" pixels, turned by "Offset" degrees; "Enh./Fade"
// scales the light and lets it fade along the ray.
#pragma once

#include "FilterBase_cls.h"

class Glare_cls : public FilterBase_cls {
public:
    explicit Glare_cls(const wxString& strName);

    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(double t);

    ConfItemINT_cls mCType;
    ConfItemINT_cls mCQuality;
    ConfItemINT_cls mCNumber;
};
