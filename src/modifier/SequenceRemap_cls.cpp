#include "SequenceRemap_cls.h"

#include "DataSequence_cls.h"

#include <cmath>

SequenceRemap_cls::SequenceRemap_cls(const wxString& strName)
    : ModifierBase_cls("SequenceRemap_cls", strName, "VIEW3D::PROPERTY_MODIFIER") {
    Add(&mCClamp, "Clamp=", "1", mStrTag);
    Add(&mCRepeat, "Repeat=", "0", mStrTag);
    AddOneDimParam("Remap", "Remap", 0.0);
}

double SequenceRemap_cls::GetRemapValue(double nt) {
    ParamGroup_cls* p = GetPCParamGroup("Remap");
    if (!p)
        return 0.0;
    std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
    return v.empty() ? 0.0 : v[0];
}

int SequenceRemap_cls::GetRemappedFrame(double time, int frame, int count) {
    if (!IsValid())
        return frame;
    const double value = std::floor(GetRemapValue(time) + 1e-7);
    // A value far outside the int range would overflow the cast: hold it at the int limits,
    // where the clamp or the sequence's own limit takes over.
    int k = value >= 2.0e9 ? 2000000000 : (value <= -2.0e9 ? -2000000000 : static_cast<int>(value));
    if (count > 0 && k >= count && mCRepeat.GetBodyBOOL())
        k = DataSequence_cls::Surplus(k, count);
    if (!mCClamp.GetBodyBOOL())
        return k;
    if (count > 0 && k >= count)
        k = count - 1;
    if (k < 0)
        k = 0;
    return k;
}

double SequenceRemap_cls::GetInterpFactor(double time, int, double fallback) {
    if (!IsValid())
        return fallback;
    const double v = GetRemapValue(time);
    const double f = v - std::floor(v + 1e-7);
    return f < 1e-7 ? 0.0 : f;
}
