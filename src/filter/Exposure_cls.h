// Levels, gamma, hue and saturation of the picture, class word "Exposure_cls". For each colour
// channel c of the image:
//   out = max((c - Min) / (Max - Min), 0) ^ Gamma
// with Min and Max from "Level" and Gamma from "Gamma", so Gamma below 1 brightens the middle
// tones and 0.4545 encodes linear light again. Then the hue turns by "Hue" degrees about the
// grey axis and the colour moves away from its grey (Rec. 601 weights) by 1 + "Saturation" / 100.
// Alpha is kept. Colours above 1 are not clamped.
#pragma once

#include "FilterBase_cls.h"

class ExposureParams_cls;

class Exposure_cls : public FilterBase_cls {
public:
    explicit Exposure_cls(const wxString& strName);

    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(double t);
    // The record of the program at t.
    void FillParams(ExposureParams_cls& params, double t);
};
