#include "GLDrawKinds_cls.h"

#include "Camera_cls.h"
#include "FogProp_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLDrawTable_cls.h"
#include "GLPerspective_cls.h"
#include "GetPC_cls.h"
#include "HeightFieldDraw_cls.h"
#include "IsosurfaceDraw_cls.h"
#include "LightSource_cls.h"
#include "Material_cls.h"
#include "MeshDraw_cls.h"
#include "MeshObj_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "Primitive_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "StreamlineDraw_cls.h"
#include "TextDraw_cls.h"
#include "TextObj_cls.h"
#include "VBOBaseObject_cls.h"
#include "VBOCone_cls.h"
#include "VBOCylinder_cls.h"
#include "VBOPlane_cls.h"
#include "VBOSphere_cls.h"
#include "VBOWireObject_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeDraw_cls.h"
#include "World_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <vector>

namespace {

double GetOneValue(Material_cls* p, const wxString& strGroup, double t, size_t index, double fallback) {
    ParamGroup_cls* pGroup = p->GetPCParamGroup(strGroup);
    if (!pGroup)
        return fallback;
    const std::vector<double> v = pGroup->GetVInterpolatedValue(t, true, nullptr, false);
    return index < v.size() ? v[index] : fallback;
}

void SetMaterialColor(Material_cls* p, GLenum what, const wxString& strGroup, double t, float alpha) {
    const std::vector<double> c = p->GetColor(strGroup, t);
    const GLfloat v[4] = {static_cast<GLfloat>(c[0]), static_cast<GLfloat>(c[1]), static_cast<GLfloat>(c[2]),
                          alpha};
    glMaterialfv(GL_FRONT_AND_BACK, what, v);
}

void SetLightColor(Material_cls* p, GLenum light, GLenum what, const wxString& strGroup, double t,
                   float factor) {
    const std::vector<double> c = p->GetColor(strGroup, t);
    const GLfloat v[4] = {static_cast<GLfloat>(c[0] * factor), static_cast<GLfloat>(c[1] * factor),
                          static_cast<GLfloat>(c[2] * factor), 1.f};
    glLightfv(light, what, v);
}

// The material's blend factors in GL's words.
GLenum ToGLBlendFactor(MaterialOption_cls::BlendFactor_enum factor) {
    static const GLenum kFactors[] = {GL_ZERO, GL_ONE, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_DST_COLOR};
    return kFactors[factor];
}

const VBOBaseObject_cls* GetPCShape(int primitiveType) {
    switch (primitiveType) {
    case 0:
        return GpCVBOCube;
    case 1:
        return GpCVBOSphere;
    case 2:
        return GpCVBOPlane;
    case 3:
        return GpCVBOCone;
    case 4:
        return GpCVBOCylinder;
    default:
        return nullptr;
    }
}

// Lines in one colour through the line program (the fixed pipeline when it is missing).
void BeginLines(const GLDrawStatus_cls& status) {
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    if (GpCShaderCtrl) {
        LineBasicParam_cls params;
        params.mEnsembleStep = status.mEnsembleStep;
        GpCShaderCtrl->BeginLineBasic(&params);
    }
}

void EndShader() {
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
}

// A later shadow step adds light only: what shines by itself was drawn on the first.
bool IsLightOnlyStep() {
    return GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->IsLightOnlyStep();
}

// Light alone: a later step, or the shadowed area, which takes that light off.
bool IsLightOnlyDraw() {
    return GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->IsLightOnlyDraw();
}

// Outside the stencil phases (and on the plain road).
bool IsOutsideStencil() {
    return !GpCShadowVolumeCtrl || GpCShadowVolumeCtrl->GetPhase() == 0 ||
           GpCShadowVolumeCtrl->GetPhase() == 3;
}

} // namespace

bool GLDrawKinds_cls::IsSkippedInShadowedArea(const Material_cls* pMaterial) {
    return GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->GetPhase() == 2 && pMaterial &&
           !pMaterial->mCReceiveShadow.GetBodyBOOL();
}

int GLDrawKinds_cls::BindMaterialTexture(Material_cls* p, GLDrawStatus_cls& status, int unit) {
    if (!p || !p->IsTextureUsed() || !status.mpCMeshDraw)
        return 0;
    const GLuint texture = status.mpCMeshDraw->GetMaterialTexture(p->mCTextureFile.GetBodySTR());
    if (texture == 0)
        return 0;
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, texture);
    const GLint wrap = p->mCTextureWrap.GetBodyINT() == 1 ? GL_CLAMP_TO_EDGE : GL_REPEAT;
    const GLint filter = p->mCTextureInterp.GetBodyINT() == 0 ? GL_NEAREST : GL_LINEAR;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    // The coordinate on the surface is scaled, then offset.
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glTranslated(GetOneValue(p, "TexOffset", status.mTime, 0, 0.0),
                 GetOneValue(p, "TexOffset", status.mTime, 1, 0.0), 0.0);
    glScaled(GetOneValue(p, "TexScale", status.mTime, 0, 1.0),
             GetOneValue(p, "TexScale", status.mTime, 1, 1.0), 1.0);
    glMatrixMode(GL_MODELVIEW);
    glActiveTexture(GL_TEXTURE0);
    return p->mCTextureMode.GetBodyINT() == 1 ? 2 : 1;
}

void GLDrawKinds_cls::UnbindMaterialTexture(int unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
}

void GLDrawKinds_cls::RegisterAll() {
    // Lit kinds take part in every shadow step; the lights and the world's fog set up each of them.
    GLDrawTable_cls::Register("Primitive_cls", {&GLDrawPrimitive, nullptr, &GLDrawPrimitiveSV, true});
    GLDrawTable_cls::Register("LightSource_cls", {&GLDrawLightSource, nullptr, nullptr, true});
    GLDrawTable_cls::Register("Camera_cls", {&GLDrawCamera, nullptr});
    GLDrawTable_cls::Register("World_cls", {&GLDrawWorld, nullptr, nullptr, true});
    GLDrawTable_cls::Register("MeshObj_cls", {&GLDrawMesh, nullptr, &GLDrawMeshSV, true});
    GLDrawTable_cls::Register("TextObj_cls", {&GLDrawText, nullptr});
    // The particle drawing tells the phases apart itself (spheres cast, points do not).
    GLDrawTable_cls::Register("Particle_cls", {&GLDrawParticle, nullptr, &GLDrawParticle, true});
    GLDrawTable_cls::Register("VolumeBox_cls", {&GLDrawVolumeBox, nullptr});
    StreamlineDraw_cls::Register();
    HeightFieldDraw_cls::Register();
    IsosurfaceDraw_cls::Register();
}

void GLDrawKinds_cls::SetGuideColor(int selectStatus, float r, float g, float b) {
    if (selectStatus == 2)
        glColor4f(1.f, 0.65f, 0.2f, 1.f);
    else if (selectStatus == 1)
        glColor4f(0.85f, 0.4f, 0.1f, 1.f);
    else
        glColor4f(r, g, b, 1.f);
}

int GLDrawKinds_cls::SetMaterial(Material_cls* p, double t) {
    const float alpha = static_cast<float>(GetOneValue(p, "Alpha", t, 0, 1.0));
    SetMaterialColor(p, GL_AMBIENT, "Ambient", t, alpha);
    SetMaterialColor(p, GL_DIFFUSE, "Diffuse", t, alpha);
    SetMaterialColor(p, GL_SPECULAR, "Specular", t, alpha);
    if (IsLightOnlyDraw()) {
        const GLfloat black[4] = {0.f, 0.f, 0.f, alpha};
        glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, black);
    } else {
        SetMaterialColor(p, GL_EMISSION, "Emission", t, alpha);
    }
    glMaterialf(
        GL_FRONT_AND_BACK, GL_SHININESS,
        static_cast<GLfloat>(std::min(128.0, std::max(0.0, GetOneValue(p, "Shininess", t, 0, 32.0)))));
    MaterialOption_cls::BlendFactor_enum src = MaterialOption_cls::BlendFactor_enum(),
                                         dst = MaterialOption_cls::BlendFactor_enum();
    const bool bBlend = p->SetBlendFunc(src, dst);
    ShadowVolumeCtrl_cls::SetBlend(bBlend, bBlend ? ToGLBlendFactor(src) : GL_ONE,
                                   bBlend ? ToGLBlendFactor(dst) : GL_ZERO);
    if (p->mCTwoSide.GetBodyBOOL()) {
        glDisable(GL_CULL_FACE);
        glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_TRUE);
    } else {
        glEnable(GL_CULL_FACE);
        glCullFace(GL_BACK);
        glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_FALSE);
    }
    const bool bSmooth = p->mCSmooth.GetBodyBOOL();
    glShadeModel(bSmooth ? GL_SMOOTH : GL_FLAT);
    glPolygonMode(GL_FRONT_AND_BACK, p->mCWireframe.GetBodyBOOL() ? GL_LINE : GL_FILL);
    return bSmooth ? 0 : 1;
}

void GLDrawKinds_cls::GLDrawPrimitive(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    Primitive_cls* p = static_cast<Primitive_cls*>(pObj);
    const int type = p->GetPrimitiveType();
    glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_POLYGON_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT |
                 GL_LINE_BIT);
    const VBOBaseObject_cls* pShape = GetPCShape(type);
    if (!pShape) {
        // The empty carries only a transform: a guide cross.
        if (status.mbGuide && GpCVBOEmpty) {
            BeginLines(status);
            SetGuideColor(status.mbHitTest ? 0 : status.mSelectStatus, 0.7f, 0.7f, 0.7f);
            GpCVBOEmpty->Draw();
            EndShader();
        }
        glPopAttrib();
        return;
    }
    Material_cls* pMaterial = p->GetPCMaterial();
    if (IsSkippedInShadowedArea(pMaterial)) {
        glPopAttrib();
        return;
    }
    ObjectPhongParam_cls params;
    params.mEnsembleStep = status.mEnsembleStep;
    params.mLightNumber = status.mLightNumber;
    params.mbFlat = pMaterial ? SetMaterial(pMaterial, status.mTime) : 0;
    glEnable(GL_LIGHTING);
    params.mTextureMode = status.mbHitTest ? 0 : BindMaterialTexture(pMaterial, status, 0);
    if (params.mTextureMode == 2 && IsLightOnlyDraw()) {
        // An image in place of the lit colour shines by itself: the first step drew it. Later
        // steps add nothing to it, and the shadow takes nothing off, but it still hides what lies
        // behind it.
        UnbindMaterialTexture(0);
        params.mTextureMode = 0;
        const GLfloat black[4] = {
            0.f, 0.f, 0.f, static_cast<GLfloat>(GetOneValue(pMaterial, "Alpha", status.mTime, 0, 1.0))};
        for (GLenum colour : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION})
            glMaterialfv(GL_FRONT_AND_BACK, colour, black);
    }
    // Without its program (a shader that did not build) the object draws with the fixed
    // pipeline and the same material.
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginObjectPhong(&params);
    pShape->Draw();
    EndShader();
    if (params.mTextureMode != 0)
        UnbindMaterialTexture(0);
    // The selection shows as the object's wire on top of its faces.
    if (status.mSelectStatus > 0 && !status.mbHitTest && !status.mbRecording && !IsLightOnlyStep() &&
        IsOutsideStencil()) {
        glDisable(GL_BLEND);
        glDisable(GL_CULL_FACE);
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glDepthFunc(GL_LEQUAL);
        BeginLines(status);
        SetGuideColor(status.mSelectStatus, 0.f, 0.f, 0.f);
        pShape->Draw();
        EndShader();
    }
    glPopAttrib();
}

void GLDrawKinds_cls::GLDrawLightSource(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    LightSource_cls* p = static_cast<LightSource_cls*>(pObj);
    if (status.mLightNumber < status.mMaxLights) {
        const GLenum light = GL_LIGHT0 + static_cast<GLenum>(status.mLightNumber);
        const int type = p->GetLightType();
        // The light shines along its local -z; a parallel light comes from +z, infinitely far.
        // A shadow step keeps the light's ambient on the first step only and its own light on
        // its own steps, at the sample's position.
        GLfloat position[4] = {0.f, 0.f, type == 0 ? 1.f : 0.f, type == 0 ? 0.f : 1.f};
        float ambient = 1.f, direct = 1.f;
        if (GpCShadowVolumeCtrl) {
            GpCShadowVolumeCtrl->GetLightFactor(p, ambient, direct);
            GpCShadowVolumeCtrl->GetLightPosition(p, type, position);
        }
        glLightfv(light, GL_POSITION, position);
        const GLfloat direction[3] = {0.f, 0.f, -1.f};
        glLightfv(light, GL_SPOT_DIRECTION, direction);
        if (Material_cls* pMaterial = p->GetPCMaterial()) {
            const double t = status.mTime;
            SetLightColor(pMaterial, light, GL_AMBIENT, "Ambient", t, ambient);
            SetLightColor(pMaterial, light, GL_DIFFUSE, "Diffuse", t, direct);
            SetLightColor(pMaterial, light, GL_SPECULAR, "Specular", t, direct);
            glLightf(light, GL_SPOT_CUTOFF,
                     type == 2 ? static_cast<GLfloat>(GetOneValue(pMaterial, "SpotCutoff", t, 0, 30.0))
                               : 180.f);
            glLightf(light, GL_SPOT_EXPONENT,
                     type == 2 ? static_cast<GLfloat>(GetOneValue(pMaterial, "SpotExponent", t, 0, 10.0))
                               : 0.f);
            glLightf(light, GL_CONSTANT_ATTENUATION,
                     static_cast<GLfloat>(GetOneValue(pMaterial, "Attenuation", t, 0, 1.0)));
            glLightf(light, GL_LINEAR_ATTENUATION,
                     static_cast<GLfloat>(GetOneValue(pMaterial, "Attenuation", t, 1, 0.0)));
            glLightf(light, GL_QUADRATIC_ATTENUATION,
                     static_cast<GLfloat>(GetOneValue(pMaterial, "Attenuation", t, 2, 0.0)));
        }
        glEnable(light);
        ++status.mLightNumber;
    }
    if (!status.mbLightCam || !GpCVBOEmpty || !IsOutsideStencil())
        return;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    BeginLines(status);
    SetGuideColor(status.mbHitTest ? 0 : status.mSelectStatus, 1.f, 0.9f, 0.3f);
    glPushMatrix();
    glScaled(0.3, 0.3, 0.3);
    GpCVBOEmpty->Draw();
    glPopMatrix();
    glBegin(GL_LINES);
    glVertex3f(0.f, 0.f, 0.f);
    glVertex3f(0.f, 0.f, -1.f);
    glEnd();
    EndShader();
    glPopAttrib();
}

void GLDrawKinds_cls::GLDrawCamera(SceneObj_cls*, GLDrawStatus_cls& status) {
    if (!status.mbLightCam || !GpCVBOCameraBox)
        return;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    BeginLines(status);
    SetGuideColor(status.mbHitTest ? 0 : status.mSelectStatus, 0.8f, 0.8f, 0.8f);
    GpCVBOCameraBox->Draw();
    EndShader();
    glPopAttrib();
}

void GLDrawKinds_cls::GLDrawWorld(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    World_cls* p = static_cast<World_cls*>(pObj);
    FogProp_cls* pFog = p->GetPCFogProp();
    const int type = pFog ? pFog->GetFogType() : 0;
    if (type < 1 || type > 3)
        return;
    const double t = status.mTime;
    // On a later shadow step the fog only dims the light added: its colour was added once.
    const std::vector<double> c = IsLightOnlyDraw() ? std::vector<double>(3, 0.0) : pFog->GetFogColor(t);
    const GLfloat colour[4] = {static_cast<GLfloat>(c[0]), static_cast<GLfloat>(c[1]),
                               static_cast<GLfloat>(c[2]), 1.f};
    const std::vector<double> range = pFog->GetFogRange(t);
    static const GLint kMode[4] = {0, GL_LINEAR, GL_EXP, GL_EXP2};
    glFogi(GL_FOG_MODE, kMode[type]);
    glFogfv(GL_FOG_COLOR, colour);
    glFogf(GL_FOG_START, static_cast<GLfloat>(range[0]));
    glFogf(GL_FOG_END, static_cast<GLfloat>(range[1]));
    glFogf(GL_FOG_DENSITY, static_cast<GLfloat>(pFog->GetFogDensity(t)));
    glEnable(GL_FOG);
    // The object programs fog by this mode from here on, until the next sub-pass resets it.
    if (GpCShaderCtrl)
        GpCShaderCtrl->mFogMode = type;
}

void GLDrawKinds_cls::GLDrawPrimitiveSV(SceneObj_cls* pObj, GLDrawStatus_cls&) {
    Primitive_cls* p = static_cast<Primitive_cls*>(pObj);
    const VBOBaseObject_cls* pShape = GetPCShape(p->GetPrimitiveType());
    const Material_cls* pMaterial = p->GetPCMaterial();
    if (!pShape || !GpCShadowVolumeCtrl || (pMaterial && !pMaterial->mCCastShadow.GetBodyBOOL()))
        return;
    GpCShadowVolumeCtrl->DrawShapeSV(*pShape);
}

void GLDrawKinds_cls::GLDrawMesh(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    auto* p = static_cast<MeshObj_cls*>(pObj);
    if (IsSkippedInShadowedArea(p->GetPCMaterial()))
        return;
    // The object's matrix is on the model-view already.
    if (status.mpCMeshDraw)
        status.mpCMeshDraw->Draw(*p, nullptr, status.mTime);
}

void GLDrawKinds_cls::GLDrawMeshSV(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    auto* p = static_cast<MeshObj_cls*>(pObj);
    const Material_cls* pMaterial = p->GetPCMaterial();
    if (!status.mpCMeshDraw || !GpCShadowVolumeCtrl || (pMaterial && !pMaterial->mCCastShadow.GetBodyBOOL()))
        return;
    if (!GpCShadowVolumeCtrl->BeginShader())
        return;
    status.mpCMeshDraw->DrawSV(*p);
    GpCShadowVolumeCtrl->EndShader();
}

void GLDrawKinds_cls::GLDrawText(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    if (status.mpCTextDraw)
        status.mpCTextDraw->DrawTextObj(*static_cast<TextObj_cls*>(pObj), nullptr, status.mTime);
}

void GLDrawKinds_cls::GLDrawParticle(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    if (status.mpCParticleDraw)
        status.mpCParticleDraw->GLDraw(*static_cast<Particle_cls*>(pObj), status);
}

void GLDrawKinds_cls::GLDrawVolumeBox(SceneObj_cls* pObj, GLDrawStatus_cls& status) {
    if (status.mpCVolumeDraw)
        status.mpCVolumeDraw->GLDraw(*static_cast<VolumeBox_cls*>(pObj), status);
}

void GLDrawKinds_cls::GLDrawPassepartout(Camera_cls* pCamera, int size) {
    const std::vector<float> v = pCamera->GetVPasspartoutInfo();
    if (v.size() < 2 || v[0] <= 0.f)
        return;
    const double aspect = v[0];
    const double half = size * 0.5;
    // The frame of the camera's aspect inside the square, as wide or as high as the square.
    const double w = aspect >= 1.0 ? half : half * aspect;
    const double h = aspect >= 1.0 ? half / aspect : half;
    GLPerspective_cls::Push2DMatrix(size, size);
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.f, 0.f, 0.f, v[1]);
    const double x0 = half - w, x1 = half + w, y0 = half - h, y1 = half + h;
    glBegin(GL_QUADS);
    // Below, above, left, right of the frame.
    const double quads[4][4] = {{0, 0, double(size), y0},
                                {0, y1, double(size), double(size)},
                                {0, y0, x0, y1},
                                {x1, y0, double(size), y1}};
    for (const auto& q : quads) {
        glVertex2d(q[0], q[1]);
        glVertex2d(q[2], q[1]);
        glVertex2d(q[2], q[3]);
        glVertex2d(q[0], q[3]);
    }
    glEnd();
    glPopAttrib();
    GLPerspective_cls::Pop2DMatrix();
}
