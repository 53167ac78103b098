#include "Tracking_cls.h"

#include "ClassProvider_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

#include <algorithm>
#include <cmath>

namespace {

double Length(const double* v) {
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

bool Normalize(double* v) {
    const double l = Length(v);
    if (l < 1e-12)
        return false;
    for (int k = 0; k < 3; ++k)
        v[k] /= l;
    return true;
}

void Cross(const double* a, const double* b, double* out) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

} // namespace

Tracking_cls::Tracking_cls(const wxString& strName)
    : ModifierBase_cls("Tracking_cls", strName, "VIEW3D::PROPERTY_MODIFIER") {
    Add(&mCTarget, "Target=", "None", mStrTag);
    Add(&mCBaseDirection, "BaseDirection=", "4", mStrTag);
    Add(&mCBaseTopDirection, "BaseTopDirection=", "1", mStrTag);
    AddOneDimParam("Influence", "Influence", 1.0);
}

void Tracking_cls::Execute(SceneObj_cls* pObj, double* C, const double* P, double t) {
    if (!IsValid() || !pObj || !C || !P || !GpCSceneObjCtrl || msDepth > 4)
        return;
    const wxString strTarget = mCTarget.GetBodySTR();
    if (strTarget == "None")
        return;
    SceneObj_cls* pTarget = GpCSceneObjCtrl->GetPCFromName(strTarget);
    if (!pTarget || pTarget == pObj)
        return;
    double w = 1.0;
    if (ParamGroup_cls* g = GetPCParamGroup("Influence")) {
        std::vector<double> v = g->GetVInterpolatedValue(t, true, nullptr, false);
        if (!v.empty())
            w = std::clamp(v[0], 0.0, 1.0);
    }
    if (w <= 0.0)
        return;

    double target[3];
    ++msDepth;
    pTarget->GetPositionGlobal(t, target);
    --msDepth;
    double own[3];
    TransformPoint(P, C + 12, own);
    double Pinv[16];
    if (!Invert(P, Pinv))
        return;
    const double world[3] = {target[0] - own[0], target[1] - own[1], target[2] - own[2]};
    double f[3];
    TransformVector(Pinv, world, f);
    if (!Normalize(f))
        return;

    const int dir = static_cast<int>(std::clamp<long long>(mCBaseDirection.GetBodyINT(), 0, 5));
    const int ia = dir / 2;
    const double sa = (dir % 2 == 0) ? 1.0 : -1.0;
    int it = static_cast<int>(std::clamp<long long>(mCBaseTopDirection.GetBodyINT(), 0, 2));
    if (it == ia)
        it = (ia + 1) % 3;
    const int ic = 3 - ia - it;

    // Blend from the direction the base axis has now.
    if (w < 1.0) {
        double now[3] = {sa * C[4 * ia], sa * C[4 * ia + 1], sa * C[4 * ia + 2]};
        Normalize(now);
        for (int k = 0; k < 3; ++k)
            f[k] = (1.0 - w) * now[k] + w * f[k];
        if (!Normalize(f))
            return;
    }
    // The top axis as near the parent's same axis as f allows; another axis when parallel.
    double up[3] = {0, 0, 0};
    up[it] = 1.0;
    double u[3];
    for (int attempt = 0; attempt < 3; ++attempt) {
        const double d = up[0] * f[0] + up[1] * f[1] + up[2] * f[2];
        for (int k = 0; k < 3; ++k)
            u[k] = up[k] - d * f[k];
        if (Normalize(u))
            break;
        up[it] = 0.0;
        up[(it + 1 + attempt) % 3] = 1.0;
    }
    double colA[3], colC[3];
    for (int k = 0; k < 3; ++k)
        colA[k] = sa * f[k];
    Cross(colA, u, colC);
    // e_ia x e_it is +e_ic for a cyclic order, -e_ic otherwise.
    const bool cyclic = (ia + 1) % 3 == it;
    for (int k = 0; k < 3; ++k) {
        C[4 * ia + k] = colA[k];
        C[4 * it + k] = u[k];
        C[4 * ic + k] = cyclic ? colC[k] : -colC[k];
    }
}
