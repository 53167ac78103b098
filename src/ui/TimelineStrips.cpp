#include "TimelineStrips.h"

#include "TLDragLogic_cls.h"

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/pen.h>

void TimelineStrips::DrawRangeBar(wxDC& dc, const TLDragLogic_cls& logic, const wxColour& bar, int height) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(bar));
    const TLRect_cls& lower = logic.mRectLower;
    const TLRect_cls& upper = logic.mRectUpper;
    dc.DrawRectangle(lower.mX, 2, upper.mX + upper.mW - lower.mX, height - 4);
    dc.SetBrush(wxBrush(kHandle));
    dc.DrawRectangle(lower.mX, 1, lower.mW, height - 2);
    dc.DrawRectangle(upper.mX, 1, upper.mW, height - 2);
}
