#include "ShadowVolumeCtrl_cls.h"

#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "GetPC_cls.h"
#include "Halton_cls.h"
#include "LightSource_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShaderCtrl_cls.h"
#include "TimeCtrl_cls.h"
#include "VBOBaseObject_cls.h"

#include <epoxy/gl.h>

#include <algorithm>

ShadowVolumeCtrl_cls::ShadowVolumeCtrl_cls() {
    SetTag("ShadowVolumeCtrl");
    const wxString strTag = "VIEW3D";
    Add(&mCUseShadowVolume, "UseShadowVolume=", "0", strTag);
    Add(&mCSoftShadowSampleNum, "SoftShadowSampleNum=", "8", strTag);
    Add(&mCSoftShadowSize, "SoftShadowSize=", "0.2", strTag);
    Add(&mCShadowLength, "ShadowLength=", "0", strTag);
}

ShadowVolumeCtrl_cls::~ShadowVolumeCtrl_cls() = default;

int ShadowVolumeCtrl_cls::GetSoftSampleNum() const {
    return static_cast<int>(
        std::max<long long>(1, std::min<long long>(256, mCSoftShadowSampleNum.GetBodyINT())));
}

void ShadowVolumeCtrl_cls::PrepareSteps(SceneObjCtrl_cls* pScene, double t) {
    mVStep.clear();
    mVPCCasting.clear();
    mbActive = false;
    mFirstStep = 0;
    if (!pScene || !mCUseShadowVolume.GetBodyBOOL())
        return;
    std::vector<SceneObj_cls*> vObjects;
    pScene->GetVPCList(vObjects);
    int lights = 0;
    for (SceneObj_cls* p : vObjects) {
        if (!p->IsClassSameAs("LightSource_cls") || !p->IsValid() || !p->mCVisible.GetBodyBOOL())
            continue;
        ++lights;
        auto* pLight = static_cast<LightSource_cls*>(p);
        if (!pLight->mCCastShadow.GetBodyBOOL())
            continue;
        mVPCCasting.push_back(p);
        const int samples = pLight->mCSoftShadow.GetBodyBOOL() ? GetSoftSampleNum() : 1;
        Step_cls step;
        step.mpCLight = p;
        step.mLightType = pLight->GetLightType();
        step.mSampleNum = samples;
        p->GetMatrix16(step.mMatrix, t, nullptr);
        for (int s = 0; s < samples; ++s) {
            step.mSample = s;
            mVStep.push_back(step);
        }
    }
    mbActive = !mVStep.empty();
    // Step 0 would hold no light at all when every light casts: the frame starts at 1.
    mFirstStep = static_cast<int>(mVPCCasting.size()) == lights ? 1 : 0;
}

const ShadowVolumeCtrl_cls::Step_cls* ShadowVolumeCtrl_cls::GetPCStep() const {
    if (!mbActive || mStep < 1 || mStep > static_cast<int>(mVStep.size()))
        return nullptr;
    return &mVStep[static_cast<size_t>(mStep - 1)];
}

bool ShadowVolumeCtrl_cls::IsCasting(const SceneObj_cls* pLight) const {
    return std::find(mVPCCasting.begin(), mVPCCasting.end(), pLight) != mVPCCasting.end();
}

void ShadowVolumeCtrl_cls::GetLightFactor(const SceneObj_cls* pLight, float& ambient, float& direct) const {
    ambient = direct = 1.f;
    if (!mbActive)
        return;
    ambient = IsLightOnlyDraw() ? 0.f : 1.f;
    if (mStep == 0) {
        direct = IsCasting(pLight) ? 0.f : 1.f;
        return;
    }
    // In the shadowed area too the step's light alone shines: that is what the shadow takes away.
    const Step_cls* pStep = GetPCStep();
    direct = pStep && pStep->mpCLight == pLight ? 1.f / static_cast<float>(pStep->mSampleNum) : 0.f;
}

void ShadowVolumeCtrl_cls::GetLightPosition(const SceneObj_cls* pLight, int lightType, float* out) const {
    // The light shines along its local -z; a parallel light comes from +z, infinitely far.
    out[0] = out[1] = 0.f;
    out[2] = lightType == 0 ? 1.f : 0.f;
    out[3] = lightType == 0 ? 0.f : 1.f;
    const Step_cls* pStep = GetPCStep();
    if (!pStep || pStep->mpCLight != pLight || pStep->mSampleNum < 2 || !GpCHalton)
        return;
    // A soft light is a ball of the size (a point light) or a cone of that half-angle in radians
    // (a parallel light); each sample stands at one point of the Halton table inside it.
    const float size = static_cast<float>(GetSoftSize());
    const int i = pStep->mSample;
    out[0] += GpCHalton->GetX(i) * size;
    out[1] += GpCHalton->GetY(i) * size;
    if (lightType != 0)
        out[2] += GpCHalton->GetZ(i) * size;
}

void ShadowVolumeCtrl_cls::SetLightModelForStep() const {
    if (!IsLightOnlyDraw())
        return;
    const GLfloat black[4] = {0.f, 0.f, 0.f, 1.f};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, black);
}

void ShadowVolumeCtrl_cls::PushState() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
}

void ShadowVolumeCtrl_cls::SetStencilState() {
    mPhase = 1;
    glClear(GL_STENCIL_BUFFER_BIT);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDepthMask(GL_FALSE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_ALWAYS, 0, ~0u);
    // Depth-fail: what lies behind the first surface counts, so the count does not depend on
    // where the camera stands. The far ends stay in the depth range by clamping, not clipping.
    glStencilOpSeparate(GL_BACK, GL_KEEP, GL_INCR_WRAP, GL_KEEP);
    glStencilOpSeparate(GL_FRONT, GL_KEEP, GL_DECR_WRAP, GL_KEEP);
    glEnable(GL_DEPTH_CLAMP);
    // The volume starts on the caster's lit faces: pushed a little back, they never win the
    // depth test against the faces they start from.
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.f, 8.f);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    const Step_cls* pStep = GetPCStep();
    if (!pStep)
        return;
    float local[4];
    GetLightPosition(pStep->mpCLight, pStep->mLightType, local);
    const double* m = pStep->mMatrix;
    GLfloat world[4];
    for (int r = 0; r < 4; ++r)
        world[r] = static_cast<GLfloat>(m[r] * local[0] + m[4 + r] * local[1] + m[8 + r] * local[2] +
                                        m[12 + r] * local[3]);
    // GL puts the position through the model-view of the moment: the view's.
    glLightfv(GL_LIGHT0, GL_POSITION, world);
}

void ShadowVolumeCtrl_cls::SetShadowedArea() {
    mPhase = 2;
    glDisable(GL_POLYGON_OFFSET_FILL);
    glDisable(GL_DEPTH_CLAMP);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_FALSE);
    glDepthFunc(GL_LEQUAL);
    glStencilFunc(GL_NOTEQUAL, 0, ~0u);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    // What a receiver draws now is the light it added in phase 0; a kind that sets no blending
    // of its own is opaque.
    glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
    SetBlend(false, GL_ONE, GL_ZERO);
}

void ShadowVolumeCtrl_cls::SetBlend(bool bBlend, GLenum src, GLenum dst) {
    if (GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->GetPhase() == 2) {
        glEnable(GL_BLEND);
        glBlendFuncSeparate(bBlend ? src : GL_ONE, GL_ONE, GL_ZERO, GL_ONE);
        return;
    }
    if (!bBlend) {
        glDisable(GL_BLEND);
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(src, dst);
}

void ShadowVolumeCtrl_cls::PopState() {
    glPopAttrib();
    mPhase = 3;
}

bool ShadowVolumeCtrl_cls::BeginShader() {
    if (!GpCShaderCtrl)
        return false;
    ShaderSVTriangleMesh_cls params;
    params.mShadowLength = GetShadowLength();
    GpCShaderCtrl->BeginSVTrinagleMesh(&params);
    const GLuint program = GpCShaderCtrl->GetCurrentProgram();
    if (program == 0)
        return false;
    // A plain draw reads the instance attribute's current value, which other programs' draws
    // may have left at that location: the value that changes nothing.
    const GLint loc = glGetAttribLocation(program, "instancePosSize");
    if (loc > 0)
        glVertexAttrib4f(static_cast<GLuint>(loc), 0.f, 0.f, 0.f, 1.f);
    return true;
}

bool ShadowVolumeCtrl_cls::BeginShaderHF(int channel) {
    if (!GpCShaderCtrl)
        return false;
    ShaderSVTriangleMesh_cls params;
    params.mShadowLength = GetShadowLength();
    params.mChannel = channel;
    GpCShaderCtrl->BeginSVTrinagleMeshHF(&params);
    return GpCShaderCtrl->GetCurrentProgram() != 0;
}

bool ShadowVolumeCtrl_cls::BeginShaderRibbon(const StreamlineTriangleParam_cls& ribbon) {
    if (!GpCShaderCtrl)
        return false;
    ShaderSVTriangleMesh_cls params;
    params.mShadowLength = GetShadowLength();
    GpCShaderCtrl->BeginSVStreamlineTriangle(&params, ribbon);
    return GpCShaderCtrl->GetCurrentProgram() != 0;
}

void ShadowVolumeCtrl_cls::EndShader() {
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
}

void ShadowVolumeCtrl_cls::DrawShapeSV(const VBOBaseObject_cls& shape) {
    // Without the program the volumes would be drawn as plain faces into the stencil: none.
    if (!BeginShader())
        return;
    shape.DrawAdjacency();
    EndShader();
}

void ShadowVolumeCtrl_cls::DrawAdjacency(GLuint positions, int strideBytes, GLuint adjacency, int count,
                                         int texCoordBytes) {
    if (count <= 0)
        return;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glBindBuffer(GL_ARRAY_BUFFER, positions);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, adjacency);
    glEnableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, strideBytes, nullptr);
    if (texCoordBytes >= 0) {
        glClientActiveTexture(GL_TEXTURE0);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, strideBytes,
                          reinterpret_cast<const void*>(static_cast<size_t>(texCoordBytes)));
    }
    glDrawElements(GL_TRIANGLES_ADJACENCY, count, GL_UNSIGNED_INT, nullptr);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glPopClientAttrib();
}

void ShadowVolumeCtrl_cls::DrawWhole(const FBO_cls& source, const FBO_cls& target) {
    glColor4f(1.f, 1.f, 1.f, 1.f);
    GLPerspective_cls::Push2DMatrix(target.GetWidth(), target.GetHeight());
    source.DrawOnScreen2D(0, 0, target.GetWidth(), target.GetHeight(), true, GL_REPLACE);
    GLPerspective_cls::Pop2DMatrix();
}

void ShadowVolumeCtrl_cls::PrepareBuffer(FBO_cls* pLike) {
    if (!pLike)
        return;
    if (!mpCFBOBuffer)
        mpCFBOBuffer = std::make_unique<FBO_cls>(pLike->GetWidth(), pLike->GetHeight(), nullptr);
    mpCFBOBuffer->SetGeometryFBO(pLike->GetWidth(), pLike->GetHeight());
    mpCFBOBuffer->SetColorDepth(16);
    mpCFBOBuffer->MakeFBO(true, false);
}

void ShadowVolumeCtrl_cls::DrawOnBuffer(FBO_cls* pImage) {
    if (!mpCFBOBuffer || !pImage)
        return;
    mpCFBOBuffer->Begin(IsFirstStep(), false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glClampColor(GL_CLAMP_READ_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    // Light adds up; the coverage is the first step's.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, IsFirstStep() ? GL_TRUE : GL_FALSE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    DrawWhole(*pImage, *mpCFBOBuffer);
    glPopAttrib();
    mpCFBOBuffer->End();
}

void ShadowVolumeCtrl_cls::DrawFromBuffer(FBO_cls* pTarget) {
    if (!mpCFBOBuffer || !pTarget || TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
        return;
    pTarget->Begin(true, false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    glDisable(GL_BLEND);
    DrawWhole(*mpCFBOBuffer, *pTarget);
    glPopAttrib();
    pTarget->End();
}

void ShadowVolumeCtrl_cls::ClearFBOBuffer() {
    mpCFBOBuffer.reset();
}
