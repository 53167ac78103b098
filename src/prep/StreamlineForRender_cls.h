// The prepared stream lines of one frame, the arrays a drawer uploads: line k holds the points
// mOffsets[k] .. mOffsets[k + 1] - 1 of mXYZ (3 floats each) and mValue (1 float each).
//
// Between two steps lines are matched by their index in the file: line k of step A goes to line
// k of step B. Lines that only A has stay where A has them; lines that only B has are not shown
// until B is the step A of a frame. When the two lines of a pair have different point counts,
// both are resampled by arc length to the larger count (points at equal fractions of each line's
// length) and then blended point by point; equal counts are blended as they stand.
// Then every n-th line is kept (by its index in the file), the clip box cuts lines into the runs
// of points inside it (a run cut off by it needs two points), and the value is the file's (0
// without a value column) or the arc length from the line's first point. The data processes of
// the setting filter lines before the blending, move the points before the clip box and give
// each point its opacity from its value (mAlpha).
#pragma once

#include <wx/string.h>

#include <algorithm>
#include <vector>

class StreamlineSnap_cls;

// One data process of the stream lines as plain values, in the order of the object's stack:
// a filter of lines by their index in the file, an opacity from the value, or a move of the points
// (applied before the clip box).
class StreamlineProc_cls {
public:
    enum Kind_enum { PROC_FILTER, PROC_ALPHA, PROC_TRANSFORM };
    int mKind = PROC_FILTER;
    int mType = 0;            // filter: 0 keep the listed lines, 1 drop them; alpha: see MakeAlpha
    std::vector<int> mVRange; // filter: first and last index of each listed range
    float mCrit = 0.0f;       // alpha
    double mMatrix[12] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0}; // transform: 3 rows of 4

    // FilteringString= ("0 3 10-20", blanks or commas): false, with the reason, when a field is
    // not an index or a range; the ranges read so far are kept.
    static bool ParseIndexList(const wxString& str, std::vector<int>& vRange, wxString& strWhy);
    static StreamlineProc_cls MakeFilter(int type, const std::vector<int>& vRange);
    // type 0 hides values below crit, 1 above it, 2 fades in as value / crit.
    static StreamlineProc_cls MakeAlpha(int type, float crit);
    // Scale, then the turns in degrees (order 0: about x, y, z; 1: about z, y, x), then offset.
    static StreamlineProc_cls MakeTransform(const double* offset, const double* rotateDeg, int order,
                                            const double* scale);
    bool IsLineKept(int index) const;
    float GetAlpha(float value) const;
    void Transform(const float* p, float* out) const;

    bool operator==(const StreamlineProc_cls& o) const {
        return mKind == o.mKind && mType == o.mType && mVRange == o.mVRange && mCrit == o.mCrit &&
               std::equal(mMatrix, mMatrix + 12, o.mMatrix);
    }
};

class StreamlineSetting_cls {
public:
    int mInterpType = 1; // 0 step, 1 linear
    int mThin = 1;       // keep every n-th line; below 1 counts as 1
    bool mbClip = false; // cut to the clip box
    float mClipLow[3] = {-1.0f, -1.0f, -1.0f};
    float mClipHigh[3] = {1.0f, 1.0f, 1.0f};
    int mValueType = 0; // 0 the file's value, 1 arc length
    std::vector<StreamlineProc_cls> mVProc;

    bool operator==(const StreamlineSetting_cls& o) const {
        for (int i = 0; i < 3; ++i)
            if (mClipLow[i] != o.mClipLow[i] || mClipHigh[i] != o.mClipHigh[i])
                return false;
        return mInterpType == o.mInterpType && mThin == o.mThin && mbClip == o.mbClip &&
               mValueType == o.mValueType && mVProc == o.mVProc;
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
    std::vector<float> mAlpha; // 1 float a point, empty when no data process sets it
    int mLastStep = -1;
    float mLastInterp = -1.0f;
    int mDataCounter = 0;
    long long mSerial = 0; // DataSerial_cls: new with each preparation

private:
    // Appends one line (count points) after thinning, with the clip box and the value rule.
    void AppendLine(const float* pXYZ, const float* pValue, int count, const StreamlineSetting_cls& setting);
};
