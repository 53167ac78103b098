#include "VBOSphere_cls.h"

#include <cmath>
#include <utility>

VBOSphere_cls::VBOSphere_cls(int slices, int stacks) : VBOBaseObject_cls(GetVSphere(slices, stacks)) {}

std::vector<float> VBOSphere_cls::GetVSphere(int slices, int stacks) {
    std::vector<float> v;
    auto point = [&](int i, int j, float* p) {
        const double theta = M_PI * j / stacks; // from +y down
        const double phi = 2.0 * M_PI * i / slices;
        p[0] = static_cast<float>(std::sin(theta) * std::cos(phi));
        p[1] = static_cast<float>(std::cos(theta));
        p[2] = static_cast<float>(-std::sin(theta) * std::sin(phi));
    };
    for (int j = 0; j < stacks; ++j) {
        for (int i = 0; i < slices; ++i) {
            float a[3], b[3], c[3], d[3];
            point(i, j, a);
            point(i, j + 1, b);
            point(i + 1, j + 1, c);
            point(i + 1, j, d);
            // On the unit sphere the normal is the position; the image wraps once around it.
            const float ua = static_cast<float>(i) / slices, ub = static_cast<float>(i + 1) / slices;
            const float va = 1.f - static_cast<float>(j) / stacks,
                        vb = 1.f - static_cast<float>(j + 1) / stacks;
            const float ta[2] = {ua, va}, tb[2] = {ua, vb}, tc[2] = {ub, vb}, td[2] = {ub, va};
            const std::pair<const float*, const float*> corners[] = {{a, ta}, {b, tb}, {c, tc},
                                                                     {a, ta}, {c, tc}, {d, td}};
            for (const auto& corner : corners)
                AddVertex(v, corner.first, corner.first, corner.second);
        }
    }
    return v;
}
