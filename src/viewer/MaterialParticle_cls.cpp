#include "MaterialParticle_cls.h"

#include "ClassProvider_cls.h"
#include "ParamGroup_cls.h"
#include "PrepareSetting_cls.h"
#include "TimeCtrl_cls.h"

namespace {
const wxString kDraw = "VIEW3D::PROPERTY_MATERIAL";
const wxString kPanel = "PROPERTY_MATERIAL";

} // namespace

MaterialParticle_cls::MaterialParticle_cls(const wxString& strName)
    : Attribute_cls("MaterialParticle_cls", strName) {
    Add(&mCCustomName, "CustomName=", "MaterialName", "PROPERTY_MATERIAL::OUTLINER");
    Add(&mCColorCurveType, "ColorCurveType=", "0", kDraw);
    Add(&mCColorCurveIndex, "ColorCurveIndex=", "0", kDraw);
    Add(&mCAlphaType, "AlphaType=", "0", kDraw);
    Add(&mCSizeType, "SizeType=", "0", kDraw);
    Add(&mCBaseType, "BaseType=", "0", kDraw);
    Add(&mCShaderTypePoint, "ShaderTypePoint=", "0", kDraw);
    Add(&mCShaderTypeSphere, "ShaderTypeSphere=", "1", kDraw);
    Add(&mCShaderTypeBillboard, "ShaderTypeBillboard=", "0", kDraw);
    Add(&mCShaderFlat, "ShaderFlat=", "0", kDraw);
    Add(&mCToonThreshold, "ToonThreshold=", "0.1", kDraw);
    Add(&mCToonBoldness, "ToonBoldness=", "0.1", kDraw);
    Add(&mCColorCurveDepend, "ColorCurveDepend=", "3", kDraw);
    Add(&mCBlendType, "BlendType=", "0", kDraw);
    Add(&mCTextureType, "TextureType=", "0", kDraw);
    Add(&mCTextureIndex, "TextureIndex=", "0", kDraw);
    Add(&mCAlphaModifier, "AlphaModifier=", "0", kDraw);
    Add(&mCDiffuse, "Diffuse=", "1", kPanel);
    Add(&mCSpecular, "Specular=", "0.5", kPanel);
    Add(&mCSizeFactorPoint, "SizeFactorPoint=", "1", kPanel);
    Add(&mCSizeFactorSphere, "SizeFactorSphere=", "1", kPanel);
    Add(&mCAlphaFactor, "AlphaFactor=", "1", kPanel);
    Add(&mCAlphaModBase, "AlphaModBase=", "1", kPanel);
    Add(&mCAlphaModMax, "AlphaModMax=", "1", kPanel);
    // The colour of a particle comes from its curve; the light model only scales it, so the
    // lighting groups are intensities. Diffuse 1 shows the curve's colour as it is on the lit
    // side; a zero emission leaves unlit sides dark.
    AddOneDimParam("Emission", "Value", 0.0);
    AddOneDimParam("Diffuse", "Value", 1.0);
    AddOneDimParam("Specular", "Value", 0.5);
    InitializeAndPushParam(GetPCNewParamGroup("SizeFactor", "Point", "Sphere"), 1.0, 1.0);
    // Base 1 and maximum 1 make "Square Inverse" start out the same as "No Modify".
    InitializeAndPushParam(GetPCNewParamGroup("Alpha Modifier", "AlphaFactor", "AlphaModBase", "AlphaModMax"),
                           1.0, 1.0, 1.0);
}

std::vector<double> MaterialParticle_cls::GetGroupValues(const wxString& strGroup, double nt, size_t count,
                                                         double def) {
    std::vector<double> v;
    if (ParamGroup_cls* p = GetPCParamGroup(strGroup))
        v = p->GetVInterpolatedValue(nt, true, nullptr, false);
    // An expression that re-entered itself gives no values.
    v.resize(count, def);
    return v;
}

double MaterialParticle_cls::GetAlpha(double nt) {
    const std::vector<double> v = GetGroupValues("Alpha Modifier", nt, 3, 1.0);
    return PrepareSetting_cls::GetMaterialAlpha(static_cast<int>(mCAlphaModifier.GetBodyINT()), v[0], v[1],
                                                v[2]);
}

double MaterialParticle_cls::GetSizeFactor(double nt, bool bSphere) {
    return GetGroupValues("SizeFactor", nt, 2, 1.0)[bSphere ? 1 : 0];
}

void MaterialParticle_cls::SetMaterialInfo() {
    const double nt = TimeCtrl_cls::GetClockNT();
    auto set = [](ConfItemFLOAT_cls& item, double value) {
        const wxString str = wxString::Format("%g", value);
        if (item.GetBodySTR() != str)
            item.SetBodyFromData(str);
    };
    set(mCDiffuse, GetGroupValues("Diffuse", nt, 1, 1.0)[0]);
    set(mCSpecular, GetGroupValues("Specular", nt, 1, 0.5)[0]);
    const std::vector<double> size = GetGroupValues("SizeFactor", nt, 2, 1.0);
    set(mCSizeFactorPoint, size[0]);
    set(mCSizeFactorSphere, size[1]);
    const std::vector<double> alpha = GetGroupValues("Alpha Modifier", nt, 3, 1.0);
    set(mCAlphaFactor, alpha[0]);
    set(mCAlphaModBase, alpha[1]);
    set(mCAlphaModMax, alpha[2]);
}
