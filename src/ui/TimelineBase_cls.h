// The window side shared by the timeline strips: mouse events become the plain drag logic's
// press, drag and release (the mouse is captured while a button is held), and a paint asks the
// strip to draw into a buffered context. Each strip counts its paints, so a test can see that
// nothing repaints while nothing changes. Main thread only.
#pragma once

#include "GetPC_cls.h"
#include "TLDragLogic_cls.h"

#include <wx/panel.h>

class wxDC;

class TimelineBase_cls : public wxPanel, public TLDragLogic_cls, public GetPC_cls {
public:
    // pConf: the timeline's shared state (not owned); funcUpdateOwner repaints the timeline.
    TimelineBase_cls(wxWindow* pParent, int kind, TimelineConf_cls* pConf,
                     std::function<void()> funcUpdateOwner, const wxString& strName);

    // Press, drag and release as the strip's logic takes them.
    void ProcMouseEventBase(wxMouseEvent& event, int offset);
    void ProcMouseReleaseBase();
    // Draws the strip into dc, which covers the client area.
    virtual void UpdateDisplay(wxDC& dc) = 0;
    // The work area as a band and the current time as a line, over the whole height.
    void DrawWorkingArea(wxDC& dc, int height);
    void DrawCurrentTime(wxDC& dc, int height);
    // The shown range of the timeline into the geometry (t0 and t1 from AAMin= and AAMax=).
    void SetShownRange();

    int mPaintCount = 0;

protected:
    virtual void OnMouse(wxMouseEvent& event);
    void OnPaint(wxPaintEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);
};
