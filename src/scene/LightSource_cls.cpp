#include "LightSource_cls.h"

#include "Material_cls.h"
#include "SceneClassWord_cls.h"

#include <cmath>

LightSource_cls::LightSource_cls(ParentObj_cls* pParent, const wxString& strVariant)
    : SceneObj_cls(pParent, "LightSource_cls") {
    mDrawOrder = 4;
    int type = SceneClassWord_cls::GetLightTypeFromStr(strVariant);
    if (type < 0)
        type = 1;
    Add(&mCLightType, "LightType=", wxString::Format("%d", type), "VIEW3D::PROPERTY_OBJECT");
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    Add(&mCCastShadow, "CastShadow=", "0", "VIEW3D");
    Add(&mCSoftShadow, "SoftShadow=", "0", "VIEW3D");
    AddOwnAttribute(new Material_cls("Material", "LightSource_cls"));
}

wxString LightSource_cls::GetStrLightType() const {
    const wxArrayString& astr = SceneClassWord_cls::GetAstrLightType();
    const int type = GetLightType();
    return (type >= 0 && type < static_cast<int>(astr.GetCount())) ? astr[static_cast<size_t>(type)]
                                                                   : wxString();
}

void LightSource_cls::GetDirectionGlobal(double t, double* out) {
    double m[16];
    GetMatrix16(m, t, nullptr);
    const double v[3] = {0.0, 0.0, -1.0};
    TransformVector(m, v, out);
    const double len = std::sqrt(out[0] * out[0] + out[1] * out[1] + out[2] * out[2]);
    if (len > 0.0)
        for (int i = 0; i < 3; ++i)
            out[i] /= len;
}
