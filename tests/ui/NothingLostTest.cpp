// The window as a user meets it: unsaved changes are offered for saving before they are replaced,
// a file that is no project is refused with the scene and outliner as they were, a failed save
// says why, and every warning and error reaches the window through the program's log target:
// the status bar, the log window, and a notice for errors. The questions are answered by the
// test through the frame's question hook, which stands where the modal box would.
#include "ScenePanelsFixture.h"

#include "LogWindow_cls.h"
#include "PanelBar_cls.h"
#include "UIServices.h"
#include "wxLogGuiEX.h"

#include <wx/statusbr.h>
#include <wx/uiaction.h>

class NothingLostTest : public ScenePanelsFixture {
protected:
    // The window's own services too: its log target and questions.
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Window>();
        RegisterPanelMakers();
    }

    void SetUp() override {
        ScenePanelsFixture::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        ASSERT_NE(GpCwxLogGuiEX, nullptr);
        mpOldLog = wxLog::SetActiveTarget(GpCwxLogGuiEX);
        mpFrame->mFuncAskFilePath = [this](const wxString&, const wxString&, const wxString&, bool) {
            return mStrFileAnswer;
        };
        mpFrame->mFuncAskUser = [this](const wxString& strTitle, const wxString& strMessage,
                                       const std::vector<wxString>& vStrAnswers) {
            mVStrAsked.push_back(strTitle + ": " + strMessage);
            mVVStrAnswers.push_back(vStrAnswers);
            if (mVAnswers.empty()) {
                ADD_FAILURE() << "unexpected question: " << strTitle << ": " << strMessage;
                return -1;
            }
            int answer = mVAnswers.front();
            mVAnswers.erase(mVAnswers.begin());
            return answer;
        };
        Idle();
        mVStrAsked.clear();
    }

    void TearDown() override {
        if (mpOldLog || wxLog::GetActiveTarget() == GpCwxLogGuiEX)
            wxLog::SetActiveTarget(mpOldLog);
        ScenePanelsFixture::TearDown();
    }

    // One idle pass: the queued panel updates and the new log lines reach the window.
    void Idle() { mpFrame->ProcIdle(); }
    wxString StatusText(int field) { return mpFrame->GetStatusBar()->GetStatusText(field); }
    // The scene as the controller holds it, in the outliner's order.
    std::vector<wxString> SceneNames() {
        std::vector<wxString> v;
        std::vector<SceneObj_cls*> vList;
        GpCSceneObjCtrl->GetVPCList(vList);
        for (SceneObj_cls* p : vList)
            v.push_back(p->GetStrName());
        return v;
    }
    std::vector<wxString> OutlinerNames() {
        std::vector<wxString> v;
        for (wxString str : mpOutliner->GetVStrShownNames())
            v.push_back(str.Trim(false));
        return v;
    }
    // A close as the window manager's close button asks it.
    bool AskToClose() {
        wxCloseEvent event(wxEVT_CLOSE_WINDOW, mpFrame->GetId());
        event.SetEventObject(mpFrame);
        event.SetCanVeto(true);
        mpFrame->OnClose(event);
        return !event.GetVeto();
    }

    wxLog* mpOldLog = nullptr;
    wxString mStrFileAnswer;
    std::vector<int> mVAnswers;
    std::vector<wxString> mVStrAsked;
    std::vector<std::vector<wxString>> mVVStrAnswers;
};

// The whole road of a new user: random bytes opened as a project are refused with a notice
// that names the file, the scene, outliner, title and recent list stay; an edit marks the
// title; closing asks, Cancel keeps the window, Discard lets it go.
TEST_F(NothingLostTest, ARandomFileIsRefusedAndClosingAsksAboutTheEdit) {
    const wxString strTitle = mpFrame->GetTitle();
    const wxString strJunk = mDir.Path("junk.ovp");
    ASSERT_TRUE(WriteBytes(strJunk, RandomBytes(11, 4096)));
    ASSERT_EQ(OutlinerNames(), gDefaultScene);

    mStrFileAnswer = strJunk;
    mVAnswers = {0}; // the notice's OK
    SendRibbonClick(mpFrame, ID_RBN_OPEN_PROJECT);
    Idle();
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_EQ(mVStrAsked[0], "Error: Cannot open \"" + strJunk + "\": not a project file.");
    EXPECT_EQ(mVVStrAnswers[0], std::vector<wxString>{"OK"});
    EXPECT_EQ(StatusText(0), "Error: Cannot open \"" + strJunk + "\": not a project file.");
    EXPECT_EQ(SceneNames(), gDefaultScene);
    EXPECT_EQ(OutlinerNames(), gDefaultScene);
    EXPECT_EQ(mpFrame->GetTitle(), strTitle);
    EXPECT_TRUE(mpMain->GetStrRecent(0).empty());
    EXPECT_TRUE(mpMain->mStrProjectPath.empty());

    SCOPED_TRACE("an edit marks the title");
    SendRibbonClick(mpFrame, ID_RBN_SPHERE);
    Idle();
    EXPECT_EQ(OutlinerNames().size(), gDefaultScene.size() + 1);
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver 0.47 (2018/9/27) *");

    SCOPED_TRACE("close: Cancel keeps the window and the scene, Discard lets it close");
    mVStrAsked.clear();
    mVAnswers = {Main_cls::ANSWER_CANCEL};
    EXPECT_FALSE(AskToClose());
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_EQ(mVStrAsked[0], "Unsaved changes: Save the changes to the new project before it is closed?");
    EXPECT_EQ(mVVStrAnswers.back(), std::vector<wxString>({"Save", "Discard", "Cancel"}));
    EXPECT_EQ(SceneNames().size(), gDefaultScene.size() + 1);
    EXPECT_FALSE(wxFileExists(mDir.Path("Orvantis4Configure.txt"))); // no quit ran
    mVAnswers = {Main_cls::ANSWER_DISCARD};
    EXPECT_TRUE(AskToClose());
    EXPECT_TRUE(wxFileExists(mDir.Path("Orvantis4Configure.txt")));
    EXPECT_TRUE(mVAnswers.empty());
    EXPECT_EQ(ReadBytes(strJunk), RandomBytes(11, 4096)) << "nothing was written over the refused file";
}

// The outliner was left listing objects of a scene that no longer existed: after every load,
// good or bad, each panel is rebuilt from the model.
TEST_F(NothingLostTest, EveryLoadRebuildsThePanelsFromTheModel) {
    const wxString strGood = mDir.Path("good.ovp");
    ASSERT_TRUE(WriteBytes(strGood, "SceneObjCtrl::New::Primitive_cls::Sphere::Ball\n"));
    const int rebuilds = mpOutliner->mRebuildCount;
    ASSERT_TRUE(mpMain->OpenProject(strGood));
    Idle();
    EXPECT_EQ(SceneNames(), std::vector<wxString>{"Ball"});
    EXPECT_EQ(OutlinerNames(), SceneNames());
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - " + strGood);
    EXPECT_GT(mpOutliner->mRebuildCount, rebuilds);

    const int before = mpOutliner->mRebuildCount;
    const int refreshes = mpPage->mRefreshCount;
    mStrFileAnswer = mDir.Path("missing.ovp");
    mVAnswers = {0};
    SendRibbonClick(mpFrame, ID_RBN_OPEN_PROJECT);
    Idle();
    EXPECT_EQ(mVStrAsked.size(), 1u);
    EXPECT_TRUE(mVStrAsked[0].Contains("Read Configure Fails " + mDir.Path("missing.ovp")));
    EXPECT_GT(mpOutliner->mRebuildCount, before);
    EXPECT_GT(mpPage->mRefreshCount, refreshes);
    EXPECT_EQ(OutlinerNames(), std::vector<wxString>{"Ball"});
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - " + strGood);
}

// A project with lines the program does not know loads the rest and says so in one warning,
// which the status bar shows; no box interrupts.
TEST_F(NothingLostTest, DroppedLinesAreToldInTheStatusBarAndTheLogWindow) {
    const wxString strPath = mDir.Path("old.ovp");
    ASSERT_TRUE(WriteBytes(strPath, "SceneObjCtrl::New::Primitive_cls::Sphere::Ball\nOld::Thing\n"));
    ASSERT_TRUE(mpMain->OpenProject(strPath));
    Idle();
    EXPECT_TRUE(mVStrAsked.empty());
    EXPECT_EQ(StatusText(0), "Warning: \"" + strPath +
                                 "\": 1 line was not understood and dropped; the rest "
                                 "was read. The first:");
    EXPECT_EQ(SceneNames(), std::vector<wxString>{"Ball"});

    SCOPED_TRACE("the log window keeps every line, also those before it opened");
    wxLogWarning("a later warning");
    Idle();
    EXPECT_EQ(StatusText(0), "Warning: a later warning");
    SendMenu(mpFrame, ID_MENU_SHOW_LOG);
    ASSERT_NE(mpFrame->GetPCLogWindow(), nullptr);
    EXPECT_TRUE(mpFrame->GetPCLogWindow()->IsShown());
    wxString strLog = mpFrame->GetPCLogWindow()->GetStrText();
    EXPECT_TRUE(strLog.Contains("Warning: \"" + strPath + "\": 1 line was not understood")) << strLog;
    EXPECT_TRUE(strLog.Contains("\n    Old::Thing\n")) << strLog;
    EXPECT_TRUE(strLog.Contains("Warning: a later warning\n")) << strLog;
    wxLogMessage("one more");
    Idle();
    EXPECT_TRUE(mpFrame->GetPCLogWindow()->GetStrText().EndsWith("a later warning\none more\n"));
}

// Save As makes the file the project: the title and the recent list follow. A failed save says
// where and why, and the previous file stays.
TEST_F(NothingLostTest, SaveAsRenamesTheTitleAndAFailedSaveSaysWhy) {
    SendRibbonClick(mpFrame, ID_RBN_SPHERE);
    Idle();
    mStrFileAnswer = mDir.Path("first");
    SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT_AS);
    Idle();
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - " + mDir.Path("first.ovp"));
    EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("first.ovp"));
    EXPECT_TRUE(mVStrAsked.empty());

    mStrFileAnswer = mDir.Path("second.ovp");
    SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT_AS);
    Idle();
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - " + mDir.Path("second.ovp"));
    EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("second.ovp"));
    EXPECT_EQ(mpMain->GetStrRecent(1), mDir.Path("first.ovp"));

    SCOPED_TRACE("a save that fails");
    SendRibbonClick(mpFrame, ID_RBN_SPHERE);
    Idle();
    EXPECT_TRUE(mpFrame->GetTitle().EndsWith(" *"));
    const std::string strBefore = ReadBytes(mDir.Path("second.ovp"));
    wxFileName::Mkdir(mDir.Path("second.ovp.saving~")); // the file beside it cannot be made
    mVAnswers = {0};
    SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT);
    Idle();
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_EQ(mVStrAsked[0],
              "Error: Cannot save the project to \"" + mDir.Path("second.ovp") + "\": Is a directory.");
    EXPECT_EQ(ReadBytes(mDir.Path("second.ovp")), strBefore);
    EXPECT_TRUE(mpFrame->GetTitle().EndsWith(" *"));
}

// A recent file that has moved says so and offers to leave the list.
TEST_F(NothingLostTest, AMovedRecentFileOffersToLeaveTheList) {
    mpMain->PushBackRecent(mDir.Path("moved.ovp"));
    mVAnswers = {0}; // Remove
    SendMenu(mpFrame, ID_MENU_RECENT_FIRST);
    Idle();
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_EQ(mVStrAsked[0], "Recent project missing: \"" + mDir.Path("moved.ovp") +
                                 "\" has been moved or deleted.\nRemove it from the recent list?");
    EXPECT_EQ(mVVStrAnswers[0], std::vector<wxString>({"Remove", "Keep"}));
    EXPECT_TRUE(mpMain->GetStrRecent(0).empty());
    std::unique_ptr<wxMenu> menu(mpFrame->CreateRecentMenu());
    EXPECT_EQ(menu->GetMenuItemCount(), 0u);
    EXPECT_TRUE(StatusText(0).Contains("is not there any more"));
}

// A field given an expression that does not parse says why in the window.
TEST_F(NothingLostTest, ABadFieldInputShowsWhyInTheStatusBar) {
    mpOutliner->SelectObject("Box");
    Idle();
    SendTextEnter(mpPage->mpCField[0][0], "2*/x");
    RunPendingEvents(); // the Lua message comes as menu event 6163
    Idle();
    EXPECT_TRUE(StatusText(0).StartsWith("Warning: ")) << StatusText(0);
    EXPECT_TRUE(StatusText(0).Contains("unexpected symbol near '/'")) << StatusText(0);
    EXPECT_TRUE(mVStrAsked.empty());
}

// The help tool says where the page was looked for when it is not there.
TEST_F(NothingLostTest, AMissingHelpPageSaysWhereItWasLookedFor) {
    const wxString strOld = FrameMain_cls::msStrHelpURL;
    FrameMain_cls::msStrHelpURL = "NoSuchFolder/Help.html";
    mVAnswers = {0};
    SendRibbonClick(mpFrame, ID_RBN_HELP);
    Idle();
    FrameMain_cls::msStrHelpURL = strOld;
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_EQ(mVStrAsked[0], "Error: The help page cannot be opened: \"" +
                                 mDir.Path("NoSuchFolder/Help.html") + "\" does not exist.");
}

// The keys of the frame work from inside a panel, and Ctrl+Q takes the close button's road.
TEST_F(NothingLostTest, KeysWorkFromEveryPanelAndCtrlQAsksLikeTheCloseButton) {
    // The keys need the event loop, whose first idle pass of the program reads the start layout:
    // let it pass, then put the outliner back.
    for (int i = 0; i < 5; ++i)
        wxTheApp->Yield(true);
    ReadFrameLayout(gLayout);
    mpOutliner = FindLeaf<Outliner_cls>();
    ASSERT_NE(mpOutliner, nullptr);
    mpFrame->Raise();
    mpOutliner->mpCTree->SetFocus();
    for (int i = 0; i < 20 && wxWindow::FindFocus() != mpOutliner->mpCTree; ++i) {
        wxTheApp->Yield(true);
        wxMilliSleep(10);
    }
    if (wxWindow::FindFocus() != mpOutliner->mpCTree)
        GTEST_SKIP() << "the display gives no keyboard focus to the test window";
    auto press = [](int key, int modifiers) {
        wxUIActionSimulator sim;
        sim.Char(key, modifiers);
        for (int i = 0; i < 10; ++i) {
            wxTheApp->Yield(true);
            wxMilliSleep(10);
        }
        RunPendingEvents();
    };
    SendRibbonClick(mpFrame, ID_RBN_SPHERE);
    Idle();
    ASSERT_EQ(SceneNames().size(), gDefaultScene.size() + 1);
    press('z', wxMOD_CONTROL);
    EXPECT_EQ(SceneNames(), gDefaultScene);
    press('y', wxMOD_CONTROL);
    EXPECT_EQ(SceneNames().size(), gDefaultScene.size() + 1);

    mStrFileAnswer = mDir.Path("keys.ovp");
    press('s', wxMOD_CONTROL);
    EXPECT_TRUE(wxFileExists(mDir.Path("keys.ovp")));
    mStrFileAnswer = mDir.Path("keys2.ovp");
    press('s', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_TRUE(wxFileExists(mDir.Path("keys2.ovp")));

    SendRibbonClick(mpFrame, ID_RBN_SPHERE);
    mVAnswers = {Main_cls::ANSWER_CANCEL};
    press('q', wxMOD_CONTROL);
    ASSERT_EQ(mVStrAsked.size(), 1u);
    EXPECT_TRUE(mVStrAsked[0].StartsWith("Unsaved changes: "));
    EXPECT_TRUE(mpFrame->IsShown());
}

// The About box and the window carry the program's icon; the help page and the start layout
// are found beside the program whatever the current folder.
TEST_F(NothingLostTest, TheIconAndTheResourcesAreFoundFromAnyFolder) {
    wxAboutDialogInfo info = mpFrame->GetAboutInfo();
    ASSERT_TRUE(info.GetIcon().IsOk());
    EXPECT_EQ(info.GetIcon().GetWidth(), 32);
    EXPECT_TRUE(mpFrame->GetIcon().IsOk());

    // An installed program: bin/ beside share/orvantis4/Resource, run from somewhere else.
    const wxString strPrefix = mDir.Path("prefix");
    ASSERT_TRUE(wxFileName::Mkdir(strPrefix + "/bin", wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL));
    ASSERT_TRUE(
        wxFileName::Mkdir(strPrefix + "/share/orvantis4/Resource", wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL));
    ASSERT_TRUE(WriteBytes(strPrefix + "/share/orvantis4/Resource/Help.html", "<html></html>\n"));
    ASSERT_TRUE(wxFileName::Mkdir(mDir.Path("elsewhere")));
    wxSetWorkingDirectory(mDir.Path("elsewhere"));
    mpMain->mStrAppDir = strPrefix + "/bin";
    EXPECT_EQ(mpMain->FindResourceFile("Resource/Help.html"),
              strPrefix + "/share/orvantis4/Resource/Help.html");
    EXPECT_EQ(mpMain->FindResourceFile("Resource/Missing.html"), "Resource/Missing.html");
    // The help tool finds the page there: no error is told.
    bool bOpened = false;
    FrameMain_cls::msFuncLaunchBrowser = [&bOpened](const wxString& strURL) {
        bOpened = strURL.EndsWith("/share/orvantis4/Resource/Help.html");
        return true;
    };
    SendRibbonClick(mpFrame, ID_RBN_HELP);
    FrameMain_cls::msFuncLaunchBrowser = nullptr;
    Idle();
    EXPECT_TRUE(bOpened);
    EXPECT_TRUE(mVStrAsked.empty());
}

// The help page promises the panel menu on a right click of the panel bar: the bar gives the
// menu of the leaf it stands in, whose items act on that leaf.
TEST_F(NothingLostTest, ThePanelBarGivesThePanelMenuOfItsLeaf) {
    for (wxPanelEX* pLeaf : Leaves()) {
        SCOPED_TRACE(pLeaf->GetName());
        EXPECT_EQ(pLeaf->GetPCMenuPanel(), pLeaf);
        ASSERT_NE(pLeaf->GetPanelBar(), nullptr);
        EXPECT_EQ(pLeaf->GetPanelBar()->GetPCMenuPanel(), pLeaf);
    }
    wxPanelEX loose(mpFrame, _PANEL_DUMMY); // outside the tree: no menu
    EXPECT_EQ(loose.GetPCMenuPanel(), nullptr);
}
