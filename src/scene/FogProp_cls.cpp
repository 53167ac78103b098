#include "FogProp_cls.h"

#include "ParamGroup_cls.h"

namespace {

std::vector<double> Values(ParamGroup_cls* p, double t, size_t n, double fallback) {
    std::vector<double> v;
    if (p)
        v = p->GetVInterpolatedValue(t, true, nullptr, false);
    while (v.size() < n)
        v.push_back(fallback);
    v.resize(n);
    return v;
}

} // namespace

FogProp_cls::FogProp_cls() : Attribute_cls("FogProp_cls", "Fog") {
    const wxString strTag = "VIEW3D::PROPERTY_OBJECT";
    Add(&mCFogType, "FogType=", "0", strTag);
    Add(&mCFogOverwrite, "FogOverwrite=", "0", strTag);
    InitializeAndPushParam(GetPCNewParamGroup("FogColor", "R", "G", "B"), 0.5, 0.5, 0.5);
    InitializeAndPushParam(GetPCNewParamGroup("FogRange", "Start", "End"), 10.0, 100.0);
    AddOneDimParam("FogDensity", "Value", 0.05);
}

std::vector<double> FogProp_cls::GetFogColor(double t) {
    return Values(GetPCParamGroup("FogColor"), t, 3, 0.0);
}

std::vector<double> FogProp_cls::GetFogRange(double t) {
    return Values(GetPCParamGroup("FogRange"), t, 2, 0.0);
}

double FogProp_cls::GetFogDensity(double t) {
    return Values(GetPCParamGroup("FogDensity"), t, 1, 0.0)[0];
}
