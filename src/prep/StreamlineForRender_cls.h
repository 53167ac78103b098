// The prepared stream lines of one frame, the arrays a drawer uploads: line k holds the points
// mOffsets[k] .. mOffsets[k + 1] - 1 of mXYZ (3 floats each) and mValue (1 float each).
//
// Between two steps lines are matched by their index in the file: line k of step A goes to line
// k of step B. Lines that only A has stay where A has them; lines that only B has are not shown
// until B is the step A of a frame. When the two lines of a pair have different point counts,
// both are resampled by arc length to the larger count (points at equal fractions of each line's
// length) and then blended point by point; equal counts are blended as they stand.
// Then every n-th line is kept (by its index in the file), the clip box cuts lines into the runs
// of points inside it (a run needs two points), and the value is the file's (0 without a value
// column) or the arc length from the line's first point.
#pragma once

#include <vector>

class StreamlineSnap_cls;

class StreamlineSetting_cls {
public:
    int mInterpType = 1; // 0 step, 1 linear
    int mThin = 1;       // keep every n-th line; below 1 counts as 1
    bool mbClip = false; // cut to the clip box
    float mClipLow[3] = {-1.0f, -1.0f, -1.0f};
    float mClipHigh[3] = {1.0f, 1.0f, 1.0f};
    int mValueType = 0; // 0 the file's value, 1 arc length

    bool operator==(const StreamlineSetting_cls& o) const {
        for (int i = 0; i < 3; ++i)
            if (mClipLow[i] != o.mClipLow[i] || mClipHigh[i] != o.mClipHigh[i])
                return false;
        return mInterpType == o.mInterpType && mThin == o.mThin && mbClip == o.mbClip &&
               mValueType == o.mValueType;
    }
};

class StreamlineForRender_cls {
public:
    // Any one thread per set. snapB may be null or equal to snapA (step). The snaps must be read.
    // False when A is null; the set is then empty.
    bool PrepareData(const StreamlineSnap_cls* pSnapA, const StreamlineSnap_cls* pSnapB, double t, int step,
                     const StreamlineSetting_cls& setting);
    // The same with the factor as the frame road gives it (bNext: on the background path).
    bool PrepareFrame(const StreamlineSnap_cls* pA, const StreamlineSnap_cls* pB, double t, int step,
                      const StreamlineSetting_cls& setting, bool) {
        return PrepareData(pA, pB, t, step, setting);
    }
    int GetLineCount() const { return mOffsets.empty() ? 0 : static_cast<int>(mOffsets.size()) - 1; }
    int GetPointCount() const { return static_cast<int>(mXYZ.size() / 3); }
    void Clear();

    // n points at equal arc-length fractions of the polyline of count points (3 floats each, and
    // one value each when pValue is not null). A line of no length repeats its first point.
    static void ResampleByArcLength(const float* pXYZ, const float* pValue, int count, int n,
                                    std::vector<float>& xyzOut, std::vector<float>& valueOut);

    std::vector<int> mOffsets; // one more than the line count
    std::vector<float> mXYZ;
    std::vector<float> mValue;
    int mLastStep = -1;
    float mLastInterp = -1.0f;
    int mDataCounter = 0;

private:
    // Appends one line (count points) after thinning, with the clip box and the value rule.
    void AppendLine(const float* pXYZ, const float* pValue, int count, const StreamlineSetting_cls& setting);
};
