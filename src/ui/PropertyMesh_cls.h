// The page of a mesh: its Wavefront file (typed or picked), the normal flip, and its material with the
// texture. Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyMesh_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyMesh_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
