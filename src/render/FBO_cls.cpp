#include "FBO_cls.h"

#include "FBOHost_cls.h"
#include "GLPerspective_cls.h"

bool FBO_cls::msbSupported = true;
bool FBO_cls::msbInitialized = false;
std::function<int()> FBO_cls::msFuncGetDepthIndex;

namespace {

// The attributes a pass may change; depth state is deliberately not saved.
constexpr GLbitfield kPushedBits = GL_CURRENT_BIT | GL_LINE_BIT | GL_LIGHTING_BIT | GL_FOG_BIT |
                                   GL_STENCIL_BUFFER_BIT | GL_VIEWPORT_BIT | GL_TRANSFORM_BIT |
                                   GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT;
constexpr GLbitfield kAllBuffers =
    GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT | GL_ACCUM_BUFFER_BIT;

// A texture of a depth texture buffer; it only needs the texture and its size.
class DepthTexture_cls : public TextureBase_cls {
public:
    DepthTexture_cls(int width, int height) {
        mTexture = GLTexture_cls::Make();
        mWidth = width;
        mHeight = height;
        glBindTexture(GL_TEXTURE_2D, mTexture.Get());
        glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, width, height, 0, GL_DEPTH_COMPONENT, GL_FLOAT,
                     nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
};

} // namespace

FBO_cls::FBO_cls(int width, int height, FBOHost_cls* pHost)
    : mpCHost(pHost), mWidthRequest(width), mHeightRequest(height) {
    if (!msbInitialized && msbSupported) {
        // A context with no surface has no default framebuffer and answers "undefined": that says
        // nothing about framebuffer objects, which are all the passes need.
        const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
        if (status != GL_FRAMEBUFFER_COMPLETE && status != GL_FRAMEBUFFER_UNDEFINED)
            msbSupported = false;
    }
    msbInitialized = true;
}

FBO_cls::~FBO_cls() = default;

void FBO_cls::DeleteGLObjects() {
    mTexture.Reset();
    mRenderbuffer.Reset();
    mFramebuffer.Reset();
    mpCDepthTexture.reset();
    mbCreated = false;
}

void FBO_cls::MakeFBO(bool bAlpha, bool bDepthTexture) {
    if (!msbSupported)
        return;
    CheckGLError("MakeFBO");
    const int depthIndex = msFuncGetDepthIndex ? msFuncGetDepthIndex() : 0;
    if (mbCreated && mWidth == mWidthRequest && mHeight == mHeightRequest &&
        mColorDepthBuilt == mColorDepth && mDepthIndexBuilt == depthIndex && mbAlphaBuilt == bAlpha &&
        mbDepthTextureBuilt == bDepthTexture)
        return;
    DeleteGLObjects();

    const int w = mWidthRequest;
    const int h = mHeightRequest;
    mTexture = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, mTexture.Get());
    if (mColorDepth == 8)
        glTexImage2D(GL_TEXTURE_2D, 0, bAlpha ? GL_RGBA : GL_RGB, w, h, 0, bAlpha ? GL_RGBA : GL_RGB,
                     GL_UNSIGNED_BYTE, nullptr);
    else if (mColorDepth == 16)
        glTexImage2D(GL_TEXTURE_2D, 0, bAlpha ? GL_RGBA16F : GL_RGB16F, w, h, 0, bAlpha ? GL_RGBA : GL_RGB,
                     GL_HALF_FLOAT, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    CheckGLError("INIT");

    // Built inside another buffer's pass (a record buffer), the outer binding comes back afterwards.
    GLint outer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &outer);
    mFramebuffer = GLFramebuffer_cls::Make();
    mRenderbuffer = GLRenderbuffer_cls::Make();
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
    glBindRenderbuffer(GL_RENDERBUFFER, mRenderbuffer.Get());
    if (bDepthTexture) {
        mpCDepthTexture = std::make_unique<DepthTexture_cls>(w, h);
        glBindTexture(GL_TEXTURE_2D, 0);
        // Made but not attached: a buffer with a depth texture has no stencil.
        glRenderbufferStorage(GL_RENDERBUFFER, GL_STENCIL_INDEX8, w, h);
        CheckGLError("STORAGE DEPTH STENCIL");
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture.Get(), 0);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D,
                               mpCDepthTexture->GetTexture(), 0);
    } else {
        glRenderbufferStorage(GL_RENDERBUFFER, depthIndex == 1 ? GL_DEPTH32F_STENCIL8 : GL_DEPTH24_STENCIL8,
                              w, h);
        CheckGLError("STORAGE DEPTH STENCIL");
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture.Get(), 0);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER,
                                  mRenderbuffer.Get());
    }
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    CheckGLError("ATTATCH DEPTH STENCIL"); // the label's spelling is the log's, kept on purpose

    mWidth = w;
    mHeight = h;
    mColorDepthBuilt = mColorDepth;
    mDepthIndexBuilt = depthIndex;
    mbAlphaBuilt = bAlpha;
    mbDepthTextureBuilt = bDepthTexture;
    mbCreated = true;

    glClearColor(0.f, 0.f, 0.f, 0.f);
    glClear(kAllBuffers);
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(outer));
}

void FBO_cls::BindAndClear(bool bClear) {
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mFramebuffer.Get());
    CheckGLError("BIND FBO");
    glViewport(0, 0, mWidth, mHeight);
    glClearColor(0.f, 0.f, 0.f, 0.f);
    glClear(bClear ? kAllBuffers : (GL_STENCIL_BUFFER_BIT | GL_ACCUM_BUFFER_BIT));
    CheckGLError("BEGIN END");
}

void FBO_cls::Begin(bool bClear, bool bNoPush) {
    mbClear = bClear;
    if (mpCHost) {
        if (mpCHost->mpCFBOCurrent)
            mpCFBOOuter = mpCHost->mpCFBOCurrent;
        mpCHost->mpCFBOCurrent = this;
    }
    if (!bNoPush)
        glPushAttrib(kPushedBits);
    if (!msbSupported)
        return;
    BindAndClear(bClear);
}

void FBO_cls::End() {
    // The attributes were pushed while the outer buffer (or the window) was bound, and they hold
    // its draw buffer: they are popped onto that same binding, or GL rejects the draw buffer.
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mpCFBOOuter && msbSupported ? mpCFBOOuter->GetFramebuffer() : 0);
    glPopAttrib();
    if (mpCFBOOuter) {
        // Back into the outer pass, keeping what it drew so far.
        if (msbSupported)
            mpCFBOOuter->BindAndClear(false);
        if (mpCHost)
            mpCHost->mpCFBOCurrent = mpCFBOOuter;
        mpCFBOOuter = nullptr;
    } else if (mpCHost) {
        mpCHost->mpCFBOCurrent = nullptr;
    }
}

void FBO_cls::ClearFBO() {
    Begin(true, false);
    End();
}

void FBO_cls::SetProjection() {
    GLPerspective_cls::SetProjection(mWidth, mHeight);
}

void FBO_cls::SetFrustum(double angleDegrees, double zNear, double zFar) {
    GLPerspective_cls::SetFrustumTiled(mWidth, mHeight, angleDegrees, zNear, zFar, 1, 1, 0, 0);
}

double FBO_cls::GetLineWidthFactor() const {
    // 2048 and the sizes above 4096 draw with the plain width: this step back is wanted.
    switch (mWidth) {
    case 256:
        return 0.125;
    case 512:
        return 0.25;
    case 1024:
        return 0.5;
    case 4096:
        return 2.0;
    default:
        return 1.0;
    }
}
