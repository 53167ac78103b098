// The small button drawn in the corner of a view that opens its numeric panel: a square with
// three bars. The view asks it whether a click hit it. GL thread only for DrawButton.
#pragma once

class GLButton_cls {
public:
    static constexpr int msSize = 20;
    static constexpr int msMargin = 4;
    // Places the button in the top right corner of a view of the size (pixels, y up).
    void SetGeometry(int width, int height) {
        mX = width - msSize - msMargin;
        mY = height - msSize - msMargin;
    }
    // True when the window pixel (px, py), rows counted from the top of a view of the height,
    // lies on the button.
    bool IsInside(int px, int py, int height) const;
    void DrawButton() const;

    int mX = 0;
    int mY = 0;
};
