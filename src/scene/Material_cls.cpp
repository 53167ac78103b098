#include "Material_cls.h"

#include "ParamGroup_cls.h"

Material_cls::Material_cls(const wxString& strName, const wxString& strOwnerClass)
    : Attribute_cls("Material_cls", strName), mbForLight(strOwnerClass == "LightSource_cls") {
    AddMaterialLightGroups(*this);
    AddMaterialOptionItems(*this);
    if (mbForLight)
        AddLightSourceGroups(*this);
    else
        AddMaterialTextureItems(*this, *this);
    if (strOwnerClass == "VolumeBox_cls") {
        Add(&mCVolumeWrap, "VolumeWrap=", "0", "VIEW3D::PROPERTY_MATERIAL");
        Add(&mCDepthWrite, "DepthWrite=", "0", "VIEW3D::PROPERTY_MATERIAL");
        InitializeAndPushParam(GetPCNewParamGroup("ClipMin", "X", "Y", "Z"), -0.5, -0.5, -0.5);
        InitializeAndPushParam(GetPCNewParamGroup("ClipMax", "X", "Y", "Z"), 0.5, 0.5, 0.5);
    }
}

std::vector<double> Material_cls::GetColor(const wxString& strGroup, double t) {
    std::vector<double> v;
    if (ParamGroup_cls* p = GetPCParamGroup(strGroup))
        v = p->GetVInterpolatedValue(t, true, nullptr, false);
    while (v.size() < 3)
        v.push_back(0.0);
    double alpha = 1.0;
    if (ParamGroup_cls* p = GetPCParamGroup("Alpha")) {
        std::vector<double> a = p->GetVInterpolatedValue(t, true, nullptr, false);
        if (!a.empty())
            alpha = a[0];
    }
    v.resize(3);
    v.push_back(alpha);
    return v;
}
