#include "GLCamera_cls.h"

#include "MouseNormalized_cls.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

void RotateAbout(double* v, const double* axis, double rad) {
    const double c = std::cos(rad), s = std::sin(rad);
    const double k[3] = {axis[1] * v[2] - axis[2] * v[1], axis[2] * v[0] - axis[0] * v[2],
                         axis[0] * v[1] - axis[1] * v[0]};
    const double d = axis[0] * v[0] + axis[1] * v[1] + axis[2] * v[2];
    for (int i = 0; i < 3; ++i)
        v[i] = v[i] * c + k[i] * s + axis[i] * d * (1.0 - c);
}

} // namespace

void GLCamera_cls::CopyPosition(const PositionAndDirection_cls& pose) {
    double distance = GetPivotDistance();
    if (distance < 1e-3)
        distance = std::max(1e-3, pose.GetDistance(mPivot));
    mPosDir = pose;
    mPosDir.Normalize();
    for (int i = 0; i < 3; ++i)
        mPivot[i] = mPosDir.mPos[i] + mPosDir.mTgt[i] * distance;
}

void GLCamera_cls::SetPivot(const double* pPoint) {
    for (int i = 0; i < 3; ++i) {
        mPivot[i] = pPoint[i];
        mPosDir.mTgt[i] = pPoint[i] - mPosDir.mPos[i];
    }
    mPosDir.Normalize();
}

void GLCamera_cls::TrackBall(double yawDegrees, double pitchDegrees) {
    const double up[3] = {0.0, 1.0, 0.0};
    double axisRight[3] = {mPosDir.mRight[0], mPosDir.mRight[1], mPosDir.mRight[2]};
    double rel[3];
    for (int i = 0; i < 3; ++i)
        rel[i] = mPosDir.mPos[i] - mPivot[i];
    for (double* v : {rel, mPosDir.mTgt, mPosDir.mTop, mPosDir.mRight, axisRight})
        RotateAbout(v, up, yawDegrees * kDegree);
    for (double* v : {rel, mPosDir.mTgt, mPosDir.mTop, mPosDir.mRight})
        RotateAbout(v, axisRight, pitchDegrees * kDegree);
    for (int i = 0; i < 3; ++i)
        mPosDir.mPos[i] = mPivot[i] + rel[i];
    mPosDir.Normalize();
}

double GLCamera_cls::Gyration(MouseNormalized_cls& mouse, double gainX, double gainY) {
    mouse.mbInvertX = mbInvertGyrationX;
    mouse.mbInvertY = mbInvertGyrationY;
    const double yaw = -mouse.GetDX() * 360.0 * gainX;
    const double pitch = mouse.GetDY() * 180.0 * gainY;
    TrackBall(yaw, pitch);
    return std::sqrt(yaw * yaw + pitch * pitch);
}

void GLCamera_cls::ZoomBy(double factor) {
    const double distance = std::max(1e-3, GetPivotDistance() * factor);
    for (int i = 0; i < 3; ++i)
        mPosDir.mPos[i] = mPivot[i] - mPosDir.mTgt[i] * distance;
}

void GLCamera_cls::Zoom(MouseNormalized_cls& mouse) {
    mouse.mbInvertX = false;
    mouse.mbInvertY = mbInvertZoom;
    ZoomBy(std::exp(-mouse.GetDY() * 2.0));
}

void GLCamera_cls::ZoomWheel(float steps) {
    ZoomBy(std::pow(0.9, static_cast<double>(steps)));
}

void GLCamera_cls::Pan(MouseNormalized_cls& mouse, double angle) {
    mouse.mbInvertX = mbInvertPan;
    mouse.mbInvertY = mbInvertPan;
    // The height of the view at the pivot's distance, in scene units.
    const double span = 2.0 * GetPivotDistance() * std::tan(angle * kDegree * 0.5);
    for (int i = 0; i < 3; ++i) {
        const double d = -(mouse.GetDX() * mPosDir.mRight[i] + mouse.GetDY() * mPosDir.mTop[i]) * span;
        mPosDir.mPos[i] += d;
        mPivot[i] += d;
    }
}

void GLCamera_cls::Apply(int motion, MouseNormalized_cls& mouse, double angle) {
    switch (motion) {
    case MOTION_GYRATION:
        Gyration(mouse, 1.0, 1.0);
        break;
    case MOTION_PAN:
        Pan(mouse, angle);
        break;
    case MOTION_ZOOM:
        Zoom(mouse);
        break;
    default:
        break;
    }
}

void GLCamera_cls::StartInertia(int motion, double dx, double dy, double angle) {
    mInertiaMotion = MOTION_NONE;
    if (motion == MOTION_NONE || std::hypot(dx, dy) < msRestSpeed)
        return;
    mInertiaMotion = motion;
    mInertiaDX = dx;
    mInertiaDY = dy;
    mInertiaAngle = angle;
}

bool GLCamera_cls::ProcInertia() {
    if (mInertiaMotion == MOTION_NONE)
        return false;
    // The raw step of the mouse, read through the preferences like a drag.
    MouseNormalized_cls mouse;
    mouse.SetDelta(mInertiaDX, mInertiaDY);
    Apply(mInertiaMotion, mouse, mInertiaAngle);
    mInertiaDX *= msInertiaDecay;
    mInertiaDY *= msInertiaDecay;
    if (std::hypot(mInertiaDX, mInertiaDY) < msRestSpeed)
        mInertiaMotion = MOTION_NONE;
    return true;
}
