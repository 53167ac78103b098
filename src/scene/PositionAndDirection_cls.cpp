#include "PositionAndDirection_cls.h"

#include "TensorMath_cls.h"

#include <cmath>

namespace {

void Cross(const double* a, const double* b, double* out) {
    double r[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    out[0] = r[0];
    out[1] = r[1];
    out[2] = r[2];
}

void Unit(double* v) {
    const double len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (len <= 0.0)
        return;
    v[0] /= len;
    v[1] /= len;
    v[2] /= len;
}

// Rodrigues' rotation of v about the unit axis by rad.
void RotateAbout(double* v, const double* axis, double rad) {
    const double c = std::cos(rad), s = std::sin(rad);
    double k[3];
    Cross(axis, v, k);
    const double d = axis[0] * v[0] + axis[1] * v[1] + axis[2] * v[2];
    for (int i = 0; i < 3; ++i)
        v[i] = v[i] * c + k[i] * s + axis[i] * d * (1.0 - c);
}

} // namespace

double Position_cls::GetDistance(const double* p) const {
    const double dx = mPos[0] - p[0], dy = mPos[1] - p[1], dz = mPos[2] - p[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool Position_cls::IsSimilarPosition(const Position_cls& a, const Position_cls& b, double e) {
    for (int i = 0; i < 3; ++i)
        if (std::fabs(a.mPos[i] - b.mPos[i]) >= e)
            return false;
    return true;
}

void Direction_cls::Normalize() {
    Unit(mTgt);
    Cross(mTgt, mTop, mRight);
    Unit(mRight);
    Cross(mRight, mTgt, mTop);
    Unit(mTop);
}

void Direction_cls::RotateYPR(double yaw, double pitch, double roll) {
    const double k = 3.14159265358979323846 / 180.0;
    double axis[3];
    for (int i = 0; i < 3; ++i)
        axis[i] = mTop[i];
    RotateAbout(mTgt, axis, yaw * k);
    RotateAbout(mRight, axis, yaw * k);
    for (int i = 0; i < 3; ++i)
        axis[i] = mRight[i];
    RotateAbout(mTgt, axis, pitch * k);
    RotateAbout(mTop, axis, pitch * k);
    for (int i = 0; i < 3; ++i)
        axis[i] = mTgt[i];
    RotateAbout(mTop, axis, roll * k);
    RotateAbout(mRight, axis, roll * k);
}

bool Direction_cls::IsSimilarTgtDirection(const Direction_cls& a, const Direction_cls& b, double cosLimit) {
    const double d = a.mTgt[0] * b.mTgt[0] + a.mTgt[1] * b.mTgt[1] + a.mTgt[2] * b.mTgt[2];
    return d >= cosLimit;
}

void PositionAndDirection_cls::SetFromMatrix(const double* m16) {
    const double origin[3] = {0.0, 0.0, 0.0};
    const double tgt[3] = {0.0, 0.0, -1.0};
    const double top[3] = {0.0, 1.0, 0.0};
    TensorMath_cls::TransformPoint(m16, origin, mPos);
    TensorMath_cls::TransformVector(m16, tgt, mTgt);
    TensorMath_cls::TransformVector(m16, top, mTop);
    Normalize();
}
