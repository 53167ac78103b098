// The page of a camera: its type, view and wide angles, clip range, dome tilt and face size, the
// passepartout, the size that replaces the output size, the focal blur and the stereo settings. Main thread
// only.
#pragma once

#include "PropertyFieldPage_cls.h"

class PropertyCamera_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyCamera_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
};
