#include "DrawParticle_cls.h"

#include "ClassProvider_cls.h"
#include "GLCheckError_cls.h"
#include "ParticleForRender_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <utility>

namespace {

constexpr int kInstanceFloats = 8;

const void* Offset(size_t bytes) {
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(bytes));
}

using Vec3 = std::array<float, 3>;

Vec3 Normalized(const Vec3& v) {
    const float len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return {v[0] / len, v[1] / len, v[2] / len};
}

void Divide(const Vec3& a, const Vec3& b, const Vec3& c, int depth, std::vector<float>& out) {
    if (depth == 0) {
        // On the unit sphere the normal is the position.
        for (const Vec3* p : {&a, &b, &c})
            out.insert(out.end(), {(*p)[0], (*p)[1], (*p)[2], (*p)[0], (*p)[1], (*p)[2]});
        return;
    }
    auto mid = [](const Vec3& p, const Vec3& q) {
        return Normalized({(p[0] + q[0]) * 0.5f, (p[1] + q[1]) * 0.5f, (p[2] + q[2]) * 0.5f});
    };
    const Vec3 ab = mid(a, b), bc = mid(b, c), ca = mid(c, a);
    Divide(a, ab, ca, depth - 1, out);
    Divide(ab, b, bc, depth - 1, out);
    Divide(ca, bc, c, depth - 1, out);
    Divide(ab, bc, ca, depth - 1, out);
}

} // namespace

std::vector<float> DrawParticle_cls::GetVSphereMesh(int depth) {
    depth = std::max(0, std::min(5, depth));
    const float t = (1.f + std::sqrt(5.f)) * 0.5f;
    const Vec3 raw[12] = {{-1, t, 0},  {1, t, 0},  {-1, -t, 0}, {1, -t, 0}, {0, -1, t},  {0, 1, t},
                          {0, -1, -t}, {0, 1, -t}, {t, 0, -1},  {t, 0, 1},  {-t, 0, -1}, {-t, 0, 1}};
    Vec3 v[12];
    for (int i = 0; i < 12; ++i)
        v[i] = Normalized(raw[i]);
    // Counter-clockwise seen from outside.
    static const int kFace[20][3] = {{0, 11, 5}, {0, 5, 1},  {0, 1, 7},   {0, 7, 10}, {0, 10, 11},
                                     {1, 5, 9},  {5, 11, 4}, {11, 10, 2}, {10, 7, 6}, {7, 1, 8},
                                     {3, 9, 4},  {3, 4, 2},  {3, 2, 6},   {3, 6, 8},  {3, 8, 9},
                                     {4, 9, 5},  {2, 4, 11}, {6, 2, 10},  {8, 6, 7},  {9, 8, 1}};
    std::vector<float> out;
    out.reserve(static_cast<size_t>(20 * 3 * 6) << (2 * depth));
    for (const auto& f : kFace)
        Divide(v[f[0]], v[f[1]], v[f[2]], depth, out);
    return out;
}

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
        }
        if (!bSameData || !bSameSetting || !mBuffer[BUF_BITS]) {
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
    SetElementLists(mCList, !bSphere);
}

void DrawParticle_cls::SetSphereMesh(int depth) {
    depth = std::max(0, std::min(5, depth));
    if (depth == mSphereDepth && mSphereMesh)
        return;
    const std::vector<float> v = GetVSphereMesh(depth);
    mSphereMesh = GLBuffer_cls::Make();
    glBindBuffer(GL_ARRAY_BUFFER, mSphereMesh.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(v.size() * sizeof(float)), v.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    mSphereDepth = depth;
    mSphereVertexCount = static_cast<int>(v.size() / 6);
    const std::vector<uint32_t> vAdjacency =
        ShadowAdjacency_cls::GetVAdjacency(v.data(), 6, mSphereVertexCount);
    mSphereAdjacencyCount = static_cast<int>(vAdjacency.size());
    mSphereAdjacency = GLBuffer_cls::Make();
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mSphereAdjacency.Get());
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                 vAdjacency.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
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

void DrawParticle_cls::DrawSphere(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input,
                                  int depth) {
    mSphereDrawCalls = 0;
    SetSphereMesh(depth);
    BindParticleTexture(input);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glColor4f(1.f, 1.f, 1.f, 1.f);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glBindBuffer(GL_ARRAY_BUFFER, mSphereMesh.Get());
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, 6 * sizeof(float), nullptr);
    glNormalPointer(GL_FLOAT, 6 * sizeof(float), Offset(3 * sizeof(float)));

    int material = -1;
    std::vector<GLuint> vEnabled;
    auto bindMaterial = [&](int m) {
        if (m == material)
            return;
        material = m;
        for (GLuint loc : vEnabled) {
            glVertexAttribDivisor(loc, 0);
            glDisableVertexAttribArray(loc);
        }
        vEnabled.clear();
        if (setting.mbOpaque[m]) {
            glEnable(GL_CULL_FACE);
            glCullFace(GL_BACK);
        } else {
            glDisable(GL_CULL_FACE);
        }
        SetBlend(setting.mBlend[m]);
        if (!GpCShaderCtrl)
            return;
        SphereToonParam_cls params;
        params.mEnsembleStep = input.mEnsembleStep;
        params.mDissolveMode = input.mDissolveMode;
        params.mLightNumber = input.mLightNumber;
        params.mbFlat = setting.mFlat[m];
        params.mEdgeThreshold = setting.mToonThreshold[m];
        params.mBoldness = setting.mToonBoldness[m];
        switch (setting.mProgram[m]) {
        case ParticleDrawSetting_cls::PROG_SPHERE_GOURAUD:
            GpCShaderCtrl->BeginSphereGouraud(&params);
            break;
        case ParticleDrawSetting_cls::PROG_SPHERE_TOON:
            GpCShaderCtrl->BeginSphereToon(&params);
            break;
        default:
            params.mNormalMode = setting.mProgram[m] == ParticleDrawSetting_cls::PROG_SPHERE_NORMAL ? 1 : 0;
            GpCShaderCtrl->BeginSpherePhong(&params);
            break;
        }
        const GLuint name = GpCShaderCtrl->GetCurrentProgram();
        if (name == 0)
            return;
        glBindBuffer(GL_ARRAY_BUFFER, mInstance.Get());
        const GLsizei stride = kInstanceFloats * sizeof(float);
        const struct {
            const char* strName;
            int components;
            size_t offset;
        } kInstanceAttribute[] = {{"instancePosSize", 4, 0}, {"colorCurveST", 2, 4}, {"filterAlpha", 1, 6}};
        for (const auto& a : kInstanceAttribute) {
            const GLint loc = glGetAttribLocation(name, a.strName);
            if (loc < 0)
                continue;
            glEnableVertexAttribArray(static_cast<GLuint>(loc));
            glVertexAttribPointer(static_cast<GLuint>(loc), a.components, GL_FLOAT, GL_FALSE, stride,
                                  Offset(a.offset * sizeof(float)));
            glVertexAttribDivisor(static_cast<GLuint>(loc), 1);
            vEnabled.push_back(static_cast<GLuint>(loc));
        }
        const GLint bits = glGetAttribLocation(name, "paramBit");
        if (bits >= 0) {
            glEnableVertexAttribArray(static_cast<GLuint>(bits));
            glVertexAttribIPointer(static_cast<GLuint>(bits), 1, GL_INT, stride, Offset(7 * sizeof(float)));
            glVertexAttribDivisor(static_cast<GLuint>(bits), 1);
            vEnabled.push_back(static_cast<GLuint>(bits));
        }
        glBindBuffer(GL_ARRAY_BUFFER, mSphereMesh.Get());
    };

    int base = 0;
    for (int list = 0; list < 2; ++list) {
        if (list == 1 && mNumElement[1] > 0)
            glDepthMask(GL_FALSE);
        for (const ParticleRun_cls& run : mVRun[list]) {
            bindMaterial(run.mMaterial);
            glDrawArraysInstancedBaseInstance(GL_TRIANGLES, 0, mSphereVertexCount, run.mCount,
                                              static_cast<GLuint>(base + run.mFirst));
            ++mSphereDrawCalls;
        }
        base += mNumElement[list];
    }
    for (GLuint loc : vEnabled) {
        glVertexAttribDivisor(loc, 0);
        glDisableVertexAttribArray(loc);
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glPopClientAttrib();
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    GLCheckError_cls::CheckGLError("DrawParticle::DrawSphere");
}
