#include "ImageComposer_cls.h"

#include "FBO_cls.h"
#include "GLPerspective_cls.h"

#include <epoxy/gl.h>

void ImageComposer_cls::Compose(FBO_cls* pSource, FBO_cls* pDest, bool bClear) {
    if (!pSource || !pDest)
        return;
    pDest->Begin(bClear, false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glEnable(GL_BLEND);
    glDisable(GL_LIGHTING);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    GLPerspective_cls::Push2DMatrix(pDest->GetWidth(), pDest->GetHeight());
    pSource->DrawOnScreen2D(0, 0, pDest->GetWidth(), pDest->GetHeight(), true);
    GLPerspective_cls::Pop2DMatrix();
    glPopAttrib();
    pDest->End();
}

void ImageComposer_cls::StoreInBuffer(FBO_cls* pImage, FBO_cls* pStore) {
    Compose(pImage, pStore, true);
}

void ImageComposer_cls::OverlapBuffer(FBO_cls* pImage, FBO_cls* pStore) {
    Compose(pStore, pImage, false);
}
