// What the colour-curve editor does to a whole curve, without a window: the presets with an
// alpha template, the alpha templates alone, "Flip Color", "Swap RGB" and the colour of one
// stop. Each builds the result on a copy of the curve and hands it to
// ColorCurve_cls::CopyColorCurveCommand, so one undo takes it back. Main thread only.
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <memory>

class ColorCurve_cls;

class ColorCurveTemplate_cls {
public:
    // The alpha templates ("TemplateAlpha="): the A channel a preset brings along.
    enum AlphaTemplate_enum { ALPHA_KEEP = 0, ALPHA_LINEAR, ALPHA_OPAQUE, ALPHA_FADE_OUT, ALPHA_COUNT };
    // "Keep", "Linear", "Opaque", "Fade Out".
    static wxArrayString GetAstrAlphaTemplate();
    // The names of the presets of the provider, in its order.
    static wxArrayString GetAstrPreset();

    // Gives the A channel of p the keys of the template: Linear (0, 0) to (1, 1), Opaque (0, 1)
    // to (1, 1), Fade Out (0, 1) to (1, 0), all linear. Keep changes nothing. Direct, no command.
    static void SetAlphaKeys(int alphaTemplate, ColorCurve_cls* p);
    // A curve of the same channel names as rCurrent and its keys, with the R, G, B keys of the
    // preset and the A keys of the template (Keep: those of rCurrent). Null for an unknown
    // preset (the A template alone then applies when preset is -1).
    static std::unique_ptr<ColorCurve_cls> GetPNewCurve(ColorCurve_cls& rCurrent, int preset,
                                                        int alphaTemplate);

    // ---- the commands ----
    // strTag addresses the owner ("SceneObjCtrl::Obj::<object>"); empty means the curve's own.
    static bool ApplyPresetCommand(ColorCurve_cls& rCurve, const wxString& strTag, int preset,
                                   int alphaTemplate);
    static bool ApplyAlphaTemplateCommand(ColorCurve_cls& rCurve, const wxString& strTag, int alphaTemplate);
    // The curve mirrored in position: what was at 0 is at 1.
    static void FlipCommand(ColorCurve_cls& rCurve, const wxString& strTag);
    // Red and blue exchange their keys.
    static void SwapRGBCommand(ColorCurve_cls& rCurve, const wxString& strTag);
    // The colour at x becomes (r, g, b), 0 .. 1: keys at x on the three colour channels, made
    // where missing. A stays.
    static void SetStopColorCommand(ColorCurve_cls& rCurve, const wxString& strTag, double x, double r,
                                    double g, double b);

private:
    static std::unique_ptr<ColorCurve_cls> GetPNewCopy(ColorCurve_cls& rCurrent);
};
