#include "GraphColorCurve_cls.h"

#include "ColorCurve_cls.h"
#include "KeyFrame_cls.h"
#include "Parameter_cls.h"

#include <wx/dc.h>
#include <wx/image.h>

#include <algorithm>

GraphColorCurve_cls::GraphColorCurve_cls(wxWindow* pParent, GraphKeyEdit_cls& rEdit)
    : GraphCurve_cls(pParent, rEdit, "GraphColorCurve") {
    mTopStrip = msBarHeight + 4;
    mbShowCurrentTime = false;
    // The context menu is this strip's own.
    Unbind(wxEVT_RIGHT_UP, &GraphCurve_cls::OnMouse, static_cast<GraphCurve_cls*>(this));
    Bind(wxEVT_RIGHT_UP, &GraphColorCurve_cls::OnBtnRight, this);
}

void GraphColorCurve_cls::GetBarPixels(ColorCurve_cls& rCurve, const GraphGeom_cls& geom, int left, int width,
                                       int height, std::vector<unsigned char>& vRGB) {
    vRGB.assign(static_cast<size_t>(std::max(0, width) * std::max(0, height)) * 3, 0);
    const std::array<unsigned char, 4> light{204, 204, 204, 255};
    const std::array<unsigned char, 4> dark{128, 128, 128, 255};
    for (int x = 0; x < width; ++x) {
        double alpha = 1.0;
        const std::array<unsigned char, 4> colour = rCurve.GetColor(geom.GetXFromDev(left + x), &alpha);
        for (int y = 0; y < height; ++y) {
            const bool bLight = ((x / msChecker) + (y / msChecker)) % 2 == 0;
            const std::array<unsigned char, 4> c =
                ColorCurve_cls::AlphaBlend(bLight ? light : dark, colour, alpha);
            unsigned char* p = &vRGB[(static_cast<size_t>(y) * width + x) * 3];
            p[0] = c[0];
            p[1] = c[1];
            p[2] = c[2];
        }
    }
}

wxString GraphColorCurve_cls::GetStrStamp() {
    ColorCurve_cls* pCurve = mFuncGetCurve ? mFuncGetCurve() : nullptr;
    if (!pCurve)
        return "none";
    const GraphGeom_cls& geom = mrCEdit.GetGeom();
    return wxString::Format("%p/%g/%g/%d/%d/", static_cast<void*>(pCurve), geom.mX0, geom.mX1, geom.mWidth,
                            geom.GetPlotLeft()) +
           pCurve->ParamGroup_cls::GetStrProcCounter();
}

void GraphColorCurve_cls::UpdateDisplay() {
    SyncGeometry();
    mStrBarStamp = GetStrStamp();
    ColorCurve_cls* pCurve = mFuncGetCurve ? mFuncGetCurve() : nullptr;
    const GraphGeom_cls& geom = mrCEdit.GetGeom();
    const int width = geom.GetPlotRight() - geom.GetPlotLeft() + 1;
    if (!pCurve || width <= 0) {
        mBmpBar = wxBitmap();
        return;
    }
    std::vector<unsigned char> vRGB;
    GetBarPixels(*pCurve, geom, geom.GetPlotLeft(), width, msBarHeight, vRGB);
    wxImage image(width, msBarHeight, false);
    std::copy(vRGB.begin(), vRGB.end(), image.GetData());
    mBmpBar = wxBitmap(image);
    ++mBarPaintCount;
}

bool GraphColorCurve_cls::CheckRefresh() {
    SyncGeometry();
    if (GetStrStamp() == mStrBarStamp)
        return false;
    UpdateDisplay();
    Refresh(false);
    return true;
}

void GraphColorCurve_cls::Render(wxDC& dc) {
    GraphCurve_cls::Render(dc);
    if (GetStrStamp() != mStrBarStamp)
        UpdateDisplay();
    if (mBmpBar.IsOk())
        dc.DrawBitmap(mBmpBar, mrCEdit.GetGeom().GetPlotLeft(), 2);
    // The stops: a tick under the bar at every key position of the colour channels.
    dc.SetPen(wxPen(wxColour(230, 230, 230)));
    for (const GraphChannel_cls& channel : mrCEdit.GetChannels())
        for (const KeyFrame_cls& key : channel.mpCParam->mVCKey) {
            const int px = mrCEdit.GetGeom().GetDevX(key.mX);
            dc.DrawLine(px, msBarHeight + 2, px, msBarHeight + 5);
        }
}

void GraphColorCurve_cls::OnBtnRight(wxMouseEvent& event) {
    if (mFuncRightClick)
        mFuncRightClick(event.GetPosition());
}
