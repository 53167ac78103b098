// The ruler of the shown range with the time slider: a press anywhere on it takes the slider,
// the timeline follows the drag, and the release sets the current frame as one undoable step.
// TicMode= chooses the labels: frame numbers, normalised time, or none. Main thread only.
#pragma once

#include "TimelineBase_cls.h"

class TimelineTics_cls : public TimelineBase_cls {
public:
    TimelineTics_cls(wxWindow* pParent, TimelineConf_cls* pConf, std::function<void()> funcUpdateOwner);
    void UpdateDisplay(wxDC& dc) override;
    // The frame distance between two labelled tics, so that labels stand at least minPixels
    // apart: 1, 2, 5, 10, 20, 50, ... frames.
    static int GetTicStep(double pixelsPerFrame, int minPixels);
};
