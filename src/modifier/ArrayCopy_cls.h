// "ArrayCopy_cls": draws its object again on a grid. AxisX=, AxisY=, AxisZ= are the steps of
// the grid (three numbers each; in the object's own axes with Coord= 0, in the parent's with
// Coord= 1), and "X Min/Max", "Y Min/Max", "Z Min/Max" the ranges of whole steps along each.
// The step (0, 0, 0) is the object itself and is not copied. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

#include <array>

class ArrayCopy_cls : public ModifierBase_cls {
public:
    explicit ArrayCopy_cls(const wxString& strName);

    // The number of copies beyond the object itself at nt (bounded by kMaxCopies).
    int GetCopyCount(double nt);
    // The offset of copy copyIndex (1 .. count) in the nested loops X outer, Z inner; false
    // when there is no such copy.
    bool GetCopyOffset(int copyIndex, double nt, double* out);

    static constexpr int kMaxCopies = 100000;

    ConfItemSTR_cls mCTarget;       // "Target=": kept for the panel; the copies are of the owner
    ConfItemINT_cls mCCoord;        // "Coord=": 0 own axes, 1 parent's axes
    ConfItemFLOATARRAY_cls mCAxisX; // "AxisX="
    ConfItemFLOATARRAY_cls mCAxisY; // "AxisY="
    ConfItemFLOATARRAY_cls mCAxisZ; // "AxisZ="

private:
    // Whole-step ranges at nt, low and high per axis.
    void GetRanges(double nt, long long lo[3], long long hi[3]);
    std::array<double, 3> GetAxis(int k) const;
};
