#include "IsosurfaceDraw_cls.h"

#include "DataViewerBase_cls.h"
#include "GLCheckError_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLKindDraw.h"
#include "Isosurface_cls.h"
#include "Material_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <memory>
#include <vector>

void IsosurfaceDraw_cls::Register() {
    RegisterGLKindDraw<IsosurfaceDraw_cls, Isosurface_cls, true>("Isosurface_cls");
}

int IsosurfaceDraw_cls::GetUploadCount(const Isosurface_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : it->second.mUploadCount;
}

long long IsosurfaceDraw_cls::GetDrawnTriangleCount(const Isosurface_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : it->second.mTriangleCount;
}

void IsosurfaceDraw_cls::Upload(Object_cls& o, const IsosurfaceForRender_cls& set) {
    wxString strStamp;
    strStamp.Printf("%lld", set.mSerial);
    if (o.mBuffer && strStamp == o.mStrStamp)
        return;
    o.mStrStamp = strStamp;
    const std::vector<float>& xyz = set.mCSurface.mXYZ;
    const std::vector<float>& normal = set.mCSurface.mNormal;
    const size_t vertices = xyz.size() / 3;
    std::vector<float> v(vertices * 6);
    for (size_t i = 0; i < vertices; ++i)
        for (size_t c = 0; c < 3; ++c) {
            v[6 * i + c] = xyz[3 * i + c];
            v[6 * i + 3 + c] = normal[3 * i + c];
        }
    if (!o.mBuffer)
        o.mBuffer = GLBuffer_cls::Make();
    glBindBuffer(GL_ARRAY_BUFFER, o.mBuffer.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(v.size() * sizeof(float)), v.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    o.mTriangleCount = set.GetTriangleCount();
    ++o.mUploadCount;
}

void IsosurfaceDraw_cls::GLDraw(Isosurface_cls& obj, GLDrawStatus_cls& status) {
    if (!status.mbData)
        return;
    Object_cls& o = mMapObject[&obj];
    if (!DataViewerBase_cls::PrepareDrawByKind(&obj, status.mCompositeIndex) || !obj.mpCCurrent ||
        obj.mpCCurrent->GetTriangleCount() == 0) {
        o.mTriangleCount = 0;
        o.mStrStamp.clear();
        return;
    }
    Upload(o, *obj.mpCCurrent);
    if (GLDrawKinds_cls::IsSkippedInShadowedArea(obj.GetPCMaterial()))
        return;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    ObjectPhongParam_cls params;
    params.mEnsembleStep = status.mEnsembleStep;
    params.mLightNumber = status.mLightNumber;
    if (Material_cls* pMaterial = obj.GetPCMaterial())
        params.mbFlat = GLDrawKinds_cls::SetMaterial(pMaterial, status.mTime);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glBindBuffer(GL_ARRAY_BUFFER, o.mBuffer.Get());
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 6 * sizeof(float), nullptr);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 6 * sizeof(float), reinterpret_cast<const void*>(3 * sizeof(float)));
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginObjectPhong(&params);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(o.mTriangleCount * 3));
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    glPopClientAttrib();
    glPopAttrib();
    GLCheckError_cls::CheckGLError("IsosurfaceDraw::GLDraw");
}

void IsosurfaceDraw_cls::GLDrawSV(Isosurface_cls& obj, GLDrawStatus_cls& status) {
    const Material_cls* pMaterial = obj.GetPCMaterial();
    if (!status.mbData || !GpCShadowVolumeCtrl || (pMaterial && !pMaterial->mCCastShadow.GetBodyBOOL()))
        return;
    auto it = mMapObject.find(&obj);
    if (it == mMapObject.end() || it->second.mTriangleCount == 0 || !it->second.mBuffer)
        return;
    Object_cls& o = it->second;
    if (o.mStrAdjacencyStamp != o.mStrStamp) {
        const IsosurfaceForRender_cls* pSet = obj.mpCCurrent.get();
        if (!pSet)
            return;
        const std::vector<float>& xyz = pSet->mCSurface.mXYZ;
        const std::vector<uint32_t> vAdjacency =
            ShadowAdjacency_cls::GetVAdjacency(xyz.data(), 3, static_cast<int>(xyz.size() / 3));
        if (!o.mAdjacency)
            o.mAdjacency = GLBuffer_cls::Make();
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, o.mAdjacency.Get());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                     vAdjacency.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
        o.mAdjacencyCount = static_cast<int>(vAdjacency.size());
        o.mStrAdjacencyStamp = o.mStrStamp;
    }
    if (o.mAdjacencyCount == 0 || !GpCShadowVolumeCtrl->BeginShader())
        return;
    // The buffer's records are position and normal: the indices count vertices of the surface.
    ShadowVolumeCtrl_cls::DrawAdjacency(o.mBuffer.Get(), 6 * sizeof(float), o.mAdjacency.Get(),
                                        o.mAdjacencyCount);
    GpCShadowVolumeCtrl->EndShader();
}
