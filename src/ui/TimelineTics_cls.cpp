#include "TimelineTics_cls.h"

#include "ClassProvider_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "TimelineStrips.h"

#include <wx/dc.h>

using namespace TimelineStrips;

TimelineTics_cls::TimelineTics_cls(wxWindow* pParent, TimelineConf_cls* pConf,
                                   std::function<void()> funcUpdateOwner)
    : TimelineBase_cls(pParent, TL_KIND_TICS, pConf, std::move(funcUpdateOwner), "TimelineTics") {
    mLeftMargin = kMargin;
    mRightMargin = kMarginRight;
    SetMinSize(wxSize(-1, 20));
}

int TimelineTics_cls::GetTicStep(double pixelsPerFrame, int minPixels) {
    static const int kSteps[3] = {1, 2, 5};
    for (int scale = 1; scale < 100000000; scale *= 10)
        for (int step : kSteps)
            if (step * scale * pixelsPerFrame >= minPixels)
                return step * scale;
    return 100000000;
}

void TimelineTics_cls::UpdateDisplay(wxDC& dc) {
    const wxSize size = GetClientSize();
    SetShownRange();
    LayoutHandles(size.y);
    dc.SetBackground(wxBrush(wxColour(248, 248, 248)));
    dc.Clear();
    const int frameMax = GpCTimeCtrl ? GpCTimeCtrl->GetFrameMax() : 0;
    if (frameMax <= 0)
        return;
    const int first = mpCConf->GetAAMin();
    const int last = mpCConf->GetAAMax();
    const double pixelsPerFrame =
        (GetDevCoordFromN(1.0, 0) - GetDevCoordFromN(0.0, 0)) / static_cast<double>(frameMax);
    const int step = GetTicStep(pixelsPerFrame, 48);
    const int minor = GetTicStep(pixelsPerFrame, 6);
    wxFont font = GetFont();
    font.SetPointSize(7);
    dc.SetFont(font);
    dc.SetTextForeground(wxColour(60, 60, 60));
    dc.SetPen(wxPen(wxColour(120, 120, 120)));
    for (int f = first - first % minor; f <= last; f += minor) {
        if (f < first)
            continue;
        const int x = GetDevCoordFromN(static_cast<double>(f) / frameMax, 0);
        const bool bMajor = f % step == 0;
        dc.DrawLine(x, size.y - (bMajor ? 8 : 4), x, size.y);
        if (!bMajor || mpCConf->GetTicMode() == 2)
            continue;
        const wxString strLabel = mpCConf->GetTicMode() == 1
                                      ? wxString::Format("%.3g", static_cast<double>(f) / frameMax)
                                      : wxString::Format("%d", f);
        dc.DrawText(strLabel, x + 2, 0);
    }
    // The slider: a marker with the current frame.
    const double nt = GetShownCurrentNT();
    const int x = GetDevCoordFromN(nt, 0);
    int frame = 0, sub = 0;
    GpCTimeCtrl->GetFrameFromNT(nt, frame, sub);
    const wxString strFrame = wxString::Format("%d", frame);
    const wxSize text = dc.GetTextExtent(strFrame);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxColour(220, 40, 30)));
    dc.DrawRectangle(x - text.x / 2 - 3, 0, text.x + 6, size.y);
    dc.SetTextForeground(*wxWHITE);
    dc.DrawText(strFrame, x - text.x / 2, (size.y - text.y) / 2);
}
