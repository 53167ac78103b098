// The plot of a curve editor: the curves of the channels of a GraphKeyEdit_cls against their
// axis, with rulers, key marks, the box of a box selection and the current time. The mouse goes
// to the edit model; the owner hears of changes through two callbacks. Drawing goes through
// Render(wxDC&), so a test can draw into a bitmap. Main thread only.
#pragma once

#include "GraphKeyEdit_cls.h"

#include <wx/panel.h>

#include <functional>

class wxDC;

class GraphCurve_cls : public wxPanel {
public:
    GraphCurve_cls(wxWindow* pParent, GraphKeyEdit_cls& rEdit, const wxString& strName = "GraphCurve");

    // The whole picture of the current client size.
    virtual void Render(wxDC& dc);
    // Fits the model's geometry to the client size below the reserved top strip.
    void SyncGeometry();

    // Called after a gesture changed something: bCommand when a command was pushed (it queues
    // its own panel updates), false for a live change of a drag or a change of the view.
    std::function<void(bool bCommand)> mFuncChanged;
    // Called before each paint and mouse event: the owner renews the channels, whose objects
    // may have gone since.
    std::function<void()> mFuncBeforeUse;
    // Called for a right click at a client point.
    std::function<void(const wxPoint&)> mFuncRightClick;

    // Pixels at the top kept for the owner's drawing (the gradient bar).
    int mTopStrip = 0;
    // A vertical line at the current normalised time.
    bool mbShowCurrentTime = true;
    // Labels of the horizontal ruler: offset + position * scale (the frame count for time, a
    // curve's "Range" for a colour curve's data values). A scale that is not positive counts as 1.
    double mXLabelScale = 1.0;
    double mXLabelOffset = 0.0;
    int mPaintCount = 0;

    // The mouse as the toolkit delivers it; tests send events here too.
    void OnMouse(wxMouseEvent& event);

protected:
    void DrawRulers(wxDC& dc);
    void DrawCurves(wxDC& dc);
    GraphKeyEdit_cls& mrCEdit;

private:
    void OnPaint(wxPaintEvent& event);
    void OnSize(wxSizeEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);
};
