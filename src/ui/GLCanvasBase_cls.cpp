#include "GLCanvasBase_cls.h"

#include "Main_cls.h"

#include <wx/log.h>

#include <cstdio>

wxGLContext* GLCanvasBase_cls::mspCGLContext = nullptr;
int GLCanvasBase_cls::msCanvasCount = 0;

namespace {
// The stencil carries the stripes of the scan-line stereogram on the window.
const int kAttribList[] = {WX_GL_RGBA, WX_GL_DOUBLEBUFFER, WX_GL_DEPTH_SIZE, 24, WX_GL_STENCIL_SIZE, 8, 0};
const int kAttribListStereo[] = {
    WX_GL_RGBA, WX_GL_DOUBLEBUFFER, WX_GL_STEREO, WX_GL_DEPTH_SIZE, 24, WX_GL_STENCIL_SIZE, 8, 0};

// Left and right back buffers where the display offers them, so "QUAD BUFFERING" can show both
// eyes. One answer for the process: the canvases share one context, and so one kind of visual.
const int* GetAttribList() {
    static const bool sbStereo = wxGLCanvas::IsDisplaySupported(kAttribListStereo);
    return sbStereo ? kAttribListStereo : kAttribList;
}
} // namespace

GLCanvasBase_cls::GLCanvasBase_cls(wxWindow* pParent)
    : wxGLCanvas(pParent, wxID_ANY, GetAttribList(), wxDefaultPosition, wxDefaultSize,
                 wxFULL_REPAINT_ON_RESIZE, "GLCanvas") {
    ++msCanvasCount;
    // The frame is drawn off screen and swapped: no second buffer at the window level.
    SetDoubleBuffered(false);
    const int vTest[] = {WX_GL_RGBA, WX_GL_DOUBLEBUFFER, 0};
    const bool bSupport = IsDisplaySupported(vTest);
    wxLogDebug("bSupport=%d", bSupport ? 1 : 0);
    printf("Initialized\n");
    fflush(stdout);
}

GLCanvasBase_cls::~GLCanvasBase_cls() {
    ShutdownGL();
}

bool GLCanvasBase_cls::SetGLContext(bool bCreate) {
    if (!mspCGLContext) {
        if (!bCreate)
            return false;
        mspCGLContext = new wxGLContext(this);
        msbNewContext = true;
    }
    if (!mspCGLContext->IsOK() || !SetCurrent(*mspCGLContext)) {
        wxLogMessage("Set Current Failed");
        return false;
    }
    return true;
}

void GLCanvasBase_cls::UpdateSize() {
    const wxSize size = GetClientSize() * GetContentScaleFactor();
    mVisibleWidth = size.GetWidth();
    mVisibleHeight = size.GetHeight();
}

void GLCanvasBase_cls::ShutdownGL() {
    if (mbShutdown)
        return;
    mbShutdown = true;
    --msCanvasCount;
    // A hidden window still has its X window here, and the context can be made current on it.
    const bool bCurrent = mspCGLContext && mspCGLContext->IsOK() && SetCurrent(*mspCGLContext);
    if (bCurrent)
        ReleaseGLObjects();
    if (msCanvasCount > 0 || !mspCGLContext)
        return;
    // The last canvas: nothing GL may outlive the context. When the context cannot be made
    // current any more, it is kept with everything in it for the next canvas.
    if (!bCurrent) {
        wxLogDebug("The shared GL context is kept: it could not be made current to free its objects");
        return;
    }
    if (GCClassProvider)
        GCClassProvider->DeleteGLInstances();
    delete mspCGLContext;
    mspCGLContext = nullptr;
}
