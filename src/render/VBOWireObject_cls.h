// A shape of lines shared by every guide object that draws it (the empty's cross, the camera's
// pyramid), one vertex buffer made once per process. GL thread only; must be deleted while its
// context is current.
#pragma once

#include "GLObject_cls.h"

#include <vector>

class VBOWireObject_cls {
public:
    // vLines: x, y, z per vertex, two vertices per line.
    explicit VBOWireObject_cls(const std::vector<float>& vLines);
    VBOWireObject_cls(const VBOWireObject_cls&) = delete;
    VBOWireObject_cls& operator=(const VBOWireObject_cls&) = delete;

    void Draw() const;

    // Three axes from -1 to 1.
    static std::vector<float> GetVEmpty();
    // A pyramid from the eye at the origin to a frame at z = -1, and a triangle above the frame
    // that shows which side is up.
    static std::vector<float> GetVCamera();

private:
    GLBuffer_cls mBuffer;
    int mVertexCount = 0;
};
