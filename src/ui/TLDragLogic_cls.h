// The mouse logic shared by the timeline strips, without the toolkit's windows: what a press
// hits (the time slider, the two handles of a range, the bar between them), how the dragged frame
// follows the mouse and is kept from collapsing the range, and which command the release commits.
// The strip windows feed it positions; the tests feed it numbers. Main thread only.
#pragma once

#include "TLPanelGeom_cls.h"

#include <functional>

class TimelineConf_cls;

// The strip kinds: the axis range bar, the ruler with the time slider, the work-area bar and the
// rows. A strip of kind 4 (a strip that is its own slider, as the colour editors' are) reports its
// slider drags with their own update level.
enum TLStripKind_enum {
    TL_KIND_AA = 0,
    TL_KIND_TICS = 1,
    TL_KIND_WA = 2,
    TL_KIND_PARAM = 3,
    TL_KIND_SLIDER = 4
};

// What the running drag moves.
enum TLDragMode_enum {
    TL_DRAG_NONE = 0,
    TL_DRAG_LOWER = 1,
    TL_DRAG_UPPER = 2,
    TL_DRAG_REGION = 3,
    TL_DRAG_SLIDER = 4
};

// A hit rectangle in strip pixels.
class TLRect_cls {
public:
    bool Contains(int x, int y) const { return mW > 0 && x >= mX && x < mX + mW && y >= mY && y < mY + mH; }
    int mX = 0;
    int mY = 0;
    int mW = 0;
    int mH = 0;
};

class TLDragLogic_cls : public TLPanelGeom_cls {
public:
    // pConf is the timeline's shared state; not owned.
    TLDragLogic_cls(int kind, TimelineConf_cls* pConf);
    virtual ~TLDragLogic_cls() = default;

    // Half the width in pixels of a range handle, and of the slider handle.
    static constexpr int msHandleHalf = 4;

    // ---- the three steps of a drag, in strip pixels ----
    // Stores the position, finds the pressed frame and what was hit.
    void PressAt(int x, int y, int offset);
    // Follows the mouse with a button held; true when the shown state changed and the owner
    // should repaint (a drag with an update level).
    bool DragTo(int x, int y, int offset);
    // Commits the drag by its mode and clears the update level.
    void ReleaseDrag();

    void CalcFrameDraggingFromPosition(int offset);
    // Keeps the dragged frame inside the range of the drag: a handle stays a frame away from the
    // other end, the region keeps its width inside 0 .. the limit.
    virtual void LimitDragging();
    // An NT on the strip's grid: whole frames, or the 1/1024 grid of colour strips.
    double GetQuantized(double n, int mode) const;
    // The frames of the strip's time: FrameMax, or 1024 on a colour strip.
    int GetFrameLimit() const;

    // The ends of the range this strip edits: the work area or the shown range (AAMin, AAMax).
    int GetLowerFrame() const;
    int GetUpperFrame() const;
    // The ends as they are to be shown now: during a drag, where the mouse has them.
    void GetShownRange(int& lower, int& upper) const;
    // The frame of the time slider as shown now.
    double GetShownCurrentNT() const;
    // The hit rectangles of the handles, the bar and the slider from the shown state.
    void LayoutHandles(int height);

    // ---- commits ----
    void MoveTimeSlider();
    void MoveWAMin();
    void MoveWAMax();
    void MoveWARegion();
    void MoveAAMin();
    void MoveAAMax();
    void MoveAARegion();

    int mKind;
    bool mbColor = false; // the colour grid instead of frames
    int mDragMode = TL_DRAG_NONE;
    int mMouseX = 0;
    int mMouseY = 0;
    TLRect_cls mRectSlider;
    TLRect_cls mRectLower;
    TLRect_cls mRectUpper;
    TLRect_cls mRectRegion;
    int mFrameLimit = 0;
    int mDraggedFrame = 0;
    double mDraggedTime = 0.0;
    int mPressedFrame = 0;
    // The distances from the pressed frame to the two ends, remembered when the bar is pressed.
    int mRegionLeft = 0;
    int mRegionRight = 0;
    TimelineConf_cls* mpCConf; // not owned: the timeline's
    // How the strip asks its timeline to repaint ("ALL"); unset in tests.
    std::function<void()> mFuncUpdateOwner;

private:
    void SetRegion();
    void UpdateOwner() {
        if (mFuncUpdateOwner)
            mFuncUpdateOwner();
    }
};
