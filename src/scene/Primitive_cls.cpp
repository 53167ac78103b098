#include "Primitive_cls.h"

#include "Material_cls.h"
#include "SceneClassWord_cls.h"

Primitive_cls::Primitive_cls(ParentObj_cls* pParent, const wxString& strVariant)
    : SceneObj_cls(pParent, "Primitive_cls") {
    int type = SceneClassWord_cls::GetPrimitiveTypeFromStr(strVariant);
    if (type < 0)
        type = 0;
    Add(&mCPrimitiveType, "PrimitiveType=", wxString::Format("%d", type), "VIEW3D::PROPERTY_OBJECT");
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    Add(&mCSegments, "Segments=", "32", "VIEW3D");
    AddOwnAttribute(new Material_cls("Material", "Primitive_cls"));
}

wxString Primitive_cls::GetStrPrimitiveType() const {
    const wxArrayString& astr = SceneClassWord_cls::GetAstrPrimitiveType();
    const int type = GetPrimitiveType();
    return (type >= 0 && type < static_cast<int>(astr.GetCount())) ? astr[static_cast<size_t>(type)]
                                                                   : wxString();
}
