// A mesh read from a Wavefront .obj file ("FileName=", a path written relative to the project)
// with its .mtl materials. The file is read when the mesh is first asked for and again when
// the name changes; a file that cannot be read leaves the mesh empty. Main thread only.
#pragma once

#include "SceneObj_cls.h"
#include "WavefrontLoader_cls.h"

class MeshObj_cls : public SceneObj_cls {
public:
    explicit MeshObj_cls(ParentObj_cls* pParent);

    // Reads the file named by FileName= unless it is the one read last. True when the mesh
    // holds triangles.
    bool LoadMesh();
    // The loaded mesh, read first if needed. Never null.
    WavefrontLoader_cls* GetPCMesh();
    bool IsLoaded() const { return mCLoader.GetNumTriangle() > 0; }

    ConfItemSTR_cls mCFileName;
    ConfItemBOOL_cls mCValid;
    ConfItemBOOL_cls mCFlipNormal;

private:
    WavefrontLoader_cls mCLoader;
    wxString mStrLoadedPath;
    int32_t mLoadedCounter = -1;
};
