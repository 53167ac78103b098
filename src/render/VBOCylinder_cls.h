// The cylinder along y: radius 1, from y = -1 to 1, closed at both ends.
#pragma once

#include "VBOBaseObject_cls.h"

class VBOCylinder_cls : public VBOBaseObject_cls {
public:
    explicit VBOCylinder_cls(int slices = 48);
    static std::vector<float> GetVCylinder(int slices);
};
