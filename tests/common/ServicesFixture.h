// The start of every fixture that needs a core: the layers up to Top register their services
// through the program's own composition root, and the core makes them in a temporary
// application folder. The layer fixtures add their helpers on top.
#pragma once

#include "Main_cls.h"
#include "ServiceRegistry.h"

#include "CommandText.h"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <wx/filefn.h>

#include <memory>

template <ServiceLayer_enum Top> class ServicesFixture : public ::testing::Test {
protected:
    void SetUp() override {
        mStrOldCwd = wxGetCwd();
        // The pause after a save shows a window's busy state; tests have no use for it.
        Main_cls::msSaveBusyMillis = 0;
        RegisterLayers();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
    }
    void TearDown() override {
        mpMain.reset();
        // Saving moves into the project's folder: step out before the folder goes.
        if (!mStrOldCwd.empty())
            wxSetWorkingDirectory(mStrOldCwd);
    }

    // Registers before the services are made; a fixture that adds kinds of its own, or stops at
    // another layer, overrides it and still goes through RegisterServices.
    virtual void RegisterLayers() { RegisterServices<Top>(); }

    // Runs one text of the command language line by line, as a project load does.
    void RunText(const wxString& strText) { RunCommandText(*mpMain, strText); }

    TempDir_cls mDir;
    wxString mStrOldCwd;
    std::unique_ptr<Main_cls> mpMain;
};
