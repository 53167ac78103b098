// The main window: its status bar and gauges, keys, closing, the idle loop, the first idle,
// and the ribbon and menu routing into the core.
#include "UiFixture.h"

#include "LuaErrorSink_cls.h"
#include "MyArtProvider.h"
#include "Preference_cls.h"
#include "RibbonPage_cls.h"
#include "RibbonUI_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/gauge.h>
#include <wx/statusbr.h>

#include <thread>

using FrameMainTest = UiFixture;

TEST_F(FrameMainTest, StatusBarHasSixFieldsWithGaugesAndAnAbortButton) {
    wxStatusBar* pStatus = mpFrame->GetStatusBar();
    ASSERT_NE(pStatus, nullptr);
    ASSERT_EQ(pStatus->GetFieldsCount(), 6);
    // No placeholder texts: every field starts empty but the recording state.
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(pStatus->GetStatusText(i), i == 4 ? wxString("Not Recording") : wxString()) << i;
    const int vWidths[] = {180, 180, 180, 180, -1};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(pStatus->GetStatusWidth(i), vWidths[i]) << i;
    // The memory field holds its text.
    EXPECT_GE(pStatus->GetStatusWidth(5), 120);
    EXPECT_GT(pStatus->GetStatusWidth(5), pStatus->GetTextExtent("99999MB 99999MB(Tex)").x);

    wxRect rect1, rect3;
    ASSERT_TRUE(pStatus->GetFieldRect(1, rect1));
    ASSERT_TRUE(pStatus->GetFieldRect(3, rect3));
    EXPECT_EQ(mpFrame->mpCGauge->GetPosition(), wxPoint(rect1.x, rect1.y + 2));
    EXPECT_EQ(mpFrame->mpCGaugeRecord->GetPosition(), wxPoint(rect3.x, rect3.y + 2));
    EXPECT_EQ(mpFrame->mpCBtnAbort->GetPosition(), wxPoint(rect1.x + rect1.width - 16, rect1.y + 2));
    EXPECT_EQ(mpFrame->mpCBtnAbort->GetId(), ID_BTN_ABORT);
    EXPECT_EQ(mpFrame->mpCGauge->GetRange(), 100);

    SCOPED_TRACE("the abort button sets the abort flag, the idle pass clears it");
    TimeCtrl_cls::msbForceAbort = false;
    Send(mpFrame->mpCBtnAbort, wxEVT_BUTTON);
    EXPECT_TRUE(TimeCtrl_cls::msbForceAbort.load());
    mpFrame->ProcIdle();
    EXPECT_FALSE(TimeCtrl_cls::msbForceAbort.load());
    mpFrame->SetStatusAborted();
    EXPECT_EQ(pStatus->GetStatusText(4), "Aborted");
}

TEST_F(FrameMainTest, GaugeUpdatesAreRateLimitedUnlessForced) {
    wxStatusBar* pStatus = mpFrame->GetStatusBar();
    wxMilliSleep(FrameMain_cls::msGaugeIntervalMillis + 20);
    mpFrame->SetGauge(10, false);
    EXPECT_EQ(pStatus->GetStatusText(2), "10%");
    EXPECT_EQ(mpFrame->mpCGauge->GetValue(), 10);
    EXPECT_EQ(pStatus->GetStatusText(4), "Not Recording");
    EXPECT_EQ(mpFrame->mpCGaugeRecord->GetValue(), 100);
    mpFrame->SetGauge(20, false); // within the interval: dropped
    EXPECT_EQ(pStatus->GetStatusText(2), "10%");
    mpFrame->SetGauge(30, true);
    EXPECT_EQ(pStatus->GetStatusText(2), "30%");
    EXPECT_EQ(mpFrame->mpCGauge->GetValue(), 30);
    EXPECT_EQ(mpFrame->mpCGauge->GetRange(), 100);

    SCOPED_TRACE("output running without a written frame reads Recording...");
    GpCTimeCtrl->mbOutputRunning = true;
    mpFrame->SetGauge(40, true);
    EXPECT_EQ(pStatus->GetStatusText(4), "Recording...");
    GpCTimeCtrl->mbOutputRunning = false;
}

TEST_F(FrameMainTest, EscapeLeavesFullScreenUnlessATextWidgetHasTheFocus) {
    int shortcutCalls = 0;
    mpFrame->mFuncShortcutKey = [&shortcutCalls](wxKeyEvent&, FrameMain_cls*) { ++shortcutCalls; };
    wxWindow* pRibbon = mpFrame->GetPCRibbon()->GetBar();
    wxKeyEvent key(wxEVT_KEY_DOWN);
    key.m_keyCode = WXK_ESCAPE;

    mpFrame->ShowFullScreen(true, wxFULLSCREEN_ALL);
    pRibbon->Hide();
    mpFrame->mStrFocusName = "text";
    mpFrame->OnKeyDown(key);
    EXPECT_EQ(shortcutCalls, 0);
    EXPECT_TRUE(mpFrame->IsFullScreen());
    EXPECT_FALSE(pRibbon->IsShown());
    EXPECT_TRUE(key.GetSkipped());

    mpFrame->mStrFocusName = "VIEW3D";
    mpFrame->OnKeyDown(key);
    EXPECT_EQ(shortcutCalls, 1);
    EXPECT_FALSE(mpFrame->IsFullScreen());
    EXPECT_TRUE(pRibbon->IsShown());

    SCOPED_TRACE("the key reaches the frame from the top of the panel tree");
    pRibbon->Hide();
    mpFrame->GetPCTopWindow()->GetEventHandler()->ProcessEvent(key);
    EXPECT_EQ(shortcutCalls, 2);
    EXPECT_TRUE(pRibbon->IsShown());
}

TEST_F(FrameMainTest, ClosingWritesTheSettingsAndRecentFilesBesideTheProgram) {
    mpMain->PushBackRecent("/data/one.ovp");
    mpMain->mCLastFileIMG.SetBodyFromData(wxString("/data/picture.png"));
    wxCloseEvent event(wxEVT_CLOSE_WINDOW);
    mpFrame->OnClose(event);
    EXPECT_TRUE(event.GetSkipped());
    std::string strConf = ReadBytes(mDir.Path("Orvantis4Configure.txt"));
    EXPECT_NE(strConf.find("ConfItemList::Begin::MainConfList"), std::string::npos);
    // File items are written relative to the working folder, as the preference says.
    EXPECT_NE(strConf.find("LastFileIMG="), std::string::npos);
    EXPECT_NE(strConf.find("data/picture.png"), std::string::npos) << strConf;
    EXPECT_EQ(ReadBytes(mDir.Path("Orvantis4Recent.txt")), "/data/one.ovp\n");
}

TEST_F(FrameMainTest, IdlePassesWriteTheMemoryLineAndKeepMemoryInBounds) {
    int prefetches = 0, releases = 0;
    long long sceneMB = 12;
    mpFrame->mFuncSceneMemoryMB = [&sceneMB] { return sceneMB; };
    mpFrame->mFuncTextureMemoryMB = [] { return 3LL; };
    mpFrame->mFuncPrefetch = [&prefetches] { ++prefetches; };
    mpFrame->mFuncReleaseMemory = [&releases] { ++releases; };

    EXPECT_FALSE(mpFrame->ProcIdle());
    EXPECT_EQ(mpFrame->GetStatusBar()->GetStatusText(5), "12MB 3MB(Tex)");
    EXPECT_EQ(prefetches, 1);
    EXPECT_EQ(releases, 0);

    sceneMB = GpCPreference->GetMemoryLimitMB() + 1;
    mpFrame->ProcIdle();
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(prefetches, 1); // no prefetch in a pass that released memory

    SCOPED_TRACE("playback keeps the loop awake and flushes the queued updates");
    sceneMB = 0;
    GpCTimeCtrl->mPlayDirection = 1;
    mpMain->UpdatePanels("OUTLINER");
    EXPECT_TRUE(mpFrame->ProcIdle());
    EXPECT_TRUE(mpMain->mVStrPanelQueue.empty());
    EXPECT_EQ(prefetches, 1);
    GpCTimeCtrl->mPlayDirection = 0;
}

TEST_F(FrameMainTest, TheFirstIdleLoadsTheStartLayoutOrFallsBackToOneView) {
    {
        SCOPED_TRACE("the start-up layout of the source tree");
        wxSetWorkingDirectory(ORV_SOURCE_DIR);
        mpFrame->ProcInitIdle();
        std::vector<wxString> vNames;
        for (wxPanelEX* pPanel : Leaves())
            vNames.push_back(pPanel->GetName());
        EXPECT_EQ(vNames, std::vector<wxString>({"VIEW3D", "TIMELINE", "OUTLINER", "PROPERTY"}));
        EXPECT_TRUE(mpFrame->IsShown());
        EXPECT_GE(mpMain->mMillisLayout, 0);
    }
    {
        SCOPED_TRACE("without Resource/InitLayout.ovp: a single 3D view");
        LogCapture_cls log;
        wxSetWorkingDirectory(mDir.mStrPath);
        mpFrame->ProcInitIdle();
        ASSERT_EQ(Leaves().size(), 1u);
        EXPECT_EQ(Leaves()[0]->GetPanelType(), _PANEL_VIEW3D);
        EXPECT_TRUE(mpFrame->GetPCTopWindow()->IsTop());
    }
}

TEST_F(FrameMainTest, MenuMirrorsBecomeRibbonClicksAndUndoRedoWorkThroughTheCore) {
    mpMain->mCLastFileIMG.SetBodyFromData(wxString("before.png"));
    mpMain->mCLastFileIMG.PushCommandPair("after.png");
    ASSERT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "after.png");

    SendMenu(mpFrame, ID_RBN_UNDO + ID_MENU_MIRROR_OFFSET);     // 6007
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "after.png"); // posted, not yet run
    RunPendingEvents();
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "before.png");

    SendRibbonClick(mpFrame, ID_RBN_REDO);
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "after.png");
    SendRibbonClick(mpFrame, ID_RBN_UNDO);
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "before.png");

    SCOPED_TRACE("a scene tool with no scene yet says so and is handed to the installed hook");
    std::vector<int> vIds;
    {
        LogCapture_cls log;
        SendMenu(mpFrame, ID_RBN_BOX + ID_MENU_MIRROR_OFFSET); // 6014
        RunPendingEvents();
        EXPECT_TRUE(log.Contains("Box: not available yet."));
    }
    mpFrame->mFuncSceneCommand = [&vIds](int id) {
        vIds.push_back(id);
        return true;
    };
    SendMenu(mpFrame, ID_RBN_PARTICLE + ID_MENU_MIRROR_OFFSET);
    SendRibbonClick(mpFrame, ID_RBN_DUPLICATE);
    SendMenu(mpFrame, ID_MENU_CLEAR_TEXTURE_CACHE);
    RunPendingEvents();
    EXPECT_EQ(vIds, std::vector<int>({ID_RBN_DUPLICATE, ID_MENU_CLEAR_TEXTURE_CACHE, ID_RBN_PARTICLE}));
}

TEST_F(FrameMainTest, OpenSaveAndRecentFilesGoThroughTheCore) {
    wxString strAnswer;
    std::vector<bool> vSaveAsked;
    mpFrame->mFuncAskFilePath = [&](const wxString&, const wxString& strFilter, const wxString&, bool bSave) {
        EXPECT_EQ(strFilter, "Project file (*.ovp)|*.ovp");
        vSaveAsked.push_back(bSave);
        return strAnswer;
    };
    mpFrame->MakeSinglePanel();

    {
        SCOPED_TRACE("Save with no current project asks for a name and adds .ovp");
        strAnswer = mDir.Path("first");
        SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT);
        EXPECT_EQ(vSaveAsked, std::vector<bool>({true}));
        std::string strSaved = ReadBytes(mDir.Path("first.ovp"));
        EXPECT_EQ(strSaved.rfind("FrameMain::0::", 0), 0u) << strSaved;
        EXPECT_NE(strSaved.find("wxPanelEX::VIEW3D"), std::string::npos);
    }
    {
        SCOPED_TRACE("Open asks for a file and makes it the current project");
        strAnswer = mDir.Path("first.ovp");
        SendRibbonClick(mpFrame, ID_RBN_OPEN_PROJECT);
        EXPECT_EQ(vSaveAsked, std::vector<bool>({true, false}));
        EXPECT_TRUE(mpMain->mbProjectFileCurrent);
        EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - " + mDir.Path("first.ovp"));
    }
    {
        SCOPED_TRACE("Save of the current project asks nothing");
        wxRemoveFile(mDir.Path("first.ovp"));
        SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT);
        EXPECT_EQ(vSaveAsked.size(), 2u);
        EXPECT_TRUE(wxFileExists(mDir.Path("first.ovp")));
    }
    {
        SCOPED_TRACE("Save Project as from the save menu always asks");
        strAnswer = mDir.Path("second.ovp");
        SendMenu(mpFrame, ID_RBN_SAVE_PROJECT_AS + ID_MENU_MIRROR_OFFSET);
        RunPendingEvents();
        EXPECT_EQ(vSaveAsked.size(), 3u);
        EXPECT_TRUE(wxFileExists(mDir.Path("second.ovp")));
    }
    {
        SCOPED_TRACE("the recent menu lists the slots; an item opens its file, an empty slot nothing");
        EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("second.ovp"));
        EXPECT_EQ(mpMain->GetStrRecent(1), mDir.Path("first.ovp"));
        std::unique_ptr<wxMenu> pMenu(mpFrame->CreateRecentMenu());
        ASSERT_EQ(pMenu->GetMenuItemCount(), 2u);
        EXPECT_EQ(pMenu->FindItemByPosition(1)->GetId(), ID_MENU_RECENT_FIRST + 1);
        EXPECT_EQ(pMenu->FindItemByPosition(1)->GetItemLabelText(), mDir.Path("first.ovp"));

        mpMain->mbProjectFileCurrent = false;
        SendMenu(mpFrame, ID_MENU_RECENT_FIRST + 5);
        EXPECT_FALSE(mpMain->mbProjectFileCurrent);
        SendMenu(mpFrame, ID_MENU_RECENT_FIRST + 1);
        EXPECT_TRUE(mpMain->mbProjectFileCurrent);
        EXPECT_EQ(mpMain->mStrProjectPath, mDir.Path("first.ovp"));
        EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("first.ovp"));
    }
    {
        SCOPED_TRACE("a cancelled dialog changes nothing");
        strAnswer.clear();
        wxString strBefore = mpMain->mStrProjectPath;
        SendRibbonClick(mpFrame, ID_RBN_SAVE_PROJECT_AS);
        SendRibbonClick(mpFrame, ID_RBN_OPEN_PROJECT);
        EXPECT_EQ(mpMain->mStrProjectPath, strBefore);
    }
}

TEST_F(FrameMainTest, TheRibbonHoldsEveryToolWithItsIconAndHelp) {
    RibbonUI_cls* pRibbon = mpFrame->GetPCRibbon();
    ASSERT_EQ(pRibbon->mVPCPage.size(), 2u);
    EXPECT_EQ(pRibbon->mVPCPage[0]->GetLabel(), "Home");
    EXPECT_EQ(pRibbon->mVPCPage[1]->GetLabel(), "Help");
    std::vector<wxString> vPanes;
    for (wxRibbonPanel* pPanel : pRibbon->mVPCPage[0]->mVPCPanel)
        vPanes.push_back(pPanel->GetLabel());
    EXPECT_EQ(vPanes, std::vector<wxString>({"Home", "Data", "Object", "Preference"}));

    EXPECT_EQ(RibbonUI_cls::GetStrToolLabel(ID_RBN_HEIGHTFIELD), "Add:Height Field");
    EXPECT_EQ(RibbonUI_cls::GetStrToolLabel(ID_RBN_VOLUMEBOX), "Add:Volume Box");

    SCOPED_TRACE("the tool-tip tool follows the preference and switches the help texts");
    wxRibbonToolBar* pHelp = pRibbon->GetToolBar(ID_RBN_TOOLTIP);
    ASSERT_NE(pHelp, nullptr);
    pRibbon->UpdateRibbonHelp(true);
    pRibbon->UpdateRibbonState();
    EXPECT_TRUE(pHelp->GetToolState(ID_RBN_TOOLTIP));
    EXPECT_EQ(pHelp->GetToolHelpString(ID_RBN_HELP), "Help");
    SendRibbonClick(mpFrame, ID_RBN_TOOLTIP);
    EXPECT_FALSE(pRibbon->GetToolTipPreference());
    EXPECT_EQ(pHelp->GetToolHelpString(ID_RBN_HELP), "");
    pRibbon->UpdateRibbonState();
    EXPECT_FALSE(pHelp->GetToolState(ID_RBN_TOOLTIP));
    SendRibbonClick(mpFrame, ID_RBN_TOOLTIP);
    pRibbon->UpdateRibbonState();
    EXPECT_TRUE(pHelp->GetToolState(ID_RBN_TOOLTIP));
    EXPECT_EQ(pHelp->GetToolHelpString(ID_RBN_HELP), "Help");
}

TEST_F(FrameMainTest, EveryIconTagHasADrawnPicture) {
    MyArtProvider art(ORV_SOURCE_DIR);
    ASSERT_FALSE(art.GetStrIconDir().empty());
    for (const wxString& strTag : MyArtProvider::GetTags()) {
        SCOPED_TRACE(strTag.ToStdString());
        EXPECT_TRUE(wxFileExists(art.GetStrIconDir() + "/" + strTag + ".png"));
        wxBitmap bmp = wxArtProvider::GetBitmap(strTag, wxART_OTHER, wxSize(20, 20));
        ASSERT_TRUE(bmp.IsOk());
        EXPECT_EQ(bmp.GetWidth(), 20);
    }
    EXPECT_FALSE(wxArtProvider::GetBitmap("wxART_NO_SUCH_TAG_HERE", wxART_OTHER, wxSize(16, 16)).IsOk());
}

TEST_F(FrameMainTest, WorkersReachTheMainThreadByMenuEvents) {
    SendMenu(mpFrame, ID_MENU_FROM_SUB_THREAD);
    EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>({"TIMELINE"}));

    LogCapture_cls log;
    std::thread worker([] { LuaErrorSink_cls::Post("attempt to index a nil value"); });
    worker.join();
    EXPECT_FALSE(log.Contains("attempt to index a nil value")); // queued, not yet delivered
    RunPendingEvents();
    EXPECT_TRUE(log.Contains("attempt to index a nil value"));
    EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>({"TIMELINE", "CONSOLE"}));
}

TEST_F(FrameMainTest, TheTitleNamesTheVersionOrTheProject) {
    mpMain->mStrProjectPath.clear();
    mpFrame->UpdateTitle();
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver 0.47 (2018/9/27)");
    mpMain->mStrProjectPath = "/p/a.ovp";
    mpMain->mbProjectFileCurrent = false;
    mpFrame->UpdateTitle();
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver 0.47 (2018/9/27)"); // left alone without the flag
    mpMain->mbProjectFileCurrent = true;
    mpFrame->UpdateTitle();
    EXPECT_EQ(mpFrame->GetTitle(), "Orvantis4 ver test - /p/a.ovp");
}
