// A 2D texture that can be drawn as a quad: the base of every frame buffer, so that a finished
// buffer is drawn to the window or into another buffer like any texture. GL thread only.
#pragma once

#include "GLObject_cls.h"

class TextureBase_cls {
public:
    TextureBase_cls() = default;
    virtual ~TextureBase_cls() = default;
    TextureBase_cls(const TextureBase_cls&) = delete;
    TextureBase_cls& operator=(const TextureBase_cls&) = delete;

    GLuint GetTexture() const { return mTexture.Get(); }
    int GetWidth() const { return mWidth; }
    int GetHeight() const { return mHeight; }
    void Bind() const { glBindTexture(GL_TEXTURE_2D, mTexture.Get()); }

    // Draws the texture over the rectangle in the current matrices. Unless opaque, colour
    // 1, 1, 1, 1 and alpha blending are set; every attribute is restored afterwards.
    void DrawOnScreen2D(double x, double y, double w, double h, bool bOpaque = false,
                        int envMode = GL_REPLACE) const;
    // Draws the square texture into a width by height viewport: fit 0 makes the square as wide as
    // the viewport (cut at top and bottom), fit 1 as high (cut left and right), any other fit
    // stretches it. yOffset moves the picture down.
    void DrawOnScreen2DFit(int width, int height, int fit, bool bOpaque, int yOffset) const;

protected:
    GLTexture_cls mTexture;
    // The size the texture was last built with.
    int mWidth = 0;
    int mHeight = 0;
};
