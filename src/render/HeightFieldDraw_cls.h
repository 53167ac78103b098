// The drawing of height-field objects, one per view: each object's prepared grid goes to vertex
// buffers (positions already lifted by the heights, normals, the grid coordinate 0 .. 1 for the
// material's image and the texel of the vertex), an element buffer of its triangles and a float
// texture of the heights as colour-curve coordinates ("textureHeight", channel red), uploaded only when the
// prepared frame or the curve's range changed, and drawn lit through "HF": colour from the colour curve or
// the material's colour, the material's image modulating or replacing it, smooth or flat shading by the
// material's "Smooth". GL thread only.
#pragma once

#include "DataDrawBase_cls.h"
#include "GLObject_cls.h"
#include "HeightFieldSV_cls.h"

#include <map>

class GLDrawStatus_cls;
class HeightFieldForRender_cls;
class HeightField_cls;
class SceneObj_cls;

class HeightFieldDraw_cls : public DataDrawBase_cls {
public:
    // The triangles of a height field's shown frame in the object's space, as the shadow volumes
    // need them: vertices (3 floats each, x fastest over the grid) and three indices a triangle,
    // counter-clockwise seen from above. Not owned: the object's prepared set holds them until
    // its next frame.
    class Triangles_cls {
    public:
        const float* mpXYZ = nullptr;
        int mNumVertex = 0;
        const unsigned int* mpIndex = nullptr;
        int mNumIndex = 0;
    };

    // Puts the draw entry and the maker of this holder into the kind table.
    static void Register();
    // Main thread, after the object's frame was prepared (its draw). False when it has none.
    static bool GetTriangles(const HeightField_cls& obj, Triangles_cls& out);

    ~HeightFieldDraw_cls() override;
    // Prepares the object's frame and draws it with its matrix on the model-view; nothing when
    // the frame has no grid.
    void GLDraw(HeightField_cls& obj, GLDrawStatus_cls& status);
    // The shadow volume of the object's grid, unless its material casts none.
    void GLDrawSV(HeightField_cls& obj, GLDrawStatus_cls& status);
    // The buffers of the object's last upload (positions, then elements); false without them.
    bool GetBuffers(const HeightField_cls* p, GLuint& position, GLuint& element, int& indexCount) const;
    int GetUploadCount(const HeightField_cls* p) const;

private:
    class Object_cls {
    public:
        GLBuffer_cls mPosition;
        GLBuffer_cls mNormal;
        GLBuffer_cls mCoord;   // the place on the grid (2), the vertex's texel centre (2)
        GLTexture_cls mHeight; // a texel per vertex: the colour-curve coordinate of its height
        GLBuffer_cls mElement;
        int mIndexCount = 0;
        wxString mStrStamp;
        wxString mStrTableStamp;
        int mUploadCount = 0;
        HeightFieldSV_cls mCSV;
    };
    void Upload(Object_cls& o, const HeightFieldForRender_cls& set, HeightField_cls& obj, double nt);

    std::map<const HeightField_cls*, Object_cls> mMapObject;
};
