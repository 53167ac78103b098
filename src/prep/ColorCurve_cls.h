// A colour curve: four channels R, G, B, A keyed over the curve's own domain 0 .. 1, and a
// "Range" group (min, max) in scene time that maps a data value onto that domain. It is an
// attribute (name, list, the "Range" group) and a parameter group (the four channels) at once.
// Renderers read it as 1025 RGBA texels; this class builds those bytes, the render layer uploads
// them.
#pragma once

#include "Attribute_cls.h"
#include "ParamGroup_cls.h"

#include <wx/arrstr.h>
#include <wx/string.h>

#include <array>
#include <vector>

class ColorCurve_cls : public Attribute_cls, public ParamGroup_cls {
public:
    static constexpr int kTexelCount = 1025;

    // astrMemberNames are the names of the four channels, in order R, G, B, A.
    ColorCurve_cls(const wxString& strName, const wxArrayString& astrMemberNames);
    ColorCurve_cls(const ColorCurve_cls&) = delete;
    ColorCurve_cls& operator=(const ColorCurve_cls&) = delete;
    ~ColorCurve_cls() override;

    // The colour at a curve position: R, G, B as bytes (truncation of v * 255 after clamping to
    // 0 .. 1) and 255 as the colour's own alpha; A as a double to alpha when it is not null.
    // The toolkit colour is made from these bytes by the GUI layers.
    std::array<unsigned char, 4> GetColor(double position, double* alpha);
    // Each component the truncation of t * b + (1 - t) * a.
    static std::array<unsigned char, 4> AlphaBlend(const std::array<unsigned char, 4>& a,
                                                   const std::array<unsigned char, 4>& b, double t);
    // (value - min) / (max - min) with "Range" at the current normalised time (or at nt); 1.0
    // when max equals min.
    double GetRemapX(double value);
    double GetRemapX(double value, double nt);
    // Clamps each value to 0 .. 1.
    static void TrimColorVector(std::vector<double>& v);

    // Fills mVTextureBytes with 1025 RGBA texels unless the digest of the arguments, the range and
    // the counters equals that of the last fill. True when the bytes were rebuilt (an upload is
    // due). Main thread.
    bool PrepareTexture(bool wrap, float alphaScale, bool fixedTime);
    // Forgets the texels and the digest.
    void ClearTexture();

    ParamGroup_cls* GetPCRange() { return mpCRange; }

    std::vector<unsigned char> mVTextureBytes; // 4 per texel
    wxString mStrTextureDigest;
    int mUploadCounter = 0; // fills done, for the renderer and the tests

private:
    ParamGroup_cls* mpCRange = nullptr; // owned through the attribute's groups
    void GetRange(double nt, double& r0, double& r1);
};
