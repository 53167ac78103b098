#include "Trimming_cls.h"

#include "ClassProvider_cls.h"
#include "TimeCtrl_cls.h"

#include <algorithm>

Trimming_cls::Trimming_cls(const wxString& strName)
    : ModifierBase_cls("Trimming_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCGlobal, "Global=", "0", mStrTag);
    Add(&mCSmooth, "Smooth=", "0", mStrTag);
    Add(&mCSmoothWidth, "SmoothWidth=", "0.1", mStrTag);
    Add(&mCThinningFactor, "ThinningFactor=", "0", mStrTag);
    for (const char* pAxis : {"X Min/Max", "Y Min/Max", "Z Min/Max"})
        InitializeAndPushParam(GetPCNewParamGroup(pAxis, "Min", "Max"), -1.0, 1.0);
    AddOneDimParam("Thinning", "Thinning", 0.0);
}

void Trimming_cls::Execute(double* min, double* max) {
    Execute(TimeCtrl_cls::GetClockNT(), min, max);
}

void Trimming_cls::Execute(double nt, double* min, double* max) {
    if (!IsValid() || !min || !max)
        return;
    const char* names[3] = {"X Min/Max", "Y Min/Max", "Z Min/Max"};
    for (int k = 0; k < 3; ++k) {
        ParamGroup_cls* p = GetPCParamGroup(names[k]);
        if (!p)
            continue;
        std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
        if (v.size() < 2)
            continue;
        min[k] = std::min(v[0], v[1]);
        max[k] = std::max(v[0], v[1]);
    }
}

double Trimming_cls::GetThinning(double nt) {
    ParamGroup_cls* p = GetPCParamGroup("Thinning");
    if (!p)
        return 0.0;
    std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
    return v.empty() ? 0.0 : v[0];
}
