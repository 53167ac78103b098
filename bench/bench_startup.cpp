// The program's start-up in one process, as the application object does it: the core, the
// services on the start-up worker while the first window is built, the settings, then the
// first idle pass, which reads the start layout. Needs a display (run under xvfb-run -a).
#include "CoreServices.h"
#include "FrameMain_cls.h"
#include "LuaServices.h"
#include "Main_cls.h"
#include "MyApp.h"
#include "PanelMakers.h"
#include "PrepServices.h"
#include "SceneServices.h"
#include "TimeServices.h"
#include "UIServices.h"

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/log.h>

#include <cstdlib>
#include <string>

namespace {

bool gbGui = false;

void BM_StartUpToFirstIdle(benchmark::State& state) {
    if (!gbGui) {
        state.SkipWithError("no display");
        return;
    }
    // The start layout is read relative to the working directory, as the program does.
    wxSetWorkingDirectory(ORV_SOURCE_DIR);
    wxString strAppDir = wxFileName::CreateTempFileName("orv_bench_");
    wxRemoveFile(strAppDir);
    wxMkdir(strAppDir);
    for (auto _ : state) {
        ClassProvider_cls::ResetRegistrations();
        RegisterCoreServices();
        RegisterTimeServices();
        RegisterLuaServices();
        RegisterSceneServices();
        RegisterPrepServices();
        RegisterUIServices();
        auto* pMain = new Main_cls(strAppDir);
        FrameMain_cls* pFrame = MyApp::StartCore(pMain);
        pFrame->ProcInitIdle();
        benchmark::DoNotOptimize(pFrame->GetPCTopWindow());

        state.PauseTiming();
        delete pFrame;
        delete pMain;
        delete wxLog::SetActiveTarget(new wxLogStderr);
        wxArtProvider::Pop();
        UnregisterPanelMakers();
        state.ResumeTiming();
    }
    wxFileName::Rmdir(strAppDir, wxPATH_RMDIR_RECURSIVE);
}
BENCHMARK(BM_StartUpToFirstIdle)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

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
