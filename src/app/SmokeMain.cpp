// Starts the application core without a display: the services are made on a worker as at a
// real start, the given project is loaded through the command language and written back out,
// to standard output and, when a second path is given, to that file as the program saves.
#include "HeadlessCore.h"
#include "Main_cls.h"
#include "ServiceRegistry.h"
#include "UndoManager_cls.h"

#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>

#include <cstdio>

namespace {

wxString AbsolutePath(const char* pArg) {
    wxFileName fn(wxString::FromUTF8(pArg));
    fn.MakeAbsolute();
    return fn.GetFullPath();
}

} // namespace

int main(int argc, char** argv) {
    wxInitializer init;
    if (!init.IsOk()) {
        fprintf(stderr, "The toolkit could not start.\n");
        return 1;
    }
    delete wxLog::SetActiveTarget(new wxLogStderr);
    if (argc < 2 || argc > 3) {
        fprintf(stderr, "usage: orvantis4-smoke <project.ovp> [<saved.ovp>]\n");
        return 2;
    }
    // Both are taken before the project is opened, which moves into the project's folder.
    const wxString strProject = AbsolutePath(argv[1]);
    const wxString strSaved = argc > 2 ? AbsolutePath(argv[2]) : wxString();

    RegisterServices<ServiceLayer_enum::Headless>();
    Main_cls* pMain = NewHeadlessCore();
    pMain->OpenProjectMain(pMain->GetStrConfigurePath(), false);

    printf("Orvantis4 ver %s: services made in %d ms\n", Main_cls::msStrVersion.utf8_str().data(),
           pMain->mMillisParallel);
    if (!pMain->OpenProject(strProject)) {
        fprintf(stderr, "Could not open %s\n", argv[1]);
        delete pMain;
        return 1;
    }
    printf("Opened %s; undo steps after loading: %d\n", argv[1], GpCUndo ? GpCUndo->GetCount() : 0);
    printf("---- project text as it would be saved ----\n%s", pMain->SerializeProject().utf8_str().data());
    int result = 0;
    if (!strSaved.empty() && !pMain->SaveProjectMain(strSaved, 0)) {
        fprintf(stderr, "Could not save %s\n", argv[2]);
        result = 1;
    }
    delete pMain;
    return result;
}
