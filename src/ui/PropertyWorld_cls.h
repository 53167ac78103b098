// The page of the world: its switch and the fog (kind, colour, range, density, whether it replaces the
// background). Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyWorld_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyWorld_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
