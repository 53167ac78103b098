// A legend over the picture, class word "Legend_cls": the colour curve of the object named by
// "Target=" as a bar with its tics, and the time as text. The bar's lower left corner stands at
// ("ClrCurveOffsetX=", "ClrCurveOffsetY=") as fractions of the image; it is 0.3 * "ClrCurveScaleX="
// of the width wide and 0.04 * "ClrCurveScaleY=" of the height high, position 0 of the curve at
// its left end. Tic numbers are the curve's "Range" at the current time times "ClrCurveTicScale=",
// "ClrCurveTicFontSize=" percent of the height high. The time text, "FormatTime=" of time *
// "TimeScale=", starts at ("TimeOffsetX=", "TimeOffsetY="); "TextFontDesc=" is a font name and a
// size in pixels of a 1024 image. The layer is drawn with FreeType glyphs: no display is needed.
// A missing target is logged once and draws no bar.
#pragma once

#include "FilterBase_cls.h"

#include <memory>

class ColorCurve_cls;
class TextDraw_cls;

class Legend_cls : public FilterBase_cls {
public:
    explicit Legend_cls(const wxString& strName);
    ~Legend_cls() override;

    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    // Draws the legend into its own layer, cleared first. GL thread.
    void MakeLegendLayer(int width, int height, const std::vector<float>& vPasspartout, double t);
    // Blends the layer over the image of the pass.
    void Begin(const std::vector<float>& vPasspartout);
    void DrawColorCurve(ColorCurve_cls* pCurve, double x, double y, double w, double h);
    void DrawTics(ColorCurve_cls* pCurve, double x, double y, double w, double size, double t);
    // Sets "Target=".
    void SelectObject(const wxString& strName) { mCTarget.SetBodyFromData(strName); }
    // The colour curve of the target object, or null.
    ColorCurve_cls* GetPCTargetCurve() const;
    // The time text; the format is used only when it holds exactly one floating conversion.
    wxString GetStrTime(double t) const;
    // The layer of the last MakeLegendLayer (null before).
    FBO_cls* GetPCLayer() const { return mpCLayer.get(); }

    ConfItemSTR_cls mCTarget;
    ConfItemSTR_cls mCTextFontDesc;
    ConfItemBOOL_cls mCUseTime;
    ConfItemSTR_cls mCFormatTime;
    ConfItemFLOAT_cls mCTimeOffsetX;
    ConfItemFLOAT_cls mCTimeOffsetY;
    ConfItemFLOAT_cls mCTimeScale;
    ConfItemBOOL_cls mCUseClrCurve;
    ConfItemFLOAT_cls mCClrCurveOffsetX;
    ConfItemFLOAT_cls mCClrCurveOffsetY;
    ConfItemFLOAT_cls mCClrCurveScaleX;
    ConfItemFLOAT_cls mCClrCurveScaleY;
    ConfItemFLOAT_cls mCClrCurveTicFontSize;
    ConfItemFLOAT_cls mCClrCurveTicScale;

private:
    std::unique_ptr<FBO_cls> mpCLayer;
    std::unique_ptr<TextDraw_cls> mpCTextDraw;
    wxString mStrReportedTarget;
};
