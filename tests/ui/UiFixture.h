// The fixture of the window tests: a core with its services in a temporary application folder,
// the art of the source tree, and one main window that is built but never runs an event loop.
// Tests skip when the toolkit could not reach a display.
#pragma once

#include "FrameMain_cls.h"
#include "Main_cls.h"
#include "ServicesFixture.h"
#include "SplittableWindow_cls.h"
#include "wxPanelEX.h"

#include <wx/app.h>

#include <vector>

// True when the test program runs with the GUI toolkit up (a display was reachable).
bool IsGuiAvailable();
// The art of the source tree, the image handlers and the panel tables, once per program: what a
// main window needs before it is built.
void PrepareWindowResources();

// The core and the clock are enough for the window's own tests; a test that needs more stops at a
// higher layer in its RegisterLayers.
class UiFixture : public ServicesFixture<ServiceLayer_enum::Time> {
protected:
    void SetUp() override;
    void TearDown() override;

    // Each test starts from the stand-in panels: a test that installs the real ones says so here.
    void RegisterLayers() override;

    // Replaces the tree with the layout text, read through the core's command language.
    void ReadLayout(const wxString& strLayoutBlock);
    // Every leaf panel in tree order.
    static void CollectLeaves(SplittableWindow_cls* pNode, std::vector<wxPanelEX*>& vLeaves);
    std::vector<wxPanelEX*> Leaves() {
        std::vector<wxPanelEX*> v;
        CollectLeaves(mpFrame->GetPCTopWindow(), v);
        return v;
    }
    // Runs the events queued on the frame (menu mirrors, deferred tree changes).
    static void RunPendingEvents();

    FrameMain_cls* mpFrame = nullptr;
};

#define SKIP_WITHOUT_DISPLAY()                                                                               \
    do {                                                                                                     \
        if (!IsGuiAvailable())                                                                               \
            GTEST_SKIP() << "no display: the window tests need one (run under xvfb-run)";                    \
    } while (0)
