// The page of a text object: the text, font file, alignment and billboard switch, the font size and line
// spacing, and its material. Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyText_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyText_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
