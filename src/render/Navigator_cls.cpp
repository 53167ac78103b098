#include "Navigator_cls.h"

#include <epoxy/gl.h>

void Navigator_cls::GetAxisEnd(int axis, double& x, double& y) const {
    x = mDirection.mRight[axis];
    y = mDirection.mTop[axis];
}

void Navigator_cls::Draw(double x, double y, double side) const {
    static const float kColours[3][3] = {{1.f, 0.25f, 0.25f}, {0.3f, 1.f, 0.3f}, {0.35f, 0.5f, 1.f}};
    const double cx = x + side * 0.5, cy = y + side * 0.5, half = side * 0.45;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glLineWidth(2.f);
    glBegin(GL_LINES);
    for (int axis = 0; axis < 3; ++axis) {
        double ex = 0.0, ey = 0.0;
        GetAxisEnd(axis, ex, ey);
        glColor3fv(kColours[axis]);
        glVertex2d(cx, cy);
        glVertex2d(cx + ex * half, cy + ey * half);
    }
    glEnd();
    glPopAttrib();
}
