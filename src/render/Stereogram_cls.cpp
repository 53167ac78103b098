#include "Stereogram_cls.h"

#include "FBO_cls.h"
#include "GLPerspective_cls.h"

#include <epoxy/gl.h>

namespace {
// One buffer over a width by height viewport, with the blending the caller set.
void DrawWhole(const FBO_cls* pImage, double x, double y, double w, double h, int width, int height) {
    GLPerspective_cls::Push2DMatrix(width, height);
    pImage->DrawOnScreen2D(x, y, w, h, true);
    GLPerspective_cls::Pop2DMatrix();
}
} // namespace

void Stereogram_cls::MergeStereogram(FBO_cls** pEyes, FBO_cls* pOut, int eyeType) {
    if (!pEyes || !pEyes[0] || !pEyes[1] || !pOut)
        return;
    pOut->Begin(true, false);
    if (eyeType == 4 || eyeType == 5)
        DrawAnaglyph(pEyes, eyeType, pOut->GetWidth(), pOut->GetHeight());
    else if (eyeType == 6)
        DrawSideBySide(pEyes, pOut->GetWidth(), pOut->GetHeight());
    pOut->End();
}

void Stereogram_cls::GetColorMask(int eyeType, int eye, bool* pMask) {
    const bool bRedCyan = eyeType == 4;
    if (eye == 0) {
        pMask[0] = true;
        pMask[1] = !bRedCyan;
        pMask[2] = false;
    } else {
        pMask[0] = false;
        pMask[1] = bRedCyan;
        pMask[2] = true;
    }
    pMask[3] = true;
}

void Stereogram_cls::ColorMaskBegin(int eyeType, int eye) {
    bool m[4];
    GetColorMask(eyeType, eye, m);
    glColorMask(m[0], m[1], m[2], m[3]);
}

void Stereogram_cls::ColorMaskEnd() {
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

void Stereogram_cls::DrawAnaglyph(FBO_cls** pEyes, int eyeType, int width, int height) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glClearColor(0.f, 0.f, 0.f, 0.f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    // The eyes add; the alpha is the larger of the two, so the picture covers what either covers.
    glEnable(GL_BLEND);
    glBlendEquationSeparate(GL_FUNC_ADD, GL_MAX);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE, GL_ONE, GL_ONE);
    for (int eye = 0; eye < 2; ++eye) {
        ColorMaskBegin(eyeType, eye);
        DrawWhole(pEyes[eye], 0, 0, width, height, width, height);
        ColorMaskEnd();
    }
    glPopAttrib();
}

void Stereogram_cls::DrawSideBySide(FBO_cls** pEyes, int width, int height) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_BLEND);
    const double half = width * 0.5;
    for (int eye = 0; eye < 2; ++eye)
        DrawWhole(pEyes[eye], eye * half, 0, half, height, width, height);
    glPopAttrib();
}

void Stereogram_cls::MakeStripePatternOnStencil(int width, int height, bool bOddFromTop) {
    glClearStencil(0);
    glClear(GL_STENCIL_BUFFER_BIT);
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_ALWAYS, 1, ~0u);
    glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDepthMask(GL_FALSE);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LINE_SMOOTH);
    glLineWidth(1.f);
    GLPerspective_cls::Push2DMatrix(width, height);
    glBegin(GL_LINES);
    // Rows count from the bottom in GL; the parity is taken from the top, as in the files.
    for (int row = 0; row < height; ++row) {
        const bool bOdd = (height - 1 - row) % 2 == 1;
        if (bOdd != bOddFromTop)
            continue;
        glVertex2d(0.0, row + 0.5);
        glVertex2d(width, row + 0.5);
    }
    glEnd();
    GLPerspective_cls::Pop2DMatrix();
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

void Stereogram_cls::StencilMaskBegin(int ref) {
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_EQUAL, ref, ~0u);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

void Stereogram_cls::StencilMaskEnd() {
    glDisable(GL_STENCIL_TEST);
}

void Stereogram_cls::DrawScanLineOnScreen(FBO_cls** pEyes, int width, int height, int fit, int yOffset) {
    if (!pEyes || !pEyes[0] || !pEyes[1])
        return;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    pEyes[0]->DrawOnScreen2DFit(width, height, fit, false, yOffset);
    MakeStripePatternOnStencil(width, height, true);
    StencilMaskBegin(1);
    pEyes[1]->DrawOnScreen2DFit(width, height, fit, false, yOffset);
    StencilMaskEnd();
    glPopAttrib();
}
