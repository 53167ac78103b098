#include "HeightFieldDraw_cls.h"

#include "ColorCurve_cls.h"
#include "DataViewerBase_cls.h"
#include "GLCheckError_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLKindDraw.h"
#include "HeightField_cls.h"
#include "Material_cls.h"
#include "ShaderCtrl_cls.h"

#include <memory>
#include <vector>

void HeightFieldDraw_cls::Register() {
    RegisterGLKindDraw<HeightFieldDraw_cls, HeightField_cls, true>("HeightField_cls");
}

bool HeightFieldDraw_cls::GetTriangles(const HeightField_cls& obj, Triangles_cls& out) {
    out = Triangles_cls();
    const HeightFieldForRender_cls* pSet = obj.mpCCurrent.get();
    if (!pSet || pSet->mIndex.empty())
        return false;
    out.mpXYZ = pSet->mXYZ.data();
    out.mNumVertex = static_cast<int>(pSet->mXYZ.size() / 3);
    out.mpIndex = pSet->mIndex.data();
    out.mNumIndex = static_cast<int>(pSet->mIndex.size());
    return true;
}

HeightFieldDraw_cls::~HeightFieldDraw_cls() {
    for (const auto& entry : mMapObject)
        ReleaseColorTable(&entry.second);
}

bool HeightFieldDraw_cls::GetBuffers(const HeightField_cls* p, GLuint& position, GLuint& element,
                                     int& indexCount) const {
    auto it = mMapObject.find(p);
    if (it == mMapObject.end() || it->second.mIndexCount == 0)
        return false;
    position = it->second.mPosition.Get();
    element = it->second.mElement.Get();
    indexCount = it->second.mIndexCount;
    return true;
}

int HeightFieldDraw_cls::GetUploadCount(const HeightField_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : it->second.mUploadCount;
}

void HeightFieldDraw_cls::Upload(Object_cls& o, const HeightFieldForRender_cls& set, HeightField_cls& obj,
                                 double nt) {
    double a = 0.0, b = 0.0;
    GetCurveMap(obj, obj.mCColorType.GetBodyINT() == 1, nt, a, b);
    wxString strStamp;
    strStamp.Printf("%lld:%.9g:%.9g", set.mSerial, a, b);
    if (o.mPosition && strStamp == o.mStrStamp)
        return;
    o.mStrStamp = strStamp;
    const int w = set.mWidth, h = set.mHeight;
    const size_t n = static_cast<size_t>(w) * h;
    // The curve reads the height itself, not the lifted z: a flat map is coloured too.
    std::vector<float> vCoord(n * 4), vCurve(n);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const size_t i = static_cast<size_t>(y) * w + x;
            const double height = i < set.mHeightValue.size() ? set.mHeightValue[i] : 0.0;
            vCoord[4 * i] = w > 1 ? static_cast<float>(x) / (w - 1) : 0.f;
            vCoord[4 * i + 1] = h > 1 ? static_cast<float>(y) / (h - 1) : 0.f;
            vCoord[4 * i + 2] = (x + 0.5f) / w;
            vCoord[4 * i + 3] = (y + 0.5f) / h;
            vCurve[i] = static_cast<float>(a + (b - a) * height);
        }
    auto upload = [](GLBuffer_cls& buffer, GLenum target, const void* pData, size_t bytes) {
        if (!buffer)
            buffer = GLBuffer_cls::Make();
        glBindBuffer(target, buffer.Get());
        glBufferData(target, static_cast<GLsizeiptr>(bytes), pData, GL_STATIC_DRAW);
        glBindBuffer(target, 0);
    };
    upload(o.mPosition, GL_ARRAY_BUFFER, set.mXYZ.data(), set.mXYZ.size() * sizeof(float));
    upload(o.mNormal, GL_ARRAY_BUFFER, set.mNormal.data(), set.mNormal.size() * sizeof(float));
    upload(o.mCoord, GL_ARRAY_BUFFER, vCoord.data(), vCoord.size() * sizeof(float));
    upload(o.mElement, GL_ELEMENT_ARRAY_BUFFER, set.mIndex.data(), set.mIndex.size() * sizeof(unsigned int));
    if (!o.mHeight)
        o.mHeight = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, o.mHeight.Get());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, w, h, 0, GL_RED, GL_FLOAT, vCurve.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    o.mIndexCount = static_cast<int>(set.mIndex.size());
    ++o.mUploadCount;
}

void HeightFieldDraw_cls::GLDrawSV(HeightField_cls& obj, GLDrawStatus_cls& status) {
    Material_cls* pMaterial = obj.GetPCMaterial();
    if (!status.mbData || (pMaterial && !pMaterial->mCCastShadow.GetBodyBOOL()))
        return;
    // The grid of the frame the lit draw of this step prepared.
    if (!DataViewerBase_cls::PrepareDrawByKind(&obj, status.mCompositeIndex) || !obj.mpCCurrent ||
        obj.mpCCurrent->mIndex.empty())
        return;
    mMapObject[&obj].mCSV.Draw(*obj.mpCCurrent);
}

void HeightFieldDraw_cls::GLDraw(HeightField_cls& obj, GLDrawStatus_cls& status) {
    if (!status.mbData)
        return;
    Object_cls& o = mMapObject[&obj];
    if (!DataViewerBase_cls::PrepareDrawByKind(&obj, status.mCompositeIndex) || !obj.mpCCurrent ||
        obj.mpCCurrent->mIndex.empty()) {
        o.mIndexCount = 0;
        o.mStrStamp.clear();
        return;
    }
    const double nt = status.mTime;
    Upload(o, *obj.mpCCurrent, obj, nt);
    if (GLDrawKinds_cls::IsSkippedInShadowedArea(obj.GetPCMaterial()))
        return;
    const bool bCurve = obj.mCColorType.GetBodyINT() == 1 && GetPCCurve(obj);
    const GLuint table = UpdateColorTable(&o, obj, bCurve, nt, o.mStrTableStamp);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    Material_cls* pMaterial = obj.GetPCMaterial();
    ShaderHF_cls params;
    params.mEnsembleStep = status.mEnsembleStep;
    params.mLightNumber = status.mLightNumber;
    params.mbFlat = pMaterial ? GLDrawKinds_cls::SetMaterial(pMaterial, nt) : 0;
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    // Units: the heights on 0, the image on 1, the colour table on 2.
    params.mTextureMode = status.mbHitTest ? 0 : GLDrawKinds_cls::BindMaterialTexture(pMaterial, status, 1);
    params.mUseTexAlpha = params.mTextureMode != 0 ? 1 : 0;
    glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_1D, table);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, o.mHeight.Get());

    glBindBuffer(GL_ARRAY_BUFFER, o.mPosition.Get());
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, o.mNormal.Get());
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, o.mCoord.Get());
    glClientActiveTexture(GL_TEXTURE0);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 4 * sizeof(float), nullptr);
    glClientActiveTexture(GL_TEXTURE1);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 4 * sizeof(float), reinterpret_cast<const void*>(2 * sizeof(float)));
    glClientActiveTexture(GL_TEXTURE0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableClientState(GL_COLOR_ARRAY);

    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginHF(&params);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, o.mElement.Get());
    glDrawElements(GL_TRIANGLES, o.mIndexCount, GL_UNSIGNED_INT, nullptr);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();

    glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_1D, 0);
    if (params.mTextureMode != 0)
        GLDrawKinds_cls::UnbindMaterialTexture(1);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glPopClientAttrib();
    glPopAttrib();
    GLCheckError_cls::CheckGLError("HeightFieldDraw::GLDraw");
}
