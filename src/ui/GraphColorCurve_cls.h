// The gradient bar and curve display of the colour-curve editor: the curve's colours over a
// checker pattern in a strip at the top, aligned with the plot of the four channels below it.
// The bar is painted into a bitmap that is rebuilt only when the curve's processing counter,
// the view or the size moved. Main thread only.
#pragma once

#include "GraphCurve_cls.h"

#include <wx/bitmap.h>

#include <functional>
#include <vector>

class ColorCurve_cls;

class GraphColorCurve_cls : public GraphCurve_cls {
public:
    GraphColorCurve_cls(wxWindow* pParent, GraphKeyEdit_cls& rEdit);

    // The curve shown, asked for at each use (it may have gone). Not owned.
    std::function<ColorCurve_cls*()> mFuncGetCurve;

    // Paints the gradient bar into its bitmap.
    void UpdateDisplay();
    // Repaints only when the curve's processing counter (or the view) moved since the last
    // paint of the bar; true when it did.
    bool CheckRefresh();
    void Render(wxDC& dc) override;
    // The context menu of a right click.
    void OnBtnRight(wxMouseEvent& event);

    // RGB bytes of a bar of that width and height for the curve seen through the geometry's
    // horizontal range: each column is the curve's colour at its position, blended by the
    // curve's alpha over a checker of two greys in squares of msChecker pixels.
    static void GetBarPixels(ColorCurve_cls& rCurve, const GraphGeom_cls& geom, int left, int width,
                             int height, std::vector<unsigned char>& vRGB);
    static constexpr int msBarHeight = 20;
    static constexpr int msChecker = 5;

    int mBarPaintCount = 0;

private:
    wxString GetStrStamp();
    wxBitmap mBmpBar;
    wxString mStrBarStamp;
};
