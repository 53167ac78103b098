#include "GLButton_cls.h"

#include <epoxy/gl.h>

bool GLButton_cls::IsInside(int px, int py, int height) const {
    const int y = height - 1 - py;
    return px >= mX && px < mX + msSize && y >= mY && y < mY + msSize;
}

void GLButton_cls::DrawButton() const {
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.1f, 0.1f, 0.12f, 0.7f);
    glRecti(mX, mY, mX + msSize, mY + msSize);
    glColor4f(0.85f, 0.85f, 0.9f, 1.f);
    for (int bar = 0; bar < 3; ++bar) {
        const int y = mY + 5 + bar * 4;
        glRecti(mX + 4, y, mX + msSize - 4, y + 2);
    }
    glPopAttrib();
}
