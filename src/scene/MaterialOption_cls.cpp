#include "MaterialOption_cls.h"

#include "ConfItemList_cls.h"

namespace {
// The GL enum numbers, so this layer needs no GL header.
constexpr int GL_ZERO_ = 0;
constexpr int GL_ONE_ = 1;
constexpr int GL_DST_COLOR_ = 0x0306;
constexpr int GL_SRC_ALPHA_ = 0x0302;
constexpr int GL_ONE_MINUS_SRC_ALPHA_ = 0x0303;
} // namespace

void MaterialOption_cls::AddMaterialOptionItems(ConfItemList_cls& list) {
    const wxString strTag = "VIEW3D::PROPERTY_MATERIAL";
    list.Add(&mCBlendType, "BlendType=", "0", strTag);
    list.Add(&mCTwoSide, "TwoSide=", "0", strTag);
    list.Add(&mCSmooth, "Smooth=", "1", strTag);
    list.Add(&mCWireframe, "Wireframe=", "0", strTag);
    list.Add(&mCCastShadow, "CastShadow=", "1", strTag);
    list.Add(&mCReceiveShadow, "ReceiveShadow=", "1", strTag);
}

bool MaterialOption_cls::SetBlendFunc(int& src, int& dst) const {
    switch (mCBlendType.GetBodyINT()) {
    case BLEND_ADD:
        src = GL_SRC_ALPHA_;
        dst = GL_ONE_;
        return true;
    case BLEND_MULTIPLY:
        src = GL_DST_COLOR_;
        dst = GL_ZERO_;
        return true;
    case BLEND_NONE:
        src = GL_ONE_;
        dst = GL_ZERO_;
        return false;
    default:
        src = GL_SRC_ALPHA_;
        dst = GL_ONE_MINUS_SRC_ALPHA_;
        return true;
    }
}
