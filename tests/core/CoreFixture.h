// A core with its services made in a temporary application directory, and a stand-in window
// that records what the core asks of it.
#pragma once

#include "CoreServices.h"
#include "Main_cls.h"
#include "Preference_cls.h"
#include "UndoManager_cls.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <memory>

class RecordingFrame_cls : public FrameHost_cls {
public:
    void UpdatePanels(const wxString& strPanel) override { mVStrPanels.push_back(strPanel); }
    void ProcAfterMath(const wxString& strWhat, const wxString&) override {
        mVStrAfterMath.push_back(strWhat);
    }
    bool ReadStrLine(std::wistream&, const wxString& strHead, const wxString& strRest) override {
        if (strHead != "FrameMain")
            return false;
        mStrLayout = strRest.AfterFirst(':').AfterFirst(':');
        return true;
    }
    void Serialize(wxString& strOut, int index) override {
        strOut += wxString::Format("FrameMain::%d::", index) + mStrLayout + "\n";
    }
    void UpdateTitle() override { ++mTitleUpdates; }
    void CloseWindow() override { ++mCloses; }
    void SetBusy(bool) override {}
    wxString AskFilePath(const wxString&, const wxString&, const wxString&, bool) override {
        return mStrAnswer;
    }
    int AskUser(const wxString& strTitle, const wxString& strMessage, const std::vector<wxString>&) override {
        mVStrAsked.push_back(strTitle + ": " + strMessage);
        return mAnswer;
    }

    std::vector<wxString> mVStrPanels;
    std::vector<wxString> mVStrAfterMath;
    wxString mStrLayout = "single";
    wxString mStrAnswer;
    std::vector<wxString> mVStrAsked;
    int mAnswer = -1;
    int mTitleUpdates = 0;
    int mCloses = 0;
};

class CoreFixture : public ::testing::Test {
protected:
    void SetUp() override {
        mStrOldCwd = wxGetCwd();
        Main_cls::msSaveBusyMillis = 0;
        ClassProvider_cls::ResetRegistrations();
        RegisterCoreServices();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
        mpMain->AddFrame(&mFrame);
    }
    void TearDown() override {
        mpMain.reset();
        wxSetWorkingDirectory(mStrOldCwd);
    }

    // Writes a project text and opens it as the user would.
    bool OpenText(const std::string& text, bool bUser = true, const wxString& strName = "p.ovp") {
        WriteBytes(mDir.Path(strName), text);
        return mpMain->OpenProjectMain(mDir.Path(strName), bUser);
    }

    TempDir_cls mDir;
    wxString mStrOldCwd;
    RecordingFrame_cls mFrame;
    std::unique_ptr<Main_cls> mpMain;
};
