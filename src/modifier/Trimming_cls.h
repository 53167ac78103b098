// "Trimming_cls": cuts a viewer's data to a box that may move in time. The drawing code reads
// Global=, Smooth=, SmoothWidth=, ThinningFactor= and "Thinning". Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class Trimming_cls : public ModifierBase_cls {
public:
    explicit Trimming_cls(const wxString& strName);

    // Switched off: min and max are left as they are. Otherwise the lower values of the three
    // Min/Max groups at the current normalised time (or at nt) go to min, the upper to max.
    void Execute(double* min, double* max);
    void Execute(double nt, double* min, double* max);
    // "Thinning" at nt.
    double GetThinning(double nt);

    ConfItemBOOL_cls mCGlobal;          // "Global="
    ConfItemBOOL_cls mCSmooth;          // "Smooth="
    ConfItemFLOAT_cls mCSmoothWidth;    // "SmoothWidth="
    ConfItemFLOAT_cls mCThinningFactor; // "ThinningFactor="
};
