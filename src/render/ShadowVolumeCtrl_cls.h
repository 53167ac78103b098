// The steps of the shadow-volume passes. Shadows are off: one step, 0 to 1, always in phase 0,
// so the frame's loops and the grid run their plain road; the stencil steps come with the
// shadow volumes themselves. Main thread only.
#pragma once

class ShadowVolumeCtrl_cls {
public:
    bool IsUseShadow() const { return false; }
    // The range of steps of a frame: [first, end).
    int GetFirstStep() const { return 0; }
    int GetEndStep() const { return 1; }
    void SetShadowVolumeStep(int step, int first) {
        mStep = step;
        mFirst = first;
    }
    int GetStep() const { return mStep; }
    // Guides and the grid are drawn on the first step only.
    bool IsFirstStep() const { return mStep == mFirst; }
    // 0 outside the stencil phases.
    int GetPhase() const { return mPhase; }

private:
    int mStep = 0;
    int mFirst = 0;
    int mPhase = 0;
};
