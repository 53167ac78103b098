// The page of a light: its kind, switches and shadows, and its colours, spot and attenuation (the groups of
// its material). Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyLight_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyLight_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
