#include "GLPerspective_cls.h"

#include "PositionAndDirection_cls.h"

#include <epoxy/gl.h>

#include <cmath>

namespace {
// Five digits on purpose: the code that recomputes angles from the frustum uses the same value,
// and the images must match between them.
constexpr double kPi = 3.14159;
} // namespace

void GLPerspective_cls::SetProjection(int width, int height) {
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
}

void GLPerspective_cls::SetFrustum(int width, int height, double angle, double zNear, double zFar) {
    SetFrustumTiled(width, height, angle, zNear, zFar, 1, 1, 0, 0);
}

void GLPerspective_cls::SetFrustumTiled(int width, int height, double angle, double zNear, double zFar,
                                        int tilesX, int tilesY, int tileX, int tileY) {
    const double top = tan(angle * kPi / 180.0 * 0.5) * zNear;
    const double right = top * width / height;
    const double left0 = tileX * 2.0 * right / tilesX - right;
    const double right0 = (tileX + 1) * 2.0 * right / tilesX - right;
    const double bottom0 = tileY * 2.0 * top / tilesY - top;
    const double top0 = (tileY + 1) * 2.0 * top / tilesY - top;
    glFrustum(left0, right0, bottom0, top0, zNear, zFar);
}

void GLPerspective_cls::SetFrustumPartial(int width, int height, double angle, double zNear, double zFar,
                                          double centreX, double centreY, double size) {
    const double top = tan(angle * kPi / 180.0 * 0.5) * zNear;
    const double right = top * width / height;
    const double left0 = (centreX - size / 2) * 2.0 * right - right;
    const double right0 = (centreX + size / 2) * 2.0 * right - right;
    const double bottom0 = (centreY - size / 2) * 2.0 * top - top;
    const double top0 = (centreY + size / 2) * 2.0 * top - top;
    glFrustum(left0, right0, bottom0, top0, zNear, zFar);
}

void GLPerspective_cls::Push2DMatrix(int width, int height) {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glViewport(0, 0, width, height);
    // What gluOrtho2D gives, without GLU.
    glOrtho(0.0, width, 0.0, height, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
}

void GLPerspective_cls::Pop2DMatrix() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
}

void GLPerspective_cls::SetModelView(const Position_cls& position, const Direction_cls& direction) {
    glMatrixMode(GL_MODELVIEW);
    const double* r = direction.mRight;
    const double* u = direction.mTop;
    const double* g = direction.mTgt;
    // Column major: the rows of the rotation are right, top and -target.
    const double m[16] = {r[0], u[0], -g[0], 0.0, r[1], u[1], -g[1], 0.0,
                          r[2], u[2], -g[2], 0.0, 0.0,  0.0,  0.0,   1.0};
    glMultMatrixd(m);
    glTranslated(-position.mPos[0], -position.mPos[1], -position.mPos[2]);
}
