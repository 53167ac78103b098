// A core with its services made in a temporary application directory, and a stand-in window
// that records what the core asks of it.
#pragma once

#include "Main_cls.h"
#include "Preference_cls.h"
#include "UndoManager_cls.h"

#include "ServicesFixture.h"

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

class CoreFixture : public ServicesFixture<ServiceLayer_enum::Core> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        mpMain->AddFrame(&mFrame);
    }

    // Writes a project text and opens it as the user would.
    bool OpenText(const std::string& text, bool bUser = true, const wxString& strName = "p.ovp") {
        WriteBytes(mDir.Path(strName), text);
        return mpMain->OpenProjectMain(mDir.Path(strName), bUser);
    }

    // The recent list up to its first empty slot.
    std::vector<wxString> Recent() {
        std::vector<wxString> v;
        for (int i = 0; i < 10 && !mpMain->GetStrRecent(i).empty(); ++i)
            v.push_back(mpMain->GetStrRecent(i));
        return v;
    }

    RecordingFrame_cls mFrame;
};
