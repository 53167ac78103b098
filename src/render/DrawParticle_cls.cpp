#include "DrawParticle_cls.h"

#include "ClassProvider_cls.h"
#include "GLCheckError_cls.h"
#include "ParticleForRender_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>

namespace {

constexpr int kInstanceFloats = 8;

} // namespace

void DrawParticle_cls::ClearVBO() {
    ClearVBOBase();
    mInstance.Reset();
    mInstanceCapacity = 0;
    mpCStampSet = nullptr;
    mStampData = mStampSort = -1;
    mStampNumber = -1;
    mStrStampSetting.clear();
}

void DrawParticle_cls::SetVBOBuffer(const ParticleForRender_cls* pSet, const ParticleDrawSetting_cls& setting,
                                    bool bSphere) {
    const wxString strSetting = setting.GetStrStamp();
    const long long n = pSet ? pSet->mNumber : 0;
    const bool bSameData =
        pSet == mpCStampSet && pSet && pSet->mDataCounter == mStampData && n == mStampNumber;
    const bool bSameSort = bSameData && pSet->mSortCounter == mStampSort;
    const bool bSameSetting = strSetting == mStrStampSetting && bSphere == mbStampSphere;
    if (bSameSort && bSameSetting)
        return;
    mpCStampSet = pSet;
    mStampData = pSet ? pSet->mDataCounter : -1;
    mStampSort = pSet ? pSet->mSortCounter : -1;
    mStampNumber = n;
    mStrStampSetting = strSetting;
    mbStampSphere = bSphere;
    mCList.Clear();
    if (n <= 0) {
        // Nothing stands in the buffers any more: a later frame must not draw old data.
        SetElementLists(mCList, false);
        return;
    }
    const size_t count = static_cast<size_t>(n);
    const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
    const unsigned char* pType = pSet->mType.get();
    const float* pAlpha = pSet->mAlpha.get();
    const int sequentialMaterial = bSphere ? -1 : GetSequentialMaterial(pSet, setting);
    if (sequentialMaterial < 0)
        for (size_t k = 0; k < count; ++k) {
            const int i = pOrder[k].mIndex;
            mCList.Add(setting, static_cast<unsigned int>(i), pType[i], pAlpha[i]);
        }

    if (bSphere) {
        // One record per drawn particle, the first list then the second, in sorted order.
        const size_t total = mCList.mVElement[0].size() + mCList.mVElement[1].size();
        mVInstance.resize(std::max<size_t>(1, total) * kInstanceFloats);
        float* pOut = mVInstance.data();
        for (int list = 0; list < 2; ++list) {
            for (unsigned int i : mCList.mVElement[list]) {
                const int m = setting.GetMaterial(pType[i]);
                pOut[0] = pSet->mXYZ[3 * static_cast<size_t>(i)];
                pOut[1] = pSet->mXYZ[3 * static_cast<size_t>(i) + 1];
                pOut[2] = pSet->mXYZ[3 * static_cast<size_t>(i) + 2];
                pOut[3] = pSet->mSize[i];
                pOut[4] = pSet->mColorS[i];
                pOut[5] = pSet->mColorT[i];
                pOut[6] = pAlpha[i];
                std::memcpy(pOut + 7, &setting.mBits[m], sizeof(int));
                pOut += kInstanceFloats;
            }
        }
        Upload(mInstance, mInstanceCapacity, GL_ARRAY_BUFFER, mVInstance.data(),
               total * kInstanceFloats * sizeof(float));
    } else {
        if (!bSameData || !mBuffer[BUF_POS]) {
            Upload(mBuffer[BUF_POS], mCapacity[BUF_POS], GL_ARRAY_BUFFER, pSet->mXYZ.get(),
                   count * 3 * sizeof(float));
            Upload(mBuffer[BUF_T], mCapacity[BUF_T], GL_ARRAY_BUFFER, pSet->mColorT.get(),
                   count * sizeof(float));
        }
        // The sort pass rewrites alpha (filters), size (size modifiers) and S (depth colours).
        if (!bSameSort || !mBuffer[BUF_S]) {
            Upload(mBuffer[BUF_S], mCapacity[BUF_S], GL_ARRAY_BUFFER, pSet->mColorS.get(),
                   count * sizeof(float));
            Upload(mBuffer[BUF_ALPHA], mCapacity[BUF_ALPHA], GL_ARRAY_BUFFER, pAlpha, count * sizeof(float));
            Upload(mBuffer[BUF_SIZE], mCapacity[BUF_SIZE], GL_ARRAY_BUFFER, pSet->mSize.get(),
                   count * sizeof(float));
            const float* pSize = pSet->mSize.get();
            mbAlphaOne = std::all_of(pAlpha, pAlpha + count, [](float a) { return a == 1.f; });
            mMinSize = mMaxSize = pSize[0];
            for (size_t i = 1; i < count && !std::isnan(mMinSize); ++i) {
                mMinSize = std::isnan(pSize[i]) ? pSize[i] : std::min(mMinSize, pSize[i]);
                mMaxSize = std::max(mMaxSize, pSize[i]);
            }
        }
        int bits = setting.mBits[0];
        mbConstantBits = true;
        for (int m = 1; m < setting.mMaterialCount; ++m)
            mbConstantBits = mbConstantBits && setting.mBits[m] == bits;
        mConstantBits = bits;
        if (!mbConstantBits && (!bSameData || !bSameSetting || !mBuffer[BUF_BITS])) {
            mVParamBit.resize(count);
            for (size_t i = 0; i < count; ++i)
                mVParamBit[i] = setting.mBits[setting.GetMaterial(pType[i])];
            Upload(mBuffer[BUF_BITS], mCapacity[BUF_BITS], GL_ARRAY_BUFFER, mVParamBit.data(),
                   count * sizeof(int));
        }
        mbTwist = setting.mbTwist;
        if (mbTwist && (!bSameData || !bSameSetting || !mBuffer[BUF_TWIST])) {
            // The element's number: the same particle keeps its twist while the data stand.
            mVTwist.resize(count);
            for (size_t i = 0; i < count; ++i)
                mVTwist[i] = static_cast<float>(i);
            Upload(mBuffer[BUF_TWIST], mCapacity[BUF_TWIST], GL_ARRAY_BUFFER, mVTwist.data(),
                   count * sizeof(float));
        }
    }
    if (sequentialMaterial >= 0)
        SetSequentialList(static_cast<int>(count), sequentialMaterial);
    else
        SetElementLists(mCList, !bSphere);
}

int DrawParticle_cls::GetSequentialMaterial(const ParticleForRender_cls* pSet,
                                            const ParticleDrawSetting_cls& setting) {
    // Every material the types can reach must draw in the first list with one program and blending.
    const int first = setting.GetMaterial(0);
    for (int m = 0; m < setting.mMaterialCount; ++m)
        if (!setting.IsDrawn(m) || setting.mProgram[m] != setting.mProgram[first] ||
            setting.mBlend[m] != setting.mBlend[first] ||
            (setting.mbTwoPass && (setting.mBits[m] & ParticleDrawSetting_cls::BIT_SECOND_PASS)))
            return -1;
    const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
    const float* pAlpha = pSet->mAlpha.get();
    const long long n = pSet->mNumber;
    // The order unsorted and no particle hidden: the lists would only restate 0 to n - 1.
    for (long long k = 0; k < n; ++k)
        if (pOrder[k].mIndex != k || pAlpha[k] == 0.f)
            return -1;
    return setting.GetMaterial(pSet->mType[0]);
}

void DrawParticle_cls::GetSphereSource(SphereAttribute_cls* pAttribute, int* pListBase) const {
    const GLsizei stride = kInstanceFloats * sizeof(float);
    const size_t offset[SPHERE_ATTRIBUTE_COUNT] = {0, 4, 6, 7};
    for (int a = 0; a < SPHERE_ATTRIBUTE_COUNT; ++a)
        pAttribute[a] = {mInstance.Get(), stride, offset[a] * sizeof(float)};
    // The records of the second list follow those of the first.
    pListBase[0] = 0;
    pListBase[1] = mNumElement[0];
}

void DrawParticle_cls::DrawSphereSV(int depth) {
    mSphereDrawCalls = 0;
    SetSphereMesh(depth);
    const int count = mNumElement[0] + mNumElement[1];
    if (count <= 0 || mSphereAdjacencyCount == 0 || !mInstance || !GpCShadowVolumeCtrl ||
        !GpCShadowVolumeCtrl->BeginShader())
        return;
    const GLint loc = glGetAttribLocation(GpCShaderCtrl->GetCurrentProgram(), "instancePosSize");
    if (loc >= 0) {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        glBindBuffer(GL_ARRAY_BUFFER, mSphereMesh.Get());
        glEnableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_NORMAL_ARRAY);
        glDisableClientState(GL_COLOR_ARRAY);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(3, GL_FLOAT, 6 * sizeof(float), nullptr);
        // Every drawn sphere, both lists, at its centre and radius.
        const GLuint attrib = static_cast<GLuint>(loc);
        glBindBuffer(GL_ARRAY_BUFFER, mInstance.Get());
        glEnableVertexAttribArray(attrib);
        glVertexAttribPointer(attrib, 4, GL_FLOAT, GL_FALSE, kInstanceFloats * sizeof(float), nullptr);
        glVertexAttribDivisor(attrib, 1);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mSphereAdjacency.Get());
        glDrawElementsInstanced(GL_TRIANGLES_ADJACENCY, mSphereAdjacencyCount, GL_UNSIGNED_INT, nullptr,
                                count);
        ++mSphereDrawCalls;
        glVertexAttribDivisor(attrib, 0);
        glDisableVertexAttribArray(attrib);
        // A plain draw of the program reads the default again: a sphere of radius 1 at 0.
        glVertexAttrib4f(attrib, 0.f, 0.f, 0.f, 1.f);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glPopClientAttrib();
    }
    GpCShadowVolumeCtrl->EndShader();
    GLCheckError_cls::CheckGLError("DrawParticle::DrawSphereSV");
}
