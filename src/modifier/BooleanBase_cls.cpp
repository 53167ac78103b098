#include "BooleanBase_cls.h"

#include "ClassProvider_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

BooleanBase_cls::BooleanBase_cls(const wxString& strClass, const wxString& strName, const wxString& strTag)
    : ModifierBase_cls(strClass, strName, strTag) {
    Add(&mCBooleanType, "BooleanType=", "0", mStrTag);
    Add(&mCBooleanShape, "BooleanShape=", "0", mStrTag);
    Add(&mCBooleanObject, "BooleanObject=", "None", mStrTag);
    for (const char* pAxis : {"X Min/Max", "Y Min/Max", "Z Min/Max"})
        InitializeAndPushParam(GetPCNewParamGroup(pAxis, "Min", "Max"), -1.0, 1.0);
}

SceneObj_cls* BooleanBase_cls::SelectObject() {
    const wxString str = mCBooleanObject.GetBodySTR();
    if (str == "None" || !GpCSceneObjCtrl)
        return nullptr;
    SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(str);
    if (!p || !(p->IsClassSameAs("MeshObj_cls") || p->IsClassSameAs("Primitive_cls")))
        return nullptr;
    return p;
}

bool BooleanBase_cls::GetMatrix16TgtInv(double* out, double t) {
    SetIdentity(out);
    SceneObj_cls* p = SelectObject();
    if (!p)
        return false;
    double m[16];
    p->GetMatrix16(m, t, nullptr);
    return Invert(m, out);
}

wxString BooleanBase_cls::GetStrProcCounterForTgtObj(double t) {
    double m[16];
    if (!GetMatrix16TgtInv(m, t))
        return "-";
    wxString str;
    for (double v : m)
        str << wxString::Format("%.9g,", v);
    return str;
}

ParticleBoolean_cls::ParticleBoolean_cls(const wxString& strName)
    : BooleanBase_cls("ParticleBoolean_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {}

VolumeBoolean_cls::VolumeBoolean_cls(const wxString& strName)
    : BooleanBase_cls("VolumeBoolean_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {}
