// Base of every entry of the modifier and data-process stacks of a scene object: an attribute
// with the switch Validity=. A switched-off entry has no effect and stays in its stack.
// Main thread only; workers read an AttributeClone_cls of it.
#pragma once

#include "Attribute_cls.h"
#include "ConfItem_cls.h"

class AttributeClone_cls;

class ModifierBase_cls : public Attribute_cls {
public:
    // strTag is the panel tag of the kind's items ("VIEW3D::PROPERTY_MODIFIER" or
    // "VIEW3D::PROPERTY_DATAPROC").
    ModifierBase_cls(const wxString& strClass, const wxString& strName, const wxString& strTag);

    bool IsValid() const { return mValidity.GetBodyBOOL(); }
    // Validity= of a clone; a clone without the item counts as valid.
    static bool IsCloneValid(const AttributeClone_cls& clone);

    ConfItemBOOL_cls mValidity; // "Validity=", default 1

protected:
    wxString mStrTag;
};
