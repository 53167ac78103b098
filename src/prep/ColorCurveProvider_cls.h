// The twelve preset colour curves. They are made once and never change: applying a preset copies
// its keys into the user's curve.
#pragma once

#include "ColorCurve_cls.h"

#include <memory>
#include <vector>

class ColorCurveProvider_cls {
public:
    static constexpr int kPresetCount = 12;

    ColorCurveProvider_cls() { SetToDefault(); }

    // Builds the presets; a second call rebuilds them.
    void SetToDefault();
    // The preset of that index, null outside 0 .. 11.
    ColorCurve_cls* GetPCColorCurve(int index);
    int GetNumColorCurve() const { return static_cast<int>(mVPCColorCurve.size()); }
    // Gives p the keys of the preset of that index, without a provider; false outside 0 .. 11
    // or when p has not four channels. Initial keys: they do not count as an edit.
    static bool SetPresetKeys(int index, ColorCurve_cls* p);

private:
    std::vector<std::unique_ptr<ColorCurve_cls>> mVPCColorCurve;
};
