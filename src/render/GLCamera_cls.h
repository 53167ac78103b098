// The navigation of a 3D view: a pose that orbits about a pivot, pans with it and zooms towards
// it, driven by the mouse in unit coordinates, and keeps moving with the speed of the last drag
// after the button is released (inertia) until the speed has died away. The pivot lies on the
// viewing direction, so after any motion the view still looks at it. Plain values; main thread.
#pragma once

#include "PositionAndDirection_cls.h"

class MouseNormalized_cls;

class GLCamera_cls {
public:
    enum Motion_enum { MOTION_NONE = 0, MOTION_GYRATION = 1, MOTION_PAN = 2, MOTION_ZOOM = 3 };

    // Takes the pose; the pivot stays at the same distance along the new viewing direction.
    void CopyPosition(const PositionAndDirection_cls& pose);
    const PositionAndDirection_cls& GetPosition() const { return mPosDir; }
    const double* GetPivot() const { return mPivot; }
    // The pivot at the point; the view turns to look at it.
    void SetPivot(const double* pPoint);
    double GetPivotDistance() const { return mPosDir.GetDistance(mPivot); }

    // Orbit about the pivot by the mouse step: a drag across the whole width turns by 360 degrees
    // times gainX about the world's up axis, one over the whole height by 180 degrees times gainY
    // about the view's right axis. Returns the angle turned, in degrees.
    double Gyration(MouseNormalized_cls& mouse, double gainX, double gainY);
    // Up towards the pivot, down away from it.
    void Zoom(MouseNormalized_cls& mouse);
    // Positive steps (the wheel turned away from the user) come closer: 0.9 of the distance each.
    void ZoomWheel(float steps);
    // Moves the view and its pivot across the screen so that the point under the mouse follows
    // it, for a view of the angle (degrees).
    void Pan(MouseNormalized_cls& mouse, double angle);
    // Turns the pose about the pivot by yaw about the world's up and pitch about the view's right.
    void TrackBall(double yawDegrees, double pitchDegrees);
    // Multiplies the distance to the pivot (at least a thousandth stays).
    void ZoomBy(double factor);

    // The mouse preferences: which axes each motion reads backwards.
    bool mbInvertGyrationX = false;
    bool mbInvertGyrationY = false;
    bool mbInvertZoom = false;
    bool mbInvertPan = false;

    // ---- inertia ----
    // After a release: the last raw mouse step (dx, dy) of the motion goes on, slowing down, from the next
    // idle pass. A step below the rest speed starts nothing.
    void StartInertia(int motion, double dx, double dy, double angle);
    void StopInertia() { mInertiaMotion = MOTION_NONE; }
    bool IsInnertiaExist() const { return mInertiaMotion != MOTION_NONE; }
    // One idle pass of inertia: moves by the step and slows it. True when the pose moved.
    bool ProcInertia();
    // The step shrinks by this each pass and stops below the rest speed (unit coordinates).
    static constexpr double msInertiaDecay = 0.9;
    static constexpr double msRestSpeed = 2e-4;

private:
    void Apply(int motion, MouseNormalized_cls& mouse, double angle);

    PositionAndDirection_cls mPosDir;
    double mPivot[3] = {0.0, 0.0, 0.0};
    int mInertiaMotion = MOTION_NONE;
    double mInertiaDX = 0.0;
    double mInertiaDY = 0.0;
    double mInertiaAngle = 45.0;
};
