#include "GraphGeom_cls.h"

#include <algorithm>
#include <cmath>

void GraphGeom_cls::SetSize(int width, int height) {
    mWidth = width;
    mHeight = height;
}

void GraphGeom_cls::SetXRange(double x0, double x1) {
    mX0 = x0;
    mX1 = x1 > x0 ? x1 : x0 + 1e-9;
}

void GraphGeom_cls::SetYRange(double y0, double y1) {
    mY0 = y0;
    mY1 = y1 > y0 ? y1 : y0 + 1e-9;
}

// A plot squeezed below its margins still maps: one pixel wide at least.
int GraphGeom_cls::GetPlotWidth() const {
    return std::max(1, mWidth - mLeft - mRight);
}

int GraphGeom_cls::GetPlotHeight() const {
    return std::max(1, mHeight - mTop - mBottom);
}

int GraphGeom_cls::GetDevX(double x) const {
    return mLeft + static_cast<int>(std::lround((x - mX0) / (mX1 - mX0) * GetPlotWidth()));
}

int GraphGeom_cls::GetDevY(double v) const {
    return mTop + static_cast<int>(std::lround((mY1 - v) / (mY1 - mY0) * GetPlotHeight()));
}

double GraphGeom_cls::GetXFromDev(int px) const {
    return mX0 + static_cast<double>(px - mLeft) / GetPlotWidth() * (mX1 - mX0);
}

double GraphGeom_cls::GetYFromDev(int py) const {
    return mY1 - static_cast<double>(py - mTop) / GetPlotHeight() * (mY1 - mY0);
}

double GraphGeom_cls::GetXPerPixel() const {
    return (mX1 - mX0) / GetPlotWidth();
}

double GraphGeom_cls::GetYPerPixel() const {
    return (mY1 - mY0) / GetPlotHeight();
}

bool GraphGeom_cls::IsInPlot(int px, int py) const {
    return px >= GetPlotLeft() && px <= GetPlotRight() && py >= GetPlotTop() && py <= GetPlotBottom();
}

void GraphGeom_cls::FrameAll(double xMin, double xMax, double yMin, double yMax) {
    auto pad = [](double& a, double& b) {
        const double size = b - a;
        if (size <= 0.0) {
            const double half = std::max(0.5, std::fabs(a) * 0.1);
            a -= half;
            b += half;
            return;
        }
        a -= size * 0.1;
        b += size * 0.1;
    };
    pad(xMin, xMax);
    pad(yMin, yMax);
    SetXRange(xMin, xMax);
    SetYRange(yMin, yMax);
}

void GraphGeom_cls::Zoom(double factor, int px, int py, bool bX, bool bY) {
    if (factor <= 0.0)
        return;
    if (bX) {
        const double x = GetXFromDev(px);
        SetXRange(x - (x - mX0) / factor, x + (mX1 - x) / factor);
    }
    if (bY) {
        const double y = GetYFromDev(py);
        SetYRange(y - (y - mY0) / factor, y + (mY1 - y) / factor);
    }
}

void GraphGeom_cls::Pan(int dpx, int dpy) {
    const double dx = -dpx * GetXPerPixel();
    const double dy = dpy * GetYPerPixel();
    SetXRange(mX0 + dx, mX1 + dx);
    SetYRange(mY0 + dy, mY1 + dy);
}

double GraphGeom_cls::GetTicStep(double range, int pixels, int minPixels) {
    if (range <= 0.0 || pixels <= 0)
        return 1.0;
    const double least = range * std::max(1, minPixels) / pixels;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (double m : {1.0, 2.0, 5.0, 10.0})
        if (m * power >= least)
            return m * power;
    return 10.0 * power;
}
