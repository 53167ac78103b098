// The application object: starts the process in the fixed order (catalogue, image handlers,
// the core, the services on a worker while the first window is built, the settings) and
// deletes the core at the end. It reads no command line. The services it builds must have been
// registered before the toolkit starts it: the program's entry does that through the
// composition root, which lives above this layer.
#pragma once

#include <wx/app.h>
#include <wx/intl.h>

class Main_cls;
class FrameMain_cls;

class MyApp : public wxApp {
public:
    MyApp();
    bool OnInit() override;
    int OnExit() override;
    // A failed assertion is a line on standard error: a message box would stop a session
    // that has no user at it.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* func, const wxChar* cond,
                         const wxChar* msg) override;

    // The window layer's part of building the core: art, panel tables, tool-tip timing, the
    // services on a worker while the first window is built, then the settings. Returns the
    // first window.
    static FrameMain_cls* StartCore(Main_cls* pMain);

    wxLocale mLocale;
    Main_cls* mpCMain = nullptr;
};

wxDECLARE_APP(MyApp);
