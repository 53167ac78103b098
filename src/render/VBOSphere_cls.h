// The unit sphere (radius 1) with smooth normals, in stacks and slices.
#pragma once

#include "VBOBaseObject_cls.h"

class VBOSphere_cls : public VBOBaseObject_cls {
public:
    VBOSphere_cls(int slices = 48, int stacks = 24);
    static std::vector<float> GetVSphere(int slices, int stacks);
};
