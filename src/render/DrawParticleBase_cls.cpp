#include "DrawParticleBase_cls.h"

#include "ClassProvider_cls.h"
#include "GLCheckError_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

// The per-particle attributes of the point programs, in the order of the buffers.
const char* const kAttributeName[DrawParticleBase_cls::BUF_COUNT] = {
    nullptr, "colorCurveS", "colorCurveT", "filterAlpha", "pointSize", "paramBit", "twistID"};

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

// ---- settings and element lists ----------------------------------------------------------------

wxString ParticleDrawSetting_cls::GetStrStamp() const {
    wxString str;
    str << mMaterialCount << "," << mbTwoPass << "," << mbTwist;
    for (int m = 0; m < kMaterialMax; ++m)
        str << ";" << mProgram[m] << "," << mBlend[m] << "," << mBits[m] << "," << mbOpaque[m];
    return str;
}

void ParticleElementList_cls::Clear() {
    for (int list = 0; list < 2; ++list) {
        mVElement[list].clear();
        mVRun[list].clear();
        mLastKey[list] = -1;
    }
}

void ParticleElementList_cls::Add(const ParticleDrawSetting_cls& setting, unsigned int index, int type,
                                  float alpha, bool bConsecutive) {
    if (alpha == 0.f)
        return;
    const int m = setting.GetMaterial(type);
    const int prog = setting.mProgram[m];
    if (prog == ParticleDrawSetting_cls::PROG_NONE)
        return;
    const int list =
        setting.mbTwoPass && (setting.mBits[m] & ParticleDrawSetting_cls::BIT_SECOND_PASS) ? 1 : 0;
    const int key =
        prog >= ParticleDrawSetting_cls::PROG_SPHERE_GOURAUD ? 100 + m : prog * 4 + setting.mBlend[m];
    Push(list, index, m, key, bConsecutive);
}

void ParticleElementList_cls::Push(int list, unsigned int index, int m, int key, bool bConsecutive) {
    std::vector<ParticleRun_cls>& vRun = mVRun[list];
    if (key != mLastKey[list] || vRun.empty() || (bConsecutive && index != mVElement[list].back() + 1)) {
        ParticleRun_cls run;
        run.mFirst = static_cast<int>(mVElement[list].size());
        run.mMaterial = m;
        vRun.push_back(run);
        mLastKey[list] = key;
    }
    ++vRun.back().mCount;
    mVElement[list].push_back(index);
}

// ---- buffers -----------------------------------------------------------------------------------

void DrawParticleBase_cls::Upload(GLBuffer_cls& buffer, size_t& capacity, GLenum target, const void* pData,
                                  size_t bytes) {
    if (!buffer || bytes > capacity) {
        // A fresh buffer: the old one may still be read by the draw queued before.
        buffer = GLBuffer_cls::Make();
        glBindBuffer(target, buffer.Get());
        glBufferData(target, static_cast<GLsizeiptr>(bytes), pData, GL_STATIC_DRAW);
        capacity = bytes;
    } else {
        glBindBuffer(target, buffer.Get());
        glBufferSubData(target, 0, static_cast<GLsizeiptr>(bytes), pData);
    }
    glBindBuffer(target, 0);
    mUploadedBytes += bytes;
}

void DrawParticleBase_cls::SetElementLists(const ParticleElementList_cls& list, bool bUpload) {
    for (int i = 0; i < 2; ++i) {
        const std::vector<unsigned int>& v = list.mVElement[i];
        mNumElement[i] = static_cast<int>(v.size());
        mVRun[i] = list.mVRun[i];
        bool bSequential = !v.empty();
        for (size_t k = 1; k < v.size() && bSequential; ++k)
            bSequential = v[k] == v[0] + k;
        mbSequential[i] = bSequential;
        mSequentialFirst[i] = bSequential ? v[0] : 0;
        if (bUpload && !v.empty() && !bSequential)
            Upload(mElement[i], mElementCapacity[i], GL_ELEMENT_ARRAY_BUFFER, v.data(),
                   v.size() * sizeof(unsigned int));
    }
}

void DrawParticleBase_cls::SetSequentialList(int count, int m) {
    ParticleRun_cls run;
    run.mCount = count;
    run.mMaterial = m;
    mNumElement[0] = count;
    mNumElement[1] = 0;
    mVRun[0].assign(1, run);
    mVRun[1].clear();
    mbSequential[0] = true;
    mbSequential[1] = false;
    mSequentialFirst[0] = mSequentialFirst[1] = 0;
}

void DrawParticleBase_cls::ClearVBOBase() {
    for (int b = 0; b < BUF_COUNT; ++b) {
        mBuffer[b].Reset();
        mCapacity[b] = 0;
    }
    for (int list = 0; list < 2; ++list) {
        mElement[list].Reset();
        mElementCapacity[list] = 0;
        mNumElement[list] = 0;
        mVRun[list].clear();
        mbSequential[list] = false;
    }
    mbTwist = false;
    mbConstantBits = false;
    mbAlphaOne = false;
    mMinSize = mMaxSize = std::numeric_limits<float>::quiet_NaN();
}

// ---- drawing -----------------------------------------------------------------------------------

void DrawParticleBase_cls::BindParticleTexture(const DrawInput_cls& input) {
    for (int unit = 0; unit < 3; ++unit) {
        glActiveTexture(static_cast<GLenum>(GL_TEXTURE1 + unit));
        glBindTexture(GL_TEXTURE_2D, input.mImage[unit]);
    }
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, input.mColorTable);
}

void DrawParticleBase_cls::SetBlend(int blendType) {
    // The programs write premultiplied colour.
    switch (blendType) {
    case 1: // "Additive"
        ShadowVolumeCtrl_cls::SetBlend(true, GL_ONE, GL_ONE);
        break;
    case 2: // "Mix": what is behind shows through by the particle's own colour
        ShadowVolumeCtrl_cls::SetBlend(true, GL_ONE, GL_ONE_MINUS_SRC_COLOR);
        break;
    default: // "Alpha Blend"
        ShadowVolumeCtrl_cls::SetBlend(true, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        break;
    }
}

bool DrawParticleBase_cls::IsOpaqueRun(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input,
                                       int m) const {
    using S = ParticleDrawSetting_cls;
    const int prog = setting.mProgram[m];
    if (!setting.mbOpaque[m] || !input.mbTableOpaque || !mbAlphaOne || input.mLightNumber != 0 ||
        input.mDissolveMode != 0 || (GpCShaderCtrl && GpCShaderCtrl->mFogMode != 0))
        return false;
    if (prog == S::PROG_BILLBOARD)
        return true;
    // Points below a pixel fade by their area.
    return (prog == S::PROG_POINT_SQUARE || prog == S::PROG_POINT_CIRCLE) && input.mBaseDistance <= 0.f &&
           mMinSize * input.mPointSizeFactor >= 1.f;
}

bool DrawParticleBase_cls::IsGridSize(const DrawInput_cls& input) const {
    if (input.mBaseDistance > 0.f || !(mMinSize == mMaxSize))
        return false;
    // The programs draw anything below a pixel as one pixel.
    const float px = mMinSize * input.mPointSizeFactor;
    return px < 1.f || px == std::floor(px);
}

void DrawParticleBase_cls::DrawPoints(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input) {
    DrawLists(setting, input, false);
    GLCheckError_cls::CheckGLError("DrawParticle::DrawPoints");
}

void DrawParticleBase_cls::DrawBillboards(const ParticleDrawSetting_cls& setting,
                                          const DrawInput_cls& input) {
    DrawLists(setting, input, true);
    GLCheckError_cls::CheckGLError("DrawParticle::DrawBillboards");
}

void DrawParticleBase_cls::DrawLists(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input,
                                     bool bBillboard) {
    BindParticleTexture(input);
    glEnable(GL_VERTEX_PROGRAM_POINT_SIZE);
    // Sprite coordinates grow upwards like the window's, as the programs read them.
    glEnable(GL_POINT_SPRITE);
    glPointParameteri(GL_POINT_SPRITE_COORD_ORIGIN, GL_LOWER_LEFT);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    // Without a program the fixed pipeline draws 12-pixel points in this colour.
    glPointSize(12.f);
    glColor4f(1.f, 1.f, 1.f, 1.f);
    SetBlend(0);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    // A fragment at the far depth fails a "less" test and, with no stencil test, leaves nothing.
    GLint depthFunc = GL_LESS;
    glGetIntegerv(GL_DEPTH_FUNC, &depthFunc);
    const bool bFarDepth =
        depthFunc == GL_LESS && glIsEnabled(GL_DEPTH_TEST) && !glIsEnabled(GL_STENCIL_TEST);

    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[BUF_POS].Get());
    glVertexPointer(3, GL_FLOAT, 0, nullptr);

    int program = -1;
    std::vector<GLint> vEnabled;
    auto bindProgram = [&](int prog) {
        if (prog == program)
            return;
        for (GLint loc : vEnabled)
            glDisableVertexAttribArray(static_cast<GLuint>(loc));
        vEnabled.clear();
        program = prog;
        if (!GpCShaderCtrl)
            return;
        bool bGrid = false;
        if (prog == ParticleDrawSetting_cls::PROG_BILLBOARD) {
            PointBillboardParam_cls params;
            params.mEnsembleStep = input.mEnsembleStep;
            params.mDissolveMode = input.mDissolveMode;
            params.mLightNumber = input.mLightNumber;
            std::copy(input.mFocus, input.mFocus + 16, params.mBaseInvMatrix);
            params.mAngle = input.mAngle;
            params.mTwistMode = mbTwist ? 1 : 0;
            params.mTextureMode = input.mbImage ? 1 : 0;
            for (int i = 0; i < 4; ++i)
                params.mViewport[i] = static_cast<float>(viewport[i]);
            params.mAlphaCrit = input.mAlphaCrit;
            GpCShaderCtrl->BeginPointBillboard(&params, bFarDepth);
        } else {
            PointBasicParam_cls params;
            params.mEnsembleStep = input.mEnsembleStep;
            params.mDissolveMode = input.mDissolveMode;
            params.mLightNumber = input.mLightNumber;
            for (int i = 0; i < 4; ++i)
                params.mViewport[i] = static_cast<float>(viewport[i]);
            params.mBaseDistance = input.mBaseDistance;
            params.mTextureMode = input.mbImage ? 1 : 0;
            params.mPointSizeFactor = input.mPointSizeFactor;
            params.mAlphaCrit = input.mAlphaCrit;
            if (prog == ParticleDrawSetting_cls::PROG_PSEUDO_SPHERE)
                GpCShaderCtrl->BeginPointPseudoSphere(&params, bFarDepth);
            else if (prog == ParticleDrawSetting_cls::PROG_POINT_SQUARE ||
                     prog == ParticleDrawSetting_cls::PROG_POINT_CIRCLE)
                bGrid = GpCShaderCtrl->BeginPointShape(
                    &params, prog == ParticleDrawSetting_cls::PROG_POINT_CIRCLE,
                    IsGridSize(input) && (prog != ParticleDrawSetting_cls::PROG_POINT_CIRCLE || bFarDepth));
            else
                GpCShaderCtrl->BeginPointBasic(&params);
        }
        // Squares on the pixel grid: the rasteriser's fast path for points of whole pixels.
        if (bGrid)
            glDisable(GL_POINT_SPRITE);
        else
            glEnable(GL_POINT_SPRITE);
        const GLuint name = GpCShaderCtrl->GetCurrentProgram();
        if (name == 0)
            return;
        for (int b = BUF_S; b < BUF_COUNT; ++b) {
            const GLint loc = glGetAttribLocation(name, kAttributeName[b]);
            if (loc >= 0 && b == BUF_BITS && mbConstantBits) {
                glVertexAttribI1i(static_cast<GLuint>(loc), mConstantBits);
                continue;
            }
            // twistID at location 0 counts as absent: kept as the billboards have always read it.
            if (loc < 0 || (b == BUF_TWIST && (loc == 0 || !mbTwist)) || !mBuffer[b])
                continue;
            glBindBuffer(GL_ARRAY_BUFFER, mBuffer[b].Get());
            glEnableVertexAttribArray(static_cast<GLuint>(loc));
            if (b == BUF_BITS)
                glVertexAttribIPointer(static_cast<GLuint>(loc), 1, GL_INT, 0, nullptr);
            else
                glVertexAttribPointer(static_cast<GLuint>(loc), 1, GL_FLOAT, GL_FALSE, 0, nullptr);
            vEnabled.push_back(loc);
        }
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[BUF_POS].Get());
    };

    for (int list = 0; list < 2; ++list) {
        if (mNumElement[list] == 0 || (!mbSequential[list] && !mElement[list]))
            continue;
        // The second list lies behind the first and must not hide it.
        if (list == 1)
            glDepthMask(GL_FALSE);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mbSequential[list] ? 0 : mElement[list].Get());
        for (const ParticleRun_cls& run : mVRun[list]) {
            bindProgram(setting.mProgram[run.mMaterial]);
            if (IsOpaqueRun(setting, input, run.mMaterial))
                ShadowVolumeCtrl_cls::SetBlend(false, GL_ONE, GL_ZERO);
            else
                SetBlend(setting.mBlend[run.mMaterial]);
            if (mbSequential[list])
                glDrawArrays(GL_POINTS, static_cast<GLint>(mSequentialFirst[list]) + run.mFirst, run.mCount);
            else
                glDrawElements(GL_POINTS, run.mCount, GL_UNSIGNED_INT, Offset(sizeof(GLuint) * run.mFirst));
        }
    }
    // A frame with nothing to draw still binds and ends its program.
    if (program < 0)
        bindProgram(bBillboard ? ParticleDrawSetting_cls::PROG_BILLBOARD
                               : ParticleDrawSetting_cls::PROG_POINT);
    for (GLint loc : vEnabled)
        glDisableVertexAttribArray(static_cast<GLuint>(loc));
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glPopClientAttrib();
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
}

// ---- spheres ---------------------------------------------------------------------------------

std::vector<float> DrawParticleBase_cls::GetVSphereMesh(int depth) {
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

void DrawParticleBase_cls::SetSphereMesh(int depth) {
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

void DrawParticleBase_cls::DrawSphere(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input,
                                      int depth) {
    mSphereDrawCalls = 0;
    SphereAttribute_cls source[SPHERE_ATTRIBUTE_COUNT];
    int listBase[2] = {0, 0};
    GetSphereSource(source, listBase);
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
        static const struct {
            const char* strName;
            int components;
        } kInstanceAttribute[SPHERE_ATTRIBUTE_COUNT] = {
            {"instancePosSize", 4}, {"colorCurveST", 2}, {"filterAlpha", 1}, {"paramBit", 1}};
        for (int a = 0; a < SPHERE_ATTRIBUTE_COUNT; ++a) {
            const GLint loc = glGetAttribLocation(name, kInstanceAttribute[a].strName);
            if (loc < 0 || !source[a].mBuffer)
                continue;
            const GLuint index = static_cast<GLuint>(loc);
            glBindBuffer(GL_ARRAY_BUFFER, source[a].mBuffer);
            glEnableVertexAttribArray(index);
            if (a == SPHERE_BITS)
                glVertexAttribIPointer(index, 1, GL_INT, source[a].mStride, Offset(source[a].mOffset));
            else
                glVertexAttribPointer(index, kInstanceAttribute[a].components, GL_FLOAT, GL_FALSE,
                                      source[a].mStride, Offset(source[a].mOffset));
            glVertexAttribDivisor(index, 1);
            vEnabled.push_back(index);
        }
        glBindBuffer(GL_ARRAY_BUFFER, mSphereMesh.Get());
    };

    for (int list = 0; list < 2; ++list) {
        if (list == 1 && mNumElement[1] > 0)
            glDepthMask(GL_FALSE);
        for (const ParticleRun_cls& run : mVRun[list]) {
            bindMaterial(run.mMaterial);
            glDrawArraysInstancedBaseInstance(GL_TRIANGLES, 0, mSphereVertexCount, run.mCount,
                                              static_cast<GLuint>(listBase[list] + run.mFirst));
            ++mSphereDrawCalls;
        }
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
