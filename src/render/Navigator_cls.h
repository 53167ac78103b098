// The small axes gizmo in the corner of a view: the world's x, y and z axes as the pose of the
// frame sees them, red, green and blue from the centre of a square. GL thread only for Draw.
#pragma once

#include "PositionAndDirection_cls.h"

class Navigator_cls {
public:
    // The pose of the frame (the image of the navigator follows it).
    void SetPose(const Direction_cls& direction) { mDirection = direction; }
    // The end of the axis (0 x, 1 y, 2 z) on the screen, relative to the centre, in units of
    // the half side: its components along the view's right and top.
    void GetAxisEnd(int axis, double& x, double& y) const;
    // Draws the gizmo in the square at (x, y) of the side, in the current 2D matrices.
    void Draw(double x, double y, double side) const;

private:
    Direction_cls mDirection;
};
