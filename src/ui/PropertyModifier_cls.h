// The page of one modifier or data process of the active object: the rows of its kind's table,
// which the kind table holds in the kind's SLOT_PROPERTY_PAGE (a PropertyField_cls::Table_type),
// or, for a kind without one, a row for every item and group the entry has, so that every kind
// can be edited. The entry is addressed by its name on the object. Main thread only.
#pragma once

#include "PropertyFieldPanel_cls.h"

class Attribute_cls;

class PropertyModifier_cls : public PropertyFieldPanel_cls {
public:
    PropertyModifier_cls(wxWindow* pParent, std::function<SceneObj_cls*()> funcObject, Attribute_cls* pEntry);

    // The entry's rows, addressed to it by name.
    static PropertyField_cls::Table_type GetVField(Attribute_cls* pEntry);
    // Every item (a check for 0/1 items, a number or a text otherwise) and every group.
    static PropertyField_cls::Table_type GetVFieldGeneric(Attribute_cls* pEntry);
    // Puts the tables of the modifier and data-process kinds into the entries the layers below
    // have registered.
    static void RegisterTables();

    wxString mStrEntryName;
};
