#include "TimelineBase_cls.h"

#include "ClassProvider_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"

#include <wx/dcbuffer.h>

#include <algorithm>

TimelineBase_cls::TimelineBase_cls(wxWindow* pParent, int kind, TimelineConf_cls* pConf,
                                   std::function<void()> funcUpdateOwner, const wxString& strName)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxFULL_REPAINT_ON_RESIZE, strName),
      TLDragLogic_cls(kind, pConf) {
    mFuncUpdateOwner = std::move(funcUpdateOwner);
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &TimelineBase_cls::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, &TimelineBase_cls::OnMouse, this);
    Bind(wxEVT_LEFT_UP, &TimelineBase_cls::OnMouse, this);
    Bind(wxEVT_MOTION, &TimelineBase_cls::OnMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &TimelineBase_cls::OnCaptureLost, this);
}

void TimelineBase_cls::SetShownRange() {
    const int frameMax = GpCTimeCtrl ? GpCTimeCtrl->GetFrameMax() : 0;
    if (frameMax > 0)
        SetTLRegion(static_cast<double>(mpCConf->GetAAMin()) / frameMax,
                    static_cast<double>(mpCConf->GetAAMax()) / frameMax);
}

void TimelineBase_cls::ProcMouseEventBase(wxMouseEvent& event, int offset) {
    mWidth = GetClientSize().x;
    if (event.LeftDown()) {
        LayoutHandles(GetClientSize().y);
        PressAt(event.GetX(), event.GetY(), offset);
        if (!HasCapture())
            CaptureMouse();
    } else if (event.Dragging()) {
        if (DragTo(event.GetX(), event.GetY(), offset))
            Refresh();
    } else if (event.LeftUp()) {
        mMouseX = event.GetX();
        mMouseY = event.GetY();
        ProcMouseReleaseBase();
    }
}

void TimelineBase_cls::ProcMouseReleaseBase() {
    ReleaseDrag();
    if (HasCapture())
        ReleaseMouse();
}

void TimelineBase_cls::OnMouse(wxMouseEvent& event) {
    ProcMouseEventBase(event, 0);
}

void TimelineBase_cls::OnCaptureLost(wxMouseCaptureLostEvent&) {
    // The drag ends where it stands, uncommitted.
    mDragMode = TL_DRAG_NONE;
    mpCConf->mUpdateLevel = TL_UPDATE_IDLE;
}

void TimelineBase_cls::OnPaint(wxPaintEvent&) {
    ++mPaintCount;
    wxAutoBufferedPaintDC dc(this);
    mWidth = GetClientSize().x;
    LayoutHandles(GetClientSize().y);
    UpdateDisplay(dc);
}

void TimelineBase_cls::DrawWorkingArea(wxDC& dc, int height) {
    if (!GpCTimeCtrl)
        return;
    int lower = 0, upper = 0;
    if (mKind == TL_KIND_WA) {
        GetShownRange(lower, upper);
    } else {
        lower = GpCTimeCtrl->GetWAMin();
        upper = GpCTimeCtrl->GetWAMax();
    }
    const int limit = std::max(GetFrameLimit(), 1);
    const int x0 = GetDevCoordFromN(static_cast<double>(lower) / limit, 0);
    const int x1 = GetDevCoordFromN(static_cast<double>(upper) / limit, 0);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxColour(206, 214, 228)));
    dc.DrawRectangle(x0, 0, std::max(x1 - x0, 1), height);
}

void TimelineBase_cls::DrawCurrentTime(wxDC& dc, int height) {
    const int x = GetDevCoordFromN(GetShownCurrentNT(), 0);
    dc.SetPen(wxPen(wxColour(220, 40, 30), 1));
    dc.DrawLine(x, 0, x, height);
}
