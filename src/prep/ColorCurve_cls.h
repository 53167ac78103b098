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
#include <istream>
#include <memory>
#include <vector>

class SceneObj_cls;

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

    // ---- project form ----
    // ReadColorCurve::<name>::Begin, the attribute part (list and "Range"), the group part (the
    // four channels), ReadColorCurve::End.
    void Serialize(wxString& strOut);
    // Takes a ReadColorCurve block; other lines go to the attribute (its list block). With
    // bCheckName the block must name this curve: a block of a sibling curve of the same owner is
    // left alone (false), any other name is logged and its block skipped. Without it the name is
    // not looked at (a clipboard text of another curve). A block that does not end is logged
    // and reading stops at the line that cannot belong to it, which goes back to the stream.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest,
                     bool bCheckName);

    // ---- copies between curves ----
    // Replaces the keys of the colour channels by those of pSource in one undoable step; the A
    // channel too when bWithAlpha. "Range" and the list stay. strTag is the command address of
    // the owner ("SceneObjCtrl::Obj::<object>"); empty means the owner's own tag. Without an
    // owner or undo the copy is made directly.
    void CopyColorCurveCommand(ColorCurve_cls* pSource, wxString strTag, bool bWithAlpha);
    // The same from the text of a curve (Serialize of any curve), made directly. False when the
    // text holds no curve.
    bool CopyColorCurveFromString(const wxString& strText, bool bWithAlpha);
    // All four channels' keys of pSource, made directly.
    void CopyColorCurveFromP(ColorCurve_cls* pSource);
    // A clipboard text as one undoable step, all four channels. False when the text holds no
    // curve.
    bool Paste(wxString& strText, wxString strTag);

    // The object the curve hangs on, for the sibling check of ReadStrLine and the command
    // address; null for a curve of its own (the presets). Not owned.
    SceneObj_cls* mpCOwner = nullptr;

    std::vector<unsigned char> mVTextureBytes; // 4 per texel
    wxString mStrTextureDigest;
    int mUploadCounter = 0; // fills done, for the renderer and the tests

private:
    ParamGroup_cls* mpCRange = nullptr; // owned through the attribute's groups
    void GetRange(double nt, double& r0, double& r1);
    // Serialize with the channel keys taken from pKeys (the A channel only when bWithAlpha).
    void SerializeWithKeys(wxString& strOut, ColorCurve_cls* pKeys, bool bWithAlpha);
    // Copies the keys of the channels (the A channel only when bWithAlpha).
    void CopyKeys(ColorCurve_cls* pSource, bool bWithAlpha);
    // A curve of the same member names, with no owner; null when the text holds no curve.
    std::unique_ptr<ColorCurve_cls> GetPNewCurveFromString(const wxString& strText);
    // Skips lines up to the end line of a block whose first line was read; a line that cannot
    // belong to it goes back to the stream.
    void SkipBlock(std::wistream& stream, const wxString& strEndHead);
    void ReadGroupBlock(std::wistream& stream);
};
