#include "EGLContext_cls.h"

#include <cstring>

namespace {

bool HasExtension(const char* strList, const char* strName) {
    if (!strList)
        return false;
    const size_t len = strlen(strName);
    for (const char* p = strstr(strList, strName); p; p = strstr(p + len, strName)) {
        const bool bStart = p == strList || p[-1] == ' ';
        const bool bEnd = p[len] == '\0' || p[len] == ' ';
        if (bStart && bEnd)
            return true;
    }
    return false;
}

} // namespace

EGLContext_cls::~EGLContext_cls() {
    Destroy();
}

bool EGLContext_cls::Fail(const wxString& strWhat) {
    mStrError = wxString::Format("%s (EGL error 0x%04x)", strWhat, static_cast<unsigned>(eglGetError()));
    Destroy();
    return false;
}

void EGLContext_cls::Destroy() {
    if (mDisplay == EGL_NO_DISPLAY)
        return;
    eglMakeCurrent(mDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (mContext != EGL_NO_CONTEXT)
        eglDestroyContext(mDisplay, mContext);
    eglTerminate(mDisplay);
    mContext = EGL_NO_CONTEXT;
    mDisplay = EGL_NO_DISPLAY;
}

bool EGLContext_cls::Create() {
    Destroy();
    mStrError.clear();
    // The client extensions tell whether the surfaceless platform exists before any display does.
    const char* strClient = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (!HasExtension(strClient, "EGL_MESA_platform_surfaceless") ||
        !HasExtension(strClient, "EGL_EXT_platform_base")) {
        mStrError = "EGL offers no surfaceless platform (EGL_MESA_platform_surfaceless)";
        return false;
    }
    mDisplay = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (mDisplay == EGL_NO_DISPLAY)
        return Fail("eglGetPlatformDisplayEXT gave no surfaceless display");
    EGLint major = 0, minor = 0;
    if (!eglInitialize(mDisplay, &major, &minor))
        return Fail("eglInitialize failed on the surfaceless display");
    const char* strExt = eglQueryString(mDisplay, EGL_EXTENSIONS);
    if (!HasExtension(strExt, "EGL_KHR_no_config_context") ||
        !HasExtension(strExt, "EGL_KHR_surfaceless_context"))
        return Fail("the surfaceless display lacks EGL_KHR_no_config_context or EGL_KHR_surfaceless_context");
    if (!eglBindAPI(EGL_OPENGL_API))
        return Fail("eglBindAPI(EGL_OPENGL_API) failed");
    // Compatibility profile: the passes use the fixed matrices, attribute stacks and lights.
    const EGLint attribs[] = {EGL_CONTEXT_MAJOR_VERSION,
                              4,
                              EGL_CONTEXT_MINOR_VERSION,
                              5,
                              EGL_CONTEXT_OPENGL_PROFILE_MASK,
                              EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                              EGL_NONE};
    mContext = eglCreateContext(mDisplay, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attribs);
    if (mContext == EGL_NO_CONTEXT)
        return Fail("eglCreateContext gave no OpenGL 4.5 compatibility context");
    if (!MakeCurrent())
        return Fail("eglMakeCurrent failed with no surface");
    return true;
}

bool EGLContext_cls::MakeCurrent() {
    if (mContext == EGL_NO_CONTEXT)
        return false;
    return eglMakeCurrent(mDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, mContext) == EGL_TRUE;
}
