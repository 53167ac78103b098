#include "DrawParticleBase_cls.h"

#include "ClassProvider_cls.h"
#include "GLCheckError_cls.h"
#include "ShaderCtrl_cls.h"

#include <epoxy/gl.h>

#include <cstdint>

namespace {

// The per-particle attributes of the point programs, in the order of the buffers.
const char* const kAttributeName[DrawParticleBase_cls::BUF_COUNT] = {
    nullptr, "colorCurveS", "colorCurveT", "filterAlpha", "pointSize", "paramBit", "twistID"};

const void* Offset(size_t bytes) {
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(bytes));
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
                                  float alpha) {
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
    Push(list, index, m, key);
}

void ParticleElementList_cls::Push(int list, unsigned int index, int m, int key) {
    std::vector<ParticleRun_cls>& vRun = mVRun[list];
    if (key != mLastKey[list] || vRun.empty()) {
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
    glEnable(GL_BLEND);
    // The programs write premultiplied colour.
    switch (blendType) {
    case 1: // "Additive"
        glBlendFunc(GL_ONE, GL_ONE);
        break;
    case 2: // "Mix": what is behind shows through by the particle's own colour
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_COLOR);
        break;
    default: // "Alpha Blend"
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        break;
    }
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
            GpCShaderCtrl->BeginPointBillboard(&params);
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
                GpCShaderCtrl->BeginPointPseudoSphere(&params);
            else
                GpCShaderCtrl->BeginPointBasic(&params);
        }
        const GLuint name = GpCShaderCtrl->GetCurrentProgram();
        if (name == 0)
            return;
        for (int b = BUF_S; b < BUF_COUNT; ++b) {
            const GLint loc = glGetAttribLocation(name, kAttributeName[b]);
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
