#include "ColorCurveProvider_cls.h"

namespace {

struct Preset {
    const char* strName;
    int count;
    double rows[7][5]; // position, R, G, B, A
};

// In every preset alpha equals the position: the opacity rises along the curve.
const Preset kPresets[ColorCurveProvider_cls::kPresetCount] = {
    {"Red Yellow", 2, {{0, 1, 0, 0, 0}, {1, 1, 1, 0, 1}}},
    {"Green Red", 2, {{0, 0, 1, 0, 0}, {1, 1, 0, 0, 1}}},
    {"Black White", 2, {{0, 0, 0, 0, 0}, {1, 1, 1, 1, 1}}},
    {"Cold Color", 2, {{0, 0, 0, 1, 0}, {1, 0, 1, 1, 1}}},
    {"ModerateGray Color", 2, {{0, 0.5, 0.5, 0.5, 0}, {1, 0.75, 0.75, 0.75, 1}}},
    {"Spectrum",
     7,
     {{0, 0.03, 0, 0.07, 0},
      {0.167, 0.32, 0, 0.77, 0.167},
      {0.333, 0, 0.31, 0.59, 0.333},
      {0.5, 0, 0.78, 0, 0.5},
      {0.666, 0.82, 0.56, 0, 0.666},
      {0.833, 0.84, 0, 0, 0.833},
      {1, 0.26, 0, 0, 1}}},
    {"SpectrumRGB",
     5,
     {{0, 1, 0, 0, 0},
      {0.25, 0.5, 0, 0.5, 0.25},
      {0.5, 0, 0, 1, 0.5},
      {0.75, 0, 0.5, 0.5, 0.75},
      {1, 0, 1, 0, 1}}},
    {"Incandescent",
     5,
     {{0, 0, 0, 0, 0},
      {0.594, 0.73, 0, 0, 0.594},
      {0.809, 1, 0.55, 0.2, 0.809},
      {0.9, 0.97, 0.94, 0.07, 0.9},
      {1, 0.97, 0.97, 0.83, 1}}},
    {"ColdSteel", 3, {{0, 1, 1, 1, 0}, {0.645, 0.05, 0.02, 0.14, 0.645}, {1, 0.36, 0.73, 0.76, 1}}},
    {"Coldest Color", 3, {{0, 0, 0, 1, 0}, {0.5, 0, 1, 1, 0.5}, {1, 1, 1, 1, 1}}},
    {"Height Map", 4, {{0, 0, 0, 1, 0}, {0.02, 0, 1, 0, 0.02}, {0.5, 0.66, 0.5, 0.15, 0.5}, {1, 1, 1, 1, 1}}},
    {"Skyline",
     7,
     {{0, 0, 0, 0, 0},
      {0.365, 0.11, 0.06, 0.56, 0.365},
      {0.75, 0.92, 0.04, 0.04, 0.75},
      {0.864, 1, 0.53, 0, 0.864},
      {0.896, 0.94, 0.93, 0.22, 0.896},
      {0.934, 0.53, 0.39, 0.03, 0.934},
      {1, 0, 0, 0, 1}}},
};

} // namespace

bool ColorCurveProvider_cls::SetPresetKeys(int index, ColorCurve_cls* p) {
    if (!p || index < 0 || index >= kPresetCount || p->mVCParam.size() != 4)
        return false;
    const Preset& preset = kPresets[index];
    double rows[7][5];
    for (int r = 0; r < preset.count; ++r)
        for (int c = 0; c < 5; ++c)
            rows[r][c] = preset.rows[r][c];
    p->SetInitKeyframes(preset.count, rows);
    return true;
}

void ColorCurveProvider_cls::SetToDefault() {
    mVPCColorCurve.clear();
    wxArrayString astrMembers;
    for (const char* str : {"R", "G", "B", "A"})
        astrMembers.Add(str);
    for (int i = 0; i < kPresetCount; ++i) {
        auto pCurve = std::make_unique<ColorCurve_cls>(kPresets[i].strName, astrMembers);
        SetPresetKeys(i, pCurve.get());
        mVPCColorCurve.push_back(std::move(pCurve));
    }
}

ColorCurve_cls* ColorCurveProvider_cls::GetPCColorCurve(int index) {
    if (index < 0 || index >= GetNumColorCurve())
        return nullptr;
    return mVPCColorCurve[static_cast<size_t>(index)].get();
}
