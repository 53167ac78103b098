// A blur along the rows, the columns or both, class word "Blur_cls". "Type=" 0 horizontal,
// 1 vertical, 2 both (two passes); "Kernel=" 0 box, 1 Gaussian; "Quality=" the taps on each side;
// the group "Width" the reach in pixels. The weights are normalised, so a flat field stays flat.
// With "UseGamma=" each blur reads its samples raised to 2.2 and an exposure pass with gamma
// 0.4545 follows it to encode the result again.
#pragma once

#include "FilterBase_cls.h"

class Blur_cls : public FilterBase_cls {
public:
    explicit Blur_cls(const wxString& strName);

    int GetIterNum() override;
    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(int iteration, double t);
    // The gamma correction pass alone: exposure with gamma 0.4545.
    void BeginExposure();

    // The shortened constant is the system's own (float bits 3EE8B439); it is deliberately not 1 / 2.2.
    static constexpr float msGammaEncode = 0.4545f;

    ConfItemINT_cls mCType;
    ConfItemINT_cls mCKernel;
    ConfItemINT_cls mCQuality;
    ConfItemBOOL_cls mCUseGamma;
};
