// The entry of the benchmarks that need the toolkit's windows: with a display the GUI application
// is started (and the PNG handler added), without one the benchmarks report themselves skipped.
// One definition per benchmark executable: include it in the file that has no main of its own.
#pragma once

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>

#include <cstdlib>

// True once the toolkit is up with a display; the benchmarks skip without it.
inline bool gbGui = false;

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const char* pDisplay = std::getenv("DISPLAY");
    if (pDisplay && *pDisplay) {
        wxApp::SetInstance(new wxApp);
        int wxArgc = 1;
        gbGui = wxEntryStart(wxArgc, argv);
        if (gbGui) {
            wxTheApp->CallOnInit();
            if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
                wxImage::AddHandler(new wxPNGHandler);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (gbGui)
        wxEntryCleanup();
    return 0;
}
