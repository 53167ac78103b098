#include "TimelineAA_cls.h"

#include "TimelineStrips.h"

#include <wx/dc.h>

using namespace TimelineStrips;

TimelineAA_cls::TimelineAA_cls(wxWindow* pParent, TimelineConf_cls* pConf,
                               std::function<void()> funcUpdateOwner)
    : TimelineBase_cls(pParent, TL_KIND_AA, pConf, std::move(funcUpdateOwner), "TimelineAA") {
    mLeftMargin = kMargin;
    mRightMargin = kMarginRight;
    SetMinSize(wxSize(-1, 12));
}

void TimelineAA_cls::UpdateDisplay(wxDC& dc) {
    const wxSize size = GetClientSize();
    // The whole animation is the axis of this bar.
    SetTLRegion(0.0, 1.0);
    LayoutHandles(size.y);
    dc.SetBackground(wxBrush(kBack));
    dc.Clear();
    DrawRangeBar(dc, *this, kBar, size.y);
    DrawCurrentTime(dc, size.y);
}
