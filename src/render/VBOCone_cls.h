// The cone along y: base of radius 1 at y = -1, apex at y = 1, closed at the base.
#pragma once

#include "VBOBaseObject_cls.h"

class VBOCone_cls : public VBOBaseObject_cls {
public:
    explicit VBOCone_cls(int slices = 48);
    static std::vector<float> GetVCone(int slices);
};
