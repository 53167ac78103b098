// Draws mesh objects from vertex buffers: each mesh file is uploaded once, as one buffer of
// interleaved position, normal and texture coordinate, cut into runs of one .mtl material each,
// and shared by every object naming the file. A file that cannot be read draws as the default
// mesh, a unit cube, so the object stays visible where it stands; the reader has logged the file
// once and it is not read again. One instance per GL context (the frame passes own it).
// GL thread only.
#pragma once

#include "GLObject_cls.h"

#include <wx/string.h>

#include <map>
#include <memory>
#include <set>
#include <vector>

class MeshObj_cls;
class TextureProvider_cls;
class WavefrontLoader_cls;

class MeshDraw_cls {
public:
    // Textures named by the materials come from the provider (not owned; it must outlive this).
    explicit MeshDraw_cls(TextureProvider_cls* pCTextureProvider);
    ~MeshDraw_cls();
    MeshDraw_cls(const MeshDraw_cls&) = delete;
    MeshDraw_cls& operator=(const MeshDraw_cls&) = delete;

    // Draws the object's mesh in the current projection and modelview, with pMatrix16 (column
    // major, as glMultMatrixd takes it; null for none) multiplied onto the modelview. Each run
    // sets the fixed-function material from its .mtl material (the object's own material at t
    // where the run names none), binds its texture on unit 0 and, when a program is current,
    // sets that program's "textureMode" to 1 (modulate) or 0. Every GL state it changes is
    // restored. An object that is not valid draws nothing.
    void Draw(MeshObj_cls& obj, const double* pMatrix16, double t);
    // The shadow volume of the object's mesh through the program bound now (GL_TRIANGLES_ADJACENCY,
    // positions only), with the current model-view. Nothing before the object was drawn once.
    void DrawSV(MeshObj_cls& obj);
    // Forgets the object's buffers; the buffers of a file go with the last object using them.
    void Release(const MeshObj_cls* pObj);
    // The texture of an image file that a scene material names (the primitives' materials), read
    // once and held for the life of this drawer; the provider's default texture when the file
    // cannot be read. 0 without a provider.
    GLuint GetMaterialTexture(const wxString& strPath);
    // The number of mesh files held in buffers (the default mesh counts once it was needed).
    size_t GetNumMesh() const { return mMapMesh.size(); }

private:
    struct Run_cls;
    struct Mesh_cls;
    Mesh_cls* Upload(const WavefrontLoader_cls& loader, const wxString& strDir, bool bFlipNormal);
    Mesh_cls* GetDefaultMesh();
    void DrawMesh(const Mesh_cls& mesh, MeshObj_cls& obj, double t);
    void Unuse(const wxString& strKey);

    TextureProvider_cls* mpCTextureProvider = nullptr;
    std::map<wxString, std::unique_ptr<Mesh_cls>> mMapMesh; // by file and normal direction
    std::map<const MeshObj_cls*, wxString> mMapObjKey;      // the file each object draws now
    std::unique_ptr<Mesh_cls> mpDefaultMesh;
    std::set<wxString> mSetMaterialTexture; // one provider reference each
};
