#include "TextureBase_cls.h"

#include "GLPerspective_cls.h"

void TextureBase_cls::DrawOnScreen2D(double x, double y, double w, double h, bool bOpaque,
                                     int envMode) const {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glEnable(GL_TEXTURE_2D);
    if (!bOpaque) {
        glColor4f(1.f, 1.f, 1.f, 1.f);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    Bind();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, envMode);
    glBegin(GL_QUADS);
    glTexCoord2d(0.0, 0.0);
    glVertex2d(x, y);
    glTexCoord2d(1.0, 0.0);
    glVertex2d(x + w, y);
    glTexCoord2d(1.0, 1.0);
    glVertex2d(x + w, y + h);
    glTexCoord2d(0.0, 1.0);
    glVertex2d(x, y + h);
    glEnd();
    glBindTexture(GL_TEXTURE_2D, 0);
    glPopAttrib();
}

void TextureBase_cls::DrawOnScreen2DFit(int width, int height, int fit, bool bOpaque, int yOffset) const {
    GLPerspective_cls::Push2DMatrix(width, height);
    if (fit == 0)
        DrawOnScreen2D(0, (height - width) / 2 - yOffset, width, width, bOpaque);
    else if (fit == 1)
        DrawOnScreen2D((width - height) / 2, -yOffset, height, height, bOpaque);
    else
        DrawOnScreen2D(0, -yOffset, width, height, bOpaque);
    GLPerspective_cls::Pop2DMatrix();
}
