// The drawing of isosurface objects, one per view: each object's marching-cubes triangles go to
// one vertex buffer of positions and normals (the normals of the voxel gradient, pointing to the
// lower values), uploaded only when the surface changed (another step or another iso value), and
// drawn through the object programs with the object's material, as the primitives are. It is
// lit, so it takes part in every shadow step and receives shadows, and it casts as a mesh does:
// the triangles' neighbours are found once per surface, the first time a volume is drawn.
// GL thread only.
#pragma once

#include "GLKindResources_cls.h"
#include "GLObject_cls.h"

#include <map>

class GLDrawStatus_cls;
class IsosurfaceForRender_cls;
class Isosurface_cls;
class SceneObj_cls;

class IsosurfaceDraw_cls : public GLKindResource_cls {
public:
    // Puts the draw entry and the maker of this holder into the kind table.
    static void Register();

    // Prepares the object's surface (the marching cubes run again on the worker threads when the
    // step or the iso value changed) and draws it; nothing when there is no surface.
    void GLDraw(Isosurface_cls& obj, GLDrawStatus_cls& status);
    // The shadow volume of the surface the lit draw of this step prepared, unless the material
    // casts none.
    void GLDrawSV(Isosurface_cls& obj, GLDrawStatus_cls& status);
    int GetUploadCount(const Isosurface_cls* p) const;
    long long GetDrawnTriangleCount(const Isosurface_cls* p) const;

private:
    class Object_cls {
    public:
        GLBuffer_cls mBuffer; // x, y, z, nx, ny, nz per vertex
        long long mTriangleCount = 0;
        wxString mStrStamp;
        int mUploadCount = 0;
        GLBuffer_cls mAdjacency; // six indices a triangle, for the buffer's surface
        int mAdjacencyCount = 0;
        wxString mStrAdjacencyStamp;
    };
    void Upload(Object_cls& o, const IsosurfaceForRender_cls& set);

    std::map<const Isosurface_cls*, Object_cls> mMapObject;
};
