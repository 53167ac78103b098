// The work-area bar: the frames that playback and recording cover, as a bar whose two handles
// and middle are dragged; each release is one undoable command of the clock. Main thread only.
#pragma once

#include "TimelineBase_cls.h"

class TimelineWA_cls : public TimelineBase_cls {
public:
    TimelineWA_cls(wxWindow* pParent, TimelineConf_cls* pConf, std::function<void()> funcUpdateOwner);
    void UpdateDisplay(wxDC& dc) override;
};
