// Driving the event loop of a window test that has a 3D view: the loop for a while, the wait for
// the view's first scene paint, the folder the screenshots are kept in, and the fixture that
// makes the services up to a layer with the real panels.
#pragma once

#include "GLCanvas_cls.h"
#include "PanelMakers.h"
#include "RenderGuard_cls.h"
#include "ShaderItem_cls.h"
#include "UiFixture.h"

#include <wx/app.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/image.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

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

// The whole display, saved under the name beside the other screenshots; false when that failed.
inline bool TakeScreenshot(const wxString& strName, wxImage& image) {
    const wxString strPath = ScreenshotDir() + "/" + strName;
    return system(("import -window root '" + std::string(strPath.utf8_str()) + "'").c_str()) == 0 &&
           image.LoadFile(strPath, wxBITMAP_TYPE_PNG);
}

// The services up to Top and the real panels, the shader sources of the tree, and the first idle
// of the process (which reads the start-up layout) run before the test's own layout.
template <ServiceLayer_enum Top> class ViewWindowFixture : public UiFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<Top>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        // The programs read their sources when the services are made.
        ShaderItem_cls::msStrResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        RunLoop(50);
    }
    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }
};

// Answers the render checks' questions from mbAnswer; keeps what was shown and asked.
class ScriptedDialog_cls : public RenderGuard_cls::Dialog_cls {
public:
    void ShowMessage(const wxString& strText) override { mVStrTexts.push_back(strText); }
    bool AskYesNo(const wxString& strText) override {
        mVStrTexts.push_back(strText);
        return mbAnswer;
    }
    bool mbAnswer = true;
    std::vector<wxString> mVStrTexts;
};

// Screenshots of the display need it, imagemagick's import and the PNG handler.
#define SKIP_WITHOUT_SCREENSHOTS()                                                                           \
    do {                                                                                                     \
        SKIP_WITHOUT_DISPLAY();                                                                              \
        if (!wxFileExists("/usr/bin/import"))                                                                \
            GTEST_SKIP() << "imagemagick's import is not installed";                                         \
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))                                                        \
            wxImage::AddHandler(new wxPNGHandler);                                                           \
    } while (0)
