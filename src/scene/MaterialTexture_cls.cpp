#include "MaterialTexture_cls.h"

#include "Attribute_cls.h"
#include "ConfItemList_cls.h"

void MaterialTexture_cls::AddMaterialTextureItems(ConfItemList_cls& list, Attribute_cls& attr) {
    const wxString strTag = "VIEW3D::PROPERTY_MATERIAL";
    list.Add(&mCUseTexture, "UseTexture=", "0", strTag);
    list.Add(&mCTextureFile, "TextureFile=", "None", strTag);
    mCTextureFile.SetRawString(true);
    list.Add(&mCTextureWrap, "TextureWrap=", "0", strTag);
    list.Add(&mCTextureInterp, "TextureInterp=", "1", strTag);
    list.Add(&mCTextureMode, "TextureMode=", "0", strTag);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("TexScale", "u", "v"), 1.0, 1.0);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("TexOffset", "u", "v"), 0.0, 0.0);
}
