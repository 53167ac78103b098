// The GL window of a 3D view: a wxGLCanvas with the one GL context that every canvas of the
// process shares, so that programs, textures and buffers are made once. The shared context is
// made by the first canvas that draws; the last canvas to go frees every GL object of the
// process (ClassProvider_cls::DeleteGLInstances) while the context is still current, and only
// then deletes the context. Main thread only.
#pragma once

#include <epoxy/gl.h>

#include <wx/glcanvas.h>

class GLCanvasBase_cls : public wxGLCanvas {
public:
    explicit GLCanvasBase_cls(wxWindow* pParent);
    ~GLCanvasBase_cls() override;

    // Makes the shared context current on this window, creating it on the first call. False (and
    // "Set Current Failed" logged) when the window cannot take it.
    bool SetGLContext(bool bCreate = true);
    // The window's size in pixels, kept at each paint.
    void UpdateSize();
    // The number of canvases alive.
    static int GetCanvasCount() { return msCanvasCount; }
    static wxGLContext* GetPCSharedContext() { return mspCGLContext; }

    static wxGLContext* mspCGLContext;
    // Set when SetGLContext made a new shared context; whoever builds the shared objects clears it.
    static inline bool msbNewContext = false;
    int mVisibleWidth = 0;
    int mVisibleHeight = 0;

protected:
    // The derived canvas frees its own GL objects here, while the shared context is current;
    // called from the destructor of this base only when the context could be made current.
    virtual void ReleaseGLObjects() {}
    // Call from the most derived destructor: frees this canvas's GL objects and, for the last
    // canvas, every GL object of the process and the context. Runs once.
    void ShutdownGL();

private:
    static int msCanvasCount;
    bool mbShutdown = false;
};
