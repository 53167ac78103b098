#include "TextObj_cls.h"

#include "Material_cls.h"
#include "TextProp_cls.h"

TextObj_cls::TextObj_cls(ParentObj_cls* pParent) : SceneObj_cls(pParent, "TextObj_cls") {
    mDrawOrder = 1;
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    AddOwnAttribute(new Material_cls("Material", "TextObj_cls"));
    mpCTextProp = new TextProp_cls();
    AddBuiltInModifier(mpCTextProp);
}
