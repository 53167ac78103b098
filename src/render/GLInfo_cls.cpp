#include "GLInfo_cls.h"

#include <epoxy/gl.h>

#include <cstdio>

namespace {
wxString GetGLString(GLenum name) {
    const GLubyte* p = glGetString(name);
    return p ? wxString::FromUTF8(reinterpret_cast<const char*>(p)) : wxString();
}
int GetGLInt(GLenum name) {
    GLint v = 0;
    glGetIntegerv(name, &v);
    return v;
}
} // namespace

void GLInfo_cls::Initialize() {
    mStrVersion = GetGLString(GL_VERSION);
    // A core-profile driver has no single extension string; the compatibility one does.
    mStrExtensions = GetGLString(GL_EXTENSIONS);
    sscanf(mStrVersion.utf8_str().data(), "%d.%d", &mMajor, &mMinor);
    mStrGLSLVersion = mMajor >= 2 ? GetGLString(GL_SHADING_LANGUAGE_VERSION) : wxString("0.0");
    sscanf(mStrGLSLVersion.utf8_str().data(), "%d.%d", &mGLSLMajor, &mGLSLMinor);
    mMaxElementsVertices = GetGLInt(GL_MAX_ELEMENTS_VERTICES);
    mMaxElementsIndices = GetGLInt(GL_MAX_ELEMENTS_INDICES);
    mMaxTextureUnits = GetGLInt(GL_MAX_TEXTURE_UNITS);
    mMaxTextureSize = GetGLInt(GL_MAX_TEXTURE_SIZE);
    mMaxLights = GetGLInt(GL_MAX_LIGHTS);
    mStencilBits = GetGLInt(GL_STENCIL_BITS);
    mDepthBits = GetGLInt(GL_DEPTH_BITS);
}

void GLInfo_cls::GetAllGLInfo(wxString& strOut) const {
    strOut += wxString::Format("Max Elements Vertices: %d\n", mMaxElementsVertices);
    strOut += wxString::Format("Max Elements Indices: %d\n", mMaxElementsIndices);
    strOut += wxString::Format("Max Texture Unit: %d\n", mMaxTextureUnits);
    strOut += wxString::Format("Max Texture Size: %d\n", mMaxTextureSize);
    strOut += wxString::Format("Max Light Num: %d\n", mMaxLights);
    strOut += wxString::Format("Stencil Bit: %d\n", mStencilBits);
    strOut += wxString::Format("Depth Bit: %d\n", mDepthBits);
}
