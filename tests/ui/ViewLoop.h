// Driving the event loop of a window test that has a 3D view: the loop for a while, the wait for
// the view's first scene paint, and the folder the screenshots are kept in.
#pragma once

#include "GLCanvas_cls.h"

#include <wx/app.h>
#include <wx/filename.h>

#include <chrono>
#include <thread>

// What the event loop does for the given time: events (paints among them), then an idle pass,
// at the idle loop's own pace when it stays awake.
inline void RunLoop(int millis) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(millis);
    while (std::chrono::steady_clock::now() < end) {
        wxTheApp->Yield(true);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// Runs the loop until the canvas has painted the scene (at most 10 seconds), then lets the queue
// empty; false when it never painted.
inline bool SettleCanvas(const GLCanvas_cls& canvas) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end && canvas.GetScenePaintCount() == 0)
        RunLoop(50);
    RunLoop(300);
    return canvas.GetScenePaintCount() > 0;
}

// Beside the other screenshots of the window tests, to look at.
inline wxString ScreenshotDir() {
#ifdef ORV_BUILD_DIR
    const wxString strDir = wxString(ORV_BUILD_DIR) + "/ui-screenshots";
#else
    const wxString strDir = wxFileName::GetTempDir();
#endif
    wxFileName::Mkdir(strDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    return strDir;
}
