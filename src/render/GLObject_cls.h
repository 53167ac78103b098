// Owners of GL object names: each name is deleted exactly once, by the owner that holds it last.
// An owner must die while the context that made its name is current (on the GL thread): a name
// deleted in another context, or after the context is gone, would free someone else's object.
#pragma once

#include <epoxy/gl.h>

#include <utility>

template <class Kind_cls> class GLObject_cls {
public:
    GLObject_cls() = default;
    // Takes over a name made elsewhere (0 for none).
    explicit GLObject_cls(GLuint name) : mName(name) {}
    ~GLObject_cls() { Reset(); }
    GLObject_cls(const GLObject_cls&) = delete;
    GLObject_cls& operator=(const GLObject_cls&) = delete;
    GLObject_cls(GLObject_cls&& other) noexcept : mName(other.Release()) {}
    GLObject_cls& operator=(GLObject_cls&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }

    // A new object of the kind; shaders take their stage.
    template <class... Arg_cls> static GLObject_cls Make(Arg_cls... args) {
        return GLObject_cls(Kind_cls::Create(args...));
    }

    GLuint Get() const { return mName; }
    explicit operator bool() const { return mName != 0; }
    // Deletes the held object (if any) and holds the given name instead.
    void Reset(GLuint name = 0) {
        if (mName != 0)
            Kind_cls::Delete(mName);
        mName = name;
    }
    // Gives up the name without deleting it.
    GLuint Release() { return std::exchange(mName, 0u); }

private:
    GLuint mName = 0;
};

struct GLBufferKind_cls {
    static GLuint Create() {
        GLuint name = 0;
        glGenBuffers(1, &name);
        return name;
    }
    static void Delete(GLuint name) { glDeleteBuffers(1, &name); }
};

struct GLTextureKind_cls {
    static GLuint Create() {
        GLuint name = 0;
        glGenTextures(1, &name);
        return name;
    }
    static void Delete(GLuint name) { glDeleteTextures(1, &name); }
};

struct GLFramebufferKind_cls {
    static GLuint Create() {
        GLuint name = 0;
        glGenFramebuffers(1, &name);
        return name;
    }
    static void Delete(GLuint name) { glDeleteFramebuffers(1, &name); }
};

struct GLRenderbufferKind_cls {
    static GLuint Create() {
        GLuint name = 0;
        glGenRenderbuffers(1, &name);
        return name;
    }
    static void Delete(GLuint name) { glDeleteRenderbuffers(1, &name); }
};

struct GLShaderKind_cls {
    static GLuint Create(GLenum stage) { return glCreateShader(stage); }
    static void Delete(GLuint name) { glDeleteShader(name); }
};

struct GLProgramKind_cls {
    static GLuint Create() { return glCreateProgram(); }
    static void Delete(GLuint name) { glDeleteProgram(name); }
};

using GLBuffer_cls = GLObject_cls<GLBufferKind_cls>;
using GLTexture_cls = GLObject_cls<GLTextureKind_cls>;
using GLFramebuffer_cls = GLObject_cls<GLFramebufferKind_cls>;
using GLRenderbuffer_cls = GLObject_cls<GLRenderbufferKind_cls>;
using GLShader_cls = GLObject_cls<GLShaderKind_cls>;
using GLProgram_cls = GLObject_cls<GLProgramKind_cls>;
