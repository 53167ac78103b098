#include "VBOPlane_cls.h"

VBOPlane_cls::VBOPlane_cls() : VBOBaseObject_cls(GetVPlane()) {}

std::vector<float> VBOPlane_cls::GetVPlane() {
    std::vector<float> v;
    const float a[3] = {-1.f, 0.f, 1.f}, b[3] = {1.f, 0.f, 1.f}, c[3] = {1.f, 0.f, -1.f},
                d[3] = {-1.f, 0.f, -1.f};
    AddTriangle(v, a, b, c);
    AddTriangle(v, a, c, d);
    return v;
}
