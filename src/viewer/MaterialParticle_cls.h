// A material of a particle object (up to ten per object; the material index of a particle is
// its type). The keys choose how the particles of that type are drawn: base type (point,
// billboard, sphere), shader of each base type, colour from the curve or constant, alpha and
// size from the data or constant, blending and texture. The animated part is in the groups
// "Emission", "Diffuse", "Specular" (one intensity each; the colour comes from the curve),
// "SizeFactor" (Point, Sphere) and "Alpha Modifier" (AlphaFactor, AlphaModBase, AlphaModMax).
// Main thread only; the preparation reads a clone.
#pragma once

#include "Attribute_cls.h"
#include "ConfItem_cls.h"

class MaterialParticle_cls : public Attribute_cls {
public:
    static constexpr int kMaterialMax = 10;
    // "AlphaModifier=": how AlphaModBase and AlphaModMax act on AlphaFactor.
    enum AlphaModifier_enum { ALPHA_NO_MODIFY = 0, ALPHA_SQUARE_INVERSE = 1 };

    explicit MaterialParticle_cls(const wxString& strName);

    // Copies the group values at the current time into the panel items "Diffuse=", "Specular=",
    // "SizeFactorPoint=", "SizeFactorSphere=", "AlphaFactor=", "AlphaModBase=", "AlphaModMax=".
    // An item is set only when its text changes, so a panel refresh does not stamp the
    // material as edited.
    void SetMaterialInfo();
    // The material's alpha at nt: AlphaFactor, with "Square Inverse" times
    // min(AlphaModMax, 1 / AlphaModBase^2).
    double GetAlpha(double nt);
    // The point size factor (member 0) or the sphere size factor (member 1) at nt.
    double GetSizeFactor(double nt, bool bSphere);

    ConfItemSTR_cls mCCustomName;
    ConfItemINT_cls mCColorCurveType;
    ConfItemINT_cls mCColorCurveIndex;
    ConfItemINT_cls mCAlphaType;
    ConfItemINT_cls mCSizeType;
    ConfItemINT_cls mCBaseType;
    ConfItemINT_cls mCShaderTypePoint;
    ConfItemINT_cls mCShaderTypeSphere;
    ConfItemINT_cls mCShaderTypeBillboard;
    ConfItemBOOL_cls mCShaderFlat;
    ConfItemFLOAT_cls mCToonThreshold;
    ConfItemFLOAT_cls mCToonBoldness;
    ConfItemINT_cls mCColorCurveDepend;
    ConfItemINT_cls mCBlendType;
    ConfItemINT_cls mCTextureType;
    ConfItemINT_cls mCTextureIndex;
    ConfItemINT_cls mCAlphaModifier;
    // Mirrors of the groups for the panel (SetMaterialInfo).
    ConfItemFLOAT_cls mCDiffuse;
    ConfItemFLOAT_cls mCSpecular;
    ConfItemFLOAT_cls mCSizeFactorPoint;
    ConfItemFLOAT_cls mCSizeFactorSphere;
    ConfItemFLOAT_cls mCAlphaFactor;
    ConfItemFLOAT_cls mCAlphaModBase;
    ConfItemFLOAT_cls mCAlphaModMax;

private:
    // The values of a group at nt, expressions applied; def where a member has no value.
    std::vector<double> GetGroupValues(const wxString& strGroup, double nt, size_t count, double def);
};
