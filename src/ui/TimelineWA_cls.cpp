#include "TimelineWA_cls.h"

#include "TimelineStrips.h"

#include <wx/dc.h>

using namespace TimelineStrips;

TimelineWA_cls::TimelineWA_cls(wxWindow* pParent, TimelineConf_cls* pConf,
                               std::function<void()> funcUpdateOwner)
    : TimelineBase_cls(pParent, TL_KIND_WA, pConf, std::move(funcUpdateOwner), "TimelineWA") {
    mLeftMargin = kMargin;
    mRightMargin = kMarginRight;
    SetMinSize(wxSize(-1, 14));
}

void TimelineWA_cls::UpdateDisplay(wxDC& dc) {
    const wxSize size = GetClientSize();
    SetShownRange();
    LayoutHandles(size.y);
    dc.SetBackground(wxBrush(kBack));
    dc.Clear();
    DrawRangeBar(dc, *this, wxColour(120, 190, 120), size.y);
    DrawCurrentTime(dc, size.y);
}
