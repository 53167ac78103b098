#include "MyApp.h"

#include "FontProvider_cls.h"
#include "FrameMain_cls.h"
#include "InitializeParallel_cls.h"
#include "Main_cls.h"
#include "MyArtProvider.h"
#include "PanelMakers.h"
#include "RibbonUI_cls.h"
#include "wxLogGuiEX.h"
#include "wxPanelEX.h"

#include <wx/log.h>
#include <wx/tooltip.h>

#include <atomic>
#include <cstdio>
#include <thread>
#include <utility>

MyApp::MyApp() {
    mLocale.Init(wxLANGUAGE_DEFAULT, wxLOCALE_LOAD_DEFAULT);
}

bool MyApp::OnInit() {
    // Until the program's own target exists, lines go to standard error, never to a box.
    delete wxLog::SetActiveTarget(new wxLogStderr);
    // Workers log from their own threads, and the toolkit makes the shared list of per-thread log
    // states on a thread's first log. One short thread makes it here and is joined before any worker
    // starts, so ThreadSanitizer, which cannot see the toolkit's uninstrumented guard of that lazy
    // start, never sees two workers make it at once.
    std::thread([] { wxLog::IsEnabled(); }).join();

    wxLocale::AddCatalogLookupPathPrefix(".");
    wxLocale::AddCatalogLookupPathPrefix("./locale");
    mLocale.AddCatalog("Orvantis4");

    // The image handlers were registered with the output layer's services.

    // The services were registered by the program's entry before the toolkit started.
    mpCMain = new Main_cls();
    StartCore(mpCMain);
    return true;
}

FrameMain_cls* MyApp::StartCore(Main_cls* pMain) {
    wxArtProvider::Push(new MyArtProvider(pMain->GetStrAppDir()));
    FontProvider_cls::InitializeStatic();
    wxPanelEX::InitializeStatic();
    RegisterPanelMakers();
    // The program's values; the 10 ms auto-pop is intended.
    wxToolTip::SetAutoPop(10);
    wxToolTip::SetDelay(1000);
    wxToolTip::SetReshow(10);

    std::atomic<bool> bFinished{false};
    auto pWorker = InitializeParallel_cls::Start(&bFinished, &pMain->mMillisParallel);

    // Built while the worker makes the services; it uses none of them.
    auto* pFrame = new FrameMain_cls("Orvantis4 ver " + Main_cls::msStrVersion, pMain, 0, 0, 1280, 960);

    InitializeParallel_cls::WaitFinished(bFinished, std::move(pWorker));
    pMain->CreateSingletonSerial();
    if (GpCwxLogGuiEX)
        delete wxLog::SetActiveTarget(GpCwxLogGuiEX);
    pFrame->GetPCRibbon()->UpdateRibbonHelp(true);
    pMain->OpenProjectMain(pMain->GetStrAppDir() + "/Orvantis4Configure.txt", false);
    return pFrame;
}

int MyApp::OnExit() {
    delete mpCMain;
    mpCMain = nullptr;
    delete wxLog::SetActiveTarget(new wxLogStderr);
    return 0;
}

void MyApp::OnAssertFailure(const wxChar* file, int line, const wxChar* func, const wxChar* cond,
                            const wxChar* msg) {
    fprintf(stderr, "Assertion failed: %s at %s:%d in %s %s\n", wxString(cond).utf8_str().data(),
            wxString(file).utf8_str().data(), line, wxString(func).utf8_str().data(),
            wxString(msg ? msg : wxT("")).utf8_str().data());
}
