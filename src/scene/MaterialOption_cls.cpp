#include "MaterialOption_cls.h"

#include "ConfItemList_cls.h"

void MaterialOption_cls::AddMaterialOptionItems(ConfItemList_cls& list) {
    const wxString strTag = "VIEW3D::PROPERTY_MATERIAL";
    list.Add(&mCBlendType, "BlendType=", "0", strTag);
    list.Add(&mCTwoSide, "TwoSide=", "0", strTag);
    list.Add(&mCSmooth, "Smooth=", "1", strTag);
    list.Add(&mCWireframe, "Wireframe=", "0", strTag);
    list.Add(&mCCastShadow, "CastShadow=", "1", strTag);
    list.Add(&mCReceiveShadow, "ReceiveShadow=", "1", strTag);
}

bool MaterialOption_cls::SetBlendFunc(BlendFactor_enum& src, BlendFactor_enum& dst) const {
    switch (mCBlendType.GetBodyINT()) {
    case BLEND_ADD:
        src = FACTOR_SRC_ALPHA;
        dst = FACTOR_ONE;
        return true;
    case BLEND_MULTIPLY:
        src = FACTOR_DST_COLOR;
        dst = FACTOR_ZERO;
        return true;
    case BLEND_NONE:
        src = FACTOR_ONE;
        dst = FACTOR_ZERO;
        return false;
    default:
        src = FACTOR_SRC_ALPHA;
        dst = FACTOR_ONE_MINUS_SRC_ALPHA;
        return true;
    }
}
