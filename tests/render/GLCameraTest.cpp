// Navigation of a view by the mouse: orbit about the pivot, pan, zoom by drag and wheel, the
// mouse preferences' inversion, and inertia that slows and stops. Plain numbers, no GL.
#include "GLCamera_cls.h"
#include "MouseNormalized_cls.h"
#include "TestSupport.h"

namespace {

// The view's default pose: at (0, 0, 10) looking down -z at the origin.
GLCamera_cls FrontCamera() {
    PositionAndDirection_cls pose;
    pose.mPos[2] = 10.0;
    GLCamera_cls camera;
    camera.CopyPosition(pose);
    return camera;
}

// A mouse step of (dx, dy) in unit coordinates.
MouseNormalized_cls Step(double dx, double dy) {
    MouseNormalized_cls mouse;
    mouse.SetDelta(dx, dy);
    return mouse;
}

// The angle between the view's target and the direction to its pivot, in degrees.
double AngleToPivot(const GLCamera_cls& camera) {
    const PositionAndDirection_cls& p = camera.GetPosition();
    double d[3], dot = 0.0, len = 0.0;
    for (int i = 0; i < 3; ++i) {
        d[i] = camera.GetPivot()[i] - p.mPos[i];
        len += d[i] * d[i];
    }
    len = std::sqrt(len);
    for (int i = 0; i < 3; ++i)
        dot += d[i] / len * p.mTgt[i];
    return std::acos(std::min(1.0, dot)) * 180.0 / 3.14159265358979323846;
}

} // namespace

TEST(GLCameraTest, MouseUnitCoordinatesCountFromTheBottomLeft) {
    MouseNormalized_cls mouse;
    mouse.SetPixel(0, 0, 100, 50);
    EXPECT_NEAR(mouse.mX, 0.005, 1e-12);
    EXPECT_NEAR(mouse.mY, 0.99, 1e-12);
    mouse.Begin();
    mouse.MoveTo(49, 49, 100, 50);
    EXPECT_NEAR(mouse.GetDX(), 0.49, 1e-12);
    EXPECT_NEAR(mouse.GetDY(), -0.98, 1e-12);
    mouse.mbInvertY = true;
    EXPECT_NEAR(mouse.GetDY(), 0.98, 1e-12);
}

TEST(GLCameraTest, OrbitKeepsTheDistanceAndTheLookAtThePivot) {
    struct Case_cls {
        const char* strWhat;
        double dx, dy;
        bool bInvertX;
        double x, y, z; // where the view stands afterwards
        double turned;  // the angle Gyration reports
    };
    const double s = 10.0 * std::sqrt(0.5);
    const Case_cls cases[] = {
        {"a quarter width right: 90 degrees round to the left", 0.25, 0.0, false, -10.0, 0.0, 0.0, 90.0},
        {"an eighth width left: 45 degrees to the right", -0.125, 0.0, false, s, 0.0, s, 45.0},
        {"a quarter height up: 45 degrees down under the pivot", 0.0, 0.25, false, 0.0, -s, s, 45.0},
        {"inverted x: a quarter right goes round to the right", 0.25, 0.0, true, 10.0, 0.0, 0.0, 90.0},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strWhat);
        GLCamera_cls camera = FrontCamera();
        camera.mbInvertGyrationX = c.bInvertX;
        MouseNormalized_cls mouse = Step(c.dx, c.dy);
        EXPECT_NEAR(camera.Gyration(mouse, 1.0, 1.0), c.turned, 1e-9);
        ExpectNear3(camera.GetPosition().mPos, c.x, c.y, c.z, 1e-9);
        EXPECT_NEAR(camera.GetPivotDistance(), 10.0, 1e-9);
        EXPECT_NEAR(AngleToPivot(camera), 0.0, 1e-5);
    }
}

TEST(GLCameraTest, ZoomByDragAndWheelMovesAlongTheViewAndPanMovesThePivotAlong) {
    GLCamera_cls camera = FrontCamera();
    camera.ZoomWheel(2.f);
    EXPECT_NEAR(camera.GetPivotDistance(), 8.1, 1e-9);
    camera.ZoomWheel(-1.f);
    EXPECT_NEAR(camera.GetPivotDistance(), 9.0, 1e-9);
    // Dragging up comes closer, down goes away; an inverted zoom the other way round.
    for (bool bInvert : {false, true}) {
        SCOPED_TRACE(bInvert);
        GLCamera_cls drag = FrontCamera();
        drag.mbInvertZoom = bInvert;
        MouseNormalized_cls up = Step(0.0, 0.1);
        drag.Zoom(up);
        EXPECT_NEAR(drag.GetPivotDistance(), 10.0 * std::exp(bInvert ? 0.2 : -0.2), 1e-9);
    }
    // Never through the pivot.
    for (int i = 0; i < 200; ++i)
        camera.ZoomWheel(5.f);
    EXPECT_GT(camera.GetPivotDistance(), 0.0);

    // A pan of the whole height moves by the height of the view at the pivot, 2 tan(22.5) 10.
    GLCamera_cls pan = FrontCamera();
    MouseNormalized_cls mouse = Step(0.0, 1.0);
    pan.Pan(mouse, 45.0);
    const double h = 2.0 * std::tan(22.5 * 3.14159265358979323846 / 180.0) * 10.0;
    ExpectNear3(pan.GetPosition().mPos, 0.0, -h, 10.0, 1e-9);
    ExpectNear3(pan.GetPivot(), 0.0, -h, 0.0, 1e-9);
    ExpectNear3(pan.GetPosition().mTgt, 0.0, 0.0, -1.0, 1e-12);
}

TEST(GLCameraTest, InertiaGoesOnSlowingDownAndStops) {
    GLCamera_cls camera = FrontCamera();
    // A step below the rest speed leaves nothing.
    camera.StartInertia(GLCamera_cls::MOTION_GYRATION, 1e-5, 0.0, 45.0);
    EXPECT_FALSE(camera.IsInnertiaExist());
    EXPECT_FALSE(camera.ProcInertia());

    camera.StartInertia(GLCamera_cls::MOTION_GYRATION, 0.01, 0.0, 45.0);
    ASSERT_TRUE(camera.IsInnertiaExist());
    double previous = camera.GetPosition().mPos[0];
    double lastStep = 1e9;
    int passes = 0;
    while (camera.ProcInertia()) {
        ++passes;
        const double x = camera.GetPosition().mPos[0];
        const double step = std::fabs(x - previous);
        // Each pass moves, and by less than the one before.
        EXPECT_GT(step, 0.0);
        EXPECT_LT(step, lastStep);
        lastStep = step;
        previous = x;
        ASSERT_LT(passes, 1000);
    }
    // 0.01 shrinks by 0.9 a pass to below 2e-4: 38 passes.
    EXPECT_EQ(passes, 38);
    EXPECT_FALSE(camera.IsInnertiaExist());
    EXPECT_NEAR(camera.GetPivotDistance(), 10.0, 1e-9);
    // Stopped by a new press.
    camera.StartInertia(GLCamera_cls::MOTION_ZOOM, 0.0, 0.05, 45.0);
    camera.StopInertia();
    EXPECT_FALSE(camera.ProcInertia());
}
