#include "ModifierBase_cls.h"

#include "AttributeClone_cls.h"

ModifierBase_cls::ModifierBase_cls(const wxString& strClass, const wxString& strName, const wxString& strTag)
    : Attribute_cls(strClass, strName), mStrTag(strTag) {
    Add(&mValidity, "Validity=", "1", strTag);
}

bool ModifierBase_cls::IsCloneValid(const AttributeClone_cls& clone) {
    ConfItem_cls* p = clone.GetPCItem("Validity=");
    return !p || p->GetBodyBOOL();
}
