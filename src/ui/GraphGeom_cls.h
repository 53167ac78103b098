// The mapping of a curve editor's plot: a position along the horizontal axis (normalised time,
// or the curve position of a colour curve) and a value on the vertical axis, to pixels of the
// plot and back, with the margins kept for the rulers. Plain arithmetic, no window: the curve
// editors and their tests share it. Main thread only.
#pragma once

class GraphGeom_cls {
public:
    // The whole client size of the plot; the margins are inside it.
    void SetSize(int width, int height);
    void SetXRange(double x0, double x1);
    void SetYRange(double y0, double y1);

    // Pixel of a position or a value, rounded to the nearest pixel. y grows downwards on screen:
    // mY1 is at the top of the plot.
    int GetDevX(double x) const;
    int GetDevY(double v) const;
    double GetXFromDev(int px) const;
    double GetYFromDev(int py) const;
    // Model units of one pixel.
    double GetXPerPixel() const;
    double GetYPerPixel() const;
    // The plot area without the margins.
    int GetPlotLeft() const { return mLeft; }
    int GetPlotRight() const { return mWidth - mRight; }
    int GetPlotTop() const { return mTop; }
    int GetPlotBottom() const { return mHeight - mBottom; }
    bool IsInPlot(int px, int py) const;

    // The ranges that show the box with a tenth of its size around it; a box of no width or
    // no height gets half a unit (or a tenth of its magnitude, when larger) on each side.
    void FrameAll(double xMin, double xMax, double yMin, double yMax);
    // Zooms about the pixel: factor 2 shows half the range. Either axis may be left alone.
    void Zoom(double factor, int px, int py, bool bX, bool bY);
    // Moves the view by pixels: the point under the mouse follows the mouse.
    void Pan(int dpx, int dpy);

    // The distance of the tics of a ruler for a range shown on so many pixels: 1, 2 or 5 times
    // a power of ten, at least minPixels apart.
    static double GetTicStep(double range, int pixels, int minPixels);

    int mLeft = 44;
    int mRight = 8;
    int mTop = 8;
    int mBottom = 18;
    int mWidth = 200;
    int mHeight = 100;
    double mX0 = 0.0;
    double mX1 = 1.0;
    double mY0 = 0.0;
    double mY1 = 1.0;

private:
    int GetPlotWidth() const;
    int GetPlotHeight() const;
};
