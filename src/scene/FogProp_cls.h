// The fog of the world, class word "FogProp_cls", attribute name "Fog": the fog type (0 "No
// Fog", 1 "Linear", 2 "Exp", 3 "Exp2"), whether the fog colour replaces the background, and
// the colour, range and density as animated groups.
#pragma once

#include "Attribute_cls.h"

#include <vector>

class FogProp_cls : public Attribute_cls {
public:
    FogProp_cls();

    int GetFogType() const { return static_cast<int>(mCFogType.GetBodyINT()); }
    bool IsFogOverwrite() const { return mCFogOverwrite.GetBodyBOOL(); }
    // R, G, B at t.
    std::vector<double> GetFogColor(double t);
    // Start and end of a linear fog.
    std::vector<double> GetFogRange(double t);
    double GetFogDensity(double t);

    ConfItemINT_cls mCFogType;
    ConfItemBOOL_cls mCFogOverwrite;
};
