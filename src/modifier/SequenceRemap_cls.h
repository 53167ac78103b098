// "SequenceRemap_cls": maps scene time to a step of a viewer's sequence. The parameter "Remap"
// is a curve from time to step number; its fraction is the interpolation factor between two
// steps. Main thread only.
#pragma once

#include "ModifierBase_cls.h"
#include "SequenceRemapBase_cls.h"

class SequenceRemap_cls : public ModifierBase_cls, public SequenceRemapBase_cls {
public:
    explicit SequenceRemap_cls(const wxString& strName);

    double GetRemapValue(double nt) override;
    bool GetRemapRepeat() override { return mCRepeat.GetBodyBOOL(); }
    // Off: frame unchanged. On: floor(Remap(time) + 1e-7), wrapped into the count with Repeat=
    // when count is known (above 0), then with Clamp= kept within 0 .. count - 1 (a negative
    // step becomes 0 even when the count is unknown). With Clamp= off the step is passed on
    // and the sequence's own limit applies.
    int GetRemappedFrame(double time, int frame, int count) override;
    // The fraction of Remap(time) above its step; below 1e-7 counts as 0. fallback when the
    // entry is switched off or the value cannot be had.
    double GetInterpFactor(double time, int frame, double fallback);

    ConfItemBOOL_cls mCClamp;  // "Clamp=", default 1
    ConfItemBOOL_cls mCRepeat; // "Repeat=", default 0
};
