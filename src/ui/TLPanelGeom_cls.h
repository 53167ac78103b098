// The mapping between normalised time and the pixels of one timeline strip: the strip's width,
// its left and right margins, and the times t0 and t1 shown at the two ends. A plain class: the
// strips and the tests use it without a display.
#pragma once

class TLPanelGeom_cls {
public:
    // (n - t0) / (t1 - t0) * (width - (left + offset + right)) + offset + left, truncated.
    int GetDevCoordFromN(double n, int offset) const;
    // The inverse: (x - offset - left) / (width - (left + offset + right)) * (t1 - t0) + t0.
    double GetNFromDevCoord(int x, int offset) const;
    // x - offset above 0 and x + offset below the width.
    bool IsWithinRange(int x, int offset) const { return x - offset > 0 && x + offset < mWidth; }
    void SetTLRegion(double t0, double t1) {
        mT0 = t0;
        mT1 = t1;
    }

    int mLeftMargin = 0;
    int mRightMargin = 0;
    int mWidth = 0;
    double mT0 = 0.0;
    double mT1 = 1.0;

private:
    // The pixels between the margins; a strip too narrow to show time maps everything to its left edge.
    int GetSpan(int offset) const { return mWidth - (mLeftMargin + offset + mRightMargin); }
};
