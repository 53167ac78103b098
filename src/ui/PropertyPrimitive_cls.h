// The page of a primitive: its shape and segments, and its material with the texture. Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyPrimitive_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyPrimitive_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
