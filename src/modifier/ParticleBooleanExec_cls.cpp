#include "ParticleBooleanExec_cls.h"

#include "AttributeClone_cls.h"
#include "BooleanBase_cls.h"
#include "ModifierBase_cls.h"

#include <cmath>

ParticleBooleanExec_cls::ParticleBooleanExec_cls(AttributeClone_cls* pClone, double nt,
                                                 const double* pObjectMatrix) {
    SetIdentity(mMatrix);
    if (!pClone) {
        mbValid = false;
        return;
    }
    mbValid = ModifierBase_cls::IsCloneValid(*pClone);
    if (ConfItem_cls* p = pClone->GetPCItem("BooleanType="))
        mType = static_cast<int>(p->GetBodyINT());
    if (ConfItem_cls* p = pClone->GetPCItem("BooleanShape="))
        mShape = static_cast<int>(p->GetBodyINT());
    if (mShape == BooleanBase_cls::kShapeObject) {
        mbHasShape = pObjectMatrix != nullptr;
        if (mbHasShape)
            Copy(mMatrix, pObjectMatrix);
        return;
    }
    double lo[3] = {-1, -1, -1}, hi[3] = {1, 1, 1};
    const char* names[3] = {"X Min/Max", "Y Min/Max", "Z Min/Max"};
    for (int k = 0; k < 3; ++k)
        if (ParamGroup_cls* g = pClone->GetPCParamGroup(names[k])) {
            std::vector<double> v = g->GetVInterpolatedValue(nt, true, nullptr, false);
            if (v.size() >= 2) {
                lo[k] = std::min(v[0], v[1]);
                hi[k] = std::max(v[0], v[1]);
            }
        }
    // Scale about the centre to half extents of 1; a flat box keeps nothing inside.
    double half[3];
    for (int k = 0; k < 3; ++k) {
        half[k] = 0.5 * (hi[k] - lo[k]);
        if (half[k] <= 0.0)
            mbHasShape = false;
    }
    if (!mbHasShape)
        return;
    Scale(mMatrix, 1.0 / half[0], 1.0 / half[1], 1.0 / half[2]);
    Translate(mMatrix, -0.5 * (lo[0] + hi[0]), -0.5 * (lo[1] + hi[1]), -0.5 * (lo[2] + hi[2]));
}

bool ParticleBooleanExec_cls::IsInside(const float* xyz) const {
    if (!mbHasShape)
        return false;
    const double p[3] = {xyz[0], xyz[1], xyz[2]};
    double q[3];
    TransformPoint(mMatrix, p, q);
    if (mShape == BooleanBase_cls::kShapeSphere)
        return q[0] * q[0] + q[1] * q[1] + q[2] * q[2] <= 1.0;
    return std::fabs(q[0]) <= 1.0 && std::fabs(q[1]) <= 1.0 && std::fabs(q[2]) <= 1.0;
}

void ParticleBooleanExec_cls::CheckBoolean(float* alpha, float (*xyz)[3], long long n, bool) const {
    if (!mbValid || !mbHasShape || !alpha || !xyz)
        return;
    for (long long i = 0; i < n; ++i) {
        const bool inside = IsInside(xyz[i]);
        switch (mType) {
        case 0:
            if (!inside)
                alpha[i] = 0.0f;
            break;
        case 1:
            if (inside)
                alpha[i] = 0.0f;
            break;
        case 2:
            if (inside)
                alpha[i] = 1.0f;
            break;
        default:
            break;
        }
    }
}
