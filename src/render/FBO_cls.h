// A square off-screen frame buffer whose colour attachment is the texture of its base, so any
// buffer can be bound and drawn like a texture. Built lazily by MakeFBO and rebuilt only when
// the request changes. GL thread only; must be deleted while its context is current.
#pragma once

#include "GLCheckError_cls.h"
#include "GLObject_cls.h"
#include "TextureBase_cls.h"

#include <functional>
#include <memory>

class FBOHost_cls;

class FBO_cls : public TextureBase_cls, public GLCheckError_cls {
public:
    // pHost (not owned) keeps the nesting chain; null for buffers owned by the sampling controllers.
    FBO_cls(int width, int height, FBOHost_cls* pHost);
    ~FBO_cls() override;

    // Only store the request; MakeFBO builds it.
    void SetGeometryFBO(int width, int height) {
        mWidthRequest = width;
        mHeightRequest = height;
    }
    // 8 or 16 bits per channel; any other depth builds a colour texture without storage.
    void SetColorDepth(int bits) { mColorDepth = bits; }

    void MakeFBO(bool bAlpha, bool bDepthTexture);
    // Starts drawing into this buffer. With the host set, the current buffer becomes this one's
    // outer buffer. Unless bNoPush, the attributes that the passes change are pushed (End pops).
    void Begin(bool bClear = true, bool bNoPush = false);
    void End();
    void ClearFBO();

    void SetProjection();
    void SetFrustum(double angleDegrees, double zNear, double zFar);
    double GetLineWidthFactor() const;

    // Null unless the buffer was built with a depth texture.
    const TextureBase_cls* GetPCDepthTexture() const { return mpCDepthTexture.get(); }
    GLuint GetFramebuffer() const { return mFramebuffer.Get(); }
    int GetColorDepthBuilt() const { return mColorDepthBuilt; }
    // The keeper of the nesting chain this buffer joins (not owned; may be null).
    FBOHost_cls* GetPCHost() const { return mpCHost; }

    // True unless framebuffers proved unusable at the first construction.
    static bool msbSupported;
    static bool msbInitialized;
    // Gives the preference "GLDepthIndex=" (1: GL_DEPTH32F_STENCIL8, else GL_DEPTH24_STENCIL8);
    // installed by the layer that owns the preferences, 0 while none is installed.
    static std::function<int()> msFuncGetDepthIndex;

private:
    void DeleteGLObjects();
    // Binds this buffer for drawing over its full size and clears: everything with bClear,
    // otherwise stencil and accumulation only, so the earlier colour and depth stay.
    void BindAndClear(bool bClear);

    FBOHost_cls* mpCHost;
    FBO_cls* mpCFBOOuter = nullptr; // not owned: the buffer current when this one began
    std::unique_ptr<TextureBase_cls> mpCDepthTexture;
    int mWidthRequest;
    int mHeightRequest;
    bool mbClear = false;
    bool mbCreated = false;
    int mColorDepth = 16;
    int mColorDepthBuilt = 0;
    int mDepthIndexBuilt = -1;
    bool mbAlphaBuilt = false;
    bool mbDepthTextureBuilt = false;
    GLRenderbuffer_cls mRenderbuffer;
    GLFramebuffer_cls mFramebuffer;
};
