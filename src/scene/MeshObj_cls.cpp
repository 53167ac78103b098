#include "MeshObj_cls.h"

#include "Material_cls.h"

MeshObj_cls::MeshObj_cls(ParentObj_cls* pParent) : SceneObj_cls(pParent, "MeshObj_cls") {
    // "None" is the one empty path that saving does not turn into a path.
    Add(&mCFileName, "FileName=", "None", "VIEW3D::PROPERTY_OBJECT");
    mCFileName.SetRawString(true);
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    Add(&mCFlipNormal, "FlipNormal=", "0", "VIEW3D");
    AddOwnAttribute(new Material_cls("Material", "MeshObj_cls"));
}

bool MeshObj_cls::LoadMesh() {
    const wxString strPath = mCFileName.GetBodySTR();
    if (strPath == mStrLoadedPath && mCFileName.mProcCounter == mLoadedCounter)
        return IsLoaded();
    mStrLoadedPath = strPath;
    mLoadedCounter = mCFileName.mProcCounter;
    if (mCFileName.IsEmpty() || strPath == "None") {
        mCLoader.Clear();
        return false;
    }
    return mCLoader.Load(strPath);
}

WavefrontLoader_cls* MeshObj_cls::GetPCMesh() {
    LoadMesh();
    return &mCLoader;
}
