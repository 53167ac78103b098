// The square plane from -1 to 1 in x and z, facing +y.
#pragma once

#include "VBOBaseObject_cls.h"

class VBOPlane_cls : public VBOBaseObject_cls {
public:
    VBOPlane_cls();
    static std::vector<float> GetVPlane();
};
