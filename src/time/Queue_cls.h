// What changed in the clock during the current idle pass, for the panels that look at it
// while the queued updates are delivered. Emptied after every delivery. Main thread only.
#pragma once

class Queue_cls {
public:
    // Drops everything queued in this pass; called when the panel-update queue is empty.
    void ClearQueue() {
        mbTimeChanged = false;
        mbFrameMaxChanged = false;
    }
    // The current frame or subframe changed.
    void SetTimeChanged() { mbTimeChanged = true; }
    bool IsTimeChanged() const { return mbTimeChanged; }
    // FrameMax changed; oldFrameMax is its value before the change.
    void SetFrameMaxChanged(int oldFrameMax) {
        mOldFrameMax = oldFrameMax;
        mbFrameMaxChanged = true;
    }
    bool IsFrameMaxChanged() const { return mbFrameMaxChanged; }
    // Kept after ClearQueue: only meaningful while IsFrameMaxChanged() holds.
    int GetOldFrameMax() const { return mOldFrameMax; }

    bool mbTimeChanged = false;
    bool mbFrameMaxChanged = false;
    int mOldFrameMax = 0;
};
