#include "MeshDraw_cls.h"

#include "GetPC_cls.h"
#include "Material_cls.h"
#include "MeshObj_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TextureProvider_cls.h"
#include "WavefrontLoader_cls.h"

#include <wx/filename.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

// The mesh drawn in place of a file that cannot be read.
const char kDefaultMesh[] = "v -0.5 -0.5 -0.5\nv 0.5 -0.5 -0.5\nv 0.5 0.5 -0.5\nv -0.5 0.5 -0.5\n"
                            "v -0.5 -0.5 0.5\nv 0.5 -0.5 0.5\nv 0.5 0.5 0.5\nv -0.5 0.5 0.5\n"
                            "f 4 3 2 1\nf 5 6 7 8\nf 1 2 6 5\nf 8 7 3 4\nf 1 5 8 4\nf 6 2 3 7\n";

constexpr int kFloatsPerVertex = 8; // position 3, normal 3, texture coordinate 2

} // namespace

struct MeshDraw_cls::Run_cls {
    GLint mFirstVertex = 0;
    GLsizei mNumVertex = 0;
    bool mbHasMaterial = false; // false: the object's own material
    WavefrontMaterial_cls mMaterial;
    wxString mStrTexture; // the provider's key, empty for none
    GLuint mTexture = 0;
};

struct MeshDraw_cls::Mesh_cls {
    GLBuffer_cls mBuffer;
    // The triangles with their neighbours, for the shadow volumes.
    GLBuffer_cls mAdjacency;
    GLsizei mAdjacencyCount = 0;
    std::vector<Run_cls> mVRun;
    int mNumUser = 0;
};

MeshDraw_cls::MeshDraw_cls(TextureProvider_cls* pCTextureProvider) : mpCTextureProvider(pCTextureProvider) {}

MeshDraw_cls::~MeshDraw_cls() {
    for (auto& item : mMapMesh)
        for (const Run_cls& run : item.second->mVRun)
            if (!run.mStrTexture.empty() && mpCTextureProvider)
                mpCTextureProvider->Release(run.mStrTexture);
    if (mpCTextureProvider)
        for (const wxString& strPath : mSetMaterialTexture)
            mpCTextureProvider->Release(strPath);
}

GLuint MeshDraw_cls::GetMaterialTexture(const wxString& strPath) {
    if (!mpCTextureProvider)
        return 0;
    if (mSetMaterialTexture.insert(strPath).second)
        return mpCTextureProvider->Acquire(strPath);
    const GLuint texture = mpCTextureProvider->Find(strPath);
    return texture != 0 ? texture : mpCTextureProvider->GetDefaultTexture();
}

MeshDraw_cls::Mesh_cls* MeshDraw_cls::Upload(const WavefrontLoader_cls& loader, const wxString& strDir,
                                             bool bFlipNormal) {
    auto pMesh = std::make_unique<Mesh_cls>();
    const size_t numVertex = loader.mVPosition.size() / 3;
    std::vector<float> vData(numVertex * kFloatsPerVertex);
    const float normalSign = bFlipNormal ? -1.0f : 1.0f;
    for (size_t i = 0; i < numVertex; ++i) {
        float* p = &vData[i * kFloatsPerVertex];
        std::memcpy(p, &loader.mVPosition[i * 3], 3 * sizeof(float));
        for (int k = 0; k < 3; ++k)
            p[3 + k] = normalSign * loader.mVNormal[i * 3 + static_cast<size_t>(k)];
        std::memcpy(p + 6, &loader.mVTexCoord[i * 2], 2 * sizeof(float));
    }
    pMesh->mBuffer = GLBuffer_cls::Make();
    glBindBuffer(GL_ARRAY_BUFFER, pMesh->mBuffer.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vData.size() * sizeof(float)), vData.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    const std::vector<uint32_t> vAdjacency =
        ShadowAdjacency_cls::GetVAdjacency(vData.data(), kFloatsPerVertex, static_cast<int>(numVertex));
    if (!vAdjacency.empty()) {
        pMesh->mAdjacency = GLBuffer_cls::Make();
        pMesh->mAdjacencyCount = static_cast<GLsizei>(vAdjacency.size());
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, pMesh->mAdjacency.Get());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                     vAdjacency.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    }
    for (const WavefrontGroup_cls& group : loader.mVGroup) {
        Run_cls run;
        run.mFirstVertex = static_cast<GLint>(group.mFirstTriangle * 3);
        run.mNumVertex = static_cast<GLsizei>(group.mNumTriangle * 3);
        const int index = loader.GetMaterialIndex(group.mStrMaterial);
        if (index >= 0) {
            run.mbHasMaterial = true;
            run.mMaterial = loader.mVMaterial[static_cast<size_t>(index)];
            if (!run.mMaterial.mStrTexture.empty() && mpCTextureProvider) {
                // Texture names are relative to the folder of the mesh file.
                wxFileName fn(run.mMaterial.mStrTexture);
                if (fn.IsRelative() && !strDir.empty())
                    fn.MakeAbsolute(strDir);
                run.mStrTexture = fn.GetFullPath();
                run.mTexture = mpCTextureProvider->Acquire(run.mStrTexture);
            }
        }
        pMesh->mVRun.push_back(run);
    }
    return pMesh.release();
}

MeshDraw_cls::Mesh_cls* MeshDraw_cls::GetDefaultMesh() {
    if (!mpDefaultMesh) {
        WavefrontLoader_cls loader;
        loader.LoadFromText(kDefaultMesh, sizeof kDefaultMesh - 1, wxEmptyString);
        mpDefaultMesh.reset(Upload(loader, wxEmptyString, false));
    }
    return mpDefaultMesh.get();
}

void MeshDraw_cls::Unuse(const wxString& strKey) {
    auto it = mMapMesh.find(strKey);
    if (it == mMapMesh.end() || --it->second->mNumUser > 0)
        return;
    for (const Run_cls& run : it->second->mVRun)
        if (!run.mStrTexture.empty() && mpCTextureProvider)
            mpCTextureProvider->Release(run.mStrTexture);
    mMapMesh.erase(it);
}

void MeshDraw_cls::Release(const MeshObj_cls* pObj) {
    auto it = mMapObjKey.find(pObj);
    if (it == mMapObjKey.end())
        return;
    const wxString strKey = it->second;
    mMapObjKey.erase(it);
    Unuse(strKey);
}

void MeshDraw_cls::Draw(MeshObj_cls& obj, const double* pMatrix16, double t) {
    if (!obj.mCValid.GetBodyBOOL())
        return;
    const wxString strPath = obj.mCFileName.GetBodySTR();
    if (strPath.empty() || strPath == "None")
        return;
    wxFileName fn(strPath);
    fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE | wxPATH_NORM_TILDE);
    const bool bFlip = obj.mCFlipNormal.GetBodyBOOL();
    const wxString strKey = fn.GetFullPath() + (bFlip ? "|flip" : "");

    auto itObj = mMapObjKey.find(&obj);
    if (itObj == mMapObjKey.end() || itObj->second != strKey) {
        if (itObj != mMapObjKey.end()) {
            const wxString strOld = itObj->second;
            mMapObjKey.erase(itObj);
            Unuse(strOld);
        }
        auto it = mMapMesh.find(strKey);
        if (it == mMapMesh.end()) {
            // Only the first object naming a file reads it; a failed file keeps an empty entry.
            WavefrontLoader_cls* pLoader = obj.GetPCMesh();
            Mesh_cls* pMesh =
                pLoader->GetNumTriangle() > 0 ? Upload(*pLoader, fn.GetPath(), bFlip) : new Mesh_cls();
            it = mMapMesh.emplace(strKey, std::unique_ptr<Mesh_cls>(pMesh)).first;
        }
        ++it->second->mNumUser;
        mMapObjKey[&obj] = strKey;
    }
    const Mesh_cls& mesh = *mMapMesh[strKey];
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    if (pMatrix16)
        glMultMatrixd(pMatrix16);
    DrawMesh(mesh.mBuffer ? mesh : *GetDefaultMesh(), obj, t);
    glPopMatrix();
}

void MeshDraw_cls::DrawSV(MeshObj_cls& obj) {
    // The object was drawn in the lit phase of this step, which found its mesh.
    auto itObj = mMapObjKey.find(&obj);
    if (itObj == mMapObjKey.end())
        return;
    auto it = mMapMesh.find(itObj->second);
    if (it == mMapMesh.end())
        return;
    const Mesh_cls& mesh = it->second->mBuffer ? *it->second : *GetDefaultMesh();
    ShadowVolumeCtrl_cls::DrawAdjacency(mesh.mBuffer.Get(), kFloatsPerVertex * sizeof(float),
                                        mesh.mAdjacency.Get(), mesh.mAdjacencyCount);
}

void MeshDraw_cls::DrawMesh(const Mesh_cls& mesh, MeshObj_cls& obj, double t) {
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    const GLint locTextureMode =
        program != 0 ? glGetUniformLocation(static_cast<GLuint>(program), "textureMode") : -1;
    GLint oldTextureMode = 0;
    if (locTextureMode >= 0)
        glGetUniformiv(static_cast<GLuint>(program), locTextureMode, &oldTextureMode);

    glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_CURRENT_BIT | GL_TEXTURE_BIT | GL_COLOR_BUFFER_BIT);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glActiveTexture(GL_TEXTURE0);
    glClientActiveTexture(GL_TEXTURE0);
    glBindBuffer(GL_ARRAY_BUFFER, mesh.mBuffer.Get());
    const GLsizei stride = kFloatsPerVertex * sizeof(float);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, nullptr);
    glNormalPointer(GL_FLOAT, stride, reinterpret_cast<const void*>(3 * sizeof(float)));
    glTexCoordPointer(2, GL_FLOAT, stride, reinterpret_cast<const void*>(6 * sizeof(float)));

    for (const Run_cls& run : mesh.mVRun) {
        float ambient[4], diffuse[4], specular[4], emission[4], shininess = 0.0f;
        // A run of a .mtl material takes the object's material of that name, as the user edited
        // it; the file's own values serve until the object has it.
        Material_cls* pMaterial =
            run.mbHasMaterial ? obj.GetPCMtlMaterial(run.mMaterial.mStrName) : obj.GetPCMaterial();
        GLuint texture = run.mTexture;
        if (run.mbHasMaterial && !pMaterial) {
            const WavefrontMaterial_cls& m = run.mMaterial;
            std::copy_n(m.mAmbient, 3, ambient);
            std::copy_n(m.mDiffuse, 3, diffuse);
            std::copy_n(m.mSpecular, 3, specular);
            std::copy_n(m.mEmission, 3, emission);
            diffuse[3] = m.mAlpha;
            shininess = m.mShininess;
        } else {
            auto get = [&](const char* strGroup, float* pOut) {
                std::vector<double> v = pMaterial ? pMaterial->GetColor(strGroup, t) : std::vector<double>();
                for (size_t k = 0; k < 4; ++k)
                    pOut[k] = k < v.size() ? static_cast<float>(v[k]) : (k == 3 ? 1.0f : 0.8f);
            };
            get("Ambient", ambient);
            get("Diffuse", diffuse);
            get("Specular", specular);
            get("Emission", emission);
            if (run.mbHasMaterial) {
                float value[4];
                get("Shininess", value);
                shininess = value[0];
                // The file's own picture keeps the run's reference; another one is taken once.
                const wxString strTexture = pMaterial->mCTextureFile.GetBodySTR();
                texture = !pMaterial->IsTextureUsed()     ? 0
                          : strTexture == run.mStrTexture ? run.mTexture
                                                          : GetMaterialTexture(strTexture);
            }
        }
        // A later shadow step adds light only.
        if (GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->IsLightOnlyDraw())
            std::fill_n(emission, 3, 0.0f);
        ambient[3] = specular[3] = emission[3] = diffuse[3];
        // GL takes shininess up to 128; .mtl files write up to 1000.
        shininess = std::min(std::max(shininess, 0.0f), 128.0f);
        const std::pair<GLenum, const float*> colours[] = {
            {GL_AMBIENT, ambient}, {GL_DIFFUSE, diffuse}, {GL_SPECULAR, specular}, {GL_EMISSION, emission}};
        for (const auto& colour : colours)
            glMaterialfv(GL_FRONT_AND_BACK, colour.first, colour.second);
        glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, shininess);
        glColor4fv(diffuse);
        ShadowVolumeCtrl_cls::SetBlend(diffuse[3] < 1.0f, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        if (texture != 0) {
            glBindTexture(GL_TEXTURE_2D, texture);
            glEnable(GL_TEXTURE_2D);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        } else {
            glBindTexture(GL_TEXTURE_2D, 0);
            glDisable(GL_TEXTURE_2D);
        }
        if (locTextureMode >= 0)
            glUniform1i(locTextureMode, texture != 0 ? 1 : 0);
        glDrawArrays(GL_TRIANGLES, run.mFirstVertex, run.mNumVertex);
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (locTextureMode >= 0)
        glUniform1i(locTextureMode, oldTextureMode);
    glPopClientAttrib();
    glPopAttrib();
}
