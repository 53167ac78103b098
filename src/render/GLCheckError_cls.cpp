#include "GLCheckError_cls.h"

#include <epoxy/gl.h>
#include <wx/log.h>

const char* GLCheckError_cls::GetErrorName(unsigned int code) {
    switch (code) {
    case GL_INVALID_ENUM:
        return "INVALID_ENUM";
    case GL_INVALID_VALUE:
        return "INVALID_VALUE";
    case GL_INVALID_OPERATION:
        return "INVALID_OPERATION";
    case GL_OUT_OF_MEMORY:
        return "OUT_OF_MEMORY";
    case GL_INVALID_FRAMEBUFFER_OPERATION:
        return "INVALID_FRAMEBUFFER_OPERATION";
    default:
        // The two stack errors are named "Unknown" as well.
        return "Unknown";
    }
}

void GLCheckError_cls::CheckGLError(const char* strWhere) {
    const GLenum code = glGetError();
    if (code == GL_NO_ERROR)
        return;
    wxLogMessage("error = %s %s", GetErrorName(code), strWhere);
}
