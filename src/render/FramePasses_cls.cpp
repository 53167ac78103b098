#include "FramePasses_cls.h"

#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "EnsembleCtrl_cls.h"
#include "FBO_cls.h"
#include "FocalBlurProp_cls.h"
#include "FrameFilter_ifc.h"
#include "FrameOutput_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLInfo_cls.h"
#include "GLKindResources_cls.h"
#include "GLPerspective_cls.h"
#include "GetPC_cls.h"
#include "Hittest_cls.h"
#include "ImageComposer_cls.h"
#include "MeshDraw_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "ParticleDraw_cls.h"
#include "Preference_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObjDraw_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "StereoProp_cls.h"
#include "Stereogram_cls.h"
#include "TextDraw_cls.h"
#include "TimeCtrl_cls.h"
#include "VBOBaseObject_cls.h"
#include "VBOCone_cls.h"
#include "VBOCylinder_cls.h"
#include "VBOPlane_cls.h"
#include "VBOSphere_cls.h"
#include "VBOWireObject_cls.h"
#include "View3D_cls.h"
#include "VolumeDraw_cls.h"
#include "WideCamera_cls.h"
#include "World_cls.h"

#include <epoxy/gl.h>
#include <wx/log.h>
#include <wx/stopwatch.h>

#include <cmath>

bool FramePasses_cls::msbInitializedCommon = false;

namespace {
// Five digits, as in the frustum: the angles recomputed here must match its images.
constexpr double kPi = 3.14159;

// A preference of the depth range, or its default while the preference does not exist.
double GetPreferenceDouble(const wxString& strKey, double fallback) {
    if (!GpCPreference)
        return fallback;
    const ConfItem_cls* p = GpCPreference->GetPCItem(strKey);
    return p ? p->GetBodyDOUBLE() : fallback;
}

// One shadow-volume controller for a process that has none registered (shadows off).
ShadowVolumeCtrl_cls& GetShadowCtrl() {
    static ShadowVolumeCtrl_cls sOff;
    return GpCShadowVolumeCtrl ? *GpCShadowVolumeCtrl : sOff;
}
} // namespace

FramePasses_cls::FramePasses_cls(View3D_cls* pView) : mpCView(pView) {}

FramePasses_cls::~FramePasses_cls() = default;

void FramePasses_cls::InitializeGLCommonIfNot() {
    if (msbInitializedCommon)
        return;
    msbInitializedCommon = true;
    GpCVBOCameraBox = new VBOWireObject_cls(VBOWireObject_cls::GetVCamera());
    GpCVBOCone = new VBOCone_cls();
    GpCVBOCube = new VBOBaseObject_cls(VBOBaseObject_cls::GetVCube());
    GpCVBOCylinder = new VBOCylinder_cls();
    GpCVBOEmpty = new VBOWireObject_cls(VBOWireObject_cls::GetVEmpty());
    GpCVBOPlane = new VBOPlane_cls();
    GpCVBOSphere = new VBOSphere_cls();
    if (!GpCGLInfo)
        GpCGLInfo = new GLInfo_cls();
    GpCGLInfo->Initialize();
}

void FramePasses_cls::DeleteGLCommon() {
    delete GpCVBOCameraBox;
    GpCVBOCameraBox = nullptr;
    delete GpCVBOCone;
    GpCVBOCone = nullptr;
    delete GpCVBOCube;
    GpCVBOCube = nullptr;
    delete GpCVBOCylinder;
    GpCVBOCylinder = nullptr;
    delete GpCVBOEmpty;
    GpCVBOEmpty = nullptr;
    delete GpCVBOPlane;
    GpCVBOPlane = nullptr;
    delete GpCVBOSphere;
    GpCVBOSphere = nullptr;
    delete GpCGLInfo;
    GpCGLInfo = nullptr;
    msbInitializedCommon = false;
}

void FramePasses_cls::InitializeGLIfNot() {
    if (mbInitializedGL)
        return;
    mbInitializedGL = true;
    mpCFBOMain = std::make_unique<FBO_cls>(2048, 2048, this);
    // The meshes' textures come from the registry's provider, which outlives the passes.
    mpCMeshDraw = std::make_unique<MeshDraw_cls>(GpCTextureProvider);
    mpCTextDraw = std::make_unique<TextDraw_cls>();
    mpCParticleDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
    mpCVolumeDraw = std::make_unique<VolumeDraw_cls>(GpCTextureProvider1D);
    mpCKindResources = std::make_unique<GLKindResources_cls>();
    mpCFBODepth = std::make_unique<FBO_cls>(16, 16, this);
    for (int eye = 0; eye < 2; ++eye) {
        mpCFBOEye[eye] = std::make_unique<FBO_cls>(16, 16, this);
        mpCFBOEyeDepth[eye] = std::make_unique<FBO_cls>(16, 16, this);
    }
    mpCFBOComposite = std::make_unique<FBO_cls>(16, 16, this);
    glEnable(GL_VERTEX_PROGRAM_POINT_SIZE);
}

void FramePasses_cls::ClearQueue() {
    mbObjectRedraw = false;
    mbHitTestPending = false;
    mbHitToggle = false;
}

void FramePasses_cls::DummyDraw(unsigned int targetFramebuffer) {
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, targetFramebuffer);
    const float g = static_cast<float>(mDummyGrey);
    glClearColor(g, g, g, 1.f);
    glClear(GL_COLOR_BUFFER_BIT);
    mDummyGrey += 0.1;
    if (mDummyGrey > 1.0 + 1e-9)
        mDummyGrey = 0.0;
}

// ---- what the frame reads ----

Camera_cls* FramePasses_cls::GetPCCamera() const {
    if (!GpCSceneObjCtrl)
        return nullptr;
    SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(mpCView->GetStrCameraName());
    return p && p->IsClassSameAs("Camera_cls") ? static_cast<Camera_cls*>(p) : nullptr;
}

bool FramePasses_cls::IsCameraDriving() const {
    return mpCView->IsUseCamera() && GetPCCamera();
}

int FramePasses_cls::GetCameraType() const {
    if (IsCameraDriving())
        return GetPCCamera()->GetCameraType();
    return static_cast<int>(mpCView->mCWideCameraType.GetBodyINT());
}

int FramePasses_cls::GetStereoNum() const {
    return IsCameraDriving() ? GetPCCamera()->GetStereoNum() : 1;
}

int FramePasses_cls::GetEyeType() const {
    return IsCameraDriving() ? GetPCCamera()->GetEyeType() : 0;
}

double FramePasses_cls::GetViewAngle() const {
    if (!IsCameraDriving())
        return mpCView->GetViewAngleL();
    Camera_cls* pCamera = GetPCCamera();
    if (pCamera->GetCameraType() > 1)
        return pCamera->GetPCCameraProp()->GetWideAngle(mTime);
    const bool bRecording = GpCTimeCtrl && GpCTimeCtrl->IsOutputRunning();
    return bRecording ? pCamera->GetAngleL(mTime) : mpCView->GetViewAngleL();
}

std::vector<double> FramePasses_cls::GetVMinMax() const {
    if (IsCameraDriving())
        return GetPCCamera()->GetVMinMax(mTime);
    return {GetPreferenceDouble("GLDepthMin=", 0.01), GetPreferenceDouble("GLDepthMax=", 1000.0)};
}

std::vector<float> FramePasses_cls::GetVPasspartoutInfo() const {
    std::vector<float> v = {-1.f, -1.f};
    if (Camera_cls* pCamera = GetPCCamera())
        v = pCamera->GetVPasspartoutInfo();
    v.push_back(static_cast<float>(tan(GetViewAngle() * kPi / 180.0 * 0.5)));
    return v;
}

double FramePasses_cls::GetModByAspectX() const {
    const double aspect = static_cast<double>(mVisibleWidth) / mVisibleHeight;
    return std::min(1.0, aspect);
}

double FramePasses_cls::GetModByAspectY() const {
    const double aspect = static_cast<double>(mVisibleWidth) / mVisibleHeight;
    return aspect < 1.0 ? 1.0 : 1.0 / aspect;
}

void FramePasses_cls::AdjustAngleByScreenAspect(double& angle) const {
    if (mVisibleWidth >= mVisibleHeight)
        return;
    angle = 2.0 * atan(tan(angle / 2.0) * mVisibleHeight / mVisibleWidth);
}

int FramePasses_cls::GetPercent(int a, int n, int b, int m, int c, int k) {
    return (((a * m + b) * k + c) * 100) / (n * m * k);
}

int FramePasses_cls::GetFitIndex(int cameraType, double aspect) {
    return WideCamera_cls::GetFitIndex(cameraType, aspect);
}

const ColorProvider_cls& FramePasses_cls::GetColorProvider() const {
    if (GpCColorProvider)
        return *GpCColorProvider;
    if (!mpCDefaultColors)
        const_cast<FramePasses_cls*>(this)->mpCDefaultColors = std::make_unique<ColorProvider_cls>();
    return *mpCDefaultColors;
}

// ---- the frame ----

void FramePasses_cls::SetCameraInfo() {
    mPosDirNow = mpCView->GetPosDir();
    mPosDirNext = mPosDirNow;
    // The pivot and the look at it belong to the view's navigation, in the 3D view panel.
    if (mpCView->mCFollow.GetBodyBOOL()) {
        if (Camera_cls* pCamera = GetPCCamera()) {
            pCamera->GetPose(mTime, mPosDirNow);
            pCamera->GetPose(GpCTimeCtrl ? GpCTimeCtrl->GetNextNT() : mTime, mPosDirNext);
        }
    }
}

void FramePasses_cls::SetModelViewForEachFBO(int eyeType, int eye, int part, int ensembleStep, int wideType) {
    mPosDirDrawNow = mPosDirNow;
    mPosDirDrawNext = mPosDirNext;
    Camera_cls* pCamera = GetPCCamera();
    if (pCamera && eyeType != 0) {
        pCamera->GetPCStereoProp()->StereoRotate(&mPosDirDrawNow, eye, mTime);
        pCamera->GetPCStereoProp()->StereoRotate(&mPosDirDrawNext, eye, mTime);
    }
    if (IsCameraDriving()) {
        pCamera->GetPCFocalBlurProp()->BlurRotate(&mPosDirDrawNow, ensembleStep, mTime);
        pCamera->GetPCFocalBlurProp()->BlurRotate(&mPosDirDrawNext, ensembleStep, mTime);
    }
    const double tilt = IsCameraDriving() ? pCamera->GetPCCameraProp()->GetDomeTilt(mTime) : 0.0;
    // The tilted pose is the camera's own, the centre of a wide image: the filters and the pick
    // see that one, not the face drawn last.
    WideCamera_cls::ModifyCamera(&mPosDirDrawNow, -1, wideType, tilt);
    WideCamera_cls::ModifyCamera(&mPosDirDrawNext, -1, wideType, tilt);
    mPosDirFront = mPosDirDrawNow;
    WideCamera_cls::ModifyCamera(&mPosDirDrawNow, part, wideType, 0.0);
    WideCamera_cls::ModifyCamera(&mPosDirDrawNext, part, wideType, 0.0);
    GLPerspective_cls::SetModelView(mPosDirDrawNow, mPosDirDrawNow);
}

void FramePasses_cls::ShiftFrustumForEye(int eye, double angle) {
    Camera_cls* pCamera = GetPCCamera();
    StereoProp_cls* pStereo = pCamera ? pCamera->GetPCStereoProp() : nullptr;
    if (!pStereo || pStereo->GetStereoType() != 1)
        return;
    // "Off Axis": the eyes look in parallel through frusta shifted so that they meet on the plane
    // in focus, where the parallax is zero.
    const double focus = pStereo->GetFocusDistance(mTime);
    const double halfTan = tan(angle * kPi / 180.0 * 0.5);
    if (focus <= 0.0 || halfTan <= 0.0)
        return;
    const double shift = pStereo->GetEyeShift(eye, mTime) / (focus * halfTan);
    GLdouble projection[16];
    glMatrixMode(GL_PROJECTION);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glLoadIdentity();
    glTranslated(shift, 0.0, 0.0);
    glMultMatrixd(projection);
    glMatrixMode(GL_MODELVIEW);
}

void FramePasses_cls::ClearBuffer(const wxString& strColorName) {
    GetColorProvider().SetGLClearColor(strColorName);
    if (strColorName == "GLBG" && GpCSceneObjCtrl) {
        World_cls* pWorld = GpCSceneObjCtrl->GetPCWorld();
        if (pWorld && pWorld->GetFogType() != 0 && pWorld->IsFogOverwrite()) {
            const std::vector<double> c = pWorld->GetFogColor(mTime);
            glClearColor(static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2]), 1.f);
        }
    }
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT | GL_ACCUM_BUFFER_BIT);
}

void FramePasses_cls::BeginFBOAndSetStatus(FBO_cls* pFBO, const wxString& strClearColor, double angle,
                                           double zNear, double zFar, bool bDepthTexture) {
    pFBO->MakeFBO(true, bDepthTexture);
    if (strClearColor.empty()) {
        pFBO->Begin(false, false);
    } else {
        pFBO->Begin(true, false);
        ClearBuffer(strClearColor);
    }
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_NORMALIZE);
    // Colours above 1 survive in the float buffers.
    glClampColor(GL_CLAMP_READ_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    mpCFBOCurrent->SetProjection();
    mpCFBOCurrent->SetFrustum(angle, zNear, zFar);
    glMatrixMode(GL_MODELVIEW);
}

void FramePasses_cls::DrawGrid() {
    const ShadowVolumeCtrl_cls& shadow = GetShadowCtrl();
    if (!shadow.IsFirstStep() || (shadow.GetPhase() != 0 && shadow.GetPhase() != 3))
        return;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    const std::array<float, 4> c = GetColorProvider().GetColor("GLGrid");
    glColor4f(c[0], c[1], c[2], c[3]);
    glBegin(GL_LINES);
    for (int i = -10; i <= 10; ++i) {
        glVertex3f(static_cast<float>(i), 0.f, -10.f);
        glVertex3f(static_cast<float>(i), 0.f, 10.f);
        glVertex3f(-10.f, 0.f, static_cast<float>(i));
        glVertex3f(10.f, 0.f, static_cast<float>(i));
    }
    glEnd();
    glPopAttrib();
}

void FramePasses_cls::DrawEachFBO(int ensembleStep, int compositeIndex, bool bHitTest) {
    ++mDrawCount;
    CheckGLError("BEGIN GRID");
    glEnable(GL_DEPTH_TEST);
    // Aliased lines are at least one pixel wide; some drivers drop thinner ones instead.
    const float lineWidth = static_cast<float>(
        std::max(1.0, mpCView->GetLineWidth() * (mpCFBOCurrent ? mpCFBOCurrent->GetLineWidthFactor() : 1.0)));
    glLineWidth(lineWidth);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    if (!bHitTest && mpCView->mCDispGrid.GetBodyBOOL())
        DrawGrid();
    CheckGLError("BEGIN OBJECT DRAW");
    const bool bFirst = GetShadowCtrl().IsFirstStep();
    GLDrawStatus_cls status;
    status.mbGuide = bFirst && mpCView->mCDispGuideObj.GetBodyBOOL();
    status.mbLightCam = bFirst && mpCView->mCDispLightCam.GetBodyBOOL();
    status.mbData = mpCView->mCDisplayData.GetBodyBOOL();
    status.mbHitTest = bHitTest;
    status.mbRecording = GpCTimeCtrl && GpCTimeCtrl->IsOutputRunning();
    status.mTime = mTime;
    status.mEnsembleStep = ensembleStep;
    status.mCompositeIndex = compositeIndex;
    status.mpCMeshDraw = mpCMeshDraw.get();
    status.mpCTextDraw = mpCTextDraw.get();
    status.mpCParticleDraw = mpCParticleDraw.get();
    status.mpCVolumeDraw = mpCVolumeDraw.get();
    status.mpCKindResources = mpCKindResources.get();
    glDisable(GL_FOG);
    if (GpCShaderCtrl)
        GpCShaderCtrl->mFogMode = 0;
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_LIGHTING);
    GLint maxLights = 8;
    glGetIntegerv(GL_MAX_LIGHTS, &maxLights);
    for (GLint i = 0; i < maxLights; ++i)
        glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
    glEnable(GL_LIGHT0);
    status.mMaxLights = maxLights;
    status.mLineWidth = lineWidth * 2.f;
    glLineWidth(status.mLineWidth);
    if (GpCSceneObjCtrl)
        SceneObjDraw_cls::GLDrawObjects(GpCSceneObjCtrl, status, mPosDirDrawNow, mPosDirDrawNext);
    CheckGLError("END OBJECT DRAW");
}

bool FramePasses_cls::DoesUseDepthBuffer() const {
    FrameFilter_ifc* pChain = FrameFilter_ifc::GetPCInstalled();
    return pChain && pChain->DoesUseDepthBuffer();
}

FBO_cls* FramePasses_cls::GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>& vPasspartout) {
    FrameFilter_ifc* pChain = FrameFilter_ifc::GetPCInstalled();
    mbProcessedOwned = pChain != nullptr;
    if (!pChain)
        return pSource;
    // Without the depth pass of this paint the depth buffer of the last one is used.
    FBO_cls* pDepth = mpCFBODepth && mpCFBODepth->GetPCDepthTexture() ? mpCFBODepth.get() : nullptr;
    return pChain->GetNewPCFilterProcessed(pSource, vPasspartout, mPosDirFront, GetPCCamera(), pDepth);
}

void FramePasses_cls::ReleaseProcessed() {
    FrameFilter_ifc* pChain = FrameFilter_ifc::GetPCInstalled();
    if (mbProcessedOwned && pChain) {
        // Two eyes: the shown image is the left eye's or the frame's own stereogram.
        if (mpCFBOProcessed != mpCFBOProcessedEye[0] && mpCFBOProcessed != mpCFBOStereo.get())
            pChain->ReleaseProcessed(mpCFBOProcessed);
        for (FBO_cls*& p : mpCFBOProcessedEye)
            pChain->ReleaseProcessed(p);
    }
    mpCFBOProcessedEye[0] = mpCFBOProcessedEye[1] = nullptr;
    mpCFBOProcessed = nullptr;
    mbProcessedOwned = false;
}

void FramePasses_cls::ProcHitTest(int cameraType) {
    const bool bLoupe = mpCView->mCLoupe.GetBodyBOOL();
    if (!bLoupe && !mbHitTestPending)
        return;
    if (mVisibleWidth <= 0 || mVisibleHeight <= 0)
        return;
    if (!mpCHittest)
        mpCHittest = std::make_unique<Hittest_cls>();
    // The window shows a square cut of the buffer: the mouse goes to the buffer's unit square.
    const int fit = GetFitIndex(cameraType, static_cast<double>(mVisibleWidth) / mVisibleHeight);
    double x = mMouseX, y = mMouseY;
    if (fit == 0)
        y = 0.5 + (mMouseY - 0.5) * mVisibleHeight / mVisibleWidth;
    else
        x = 0.5 + (mMouseX - 0.5) * mVisibleWidth / mVisibleHeight;
    const bool bSelect = mbHitTestPending;
    // The side of the small window, as a part of the buffer's side.
    const double size = msHitTestPixels / (fit == 0 ? mVisibleWidth : mVisibleHeight) * (bSelect ? 1.0 : 8.0);
    const std::vector<double> vMinMax = GetVMinMax();
    const double angle = GetViewAngle();
    PositionAndDirection_cls pose = mPosDirFront;
    if (WideCamera_cls::GetFBONum(cameraType) > 1) {
        // A wide image has no one frustum: the pick looks along the ray of the point through a
        // frustum as wide as the window's part of the image.
        double dir[3];
        if (!WideCamera_cls::GetDirectionAt(cameraType, 2.0 * x - 1.0, 2.0 * y - 1.0, angle, dir)) {
            if (bSelect)
                mStrLastHit.clear();
            return;
        }
        LookAlong(pose, dir);
        const double across = cameraType == 2 || cameraType == 3 ? angle : 360.0;
        mpCHittest->HitTestBegin(0.5, 0.5, 1.0, std::max(0.01, across * size), vMinMax[0], vMinMax[1],
                                 bSelect);
    } else {
        mpCHittest->HitTestBegin(x, y, size, WideCamera_cls::GetDegreeV(cameraType, angle), vMinMax[0],
                                 vMinMax[1], bSelect);
    }
    if (!bSelect)
        ClearBuffer("GLBG");
    GLPerspective_cls::SetModelView(pose, pose);
    DrawEachFBO(0, 0, bSelect);
    const wxString strHit = mpCHittest->HitTestEnd();
    if (!bSelect)
        return;
    mStrLastHit = strHit;
    if (!strHit.empty() && GpCSceneObjCtrl)
        GpCSceneObjCtrl->Select(strHit, mbHitToggle, true, mbHitToggle);
}

bool FramePasses_cls::DrawQuadBuffered(unsigned int targetFramebuffer, int clientWidth, int clientHeight,
                                       int fit, int yOffset) {
    GLboolean bStereo = GL_FALSE;
    if (targetFramebuffer == 0)
        glGetBooleanv(GL_STEREO, &bStereo);
    if (!bStereo) {
        if (!mbQuadFallbackLogged)
            wxLogMessage("QUAD BUFFERING: the window has no stereo buffers; the left eye is shown");
        mbQuadFallbackLogged = true;
        return false;
    }
    const GLenum buffers[2] = {GL_BACK_LEFT, GL_BACK_RIGHT};
    for (int eye = 0; eye < 2; ++eye) {
        glDrawBuffer(buffers[eye]);
        mpCFBOProcessedEye[eye]->DrawOnScreen2DFit(clientWidth, clientHeight, fit, false, yOffset);
    }
    glDrawBuffer(GL_BACK);
    return true;
}

void FramePasses_cls::LookAlong(PositionAndDirection_cls& pose, const double* dir) {
    // dir is in the pose's own frame: x right, y up, -z ahead. Up stays the pose's up, unless
    // the ray runs along it: then the old target serves.
    double tgt[3], top[3];
    const bool bVertical =
        std::fabs(dir[1]) > 0.999 * std::sqrt(dir[0] * dir[0] + dir[1] * dir[1] + dir[2] * dir[2]);
    for (int k = 0; k < 3; ++k) {
        tgt[k] = dir[0] * pose.mRight[k] + dir[1] * pose.mTop[k] - dir[2] * pose.mTgt[k];
        top[k] = bVertical ? (dir[1] > 0.0 ? -pose.mTgt[k] : pose.mTgt[k]) : pose.mTop[k];
    }
    for (int k = 0; k < 3; ++k) {
        pose.mTgt[k] = tgt[k];
        pose.mTop[k] = top[k];
    }
    pose.Normalize();
}

void FramePasses_cls::PaintDirectly(int clientWidth, int clientHeight, int visibleWidth, int visibleHeight,
                                    unsigned int targetFramebuffer) {
    mVisibleWidth = visibleWidth;
    mVisibleHeight = visibleHeight;
    InitializeGLCommonIfNot();
    InitializeGLIfNot();
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, targetFramebuffer);
    GetColorProvider().SetGLClearColor("MaskBG");
    glClear(GL_COLOR_BUFFER_BIT);
    // The passes push and pop their attributes over the default binding: a pushed draw buffer of
    // another framebuffer would not fit it.
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);

    mTime = TimeCtrl_cls::GetClockNT();
    const int size = mpCView->GetBufferSize();
    const bool bDepth = DoesUseDepthBuffer();
    mpCFBOMain->SetGeometryFBO(size, size);
    mpCFBOMain->SetColorDepth(16);
    mpCFBOMain->MakeFBO(true, false);
    if (bDepth) {
        mpCFBODepth->SetGeometryFBO(size, size);
        mpCFBODepth->SetColorDepth(8);
        mpCFBODepth->MakeFBO(true, true);
    }

    const double angle = GetViewAngle();
    const std::vector<double> vMinMax = GetVMinMax();
    // The sampling of the frame.
    const bool bEnsemble = GpCEnsembleCtrl && GpCEnsembleCtrl->IsUseEnsemble();
    const int ensembleSamples = GpCEnsembleCtrl ? GpCEnsembleCtrl->GetEnsembleSampleNum() : 1;
    const bool bBlur = GpCBlurCtrl && GpCBlurCtrl->IsUseMotionBlur();
    const int blurSamples = GpCBlurCtrl ? GpCBlurCtrl->GetBlurSampleNum() : 1;
    ShadowVolumeCtrl_cls& shadow = GetShadowCtrl();
    shadow.PrepareSteps(GpCSceneObjCtrl, mTime);
    const bool bShadow = shadow.GetEndStep() - shadow.GetFirstStep() > 1;
    if (!bShadow)
        shadow.ClearFBOBuffer();
    if (!bEnsemble && GpCEnsembleCtrl)
        GpCEnsembleCtrl->ClearFBOBuffer();
    if (!bBlur && GpCBlurCtrl)
        GpCBlurCtrl->ClearFBOBuffer();

    const int eyes = GetStereoNum();
    const int eyeType = GetEyeType();
    const int compositeNum = GpCTimeCtrl ? GpCTimeCtrl->GetImageCompositeNum() : 1;
    if (compositeNum == 2) {
        mpCFBOComposite->SetGeometryFBO(size, size);
        mpCFBOComposite->MakeFBO(true, false);
    }
    const std::vector<float> vPasspartout = GetVPasspartoutInfo();
    const int cameraType = GetCameraType();
    // Record buffers: one, or one per eye for the scan-line type and for a file per eye.
    const int stereoOutput = GpCFrameOutput ? GpCFrameOutput->GetStereoOutput() : 0;
    // "QUAD BUFFERING" has no merged picture: its files are one per eye.
    const int recordCount = eyes == 2 && (eyeType == 3 || eyeType == 7 || stereoOutput == 1) ? 2 : 1;
    FBO_cls* pRecords[2] = {nullptr, nullptr};
    for (int i = 0; GpCFrameOutput && i < recordCount; ++i)
        pRecords[i] = GpCFrameOutput->GetPCNewFBOForRecord(size, this);
    // The wide types render their faces at the first-pass size and gather them into the target.
    WideCamera_cls* pWide = GpCWideCamera;
    const int parts = pWide ? WideCamera_cls::GetFBONum(cameraType) : 1;
    const double degreeV = pWide ? WideCamera_cls::GetDegreeV(cameraType, angle) : angle;
    if (pWide) {
        Camera_cls* pCamera = IsCameraDriving() ? GetPCCamera() : nullptr;
        const int size1st =
            mpCView->GetBufferSize1st(pCamera ? pCamera->GetPCCameraProp()->Get1stBufSizeIdx() : -1);
        pWide->SetRenderPartParam(size1st, 16, parts, bEnsemble, this);
    }
    if (eyes == 2) {
        for (int eye = 0; eye < 2; ++eye) {
            mpCFBOEye[eye]->SetGeometryFBO(size, size);
            mpCFBOEye[eye]->MakeFBO(true, false);
            if (bDepth) {
                mpCFBOEyeDepth[eye]->SetGeometryFBO(size, size);
                mpCFBOEyeDepth[eye]->SetColorDepth(8);
                mpCFBOEyeDepth[eye]->MakeFBO(true, true);
            }
        }
    }
    const int passes = bDepth ? 2 : 1;

    for (int eye = 0; eye < eyes; ++eye) {
        FBO_cls* pTarget = eyes == 2 ? mpCFBOEye[eye].get() : mpCFBOMain.get();
        // A repaint that is no scene change only runs the filters over the last buffers.
        const bool bRender = mbObjectRedraw && compositeNum >= 1;
        for (int composite = 0; bRender && composite < compositeNum; ++composite) {
            for (int blurStep = 0; blurStep < std::max(1, blurSamples); ++blurStep) {
                if (bBlur && blurStep == 0 && GpCFrameOutput)
                    GpCFrameOutput->PrepareBuffer(Accumulation_enum::MotionBlur, pTarget);
                if (GpCBlurCtrl)
                    GpCBlurCtrl->SetBlurStep(blurStep);
                SetCameraInfo();
                wxStopWatch stopWatch;
                for (int part = 0; part < parts; ++part) {
                    for (int pass = 0; pass < passes; ++pass) {
                        const bool bDepthPass = pass == 1;
                        FBO_cls* pFBO = bDepthPass ? mpCFBODepth.get()
                                        : pWide    ? pWide->GetPCFBO(cameraType, part, pTarget)
                                                   : pTarget;
                        const int first = bDepthPass ? 0 : shadow.GetFirstStep();
                        shadow.SetSumming(!bDepthPass);
                        const int steps = bDepthPass ? 1 : ensembleSamples;
                        for (int shadowStep = first; shadowStep < shadow.GetEndStep(); ++shadowStep) {
                            // The depth pass keeps the last step's depth: it adds nothing up.
                            const bool bShadowSum = bShadow && !bDepthPass;
                            if (bShadowSum && shadowStep == first)
                                shadow.PrepareBuffer(pFBO);
                            shadow.SetShadowVolumeStep(shadowStep, first);
                            for (int ensembleStep = 0; ensembleStep < steps; ++ensembleStep) {
                                const bool bAccumulate = bEnsemble && !bDepthPass && GpCFrameOutput;
                                if (bAccumulate && ensembleStep == 0)
                                    GpCFrameOutput->PrepareBuffer(Accumulation_enum::Ensemble, pFBO);
                                if (GpCEnsembleCtrl)
                                    GpCEnsembleCtrl->SetEnsembleStep(ensembleStep);
                                BeginFBOAndSetStatus(pFBO, shadowStep == first ? "GLBG" : "Black", degreeV,
                                                     vMinMax[0], vMinMax[1], bDepthPass);
                                if (pWide)
                                    pWide->ModifyViewportIfNeeded(cameraType, part);
                                if (eyeType != 0 && cameraType == 0)
                                    ShiftFrustumForEye(eye, degreeV);
                                SetModelViewForEachFBO(eyeType, eye, part, ensembleStep, cameraType);
                                if (GpCShaderCtrl)
                                    GpCShaderCtrl->PrepareViewportInfo();
                                if (GpCFrameOutput)
                                    GpCFrameOutput->PrepareViewportInfo();
                                if (!TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire)) {
                                    wxLogDebug("fbo%d Start %ld ms", part, stopWatch.Time());
                                    DrawEachFBO(ensembleStep, composite, false);
                                    wxLogDebug("fbo%d END %ld ms", part, stopWatch.Time());
                                    // A shadow-casting light's step: its volumes into the stencil,
                                    // then the shadowed area drawn again without it. A depth
                                    // buffer has no stencil.
                                    if (shadowStep != 0 && !bDepthPass && shadow.IsUseShadow()) {
                                        shadow.PushState();
                                        shadow.SetStencilState();
                                        DrawEachFBO(ensembleStep, composite, false);
                                        shadow.SetShadowedArea();
                                        DrawEachFBO(ensembleStep, composite, false);
                                        shadow.PopState();
                                    }
                                }
                                pFBO->End();
                                if (bAccumulate)
                                    GpCFrameOutput->DrawOnBuffer(Accumulation_enum::Ensemble, pFBO, steps);
                                // The status gauge of nested sub-passes belongs to the main frame.
                            }
                            if (bEnsemble && !bDepthPass && GpCFrameOutput)
                                GpCFrameOutput->DrawFromBuffer(Accumulation_enum::Ensemble, pFBO);
                            if (GpCEnsembleCtrl)
                                GpCEnsembleCtrl->SetEnsembleStep(0);
                            if (bShadowSum && !TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
                                shadow.DrawOnBuffer(pFBO);
                        }
                        if (bShadow && !bDepthPass &&
                            !TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
                            shadow.DrawFromBuffer(pFBO);
                        if (bShadow)
                            shadow.SetShadowVolumeStep(0, 0);
                    }
                }
                if (parts > 1)
                    pWide->GatherPart(pTarget, cameraType, angle);
                pTarget->Begin(false, false);
                Camera_cls* pCamera = GetPCCamera();
                const bool bRecording = GpCTimeCtrl && GpCTimeCtrl->IsOutputRunning();
                if (cameraType <= 0 && mpCView->IsUseCamera() && !bRecording && pCamera)
                    GLDrawKinds_cls::GLDrawPassepartout(pCamera, pTarget->GetWidth());
                pTarget->End();
                glDisable(GL_DEPTH_TEST);
                glDisable(GL_BLEND);
                glDisable(GL_LIGHTING);
                glColor4f(1.f, 1.f, 1.f, 1.f);
                if (bBlur && GpCFrameOutput)
                    GpCFrameOutput->DrawOnBuffer(Accumulation_enum::MotionBlur, pTarget, blurSamples);
            }
            if (bBlur && GpCFrameOutput)
                GpCFrameOutput->DrawFromBuffer(Accumulation_enum::MotionBlur, pTarget);
            if (GpCBlurCtrl)
                GpCBlurCtrl->SetBlurStep(0);
            if (compositeNum == 2 && GpCImageComposer) {
                if (composite == 0)
                    GpCImageComposer->StoreInBuffer(pTarget, mpCFBOComposite.get());
                else
                    GpCImageComposer->OverlapBuffer(pTarget, mpCFBOComposite.get());
            }
        }
        if (eyes == 2)
            mpCFBOProcessedEye[eye] = GetNewPCFilterProcessed(pTarget, vPasspartout);
    }
    // What is drawn after the frame (the hit test, the loupe) sees all lights as they are.
    shadow.FinishSteps();
    // Two eyes: the anaglyphs and side by side are merged into a stereogram of the frame's own;
    // the other types show the left eye here (the scan-line type draws both on the window).
    const bool bMerge = eyes == 2 && GpCStereogram && (eyeType == 4 || eyeType == 5 || eyeType == 6);
    if (bMerge) {
        if (!mpCFBOStereo)
            mpCFBOStereo = std::make_unique<FBO_cls>(size, size, this);
        mpCFBOStereo->SetGeometryFBO(size, size);
        mpCFBOStereo->MakeFBO(true, false);
        GpCStereogram->MergeStereogram(mpCFBOProcessedEye, mpCFBOStereo.get(), eyeType);
    }
    mpCFBOProcessed = bMerge      ? mpCFBOStereo.get()
                      : eyes == 2 ? mpCFBOProcessedEye[0]
                                  : GetNewPCFilterProcessed(mpCFBOMain.get(), vPasspartout);

    const int fit = GetFitIndex(cameraType, static_cast<double>(visibleWidth) / visibleHeight);
    if (pRecords[0]) {
        FBO_cls* pProcessed[2] = {mpCFBOProcessed, mpCFBOProcessed};
        if (recordCount == 2 && eyes == 2) {
            pProcessed[0] = mpCFBOProcessedEye[0];
            pProcessed[1] = mpCFBOProcessedEye[1];
        }
        GpCFrameOutput->PrepareFBOForRecord(recordCount, pRecords, pProcessed, fit);
    }
    // The navigator is drawn here once it exists.
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, targetFramebuffer);
    const int yOffset = static_cast<int>((clientHeight - visibleHeight) * 0.5);
    if (eyes == 2 && eyeType == 3 && GpCStereogram)
        GpCStereogram->DrawScanLineOnScreen(mpCFBOProcessedEye, clientWidth, clientHeight, fit, yOffset);
    else if (!(eyes == 2 && eyeType == 7 &&
               DrawQuadBuffered(targetFramebuffer, clientWidth, clientHeight, fit, yOffset)))
        mpCFBOProcessed->DrawOnScreen2DFit(clientWidth, clientHeight, fit, false, yOffset);
    ReleaseProcessed();
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    CheckGLError("PAINT END");
    ProcHitTest(cameraType);
    // The navigator, the button and the messages are the 3D view panel's.
    CheckGLError("DRAW ON SCREEN");
    glFlush();
    ClearQueue();
    if (pRecords[0])
        GpCFrameOutput->ProcSaveImage(recordCount, pRecords, eyeType, stereoOutput);
}
