// The slices through which a volume is drawn: planes perpendicular to the view, from far to
// near, each cut by the clip box into a convex polygon. Points are in box space, where the
// volume's box runs from -0.5 to 0.5 on each axis; the texture coordinate of a point is the
// point plus 0.5. The slicing is plain arithmetic; the drawing calls are GL thread only.
#pragma once

#include "PositionAndDirection_cls.h"

#include <array>
#include <vector>

class DrawVolumeBox_cls {
public:
    using Point_cls = std::array<double, 3>;
    using Slice_cls = std::vector<Point_cls>;

    // Replaces the slices by those of the view along direction.mTgt (in box space, pointing into
    // the screen), n slices per unit of half-box, clipped to min .. max (box space). Returns the
    // spacing between two slices in box units along the view (intervalGlobal).
    double CalcAllSlices(const Direction_cls& direction, int n, const double* min, const double* max);
    // The polygon where the plane through point with normal direction.mTgt cuts the box
    // min .. max, in order around its centre; empty for no cut or a degenerate one.
    static Slice_cls CalcSingleSlice(const Direction_cls& direction, const double* point, const double* min,
                                     const double* max);
    // Every slice as a triangle fan in colour 1, 1, 1, alpha, with the texture coordinate of
    // each point; the abort flag skips the rest. Ends with the default blend function.
    void DrawAllSlice(int blendMode, float alpha);
    void DrawSingleSlice(int index);
    // The outlines of the slices, for looking at the slicing.
    void DrawAllSliceLineForDebug(int step);

    std::vector<Slice_cls> mVSlice;
};
