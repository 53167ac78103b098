#include "MeshObj_cls.h"

#include "Material_cls.h"
#include "ParamGroup_cls.h"

#include <wx/filename.h>

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
    const bool bOK = mCLoader.Load(strPath);
    AdoptMtlMaterials();
    return bOK;
}

namespace {
const wxString kMtlPrefix = "Mtl_";

// The loader keeps floats; the material takes the number as the file wrote it (0.8, not
// 0.800000011920929), so that its command texts give back exactly what they were made from.
double AsWritten(float value) {
    double d = 0.0;
    wxString::Format("%.7g", value).ToCDouble(&d);
    return d;
}
} // namespace

wxString MeshObj_cls::GetStrMtlAttribute(const wxString& strMtl) {
    // The name is an address in commands: no "::" and no blanks in it.
    wxString str = strMtl;
    str.Replace("::", "_");
    str.Replace(" ", "_");
    return kMtlPrefix + str;
}

Material_cls* MeshObj_cls::GetPNewMtlMaterial(const wxString& strName) {
    return strName.StartsWith(kMtlPrefix) && strName.length() > kMtlPrefix.length()
               ? new Material_cls(strName, "MeshObj_cls")
               : nullptr;
}

Material_cls* MeshObj_cls::GetPCMtlMaterial(const wxString& strMtl) {
    return dynamic_cast<Material_cls*>(GetPCAttribute(GetStrMtlAttribute(strMtl), 0));
}

wxArrayString MeshObj_cls::GetAStrMtlNames() {
    LoadMesh();
    wxArrayString a;
    for (const WavefrontMaterial_cls& m : mCLoader.mVMaterial)
        a.Add(m.mStrName);
    return a;
}

void MeshObj_cls::AdoptMtlMaterials() {
    // The folder as the drawing finds it, so that both name a picture by the same path.
    wxFileName fnMesh(mStrLoadedPath);
    fnMesh.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE | wxPATH_NORM_TILDE);
    const wxString strDir = fnMesh.GetPath();
    for (const WavefrontMaterial_cls& m : mCLoader.mVMaterial) {
        const wxString strAttr = GetStrMtlAttribute(m.mStrName);
        if (IsAttributeExist(strAttr))
            continue;
        Material_cls* p = GetPNewMtlMaterial(strAttr);
        const std::pair<const char*, const float*> colours[] = {{"Ambient", m.mAmbient},
                                                                {"Diffuse", m.mDiffuse},
                                                                {"Specular", m.mSpecular},
                                                                {"Emission", m.mEmission}};
        for (const auto& [pGroup, c] : colours)
            p->GetPCParamGroup(pGroup)->SetInitValue(AsWritten(c[0]), AsWritten(c[1]), AsWritten(c[2]), 0.0);
        p->GetPCParamGroup("Shininess")->SetInitValue(AsWritten(m.mShininess), 0.0, 0.0, 0.0);
        p->GetPCParamGroup("Alpha")->SetInitValue(AsWritten(m.mAlpha), 0.0, 0.0, 0.0);
        if (!m.mStrTexture.empty()) {
            // Texture names in a library are relative to the folder of the mesh file.
            wxFileName fn(m.mStrTexture);
            if (fn.IsRelative() && !strDir.empty())
                fn.MakeAbsolute(strDir);
            p->mCTextureFile.SetBodyFromData(fn.GetFullPath());
            p->mCUseTexture.SetBodyFromDataBOOL(true);
        }
        // Not one of the object's built-in materials: saving writes its New line.
        mVPCOwnAttribute.push_back(p);
        p->SetConfListTagForSceneObjAttribute(strAttr, GetStrName());
    }
}

bool MeshObj_cls::IsSavedMaterial(const wxString& strAttr) {
    // The materials of a file the object showed before (a name changed and undone) stay in memory,
    // edits and all, in case it shows it again; the project keeps those of the file it shows. While
    // the file cannot be read, its library is unknown and every material is kept.
    if (!strAttr.StartsWith(kMtlPrefix) || !LoadMesh())
        return true;
    for (const WavefrontMaterial_cls& m : mCLoader.mVMaterial)
        if (GetStrMtlAttribute(m.mStrName) == strAttr)
            return true;
    return false;
}

WavefrontLoader_cls* MeshObj_cls::GetPCMesh() {
    LoadMesh();
    return &mCLoader;
}
