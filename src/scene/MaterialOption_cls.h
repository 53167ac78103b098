// The drawing options of a material: blending, faces, shading and shadows, as configuration
// items of the material's list.
#pragma once

#include "ConfItem_cls.h"

class ConfItemList_cls;

class MaterialOption_cls {
public:
    // Blend types of "BlendType=": 0 "Alpha", 1 "Add", 2 "Multiply", 3 "None".
    enum Blend_enum { BLEND_ALPHA = 0, BLEND_ADD = 1, BLEND_MULTIPLY = 2, BLEND_NONE = 3 };

    // Adds "BlendType=" 0, "TwoSide=" 0, "Smooth=" 1, "Wireframe=" 0, "CastShadow=" 1,
    // "ReceiveShadow=" 1 to the list.
    void AddMaterialOptionItems(ConfItemList_cls& list);
    // Blend factors in this layer's own words; the renderer maps them to GL's.
    enum BlendFactor_enum {
        FACTOR_ZERO,
        FACTOR_ONE,
        FACTOR_SRC_ALPHA,
        FACTOR_ONE_MINUS_SRC_ALPHA,
        FACTOR_DST_COLOR
    };
    // The source and destination factors for the blend type; false for "None", where blending
    // is off (the factors are then one and zero).
    bool SetBlendFunc(BlendFactor_enum& src, BlendFactor_enum& dst) const;

    ConfItemINT_cls mCBlendType;
    ConfItemBOOL_cls mCTwoSide;
    ConfItemBOOL_cls mCSmooth;
    ConfItemBOOL_cls mCWireframe;
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCReceiveShadow;
};
