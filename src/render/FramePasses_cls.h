// The render passes of one 3D view, with no window: each frame renders the scene off screen
// into square floating-point buffers, in as many sub-passes as the sampling asks for (eyes,
// composite images, motion-blur steps, wide-angle parts, depth pass, shadow steps, ensemble
// steps), runs the filter chain on the result and draws it, cut to the window's shape, into the
// target framebuffer (the window's, or any other). It needs only a current GL context, the
// view's settings and the scene; the GL canvas of the 3D view panel is a thin window over it.
// GL thread only; the context it was used in must be current when it is deleted.
#pragma once

#include "FBOHost_cls.h"
#include "GLCheckError_cls.h"
#include "PositionAndDirection_cls.h"

#include <wx/string.h>

#include <memory>
#include <vector>

class Camera_cls;
class ColorProvider_cls;
class FBO_cls;
class Hittest_cls;
class GLDrawStatus_cls;
class MeshDraw_cls;
class ParticleDraw_cls;
class VolumeDraw_cls;
class GLKindResources_cls;
class TextDraw_cls;
class View3D_cls;

class FramePasses_cls : public FBOHost_cls, public GLCheckError_cls {
public:
    // pView (not owned) holds the view's keys and pose.
    explicit FramePasses_cls(View3D_cls* pView);
    ~FramePasses_cls() override;
    FramePasses_cls(const FramePasses_cls&) = delete;
    FramePasses_cls& operator=(const FramePasses_cls&) = delete;

    // Once per process: the shared primitive buffers and the driver information. The flag is
    // set before the work begins. Opens no display: text comes from FreeType, never GLUT.
    static void InitializeGLCommonIfNot();
    // Frees what InitializeGLCommonIfNot made; the owner of the context calls it before the
    // context goes.
    static void DeleteGLCommon();
    // Once per view: the buffers of the frame (built lazily by MakeFBO in the frame).
    void InitializeGLIfNot();

    // One frame. The window is clientWidth by clientHeight pixels, of which the visible part
    // is visibleWidth by visibleHeight; the picture goes into targetFramebuffer (0: the window).
    void PaintDirectly(int clientWidth, int clientHeight, int visibleWidth, int visibleHeight,
                       unsigned int targetFramebuffer = 0);
    // The next frame draws the scene; a frame without it only runs the filters and draws the
    // buffers of the last frame again.
    void RefreshEX() { mbObjectRedraw = true; }
    void ClearQueue();
    // A test aid: clears the target to a grey that steps by 0.1 from 0 to 1 at each call.
    void DummyDraw(unsigned int targetFramebuffer = 0);

    // ---- what the frame reads ----
    // The object named by "Camera=", null if there is none or it is no camera.
    Camera_cls* GetPCCamera() const;
    // A camera exists and the view follows or is locked to it.
    bool IsCameraDriving() const;
    int GetCameraType() const;
    int GetStereoNum() const;
    int GetEyeType() const;
    double GetViewAngle() const;
    // Near and far.
    std::vector<double> GetVMinMax() const;
    // True when a valid filter of the installed chain needs depth (false with no chain).
    bool DoesUseDepthBuffer() const;
    // -1, -1 or the camera's passepartout, then tan(angle / 2).
    std::vector<float> GetVPasspartoutInfo() const;
    double GetModByAspectX() const;
    double GetModByAspectY() const;
    void AdjustAngleByScreenAspect(double& angle) const;
    // (((a m + b) k + c) 100) / (n m k) in integers: the gauge of nested sub-passes.
    static int GetPercent(int a, int n, int b, int m, int c, int k);
    // 0: the square is as wide as the window, 1: as high. The wide types 2, 3 and 5 are shown
    // whole, the others fill the window.
    static int GetFitIndex(int cameraType, double aspect);

    // ---- the hit test at the end of a frame ----
    // The mouse in the window, in unit coordinates (0, 0 bottom left, 1, 1 top right).
    void SetMousePoint(double x, double y) {
        mMouseX = x;
        mMouseY = y;
    }
    // The next frame picks the object at the point and selects it (bToggle: shift, which adds
    // and toggles). Nothing is selected when the point hits no object.
    void RequestHitTest(double x, double y, bool bToggle) {
        SetMousePoint(x, y);
        mbHitTestPending = true;
        mbHitToggle = bToggle;
    }
    // The object that the last pick hit, empty for none.
    const wxString& GetStrLastHit() const { return mStrLastHit; }
    // Null until a pick or the loupe first ran.
    Hittest_cls* GetPCHittest() const { return mpCHittest.get(); }
    // The side of the pick window in pixels of the window.
    static constexpr double msHitTestPixels = 5.0;

    FBO_cls* GetPCFBOMain() const { return mpCFBOMain.get(); }
    View3D_cls* GetPCView() const { return mpCView; }
    // The number of sub-passes that drew the scene since construction.
    long long GetDrawCount() const { return mDrawCount; }

    int mVisibleWidth = 0;
    int mVisibleHeight = 0;
    bool mbInitializedGL = false;
    bool mbPainting = false;
    bool mbObjectRedraw = true;
    bool mbHitTestPending = false;
    bool mbHitToggle = false;
    PositionAndDirection_cls mPosDirNow;
    PositionAndDirection_cls mPosDirNext;
    PositionAndDirection_cls mPosDirDrawNow;
    PositionAndDirection_cls mPosDirDrawNext;
    static bool msbInitializedCommon;

private:
    void SetCameraInfo();
    void SetModelViewForEachFBO(int eyeType, int eye, int part, int ensembleStep, int wideType);
    // With "Off Axis" stereo, shifts the projection of the eye so the eyes meet at the focus.
    void ShiftFrustumForEye(int eye, double angle);
    void BeginFBOAndSetStatus(FBO_cls* pFBO, const wxString& strClearColor, double angle, double zNear,
                              double zFar, bool bDepthTexture);
    void ClearBuffer(const wxString& strColorName);
    // compositeIndex: which of the composer's two images is drawn (0 without composing).
    void DrawEachFBO(int ensembleStep, int compositeIndex, bool bHitTest);
    void DrawGrid();
    // The result of the filter chain over the source: a buffer of the frame's own when a chain is
    // installed, the source itself otherwise.
    FBO_cls* GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>& vPasspartout);
    // Frees the processed buffers of this paint (those the chain made) and forgets them.
    void ReleaseProcessed();
    // With "Loupe=" on or a pick pending: the scene once more through a small window of the
    // frustum at the mouse, drawn into the loupe or picked; a hit is selected.
    void ProcHitTest(int cameraType);
    // Turns the pose to look along dir, given in the pose's own frame (x right, y up, -z ahead).
    static void LookAlong(PositionAndDirection_cls& pose, const double* dir);
    // "QUAD BUFFERING": each eye into its back buffer of the window, when the window's visual
    // has them; false otherwise (logged once), and the caller shows the left eye.
    bool DrawQuadBuffered(unsigned int targetFramebuffer, int clientWidth, int clientHeight, int fit,
                          int yOffset);
    const ColorProvider_cls& GetColorProvider() const;

    View3D_cls* mpCView;
    // Meshes and text of this view's objects.
    std::unique_ptr<MeshDraw_cls> mpCMeshDraw;
    std::unique_ptr<TextDraw_cls> mpCTextDraw;
    std::unique_ptr<ParticleDraw_cls> mpCParticleDraw;
    std::unique_ptr<VolumeDraw_cls> mpCVolumeDraw;
    std::unique_ptr<GLKindResources_cls> mpCKindResources;
    std::unique_ptr<FBO_cls> mpCFBOMain;
    std::unique_ptr<FBO_cls> mpCFBODepth;
    std::unique_ptr<FBO_cls> mpCFBOEye[2];
    std::unique_ptr<FBO_cls> mpCFBOEyeDepth[2];
    std::unique_ptr<FBO_cls> mpCFBOComposite;
    // The merged picture of two eyes, kept from frame to frame.
    std::unique_ptr<FBO_cls> mpCFBOStereo;
    // Made by the filter chain and freed at the end of the paint; with no chain installed they
    // are the rendered buffers themselves, not owned.
    FBO_cls* mpCFBOProcessedEye[2] = {nullptr, nullptr};
    FBO_cls* mpCFBOProcessed = nullptr;
    bool mbProcessedOwned = false;
    // Used when the process has no colour provider (a bare renderer).
    std::unique_ptr<ColorProvider_cls> mpCDefaultColors;
    std::unique_ptr<Hittest_cls> mpCHittest;
    // The camera's own pose of the last sub-pass (its eye, tilted, before the turn to a face of
    // a wide type): what the filters and the pick see.
    PositionAndDirection_cls mPosDirFront;
    bool mbQuadFallbackLogged = false;
    double mMouseX = 0.5;
    double mMouseY = 0.5;
    wxString mStrLastHit;
    double mTime = 0.0;
    double mDummyGrey = 0.0;
    long long mDrawCount = 0;
};
