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
    // The source and destination factors of glBlendFunc for the blend type, as GL enum
    // numbers (the renderer passes them on); false for "None", where blending is off.
    bool SetBlendFunc(int& src, int& dst) const;

    ConfItemINT_cls mCBlendType;
    ConfItemBOOL_cls mCTwoSide;
    ConfItemBOOL_cls mCSmooth;
    ConfItemBOOL_cls mCWireframe;
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCReceiveShadow;
};
