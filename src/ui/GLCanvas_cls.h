// The window of a 3D view over its frame passes: each paint makes the shared context current,
// draws the frame into the window (FramePasses_cls, with the hit test at its end), then the 2D
// overlays (the button that opens the numeric panel, the navigator, the loupe) and the messages
// (frames per second, the angle of a rotation drag), and swaps. The mouse navigates the view's
// pose through GLCamera_cls: left drag orbits about the pivot, middle or shift drag pans, ctrl
// drag and the wheel zoom; a release with speed leaves inertia, which the idle loop runs. A
// click that does not drag picks the object under the mouse (shift toggles). Main thread only.
#pragma once

#include "GLButton_cls.h"
#include "GLCamera_cls.h"
#include "GLCanvasBase_cls.h"
#include "GLCheckError_cls.h"
#include "GLStrings2D_cls.h"
#include "GetPC_cls.h"
#include "MouseNormalized_cls.h"
#include "Navigator_cls.h"

#include <wx/stopwatch.h>

#include <functional>
#include <memory>

class FramePasses_cls;
class TextDraw_cls;
class View3D_cls;

class GLCanvas_cls : public GLCanvasBase_cls, public GetPC_cls, public GLCheckError_cls {
public:
    // pView (not owned: the panel owns it) holds the view's keys and pose.
    GLCanvas_cls(wxWindow* pParent, View3D_cls* pView);
    ~GLCanvas_cls() override;

    // The next paint draws the scene; a plain Refresh only runs the filters and the overlays
    // over the buffers of the last frame.
    void RefreshEX();
    // One idle pass of inertia: true when the pose moved (the view's keys then hold the new pose).
    bool ProcInertia();
    // True while inertia moves the view and its last step waits for its paint: the idle loop
    // then stays awake so the paint comes at once, and the next idle pass ("IDLE") takes the
    // next step. A still view, and a step already painted, keep nothing awake.
    bool IsInnertiaExist() const { return mCCamera.IsInnertiaExist() && mbInertiaStepPending; }
    // Inertia moves the view (painted or not).
    bool IsInertiaMoving() const { return mCCamera.IsInnertiaExist(); }
    // Takes the view's pose as the start of the next navigation (after the keys were read).
    void ResetCamera();

    // The mouse, as the events deliver it; tests call it with made events.
    void ProcessMouseEvent(wxMouseEvent& event);
    // With the shared context current: glutInit once per process for the program's GLUT users,
    // and the registry's GL objects once per shared context.
    static void InitializeGLCommonIfNot();

    FramePasses_cls* GetPCPasses() const { return mpCPasses.get(); }
    GLCamera_cls& GetCamera() { return mCCamera; }
    const GLStrings2D_cls& GetStrings() const { return mCStrings; }
    // Paints that reached the screen since construction.
    long long GetPaintCount() const { return mPaintCount; }
    // Paints that drew the scene (not only the filters) since construction.
    long long GetScenePaintCount() const { return mScenePaintCount; }
    bool IsDragging() const { return mbDragging; }

    // The pose changed by the mouse or by following the camera (the numeric panel follows).
    std::function<void()> mFuncPoseChanged;
    // The 2D button was clicked.
    std::function<void()> mFuncButtonClicked;

    static bool msbInitializedCommon;
    // Dragging is locked (a long operation holds the view).
    static bool msbLockDragging;
    // A press that moves less than this many pixels is a click.
    static constexpr int msClickTolerance = 3;
    // A release later than this after the last move leaves no inertia.
    static constexpr long msInertiaMillis = 80;
    static constexpr int msNavigatorSize = 48;
    static constexpr int msLoupeSize = 128;

protected:
    void ReleaseGLObjects() override;

private:
    void OnPaint(wxPaintEvent& event);
    void OnSize(wxSizeEvent& event);
    void PaintDirectly();
    void DrawOverlays();
    void DrawMessage();
    void DrawDragginMessage();
    // Follow= or LockToCamer= with a camera: the view takes the camera's pose (not while dragging).
    void FollowCamera();
    void StorePose();
    // The inversions of the mouse preferences, taken at each press.
    void ReadMousePreference();

    View3D_cls* mpCView;
    std::unique_ptr<FramePasses_cls> mpCPasses;
    std::unique_ptr<TextDraw_cls> mpCText;
    GLCamera_cls mCCamera;
    MouseNormalized_cls mCMouse;
    GLStrings2D_cls mCStrings;
    GLButton_cls mCButton;
    Navigator_cls mCNavigator;
    wxStopWatch mCWatch;
    bool mbPainting = false;
    bool mbInertiaStepPending = false;
    bool mbObjectRedraw = true;
    bool mbPressed = false;
    bool mbDragging = false;
    wxPoint mPressPos;
    int mDragMotion = GLCamera_cls::MOTION_NONE;
    double mDragAngle = 0.0;
    double mLastDX = 0.0;
    double mLastDY = 0.0;
    long mLastMoveMillis = 0;
    double mFPS = 0.0;
    long long mPaintCount = 0;
    long long mScenePaintCount = 0;
};
