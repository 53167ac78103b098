#include "GLCanvas_cls.h"

#include "Camera_cls.h"
#include "FramePasses_cls.h"
#include "GLPerspective_cls.h"
#include "Hittest_cls.h"
#include "Main_cls.h"
#include "MousePreference_cls.h"
#include "TextDraw_cls.h"
#include "TimeCtrl_cls.h"
#include "View3D_cls.h"

#include <GL/freeglut_std.h>
#include <wx/dcclient.h>
#include <wx/log.h>

#include <cmath>

bool GLCanvas_cls::msbInitializedCommon = false;
bool GLCanvas_cls::msbLockDragging = false;

GLCanvas_cls::GLCanvas_cls(wxWindow* pParent, View3D_cls* pView) : GLCanvasBase_cls(pParent), mpCView(pView) {
    Bind(wxEVT_PAINT, &GLCanvas_cls::OnPaint, this);
    Bind(wxEVT_SIZE, &GLCanvas_cls::OnSize, this);
    // The frame covers the window: no background erase between paints.
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    for (const wxEventTypeTag<wxMouseEvent>& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_MIDDLE_DOWN, wxEVT_MIDDLE_UP, wxEVT_MOTION, wxEVT_MOUSEWHEEL,
          wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP})
        Bind(type, &GLCanvas_cls::ProcessMouseEvent, this);
    ResetCamera();
}

GLCanvas_cls::~GLCanvas_cls() {
    // Here, not in the base: the passes are this class's and must go while the context is current.
    ShutdownGL();
    // Without a current context the GL objects cannot be freed: they are left to the driver.
    (void)mpCPasses.release();
    (void)mpCText.release();
}

void GLCanvas_cls::ReleaseGLObjects() {
    mpCPasses.reset();
    mpCText.reset();
}

void GLCanvas_cls::InitializeGLCommonIfNot() {
    if (!msbInitializedCommon) {
        msbInitializedCommon = true;
        // GLUT is for the window program only: it needs the display that this window already has.
        int argc = 1;
        char strDummy[] = "dummy";
        char* argv[] = {strDummy, nullptr};
        glutInit(&argc, argv);
    }
    // Each new shared context gets the registry's GL objects anew.
    if (msbNewContext && GCClassProvider) {
        msbNewContext = false;
        GCClassProvider->CreateGLInstances();
    }
}

void GLCanvas_cls::RefreshEX() {
    mbObjectRedraw = true;
    Refresh(true);
}

void GLCanvas_cls::ResetCamera() {
    mCCamera.CopyPosition(mpCView->GetPosDir());
}

void GLCanvas_cls::StorePose() {
    mpCView->SetPosDir(mCCamera.GetPosition());
    if (mFuncPoseChanged)
        mFuncPoseChanged();
}

// ---- paint ----

void GLCanvas_cls::OnSize(wxSizeEvent& event) {
    UpdateSize();
    Refresh(false);
    event.Skip();
}

void GLCanvas_cls::OnPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    if (!IsShownOnScreen())
        return;
    if (mVisibleWidth == 0)
        UpdateSize();
    if (mbPainting) {
        wxLogDebug("Drawing");
        return;
    }
    mbPainting = true;
    PaintDirectly();
    mbPainting = false;
}

void GLCanvas_cls::FollowCamera() {
    if (!mpCView->IsUseCamera() || mbDragging || !mpCPasses)
        return;
    Camera_cls* pCamera = mpCPasses->GetPCCamera();
    if (!pCamera)
        return;
    PositionAndDirection_cls pose;
    pCamera->GetPose(TimeCtrl_cls::GetClockNT(), pose);
    const PositionAndDirection_cls old = mpCView->GetPosDir();
    mpCView->SetPosDir(pose);
    const PositionAndDirection_cls now = mpCView->GetPosDir();
    mCCamera.CopyPosition(now);
    if (!Position_cls::IsSimilarPosition(old, now, 1e-6) ||
        !Direction_cls::IsSimilarTgtDirection(old, now, 1.0))
        if (mFuncPoseChanged)
            mFuncPoseChanged();
}

void GLCanvas_cls::PaintDirectly() {
    if (!SetGLContext(true))
        return;
    InitializeGLCommonIfNot();
    UpdateSize();
    if (mVisibleWidth <= 0 || mVisibleHeight <= 0)
        return;
    if (!mpCPasses)
        mpCPasses = std::make_unique<FramePasses_cls>(mpCView);
    if (!mpCText)
        mpCText = std::make_unique<TextDraw_cls>();
    FollowCamera();
    wxStopWatch watch;
    const bool bScene = mbObjectRedraw;
    mpCPasses->mbObjectRedraw = bScene;
    mbObjectRedraw = false;
    mpCPasses->PaintDirectly(mVisibleWidth, mVisibleHeight, mVisibleWidth, mVisibleHeight, 0);
    DrawOverlays();
    DrawMessage();
    DrawDragginMessage();
    glFlush();
    SwapBuffers();
    const long millis = watch.Time();
    if (bScene) {
        mFPS = 1000.0 / std::max(1L, millis);
        ++mScenePaintCount;
    }
    ++mPaintCount;
    mbInertiaStepPending = false;
}

void GLCanvas_cls::DrawOverlays() {
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    GLPerspective_cls::Push2DMatrix(mVisibleWidth, mVisibleHeight);
    mCButton.SetGeometry(mVisibleWidth, mVisibleHeight);
    if (!mpCView->mCNumPanelShown.GetBodyBOOL())
        mCButton.DrawButton();
    mCNavigator.SetPose(mpCView->GetPosDir());
    mCNavigator.Draw(4, 4, msNavigatorSize);
    if (mpCView->mCLoupe.GetBodyBOOL() && mpCPasses->GetPCHittest())
        mpCPasses->GetPCHittest()->Draw(mVisibleWidth - msLoupeSize - 4, 4, msLoupeSize, msLoupeSize);
    GLPerspective_cls::Pop2DMatrix();
    CheckGLError("DRAW ON SCREEN");
}

void GLCanvas_cls::DrawMessage() {
    mCStrings.Clear();
    mCStrings.SetGeometry(mVisibleWidth, mVisibleHeight);
    mCStrings.AddLine(GLStrings2D_cls::GetStrFPS(mFPS));
}

void GLCanvas_cls::DrawDragginMessage() {
    if (mbDragging && mDragMotion == GLCamera_cls::MOTION_GYRATION)
        mCStrings.AddLine(GLStrings2D_cls::GetStrDragAngle(mDragAngle));
    GLPerspective_cls::Push2DMatrix(mVisibleWidth, mVisibleHeight);
    mCStrings.Draw(*mpCText);
    GLPerspective_cls::Pop2DMatrix();
}

// ---- mouse ----

void GLCanvas_cls::ReadMousePreference() {
    const MousePreference_cls* p = GpCMousePreference;
    mCCamera.mbInvertGyrationX = p && p->mCInvertGyrationX.GetBodyBOOL();
    mCCamera.mbInvertGyrationY = p && p->mCInvertGyrationY.GetBodyBOOL();
    mCCamera.mbInvertZoom = p && p->mCInvertZoom.GetBodyBOOL();
    mCCamera.mbInvertPan = p && p->mCInvertPan.GetBodyBOOL();
}

bool GLCanvas_cls::ProcInertia() {
    if (!mCCamera.IsInnertiaExist() || mbDragging)
        return false;
    if (!mCCamera.ProcInertia())
        return false;
    mbInertiaStepPending = true;
    StorePose();
    return true;
}

void GLCanvas_cls::ProcessMouseEvent(wxMouseEvent& event) {
    const wxPoint pos = event.GetPosition();
    const wxSize size = GetClientSize();
    if (event.GetEventType() == wxEVT_RIGHT_DOWN || event.GetEventType() == wxEVT_RIGHT_UP) {
        // The panel's context menu.
        event.ResumePropagation(1);
        event.Skip();
        return;
    }
    if (event.GetEventType() == wxEVT_MOUSEWHEEL) {
        mCCamera.StopInertia();
        ResetCamera();
        const int delta = event.GetWheelDelta() > 0 ? event.GetWheelDelta() : 120;
        mCCamera.ZoomWheel(static_cast<float>(event.GetWheelRotation()) / delta);
        StorePose();
        RefreshEX();
        return;
    }
    if (event.LeftDown() || event.MiddleDown()) {
        if (msbLockDragging)
            return;
        if (event.LeftDown() && !mpCView->mCNumPanelShown.GetBodyBOOL() &&
            mCButton.IsInside(pos.x, pos.y, size.GetHeight())) {
            if (mFuncButtonClicked)
                mFuncButtonClicked();
            return;
        }
        mCCamera.StopInertia();
        ResetCamera();
        ReadMousePreference();
        mbPressed = true;
        mbDragging = false;
        mPressPos = pos;
        mDragAngle = 0.0;
        mLastDX = mLastDY = 0.0;
        if (event.ControlDown())
            mDragMotion = GLCamera_cls::MOTION_ZOOM;
        else if (event.MiddleDown() || event.ShiftDown())
            mDragMotion = GLCamera_cls::MOTION_PAN;
        else
            mDragMotion = GLCamera_cls::MOTION_GYRATION;
        mCMouse.SetPixel(pos.x, pos.y, size.GetWidth(), size.GetHeight());
        mCMouse.Begin();
        if (!HasCapture())
            CaptureMouse();
        return;
    }
    if (event.Dragging() && mbPressed) {
        if (!mbDragging && std::abs(pos.x - mPressPos.x) <= msClickTolerance &&
            std::abs(pos.y - mPressPos.y) <= msClickTolerance)
            return;
        mbDragging = true;
        mCMouse.MoveTo(pos.x, pos.y, size.GetWidth(), size.GetHeight());
        mLastDX = mCMouse.mX - mCMouse.mPrevX;
        mLastDY = mCMouse.mY - mCMouse.mPrevY;
        mLastMoveMillis = mCWatch.Time();
        switch (mDragMotion) {
        case GLCamera_cls::MOTION_GYRATION:
            mDragAngle += mCCamera.Gyration(mCMouse, 1.0, 1.0);
            break;
        case GLCamera_cls::MOTION_PAN:
            mCCamera.Pan(mCMouse, mpCView->GetViewAngleL());
            break;
        case GLCamera_cls::MOTION_ZOOM:
            mCCamera.Zoom(mCMouse);
            break;
        default:
            break;
        }
        StorePose();
        RefreshEX();
        return;
    }
    if ((event.LeftUp() || event.MiddleUp()) && mbPressed) {
        mbPressed = false;
        if (HasCapture())
            ReleaseMouse();
        if (!mbDragging) {
            // A click: the object under the mouse, at the end of the next paint.
            if (mpCPasses) {
                MouseNormalized_cls mouse;
                mouse.SetPixel(pos.x, pos.y, size.GetWidth(), size.GetHeight());
                mpCPasses->RequestHitTest(mouse.mX, mouse.mY, event.ShiftDown());
                Refresh(false);
            }
            return;
        }
        mbDragging = false;
        if (mCWatch.Time() - mLastMoveMillis <= msInertiaMillis)
            mCCamera.StartInertia(mDragMotion, mLastDX, mLastDY, mpCView->GetViewAngleL());
        RefreshEX();
        return;
    }
    if (event.Moving() && mpCPasses && mpCView->mCLoupe.GetBodyBOOL()) {
        // The loupe follows the mouse.
        MouseNormalized_cls mouse;
        mouse.SetPixel(pos.x, pos.y, size.GetWidth(), size.GetHeight());
        mpCPasses->SetMousePoint(mouse.mX, mouse.mY);
        Refresh(false);
    }
}
