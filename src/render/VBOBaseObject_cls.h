// A shape shared by every object that draws it: triangles with normals and texture coordinates
// in one vertex buffer, made once per process in the shared context. Unit size: the object's
// scale sizes it.
// GL thread only; must be deleted while its context is current.
#pragma once

#include "GLObject_cls.h"

#include <vector>

class VBOBaseObject_cls {
public:
    // vInterleaved: x, y, z, nx, ny, nz, u, v per vertex, three vertices per triangle.
    explicit VBOBaseObject_cls(const std::vector<float>& vInterleaved);
    virtual ~VBOBaseObject_cls() = default;
    VBOBaseObject_cls(const VBOBaseObject_cls&) = delete;
    VBOBaseObject_cls& operator=(const VBOBaseObject_cls&) = delete;

    // Draws the triangles through whatever program and matrices are current.
    void Draw() const;
    // Draws the triangles with their neighbours (GL_TRIANGLES_ADJACENCY), positions only: the
    // input of the shadow-volume programs.
    void DrawAdjacency() const;
    int GetVertexCount() const { return mVertexCount; }
    // Six indices per triangle, see ShadowAdjacency_cls.
    int GetAdjacencyCount() const { return mAdjacencyCount; }

    // The cube from -1 to 1 on each axis.
    static std::vector<float> GetVCube();
    // Appends one triangle with its face normal.
    static void AddTriangle(std::vector<float>& v, const float* a, const float* b, const float* c);
    // Appends one vertex with its normal and texture coordinate. Without one, the coordinate
    // maps the face like a box does: the two axes across the normal's largest component, from
    // -1..1 to 0..1, v growing towards -z on faces that look along y (a floor seen from above
    // shows its image upright with north up).
    static void AddVertex(std::vector<float>& v, const float* p, const float* n, const float* uv = nullptr);
    static constexpr int kFloatsPerVertex = 8;

protected:
    GLBuffer_cls mBuffer;
    int mVertexCount = 0;
    GLBuffer_cls mAdjacency;
    int mAdjacencyCount = 0;
};
