// The texture part of a material: the image file and how it is applied.
#pragma once

#include "ConfItem_cls.h"

class Attribute_cls;
class ConfItemList_cls;

class MaterialTexture_cls {
public:
    // Adds "UseTexture=" 0, "TextureFile=" (a path, written relative to the project; "None", which saving
    // leaves alone, for no file), "TextureWrap=" 0 (0 repeat, 1 clamp), "TextureInterp=" 1 (0 nearest, 1
    // linear), "TextureMode=" 0 (0 modulate, 1 replace) to the list, and the groups "TexScale" and
    // "TexOffset" (u, v) to the attribute.
    void AddMaterialTextureItems(ConfItemList_cls& list, Attribute_cls& attr);
    bool IsTextureUsed() const {
        return mCUseTexture.GetBodyBOOL() && !mCTextureFile.IsEmpty() && mCTextureFile.GetBodySTR() != "None";
    }

    ConfItemBOOL_cls mCUseTexture;
    ConfItemSTR_cls mCTextureFile;
    ConfItemINT_cls mCTextureWrap;
    ConfItemINT_cls mCTextureInterp;
    ConfItemINT_cls mCTextureMode;
};
