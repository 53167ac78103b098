// A mesh read from a Wavefront .obj file ("FileName=", a path written relative to the project)
// with its .mtl materials. The file is read when the mesh is first asked for and again when
// the name changes; a file that cannot be read leaves the mesh empty.
//
// Each .mtl material of the file becomes a material of the object ("Mtl_<name>"), made from the
// file's values when the file is first read and from then on edited, saved and undone like any
// other material; the drawing takes its colours and texture from it. Main thread only.
#pragma once

#include "SceneObj_cls.h"
#include "WavefrontLoader_cls.h"

#include <wx/arrstr.h>

class Material_cls;

class MeshObj_cls : public SceneObj_cls {
public:
    explicit MeshObj_cls(ParentObj_cls* pParent);

    // Reads the file named by FileName= unless it is the one read last. True when the mesh
    // holds triangles.
    bool LoadMesh();
    // The loaded mesh, read first if needed. Never null.
    WavefrontLoader_cls* GetPCMesh();
    bool IsLoaded() const { return mCLoader.GetNumTriangle() > 0; }

    // The name of the object's material for the .mtl material strMtl.
    static wxString GetStrMtlAttribute(const wxString& strMtl);
    // The object's material for the .mtl material strMtl; null when there is none. Not owned.
    Material_cls* GetPCMtlMaterial(const wxString& strMtl);
    // The names of the .mtl materials of the file read, in the file's order (read first if needed).
    wxArrayString GetAStrMtlNames();
    // Whether saving writes the own attribute strAttr: not a .mtl material that the file read
    // does not have.
    bool IsSavedMaterial(const wxString& strAttr);
    // What "New::Material::<name>" makes on a mesh: a material for a .mtl material; null for any
    // other name. Not owned: the caller gives it to the object.
    static Material_cls* GetPNewMtlMaterial(const wxString& strName);

    ConfItemSTR_cls mCFileName;
    ConfItemBOOL_cls mCValid;
    ConfItemBOOL_cls mCFlipNormal;

private:
    // Makes the object's materials of the .mtl materials that have none yet, from the file.
    void AdoptMtlMaterials();
    WavefrontLoader_cls mCLoader;
    wxString mStrLoadedPath;
    int32_t mLoadedCounter = -1;
};
