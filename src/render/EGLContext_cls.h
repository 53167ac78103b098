// An OpenGL context with no window and no display server: Mesa's surfaceless EGL platform. The
// frame passes draw only into framebuffer objects, so they run in it exactly as in a window.
#pragma once

#include <epoxy/egl.h>
#include <wx/string.h>

class EGLContext_cls {
public:
    EGLContext_cls() = default;
    // Releases and destroys the context: every GL object made in it must be gone before.
    ~EGLContext_cls();
    EGLContext_cls(const EGLContext_cls&) = delete;
    EGLContext_cls& operator=(const EGLContext_cls&) = delete;

    // Makes a 4.5 compatibility-profile context and makes it current on the calling thread.
    // False with the reason in GetStrError when this machine cannot give one.
    bool Create();
    bool MakeCurrent();
    bool IsValid() const { return mContext != EGL_NO_CONTEXT; }
    const wxString& GetStrError() const { return mStrError; }

private:
    bool Fail(const wxString& strWhat);
    void Destroy();

    EGLDisplay mDisplay = EGL_NO_DISPLAY;
    EGLContext mContext = EGL_NO_CONTEXT;
    wxString mStrError;
};
