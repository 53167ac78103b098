#include "GraphCurve_cls.h"

#include "ClassProvider_cls.h"
#include "KeyFrame_cls.h"
#include "Parameter_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/dcbuffer.h>
#include <wx/dcclient.h>

#include <algorithm>
#include <cmath>

namespace {

const wxColour kBack(52, 52, 56);
const wxColour kPlot(40, 40, 44);
const wxColour kGrid(66, 66, 72);
const wxColour kZero(96, 96, 104);
const wxColour kText(170, 170, 176);
const wxColour kNow(90, 150, 230);

// A ruler label: few digits, no trailing zeros.
wxString Label(double v) {
    if (std::fabs(v) < 1e-12)
        v = 0.0;
    return wxString::Format("%g", v);
}

} // namespace

GraphCurve_cls::GraphCurve_cls(wxWindow* pParent, GraphKeyEdit_cls& rEdit, const wxString& strName)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxSize(200, 120), wxBORDER_NONE | wxWANTS_CHARS, strName),
      mrCEdit(rEdit) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &GraphCurve_cls::OnPaint, this);
    Bind(wxEVT_SIZE, &GraphCurve_cls::OnSize, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &GraphCurve_cls::OnCaptureLost, this);
    for (const wxEventTypeTag<wxMouseEvent>& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_MIDDLE_DOWN, wxEVT_MIDDLE_UP, wxEVT_MOTION, wxEVT_MOUSEWHEEL,
          wxEVT_RIGHT_UP})
        Bind(type, &GraphCurve_cls::OnMouse, this);
}

void GraphCurve_cls::SyncGeometry() {
    const wxSize size = GetClientSize();
    GraphGeom_cls& geom = mrCEdit.GetGeom();
    geom.SetSize(size.x, size.y);
    geom.mTop = mTopStrip + 8;
}

void GraphCurve_cls::OnSize(wxSizeEvent& event) {
    SyncGeometry();
    Refresh(false);
    event.Skip();
}

void GraphCurve_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    if (mFuncBeforeUse)
        mFuncBeforeUse();
    SyncGeometry();
    Render(dc);
    ++mPaintCount;
}

void GraphCurve_cls::Render(wxDC& dc) {
    dc.SetBackground(wxBrush(kBack));
    dc.Clear();
    DrawRulers(dc);
    DrawCurves(dc);
}

void GraphCurve_cls::DrawRulers(wxDC& dc) {
    const GraphGeom_cls& geom = mrCEdit.GetGeom();
    const int left = geom.GetPlotLeft(), right = geom.GetPlotRight();
    const int top = geom.GetPlotTop(), bottom = geom.GetPlotBottom();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(kPlot));
    dc.DrawRectangle(left, top, right - left + 1, bottom - top + 1);
    dc.SetFont(wxFont(wxFontInfo(7)));
    dc.SetTextForeground(kText);
    // Vertical lines at round numbers of the label (frames for time, data values for a curve's
    // range): label = offset + position * scale.
    const double scale = mXLabelScale > 0.0 ? mXLabelScale : 1.0;
    const double d0 = mXLabelOffset + geom.mX0 * scale, d1 = mXLabelOffset + geom.mX1 * scale;
    const double stepD = GraphGeom_cls::GetTicStep(d1 - d0, right - left, 50);
    for (double d = std::ceil(d0 / stepD) * stepD; d <= d1 + stepD * 1e-9; d += stepD) {
        const int px = geom.GetDevX((d - mXLabelOffset) / scale);
        dc.SetPen(wxPen(std::fabs(d) < stepD * 1e-6 ? kZero : kGrid));
        dc.DrawLine(px, top, px, bottom + 1);
        dc.DrawText(Label(d), px + 2, bottom + 3);
    }
    const double stepY = GraphGeom_cls::GetTicStep(geom.mY1 - geom.mY0, bottom - top, 24);
    for (double y = std::ceil(geom.mY0 / stepY) * stepY; y <= geom.mY1; y += stepY) {
        const int py = geom.GetDevY(y);
        dc.SetPen(wxPen(std::fabs(y) < stepY * 1e-6 ? kZero : kGrid));
        dc.DrawLine(left, py, right + 1, py);
        const wxString str = Label(y);
        const wxSize ext = dc.GetTextExtent(str);
        dc.DrawText(str, left - ext.x - 3, py - ext.y / 2);
    }
}

void GraphCurve_cls::DrawCurves(wxDC& dc) {
    const GraphGeom_cls& geom = mrCEdit.GetGeom();
    const int left = geom.GetPlotLeft(), right = geom.GetPlotRight();
    const int top = geom.GetPlotTop(), bottom = geom.GetPlotBottom();
    dc.SetClippingRegion(left, top, right - left + 1, bottom - top + 1);
    if (mbShowCurrentTime && !mrCEdit.IsColor() && GpCTimeCtrl) {
        const int px = geom.GetDevX(GpCTimeCtrl->GetCurrentNT());
        dc.SetPen(wxPen(kNow, 1));
        dc.DrawLine(px, top, px, bottom + 1);
    }
    const std::vector<GraphChannel_cls>& vChannel = mrCEdit.GetChannels();
    // The channels that take clicks are drawn last, on top.
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t c = 0; c < vChannel.size(); ++c) {
            const bool bEditable = mrCEdit.IsChannelEditable(static_cast<int>(c));
            if (bEditable != (pass == 1))
                continue;
            const GraphChannel_cls& channel = vChannel[c];
            wxColour colour(channel.mColor[0], channel.mColor[1], channel.mColor[2]);
            if (!bEditable)
                colour =
                    wxColour((colour.Red() + 2 * kPlot.Red()) / 3, (colour.Green() + 2 * kPlot.Green()) / 3,
                             (colour.Blue() + 2 * kPlot.Blue()) / 3);
            const Parameter_cls& param = *channel.mpCParam;
            std::vector<wxPoint> vPoint;
            vPoint.reserve(static_cast<size_t>((right - left) / 2 + 2));
            for (int px = left; px <= right + 1; px += 2)
                vPoint.emplace_back(px, std::clamp(geom.GetDevY(param.GetValue(geom.GetXFromDev(px))),
                                                   top - 100, bottom + 100));
            dc.SetPen(wxPen(colour, bEditable ? 2 : 1));
            dc.DrawLines(static_cast<int>(vPoint.size()), vPoint.data());
            for (const KeyFrame_cls& key : param.mVCKey) {
                const int px = geom.GetDevX(key.mX);
                const int py = geom.GetDevY(key.mValue);
                dc.SetPen(wxPen(key.mbSelected ? *wxWHITE : colour, 1));
                dc.SetBrush(key.mbSelected ? wxBrush(wxColour(255, 220, 60)) : wxBrush(kPlot));
                // Step keys are squares, linear keys diamonds, Hermite keys circles.
                if (key.mType == KeyFrame_cls::TYPE_STEP) {
                    dc.DrawRectangle(px - 3, py - 3, 7, 7);
                } else if (key.mType == KeyFrame_cls::TYPE_HERMITE) {
                    dc.DrawCircle(px, py, 4);
                } else {
                    const wxPoint diamond[4] = {{px, py - 4}, {px + 4, py}, {px, py + 4}, {px - 4, py}};
                    dc.DrawPolygon(4, diamond);
                }
            }
        }
    }
    if (mrCEdit.GetDragMode() == GraphKeyEdit_cls::DRAG_BOX) {
        int x0, y0, x1, y1;
        mrCEdit.GetBox(x0, y0, x1, y1);
        dc.SetPen(wxPen(*wxWHITE, 1, wxPENSTYLE_SHORT_DASH));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(std::min(x0, x1), std::min(y0, y1), std::abs(x1 - x0) + 1, std::abs(y1 - y0) + 1);
    }
    // The legend: each channel's name in its colour, at the top right of the plot.
    dc.SetFont(wxFont(wxFontInfo(7)));
    int ly = top + 2;
    for (size_t c = 0; c < vChannel.size() && ly < bottom - 10; ++c) {
        const GraphChannel_cls& channel = vChannel[c];
        const wxSize ext = dc.GetTextExtent(channel.mStrLabel);
        dc.SetTextForeground(mrCEdit.IsChannelEditable(static_cast<int>(c))
                                 ? wxColour(channel.mColor[0], channel.mColor[1], channel.mColor[2])
                                 : kText);
        dc.DrawText(channel.mStrLabel, right - ext.x - 4, ly);
        ly += ext.y;
    }
    dc.DestroyClippingRegion();
}

void GraphCurve_cls::OnMouse(wxMouseEvent& event) {
    // The channels may have gone with their object since the last paint.
    if (mFuncBeforeUse && (event.GetEventType() != wxEVT_MOTION || mrCEdit.IsDragging()))
        mFuncBeforeUse();
    SyncGeometry();
    const wxPoint p = event.GetPosition();
    const wxEventType type = event.GetEventType();
    if (type == wxEVT_LEFT_DOWN || type == wxEVT_MIDDLE_DOWN) {
        SetFocus();
        mrCEdit.Press(p.x, p.y, event.ShiftDown(), type == wxEVT_LEFT_DOWN && event.ControlDown(),
                      type == wxEVT_MIDDLE_DOWN);
        if (mrCEdit.IsDragging() && !HasCapture())
            CaptureMouse();
        Refresh(false);
        if (mFuncChanged)
            mFuncChanged(false);
        return;
    }
    if (type == wxEVT_MOTION) {
        if (mrCEdit.IsDragging() && mrCEdit.Drag(p.x, p.y)) {
            Refresh(false);
            if (mFuncChanged)
                mFuncChanged(false);
        }
        return;
    }
    if (type == wxEVT_LEFT_UP || type == wxEVT_MIDDLE_UP) {
        if (HasCapture())
            ReleaseMouse();
        const bool bCommand = mrCEdit.Release(p.x, p.y);
        Refresh(false);
        if (mFuncChanged)
            mFuncChanged(bCommand);
        return;
    }
    if (type == wxEVT_MOUSEWHEEL) {
        const double factor = event.GetWheelRotation() > 0 ? 1.25 : 0.8;
        // Ctrl zooms the position only, shift the value only.
        mrCEdit.GetGeom().Zoom(factor, p.x, p.y, !event.ShiftDown(), !event.ControlDown());
        Refresh(false);
        if (mFuncChanged)
            mFuncChanged(false);
        return;
    }
    if (type == wxEVT_RIGHT_UP && mFuncRightClick)
        mFuncRightClick(p);
}

void GraphCurve_cls::OnCaptureLost(wxMouseCaptureLostEvent&) {
    mrCEdit.CancelDrag();
    Refresh(false);
}
