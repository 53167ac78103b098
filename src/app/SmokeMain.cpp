// Starts the application core without a display: the services are made on a worker as at a
// real start, the given project is loaded through the command language and written back out.
#include "CoreServices.h"
#include "InitializeParallel_cls.h"
#include "LuaServices.h"
#include "Main_cls.h"
#include "PrepServices.h"
#include "SceneServices.h"
#include "TimeServices.h"
#include "UndoManager_cls.h"
#include "ViewerServices.h"

#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/utils.h>

#include <atomic>
#include <cstdio>

int main(int argc, char** argv) {
    wxInitializer init;
    if (!init.IsOk()) {
        fprintf(stderr, "The toolkit could not start.\n");
        return 1;
    }
    delete wxLog::SetActiveTarget(new wxLogStderr);
    if (argc < 2) {
        fprintf(stderr, "usage: orvantis4-smoke <project.ovp>\n");
        return 2;
    }
    wxString strProject = wxString::FromUTF8(argv[1]);
    wxFileName fnProject(strProject);
    fnProject.MakeAbsolute();
    strProject = fnProject.GetFullPath();

    RegisterCoreServices();
    RegisterTimeServices();
    RegisterLuaServices();
    RegisterSceneServices();
    RegisterViewerServices();
    RegisterPrepServices();
    Main_cls* pMain = new Main_cls();
    std::atomic<bool> bFinished{false};
    int millis = 0;
    auto* pThread = new InitializeParallel_cls();
    pThread->SetParameters(&bFinished, &millis);
    if (pThread->Run() != wxTHREAD_NO_ERROR) {
        delete pThread;
        InitializeParallel_cls::InitializeParallel();
        bFinished = true;
    }
    while (!bFinished.load(std::memory_order_acquire))
        wxMilliSleep(3);
    pMain->mMillisParallel = millis;
    pMain->CreateSingletonSerial();
    pMain->OpenProjectMain(pMain->GetStrConfigurePath(), false);

    printf("Orvantis4 ver %s: services made in %d ms\n", Main_cls::msStrVersion.utf8_str().data(), millis);
    if (!pMain->OpenProject(strProject)) {
        fprintf(stderr, "Could not open %s\n", argv[1]);
        delete pMain;
        return 1;
    }
    printf("Opened %s; undo steps after loading: %d\n", argv[1], GpCUndo ? GpCUndo->GetCount() : 0);
    printf("---- project text as it would be saved ----\n%s", pMain->SerializeProject().utf8_str().data());
    delete pMain;
    return 0;
}
