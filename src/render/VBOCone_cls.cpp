#include "VBOCone_cls.h"

#include <cmath>

VBOCone_cls::VBOCone_cls(int slices) : VBOBaseObject_cls(GetVCone(slices)) {}

std::vector<float> VBOCone_cls::GetVCone(int slices) {
    std::vector<float> v;
    // The side normal leans up by the slope: height 2 over radius 1.
    const float ny = 1.f / std::sqrt(5.f);
    const float nr = 2.f / std::sqrt(5.f);
    const float apex[3] = {0.f, 1.f, 0.f};
    const float centre[3] = {0.f, -1.f, 0.f};
    const float down[3] = {0.f, -1.f, 0.f};
    for (int i = 0; i < slices; ++i) {
        const double p0 = 2.0 * M_PI * i / slices;
        const double p1 = 2.0 * M_PI * (i + 1) / slices;
        const float a[3] = {static_cast<float>(std::cos(p0)), -1.f, static_cast<float>(-std::sin(p0))};
        const float b[3] = {static_cast<float>(std::cos(p1)), -1.f, static_cast<float>(-std::sin(p1))};
        const float na[3] = {a[0] * nr, ny, a[2] * nr};
        const float nb[3] = {b[0] * nr, ny, b[2] * nr};
        const float nm[3] = {(na[0] + nb[0]) * 0.5f, ny, (na[2] + nb[2]) * 0.5f};
        AddVertex(v, a, na);
        AddVertex(v, b, nb);
        AddVertex(v, apex, nm);
        AddVertex(v, centre, down);
        AddVertex(v, b, down);
        AddVertex(v, a, down);
    }
    return v;
}
