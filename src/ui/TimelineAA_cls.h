// The axis range bar: the whole animation from frame 0 to FrameMax, with the shown range
// (AAMin=, AAMax=) as a bar whose two handles and middle are dragged. The range is a view
// setting: its changes are written directly, not undone. Main thread only.
#pragma once

#include "TimelineBase_cls.h"

class TimelineAA_cls : public TimelineBase_cls {
public:
    TimelineAA_cls(wxWindow* pParent, TimelineConf_cls* pConf, std::function<void()> funcUpdateOwner);
    void UpdateDisplay(wxDC& dc) override;
};
