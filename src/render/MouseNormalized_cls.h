// The mouse over a view in unit coordinates of the window: 0, 0 bottom left, 1, 1 top right, so
// that navigation does not depend on the window's size. Plain values; main thread.
#pragma once

class MouseNormalized_cls {
public:
    // The mouse at pixel (px, py) of a width by height window, pixel rows counted from the top.
    void SetPixel(int px, int py, int width, int height);
    // Starts a drag at the current point: the deltas count from here.
    void Begin() {
        mPrevX = mX;
        mPrevY = mY;
    }
    // Moves to the pixel and makes the step since the last point the delta.
    void MoveTo(int px, int py, int width, int height) {
        mPrevX = mX;
        mPrevY = mY;
        SetPixel(px, py, width, height);
    }
    // The step of the last move; the inverted axes count backwards.
    double GetDX() const { return mbInvertX ? mPrevX - mX : mX - mPrevX; }
    double GetDY() const { return mbInvertY ? mPrevY - mY : mY - mPrevY; }
    // A step given directly (inertia replays the last one).
    void SetDelta(double dx, double dy) {
        mPrevX = mX - dx;
        mPrevY = mY - dy;
    }

    double mX = 0.5;
    double mY = 0.5;
    double mPrevX = 0.5;
    double mPrevY = 0.5;
    bool mbInvertX = false;
    bool mbInvertY = false;
};
