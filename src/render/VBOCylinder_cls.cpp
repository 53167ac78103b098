#include "VBOCylinder_cls.h"

#include <cmath>

VBOCylinder_cls::VBOCylinder_cls(int slices) : VBOBaseObject_cls(GetVCylinder(slices)) {}

std::vector<float> VBOCylinder_cls::GetVCylinder(int slices) {
    std::vector<float> v;
    const float top[3] = {0.f, 1.f, 0.f};
    const float bottom[3] = {0.f, -1.f, 0.f};
    for (int i = 0; i < slices; ++i) {
        const double p0 = 2.0 * M_PI * i / slices;
        const double p1 = 2.0 * M_PI * (i + 1) / slices;
        const float c0 = static_cast<float>(std::cos(p0)), s0 = static_cast<float>(-std::sin(p0));
        const float c1 = static_cast<float>(std::cos(p1)), s1 = static_cast<float>(-std::sin(p1));
        const float a0[3] = {c0, -1.f, s0}, b0[3] = {c1, -1.f, s1};
        const float a1[3] = {c0, 1.f, s0}, b1[3] = {c1, 1.f, s1};
        const float na[3] = {c0, 0.f, s0}, nb[3] = {c1, 0.f, s1};
        AddVertex(v, a0, na);
        AddVertex(v, b0, nb);
        AddVertex(v, b1, nb);
        AddVertex(v, a0, na);
        AddVertex(v, b1, nb);
        AddVertex(v, a1, na);
        AddVertex(v, top, top);
        AddVertex(v, a1, top);
        AddVertex(v, b1, top);
        AddVertex(v, bottom, bottom);
        AddVertex(v, b0, bottom);
        AddVertex(v, a0, bottom);
    }
    return v;
}
