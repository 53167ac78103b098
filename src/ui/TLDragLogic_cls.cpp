#include "TLDragLogic_cls.h"

#include "ClassProvider_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

#include <algorithm>
#include <cmath>

TLDragLogic_cls::TLDragLogic_cls(int kind, TimelineConf_cls* pConf) : mKind(kind), mpCConf(pConf) {}

int TLDragLogic_cls::GetFrameLimit() const {
    if (mbColor)
        return 1024;
    return GpCTimeCtrl ? GpCTimeCtrl->GetFrameMax() : 0;
}

double TLDragLogic_cls::GetQuantized(double n, int mode) const {
    if (mbColor)
        return TimeCtrl_cls::GetQuantizedForColor(n, mode);
    return GpCTimeCtrl ? GpCTimeCtrl->GetQuantized(n, mode) : n;
}

int TLDragLogic_cls::GetLowerFrame() const {
    if (mKind == TL_KIND_AA)
        return mpCConf->GetAAMin();
    return GpCTimeCtrl ? GpCTimeCtrl->GetWAMin() : 0;
}

int TLDragLogic_cls::GetUpperFrame() const {
    if (mKind == TL_KIND_AA)
        return mpCConf->GetAAMax();
    return GpCTimeCtrl ? GpCTimeCtrl->GetWAMax() : 0;
}

void TLDragLogic_cls::GetShownRange(int& lower, int& upper) const {
    lower = GetLowerFrame();
    upper = GetUpperFrame();
    switch (mDragMode) {
    case TL_DRAG_LOWER:
        lower = mDraggedFrame;
        break;
    case TL_DRAG_UPPER:
        upper = mDraggedFrame;
        break;
    case TL_DRAG_REGION:
        lower = mDraggedFrame - mRegionLeft;
        upper = mDraggedFrame + mRegionRight;
        break;
    default:
        break;
    }
}

double TLDragLogic_cls::GetShownCurrentNT() const {
    if (mDragMode == TL_DRAG_SLIDER)
        return mDraggedTime;
    // Another strip's slider drag: the timeline shows the time where the mouse has it.
    if (mpCConf->mUpdateLevel == TL_UPDATE_SLIDER || mpCConf->mUpdateLevel == TL_UPDATE_SLIDER_KIND4)
        return mpCConf->mPressedTime;
    return GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT(false) : 0.0;
}

void TLDragLogic_cls::LayoutHandles(int height) {
    mRectSlider = mRectLower = mRectUpper = mRectRegion = TLRect_cls();
    const int limit = std::max(GetFrameLimit(), 1);
    if (mKind == TL_KIND_TICS || mKind == TL_KIND_SLIDER) {
        // The ruler is the slider's track: a press anywhere on it takes the slider.
        mRectSlider = {0, 0, mWidth, height};
        return;
    }
    if (mKind != TL_KIND_AA && mKind != TL_KIND_WA)
        return;
    int lower = 0, upper = 0;
    GetShownRange(lower, upper);
    const int xLower = GetDevCoordFromN(static_cast<double>(lower) / limit, 0);
    const int xUpper = GetDevCoordFromN(static_cast<double>(upper) / limit, 0);
    mRectLower = {xLower - msHandleHalf, 0, 2 * msHandleHalf + 1, height};
    mRectUpper = {xUpper - msHandleHalf, 0, 2 * msHandleHalf + 1, height};
    const int regionLeft = xLower + msHandleHalf + 1;
    mRectRegion = {regionLeft, 0, std::max(xUpper - msHandleHalf - regionLeft, 0), height};
}

void TLDragLogic_cls::CalcFrameDraggingFromPosition(int offset) {
    const int limit = GetFrameLimit();
    const double n = std::clamp(GetQuantized(GetNFromDevCoord(mMouseX, offset), 0), 0.0, 1.0);
    mDraggedFrame = static_cast<int>(n * limit);
}

void TLDragLogic_cls::LimitDragging() {
    if (mKind == TL_KIND_AA || mKind == TL_KIND_WA) {
        switch (mDragMode) {
        case TL_DRAG_LOWER:
            mDraggedFrame = std::min(mDraggedFrame, GetUpperFrame() - 1);
            break;
        case TL_DRAG_UPPER:
            mDraggedFrame = std::max(mDraggedFrame, GetLowerFrame() + 1);
            break;
        case TL_DRAG_REGION:
            mDraggedFrame = std::max(mDraggedFrame, mRegionLeft);
            mDraggedFrame = std::min(mDraggedFrame, GetFrameLimit() - mRegionRight);
            break;
        default:
            break;
        }
    }
    const int limit = GetFrameLimit();
    mDraggedTime = limit > 0 ? static_cast<double>(mDraggedFrame) / limit : 0.0;
}

void TLDragLogic_cls::SetRegion() {
    mRegionLeft = mPressedFrame - GetLowerFrame();
    mRegionRight = GetUpperFrame() - mPressedFrame;
}

void TLDragLogic_cls::PressAt(int x, int y, int offset) {
    mMouseX = x;
    mMouseY = y;
    mDragMode = TL_DRAG_NONE;
    CalcFrameDraggingFromPosition(offset);
    LimitDragging();
    mPressedFrame = mDraggedFrame;
    mpCConf->mPressedTime = mDraggedTime;
    if (mRectSlider.Contains(x, y)) {
        mDragMode = TL_DRAG_SLIDER;
        mpCConf->mUpdateLevel = mKind == TL_KIND_SLIDER ? TL_UPDATE_SLIDER_KIND4 : TL_UPDATE_SLIDER;
        // The slider follows the press at once.
        UpdateOwner();
    } else if (mRectLower.Contains(x, y)) {
        mDragMode = TL_DRAG_LOWER;
        if (mKind == TL_KIND_WA)
            mpCConf->mUpdateLevel = TL_UPDATE_LOWER;
    } else if (mRectUpper.Contains(x, y)) {
        mDragMode = TL_DRAG_UPPER;
        if (mKind == TL_KIND_WA)
            mpCConf->mUpdateLevel = TL_UPDATE_UPPER;
    } else if (mRectRegion.Contains(x, y)) {
        mDragMode = TL_DRAG_REGION;
        SetRegion();
        if (mKind == TL_KIND_WA)
            mpCConf->mUpdateLevel = TL_UPDATE_REGION;
    }
}

bool TLDragLogic_cls::DragTo(int x, int y, int offset) {
    mMouseX = x;
    mMouseY = y;
    if (mDragMode == TL_DRAG_NONE)
        return false;
    CalcFrameDraggingFromPosition(offset);
    LimitDragging();
    if (mpCConf->mUpdateLevel == TL_UPDATE_IDLE || mDraggedTime == mpCConf->mPressedTime)
        return false;
    mpCConf->mPressedTime = mDraggedTime;
    UpdateOwner();
    return true;
}

void TLDragLogic_cls::ReleaseDrag() {
    // The commits read the model, not the drag: clear it first so a repaint they cause shows the result.
    const int savedMode = mDragMode;
    mDragMode = TL_DRAG_NONE;
    if (savedMode == TL_DRAG_SLIDER) {
        MoveTimeSlider();
    } else if (mKind == TL_KIND_WA) {
        if (savedMode == TL_DRAG_LOWER)
            MoveWAMin();
        else if (savedMode == TL_DRAG_UPPER)
            MoveWAMax();
        else if (savedMode == TL_DRAG_REGION)
            MoveWARegion();
    } else if (mKind == TL_KIND_AA) {
        if (savedMode == TL_DRAG_LOWER)
            MoveAAMin();
        else if (savedMode == TL_DRAG_UPPER)
            MoveAAMax();
        else if (savedMode == TL_DRAG_REGION)
            MoveAARegion();
    }
    mpCConf->mUpdateLevel = TL_UPDATE_IDLE;
    if (savedMode != TL_DRAG_NONE)
        UpdateOwner();
}

// ---- commits --------------------------------------------------------------------------------

void TLDragLogic_cls::MoveTimeSlider() {
    if (!GpCTimeCtrl || mDraggedFrame == GpCTimeCtrl->GetFrameCurrent())
        return;
    if (GpCUndo)
        GpCUndo->OpenBlock("MoveTimeSlider");
    GpCTimeCtrl->SetCurrentFrameCommand(mDraggedFrame);
    if (GpCTimeCtrl->GetSubFrameCurrent() != 0)
        GpCTimeCtrl->SetCurrentSubFrameCommand(0);
    if (GpCUndo)
        GpCUndo->CloseBlock("MoveTimeSlider");
}

void TLDragLogic_cls::MoveWAMin() {
    if (GpCTimeCtrl && mDraggedFrame != GpCTimeCtrl->GetWAMin())
        GpCTimeCtrl->SetWAMinCommand(mDraggedFrame);
}

void TLDragLogic_cls::MoveWAMax() {
    if (GpCTimeCtrl && mDraggedFrame != GpCTimeCtrl->GetWAMax())
        GpCTimeCtrl->SetWAMaxCommand(mDraggedFrame);
}

void TLDragLogic_cls::MoveWARegion() {
    if (GpCTimeCtrl && mDraggedFrame != mPressedFrame)
        GpCTimeCtrl->SetWARegionCommand(mDraggedFrame, mRegionLeft, mRegionRight);
}

// The shown range is a view setting: written directly, not undoable.
void TLDragLogic_cls::MoveAAMin() {
    mpCConf->mCAAMin.SetBodyFromData(static_cast<long long>(mDraggedFrame));
}

void TLDragLogic_cls::MoveAAMax() {
    mpCConf->mCAAMax.SetBodyFromData(static_cast<long long>(mDraggedFrame));
}

void TLDragLogic_cls::MoveAARegion() {
    mpCConf->mCAAMin.SetBodyFromData(static_cast<long long>(std::max(mDraggedFrame - mRegionLeft, 0)));
    mpCConf->mCAAMax.SetBodyFromData(
        static_cast<long long>(std::min(mDraggedFrame + mRegionRight, GetFrameLimit())));
}
