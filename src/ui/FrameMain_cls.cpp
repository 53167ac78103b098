#include "FrameMain_cls.h"

#include "GLInfo_cls.h"

#include "LogWindow_cls.h"
#include "LuaErrorSink_cls.h"
#include "Main_cls.h"
#include "PreferenceDialog_cls.h"
#include "Preference_cls.h"
#include "ReadEventSink_cls.h"
#include "RibbonUI_cls.h"
#include "SceneCommand_cls.h"
#include "SceneObjCtrl_cls.h"
#include "Shortcut_cls.h"
#include "SplittableWindow_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"
#include "wxLogGuiEX.h"
#include "wxPanelEX.h"

#include <wx/aboutdlg.h>
#include <wx/accel.h>
#include <wx/bmpbuttn.h>
#include <wx/filedlg.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/gauge.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/statusbr.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

const int FrameMain_cls::msStatusWidths[6] = {180, 180, 180, 180, -1, 120};
wxString FrameMain_cls::msStrHelpURL = "Resource/Help.html";
const wxString FrameMain_cls::msStrIconTag = "wxART_PARTICLE";

// Lua texts from any thread reach the log as menu event 6163 to this frame.
class FrameMain_cls::LuaSink_cls : public LuaErrorSink_cls {
public:
    explicit LuaSink_cls(wxEvtHandler* pTarget) : mpTarget(pTarget) {}
    void PostLuaError(const wxString& strText) override {
        auto* pEvent = new wxCommandEvent(wxEVT_MENU, ID_MENU_LOG);
        pEvent->SetString(strText.Clone());
        wxQueueEvent(mpTarget, pEvent);
    }

private:
    wxEvtHandler* mpTarget;
};

// A finished read from any reader thread reaches this frame as menu event 6043.
class FrameMain_cls::ReadSink_cls : public ReadEventSink_cls {
public:
    explicit ReadSink_cls(wxEvtHandler* pTarget) : mpTarget(pTarget) {}
    void PostReadFinished() override {
        wxQueueEvent(mpTarget, new wxCommandEvent(wxEVT_MENU, ID_MENU_FROM_SUB_THREAD));
    }
    // The progress gauge of the status bar; the abort button is polled, since its click cannot be
    // delivered while the main thread waits.
    void ShowReadProgress(int percent, bool bDone) override {
        auto* pFrame = static_cast<FrameMain_cls*>(mpTarget);
        pFrame->SetGauge(percent, bDone);
        pFrame->CheckAbortion();
        if (TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
            pFrame->SetStatusAborted();
    }

private:
    wxEvtHandler* mpTarget;
};

FrameMain_cls::FrameMain_cls(const wxString& strTitle, Main_cls* pMain, int x, int y, int width, int height)
    : wxFrame(nullptr, wxID_ANY, strTitle, wxPoint(x, y), wxSize(width, height)), mpCMain(pMain),
      mStrBaseTitle(strTitle) {
    mpCRibbon = std::make_unique<RibbonUI_cls>(this);
    mpCSWindowTop = new SplittableWindow_cls(this);
    mpCSizer = new wxBoxSizer(wxVERTICAL);
    mpCSizer->Add(mpCRibbon->GetBar(), 0, wxEXPAND);
    mpCSizer->Add(mpCSWindowTop, 1, wxEXPAND);
    SetSizer(mpCSizer);
    mpCSWindowTop->Bind(wxEVT_KEY_DOWN, &FrameMain_cls::OnKeyDown, this);

    wxStatusBar* pStatus = CreateStatusBar(6);
    // The memory field is as wide as its longest usual text in the status bar's font.
    int vWidths[6];
    std::copy(std::begin(msStatusWidths), std::end(msStatusWidths), vWidths);
    vWidths[5] = std::max(vWidths[5], pStatus->GetTextExtent("99999MB 99999MB(Tex)").x + 24);
    pStatus->SetStatusWidths(6, vWidths);
    // The fields start empty: every text in them is meant for the user.
    for (int i = 0; i < 6; ++i)
        pStatus->SetStatusText(wxString(), i);
    pStatus->SetStatusText("Not Recording", 4);
    // A click on the message field opens the log window with every line so far.
    pStatus->Bind(wxEVT_LEFT_DOWN, [this, pStatus](wxMouseEvent& event) {
        wxRect rect;
        if (pStatus->GetFieldRect(0, rect) && rect.Contains(event.GetPosition()))
            ShowLogWindow();
        event.Skip();
    });
    mpCGauge = new wxGauge(pStatus, wxID_ANY, 100);
    mpCGaugeRecord = new wxGauge(pStatus, wxID_ANY, 100);
    mpCBtnAbort = new wxBitmapButton(pStatus, ID_BTN_ABORT,
                                     GetBitmapFromTag("wxART_ABORT", wxSize(16, 16), "wxART_OTHER_C"),
                                     wxDefaultPosition, wxSize(16, 16), wxBORDER_NONE);
    pStatus->Bind(wxEVT_SIZE, &FrameMain_cls::OnSizeFrameMain, this);

    // The scene tools act through the scene controller; they report "not available" while
    // there is none.
    mFuncSceneCommand = [this](int id) {
        if (id == ID_RBN_GL_INFO) {
            ShowGLInfo();
            return true;
        }
        if (id == ID_RBN_PREFERENCE) {
            PreferenceDialog_cls::GetInstance(this)->Show();
            PreferenceDialog_cls::GetInstance(this)->Raise();
            return true;
        }
        return SceneCommand_cls::ProcRibbonCommand(id);
    };
    mFuncShortcutKey = [](wxKeyEvent& event, FrameMain_cls* pFrame) {
        if (GpCShortcut)
            GpCShortcut->ProcShortcutKey(event, pFrame);
    };
    // The data viewers of the scene: memory sum, eviction and read-ahead of the idle loop. The
    // controller is looked up at each call, since it is made after this window.
    mFuncSceneMemoryMB = [] {
        int count = 0;
        return GpCSceneObjCtrl ? static_cast<long long>(GpCSceneObjCtrl->GetTotalUsedMemoryMB(count)) : 0LL;
    };
    mFuncReleaseMemory = [] {
        if (GpCSceneObjCtrl)
            GpCSceneObjCtrl->ReleaseMemory();
    };
    mFuncPrefetch = [] {
        if (GpCSceneObjCtrl)
            GpCSceneObjCtrl->Prefetch();
    };
    SetIcon(GetProgramIcon());
    BindEvents();
    SetAccelerators();
    Layout();
    wxSizeEvent sizeEvent(pStatus->GetSize());
    OnSizeFrameMain(sizeEvent);

    if (mpCMain) {
        if (mpCMain->mVPFrameMain.empty()) {
            mpCLuaSink = std::make_unique<LuaSink_cls>(this);
            LuaErrorSink_cls::Install(mpCLuaSink.get());
            mpCReadSink = std::make_unique<ReadSink_cls>(this);
            ReadEventSink_cls::Install(mpCReadSink.get());
        }
        mpCMain->AddFrame(this);
    }
}

FrameMain_cls::~FrameMain_cls() {
    if (mpCLuaSink && LuaErrorSink_cls::Get() == mpCLuaSink.get())
        LuaErrorSink_cls::Install(nullptr);
    if (mpCReadSink && ReadEventSink_cls::Get() == mpCReadSink.get())
        ReadEventSink_cls::Install(nullptr);
    if (mpCMain && GCClassProvider == mpCMain)
        mpCMain->RemoveFrame(this);
}

void FrameMain_cls::BindEvents() {
    Bind(wxEVT_IDLE, &FrameMain_cls::OnIdle, this);
    Bind(wxEVT_CLOSE_WINDOW, &FrameMain_cls::OnClose, this);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuCommon, this, ID_MENU_COMMON_FIRST, ID_MENU_COMMON_LAST);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuRecent, this, ID_MENU_RECENT_FIRST, ID_MENU_RECENT_LAST);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuSplitterSize, this, ID_MENU_SPLITTER_SIZE);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuFromSubThread, this, ID_MENU_FROM_SUB_THREAD);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuLog, this, ID_MENU_LOG);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuShowLog, this, ID_MENU_SHOW_LOG);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuQuit, this, wxID_EXIT);
    Bind(wxEVT_MENU, &FrameMain_cls::OnMenuClearCache, this, ID_MENU_CLEAR_TEXTURE_CACHE,
         ID_MENU_CLEAR_HF_VBO);
    Bind(wxEVT_BUTTON, &FrameMain_cls::OnButtonAbort, this, ID_BTN_ABORT);

    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnOpenProject, this, ID_RBN_OPEN_PROJECT);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnOpenRecent, this, ID_RBN_OPEN_RECENT);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSaveProject, this, ID_RBN_SAVE_PROJECT);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSaveProjectAs, this, ID_RBN_SAVE_PROJECT_AS);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnUndo, this, ID_RBN_UNDO);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnRedo, this, ID_RBN_REDO);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnToolTip, this, ID_RBN_TOOLTIP);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnInfo, this, ID_RBN_INFO);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnHelp, this, ID_RBN_HELP);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnStatusInfo, this, ID_RBN_STATUS_INFO);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSceneCommand, this, ID_RBN_SCENE);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSceneCommand, this, ID_RBN_PREFERENCE);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSceneCommand, this, ID_RBN_BOX,
         ID_RBN_HEIGHTFIELD);
    Bind(wxEVT_RIBBONTOOLBAR_CLICKED, &FrameMain_cls::OnRbnSceneCommand, this, ID_RBN_GL_INFO);

    Bind(wxEVT_RIBBONTOOLBAR_DROPDOWN_CLICKED, &FrameMain_cls::OnDropRecent, this, ID_RBN_OPEN_RECENT);
    Bind(wxEVT_RIBBONTOOLBAR_DROPDOWN_CLICKED, &FrameMain_cls::OnDropSaveFile, this, ID_RBN_SAVE_PROJECT);
    Bind(wxEVT_RIBBONTOOLBAR_DROPDOWN_CLICKED, &FrameMain_cls::OnDropCache, this, ID_RBN_CACHE);
    Bind(wxEVT_RIBBONTOOLBAR_DROPDOWN_CLICKED, &FrameMain_cls::OnDropObjects, this, ID_RBN_NEW_OBJ);
    Bind(wxEVT_RIBBONTOOLBAR_DROPDOWN_CLICKED, &FrameMain_cls::OnDropInfo, this, ID_RBN_INFO);
}

void FrameMain_cls::SetAccelerators() {
    // The frame's table serves every panel inside it. Each key is the menu mirror of its ribbon
    // tool, so it takes the same road as the click.
    const int mirror = ID_MENU_MIRROR_OFFSET;
    wxAcceleratorEntry vEntries[] = {
        {wxACCEL_CTRL, 'O', ID_RBN_OPEN_PROJECT + mirror},
        {wxACCEL_CTRL, 'S', ID_RBN_SAVE_PROJECT + mirror},
        {wxACCEL_CTRL | wxACCEL_SHIFT, 'S', ID_RBN_SAVE_PROJECT_AS + mirror},
        {wxACCEL_CTRL, 'Z', ID_RBN_UNDO + mirror},
        {wxACCEL_CTRL, 'Y', ID_RBN_REDO + mirror},
        {wxACCEL_CTRL, 'Q', wxID_EXIT},
    };
    SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(std::size(vEntries)), vEntries));
}

// ---- FrameHost_cls ------------------------------------------------------------------------

void FrameMain_cls::UpdatePanels(const wxString& strPanel) {
    mpCRibbon->UpdateRibbonState();
    if (mpCSWindowTop)
        mpCSWindowTop->UpdatePanels(strPanel, false);
}

void FrameMain_cls::ProcAfterMath(const wxString& strWhat, const wxString& strArg) {
    if (mpCSWindowTop)
        mpCSWindowTop->ProcAfterMath(strWhat, strArg);
}

bool FrameMain_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    if (strHead != "FrameMain")
        return false;
    ProceedParse(stream, strRest);
    return true;
}

void FrameMain_cls::Serialize(wxString& strOut, int index) {
    wxSize size = GetSize();
    strOut += wxString::Format("FrameMain::%d::%d::%d\n", index, size.x, size.y);
    if (mpCSWindowTop)
        mpCSWindowTop->Serialize(strOut);
    strOut += "FrameMain::Close\n";
}

void FrameMain_cls::UpdateTitle() {
    if (!mpCMain)
        return;
    static const wxString strMark = " *";
    wxString strTitle = GetTitle();
    if (strTitle.EndsWith(strMark))
        strTitle.RemoveLast(strMark.length());
    if (mpCMain->mStrProjectPath.empty())
        strTitle = "Orvantis4 ver " + Main_cls::msStrVersion;
    else if (mpCMain->mbProjectFileCurrent)
        strTitle = mStrBaseTitle + " - " + mpCMain->mStrProjectPath;
    // The mark goes at the end, so that the title still starts with the program's name.
    mbTitleModified = mpCMain->IsProjectModified();
    if (mbTitleModified)
        strTitle += strMark;
    SetTitle(strTitle);
}

void FrameMain_cls::CloseWindow() {
    Destroy();
}

void FrameMain_cls::SetBusy(bool bBusy) {
    if (bBusy)
        wxBeginBusyCursor();
    else if (wxIsBusy())
        wxEndBusyCursor();
}

wxString FrameMain_cls::AskFilePath(const wxString& strTitle, const wxString& strFilter,
                                    const wxString& strStart, bool bSave) {
    if (mFuncAskFilePath)
        return mFuncAskFilePath(strTitle, strFilter, strStart, bSave);
    wxString strDir, strName;
    if (!strStart.empty() && strStart != "NONE") {
        wxFileName fn(strStart);
        strDir = fn.GetPath();
        strName = fn.GetFullName();
    }
    long style = bSave ? (wxFD_SAVE | wxFD_OVERWRITE_PROMPT) : (wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    wxFileDialog dialog(this, strTitle, strDir, strName, strFilter, style);
    if (dialog.ShowModal() != wxID_OK)
        return wxString();
    return dialog.GetPath();
}

int FrameMain_cls::AskUser(const wxString& strTitle, const wxString& strMessage,
                           const std::vector<wxString>& vStrAnswers) {
    if (mFuncAskUser)
        return mFuncAskUser(strTitle, strMessage, vStrAnswers);
    if (vStrAnswers.empty() || vStrAnswers.size() > 3)
        return -1;
    // The answers become the buttons, in order; each label's first letter is its key.
    std::vector<wxString> vStrLabels;
    for (const wxString& str : vStrAnswers)
        vStrLabels.push_back("&" + str);
    long style = 0;
    switch (vStrAnswers.size()) {
    case 1:
        style = wxOK | wxICON_ERROR;
        break;
    case 2:
        style = wxYES_NO | wxICON_QUESTION;
        break;
    default:
        style = wxYES_NO | wxCANCEL | wxICON_WARNING;
        break;
    }
    wxMessageDialog dialog(this, strMessage, strTitle, style);
    if (vStrAnswers.size() == 1)
        dialog.SetOKLabel(vStrLabels[0]);
    else if (vStrAnswers.size() == 2)
        dialog.SetYesNoLabels(vStrLabels[0], vStrLabels[1]);
    else
        dialog.SetYesNoCancelLabels(vStrLabels[0], vStrLabels[1], vStrLabels[2]);
    switch (dialog.ShowModal()) {
    case wxID_OK:
    case wxID_YES:
        return 0;
    case wxID_NO:
        return 1;
    case wxID_CANCEL:
        return vStrAnswers.size() == 3 ? 2 : -1;
    default:
        return -1;
    }
}

// ---- log ----------------------------------------------------------------------------------

void FrameMain_cls::ShowNewLogLines() {
    wxLogGuiEX* pLog = GCClassProvider ? GpCwxLogGuiEX : nullptr;
    if (!pLog || mbShowingNotice || pLog->GetLastSerial() == mLogSerial)
        return;
    std::vector<wxLogGuiEX::Line_cls> vLines = pLog->GetLinesAfter(mLogSerial);
    mLogSerial = pLog->GetLastSerial();
    if (vLines.empty())
        return;
    // The status bar has one line: the first line of the newest text.
    const wxLogGuiEX::Line_cls& last = vLines.back();
    SetStatusText(LogWindow_cls::GetStrLevel(last.mLevel) + last.mStrText.BeforeFirst('\n'), 0);
    if (mpCLogWindow)
        mpCLogWindow->AppendLines(vLines);
    wxString strErrors;
    for (const wxLogGuiEX::Line_cls& line : vLines)
        if (line.mLevel <= wxLOG_Error)
            strErrors += (strErrors.empty() ? "" : "\n\n") + line.mStrText;
    if (strErrors.empty())
        return;
    mbShowingNotice = true;
    AskUser("Error", strErrors, {"OK"});
    mbShowingNotice = false;
}

void FrameMain_cls::ShowLogWindow() {
    if (!mpCLogWindow) {
        mpCLogWindow = new LogWindow_cls(this);
        if (GCClassProvider && GpCwxLogGuiEX)
            mpCLogWindow->AppendLines(GpCwxLogGuiEX->GetLinesAfter(0));
    }
    mpCLogWindow->Show();
    mpCLogWindow->Raise();
}

void FrameMain_cls::OnMenuShowLog(wxCommandEvent&) {
    ShowLogWindow();
}

// ---- status bar ---------------------------------------------------------------------------

void FrameMain_cls::OnSizeFrameMain(wxSizeEvent& event) {
    event.Skip();
    wxStatusBar* pStatus = GetStatusBar();
    if (!pStatus || !mpCGauge)
        return;
    wxRect rect1, rect3;
    if (!pStatus->GetFieldRect(1, rect1) || !pStatus->GetFieldRect(3, rect3))
        return;
    mpCGauge->SetSize(rect1.x, rect1.y + 2, rect1.width - 20, rect1.height - 4);
    mpCGaugeRecord->SetSize(rect3.x, rect3.y + 2, rect3.width, rect3.height - 4);
    mpCBtnAbort->SetSize(rect1.x + rect1.width - 16, rect1.y + 2, 16, 16);
    mpCGauge->SetRange(100);
    mpCGaugeRecord->SetRange(100);
}

void FrameMain_cls::SetStatusAborted() {
    SetStatusText("Aborted", 4);
}

void FrameMain_cls::SetGaugeValue(wxGauge* pGauge, int value) {
    // The over-range write makes the native gauge repaint at once instead of animating.
    pGauge->SetRange(101);
    pGauge->SetValue(101);
    pGauge->SetRange(100);
    pGauge->SetValue(value);
}

void FrameMain_cls::SetGauge(int percent, bool bForce) {
    static wxStopWatch sWatch;
    static long sPrevTime = -msGaugeIntervalMillis;
    if (!bForce) {
        long now = sWatch.Time();
        if (now - sPrevTime < msGaugeIntervalMillis)
            return;
        sPrevTime = now;
    }
    SetGaugeValue(mpCGauge, percent);
    mpCGauge->Refresh();
    mpCGauge->Update();
    SetStatusText(wxString::Format("%d%%", percent), 2);

    TimeCtrl_cls* pTime = GpCTimeCtrl;
    bool bRunning = pTime && pTime->IsOutputRunning();
    bool bWritten = pTime && pTime->mbFrameWritten;
    wxString strRecord;
    if (!bRunning && !bWritten) {
        strRecord = "Not Recording";
        SetGaugeValue(mpCGaugeRecord, 100);
    } else if (bRunning && !bWritten) {
        strRecord = "Recording...";
    } else {
        double outputPercent = pTime->GetOutputPercent();
        strRecord = pTime->GetStrRecordInfo(outputPercent);
        SetGaugeValue(mpCGaugeRecord, static_cast<int>(outputPercent));
    }
    mpCGaugeRecord->Refresh();
    mpCGaugeRecord->Update();
    SetStatusText(strRecord, 4);
}

void FrameMain_cls::CheckAbortion() {
    wxMouseState state = wxGetMouseState();
    if (state.LeftIsDown() && mpCBtnAbort->IsShown() &&
        mpCBtnAbort->GetScreenRect().Contains(state.GetPosition()))
        TimeCtrl_cls::msbForceAbort = true;
}

void FrameMain_cls::OnButtonAbort(wxCommandEvent&) {
    TimeCtrl_cls::msbForceAbort = true;
}

// ---- panel tree ---------------------------------------------------------------------------

wxPanelEX* FrameMain_cls::GetPCActiveView3D() {
    return mpCSWindowTop ? mpCSWindowTop->GetPCActiveView3D() : nullptr;
}

wxString FrameMain_cls::GetStrWindows() {
    wxString strOut;
    if (mpCSWindowTop)
        mpCSWindowTop->Serialize(strOut);
    return strOut;
}

void FrameMain_cls::ReplaceTopSplitterbleWindow(SplittableWindow_cls* pNode) {
    if (!pNode || pNode == mpCSWindowTop)
        return;
    SplittableWindow_cls* pOld = mpCSWindowTop;
    pNode->Reparent(this);
    pNode->mpCParentSWindow = nullptr;
    pNode->mbTop = true;
    pNode->Show();
    if (pOld && mpCSizer->Replace(pOld, pNode)) {
        // The old top forgets the node it held before it goes.
        if (pOld->GetWindow1() == pNode || pOld->GetWindow2() == pNode)
            pOld->Initialize(nullptr);
        pOld->mpCChildSWindow[0] = pOld->mpCChildSWindow[1] = nullptr;
        pOld->Destroy();
    } else {
        if (pOld)
            pOld->Destroy();
        mpCSizer->Add(pNode, 1, wxEXPAND);
    }
    mpCSWindowTop = pNode;
    pNode->Bind(wxEVT_KEY_DOWN, &FrameMain_cls::OnKeyDown, this);
    Layout();
}

void FrameMain_cls::MakeSinglePanel() {
    auto* pTop = new SplittableWindow_cls(static_cast<wxWindow*>(this));
    pTop->GeneratePanel("VIEW3D");
    ReplaceTopSplitterbleWindow(pTop);
    if (mpCSWindowTop)
        mpCSWindowTop->SetMinimumSize();
}

void FrameMain_cls::ProceedParse(std::wistream& stream, const wxString& strRest) {
    wxString strLine = strRest;
    long index = 0, width = 0, height = 0;
    PopStrItemFromStrLine(strLine, "::").ToLong(&index);
    PopStrItemFromStrLine(strLine, "::").ToLong(&width);
    PopStrItemFromStrLine(strLine, "::").ToLong(&height);
    if (mpCSWindowTop) {
        mpCSizer->Detach(mpCSWindowTop);
        mpCSWindowTop->Destroy();
        mpCSWindowTop = nullptr;
    }
    if (width > 0 && height > 0)
        SetSize(static_cast<int>(width), static_cast<int>(height));
    std::wstring line;
    while (std::getline(stream, line)) {
        wxString strItem(line);
        wxString strFirst = PopStrItemFromStrLine(strItem, "::");
        if (strFirst == "SplittableWindow") {
            wxString strSecond = PopStrItemFromStrLine(strItem, "::");
            if (mpCSWindowTop) {
                mpCSizer->Detach(mpCSWindowTop);
                mpCSWindowTop->Destroy();
            }
            mpCSWindowTop = new SplittableWindow_cls(static_cast<wxWindow*>(this));
            mpCSWindowTop->Bind(wxEVT_KEY_DOWN, &FrameMain_cls::OnKeyDown, this);
            mpCSizer->Add(mpCSWindowTop, 1, wxEXPAND);
            mpCSWindowTop->ReadStrLine(stream, strSecond, strItem);
            Layout();
            Refresh();
        } else if (strFirst == "FrameMain" && PopStrItemFromStrLine(strItem, "::") == "Close") {
            break;
        }
    }
    // A block that held no tree (empty, or cut short before it) would leave a window without any
    // panel and no bar to make one: it gets the single view instead.
    if (!mpCSWindowTop)
        MakeSinglePanel();
    if (mpCSWindowTop)
        mpCSWindowTop->SetMinimumSize();
}

// ---- idle loop ----------------------------------------------------------------------------

void FrameMain_cls::OnIdle(wxIdleEvent&) {
    static bool sbInitIdle = true;
    if (sbInitIdle) {
        sbInitIdle = false;
        ProcInitIdle();
        return;
    }
    ProcIdle();
}

void FrameMain_cls::ProcInitIdle() {
    if (!mpCMain || !mpCMain->InitLayout())
        MakeSinglePanel();
    Show(true);
    if (mpCMain) {
        // The start-up figures: the services on the worker, and the whole start to this point.
        printf("Orvantis4 start-up: services %d ms, first idle with layout %d ms\n", mpCMain->mMillisParallel,
               mpCMain->mMillisLayout);
        fflush(stdout);
    }
}

bool FrameMain_cls::ProcIdle() {
    // Kept for the key handler, not shown: window names are no words for the user.
    if (wxWindow* pFocus = wxWindow::FindFocus())
        mStrFocusName = pFocus->GetName();
    if (mpCMain && mpCMain->IsProjectModified() != mbTitleModified)
        UpdateTitle();
    ShowNewLogLines();

    wxStopWatch watch;
    bool bPlaying = GpCTimeCtrl && GpCTimeCtrl->ProcPlay();
    bool bInertia = mpCSWindowTop && mpCSWindowTop->IsInnertiaExist();
    if (mpCMain)
        mpCMain->UpdatePanelsFlush();

    long long sceneMB = mFuncSceneMemoryMB ? mFuncSceneMemoryMB() : 0;
    long long textureMB = mFuncTextureMemoryMB ? mFuncTextureMemoryMB() : 0;
    SetStatusText(wxString::Format("%lldMB %lldMB(Tex)", sceneMB, textureMB), 5);

    bool bReleased = false;
    if (GpCPreference && sceneMB > GpCPreference->GetMemoryLimitMB()) {
        if (mFuncReleaseMemory)
            mFuncReleaseMemory();
        bReleased = true;
    }

    bool bAwake = bPlaying || bInertia;
    if (bAwake) {
        long rest = msIdlePassMillis - static_cast<long>(watch.TimeInMicro().GetValue() / 1000);
        if (rest > 0)
            wxMilliSleep(rest);
        PostMenuEvent(this, ID_MENU_WAKE_IDLE);
    } else {
        mpCRibbon->UpdateRibbonState();
        if (mpCSWindowTop)
            mpCSWindowTop->UpdatePanels("IDLE", false);
        if (!bReleased && mFuncPrefetch)
            mFuncPrefetch();
    }
    TimeCtrl_cls::msbForceAbort = false;
    return bAwake;
}

// ---- keys and closing ---------------------------------------------------------------------

void FrameMain_cls::OnKeyDown(wxKeyEvent& event) {
    // Text widgets carry the window name "text", which the idle pass keeps as the focus name: so
    // typing never reaches the shortcuts. Deliberate; a text widget must keep that name.
    if (mStrFocusName != "text") {
        if (mFuncShortcutKey)
            mFuncShortcutKey(event, this);
        if (event.GetKeyCode() == WXK_ESCAPE) {
            ShowFullScreen(false, wxFULLSCREEN_ALL);
            mpCRibbon->GetBar()->Show();
            Layout();
        }
    }
    event.Skip();
}

void FrameMain_cls::OnClose(wxCloseEvent& event) {
    // Unsaved changes are offered for saving; Cancel keeps the window open.
    if (mpCMain && event.CanVeto() && !mpCMain->CheckUnsavedChanges()) {
        event.Veto();
        return;
    }
    if (mpCMain)
        mpCMain->ProcAfterMath("Quit", "");
    event.Skip();
}

void FrameMain_cls::OnMenuQuit(wxCommandEvent&) {
    // The same road as the close button.
    Close(false);
}

// ---- menu events --------------------------------------------------------------------------

void FrameMain_cls::OnMenuCommon(wxCommandEvent& event) {
    // One handler per command: the popup item comes back as the click of its ribbon tool.
    auto* pEvent =
        new wxRibbonToolBarEvent(wxEVT_RIBBONTOOLBAR_CLICKED, event.GetId() - ID_MENU_MIRROR_OFFSET);
    pEvent->SetEventObject(this);
    GetEventHandler()->QueueEvent(pEvent);
}

void FrameMain_cls::OnMenuRecent(wxCommandEvent& event) {
    int index = event.GetId() - ID_MENU_RECENT_FIRST;
    if (!mpCMain || index < 0 || index > 9)
        return;
    mpCMain->OpenRecentProject(index);
}

void FrameMain_cls::OnMenuSplitterSize(wxCommandEvent&) {
    if (mpCSWindowTop)
        mpCSWindowTop->SetMinimumSize();
}

void FrameMain_cls::OnMenuFromSubThread(wxCommandEvent&) {
    if (mpCMain)
        mpCMain->UpdatePanels("TIMELINE");
}

void FrameMain_cls::OnMenuLog(wxCommandEvent& event) {
    // A warning: the status bar and the log window show it, without a box on every frame.
    wxLogWarning("%s", event.GetString());
    if (mpCMain)
        mpCMain->UpdatePanels("CONSOLE");
}

void FrameMain_cls::OnMenuClearCache(wxCommandEvent& event) {
    if (!mFuncSceneCommand || !mFuncSceneCommand(event.GetId()))
        wxLogMessage("%s: not available yet.", RibbonUI_cls::GetStrToolLabel(event.GetId()));
}

// ---- ribbon -------------------------------------------------------------------------------

void FrameMain_cls::OnRbnOpenProject(wxRibbonToolBarEvent&) {
    if (mpCMain)
        mpCMain->OpenProject(wxString());
}

void FrameMain_cls::OnRbnOpenRecent(wxRibbonToolBarEvent&) {
    if (mpCMain)
        mpCMain->OpenRecentProject(0);
}

void FrameMain_cls::OnRbnSaveProject(wxRibbonToolBarEvent&) {
    if (mpCMain)
        mpCMain->SaveProject(1);
}

void FrameMain_cls::OnRbnSaveProjectAs(wxRibbonToolBarEvent&) {
    if (mpCMain)
        mpCMain->SaveProjectAs(1);
}

void FrameMain_cls::OnRbnUndo(wxRibbonToolBarEvent&) {
    if (GpCUndo)
        GpCUndo->Undo();
}

void FrameMain_cls::OnRbnRedo(wxRibbonToolBarEvent&) {
    if (GpCUndo)
        GpCUndo->Redo();
}

void FrameMain_cls::OnRbnToolTip(wxRibbonToolBarEvent&) {
    bool bNew = !mpCRibbon->GetToolTipPreference();
    mpCRibbon->SetToolTipPreference(bNew);
    mpCRibbon->UpdateRibbonHelp(bNew);
}

wxIcon FrameMain_cls::GetProgramIcon() {
    wxIcon icon;
    icon.CopyFromBitmap(GetBitmapFromTag(msStrIconTag, wxSize(32, 32), wxART_OTHER));
    return icon;
}

wxAboutDialogInfo FrameMain_cls::GetAboutInfo() {
    wxAboutDialogInfo info;
    info.SetName("Orvantis4");
    info.SetVersion(Main_cls::msStrVersion);
    info.SetDescription(_("Turns numerical simulation output into images and animations."));
    info.SetIcon(GetProgramIcon());
    return info;
}

void FrameMain_cls::OnRbnInfo(wxRibbonToolBarEvent&) {
    wxAboutBox(GetAboutInfo(), this);
}

void FrameMain_cls::OnRbnHelp(wxRibbonToolBarEvent&) {
    wxString strURL = msStrHelpURL;
    if (!strURL.Contains("://")) {
        // A page of the program's own: found beside the program, whatever the current folder.
        wxFileName fn(mpCMain ? mpCMain->FindResourceFile(strURL) : strURL);
        if (fn.IsRelative() && mpCMain)
            fn.MakeAbsolute(mpCMain->GetStrAppDir());
        fn.MakeAbsolute();
        if (!fn.FileExists()) {
            wxLogError("The help page cannot be opened: \"%s\" does not exist.", fn.GetFullPath());
            return;
        }
        strURL = wxFileName::FileNameToURL(fn);
    }
    if (!(msFuncLaunchBrowser ? msFuncLaunchBrowser(strURL) : wxLaunchDefaultBrowser(strURL)))
        wxLogError("The help page \"%s\" could not be opened: no browser answered.", strURL);
}

void FrameMain_cls::OnRbnStatusInfo(wxRibbonToolBarEvent&) {
    if (!mpCMain)
        return;
    wxString strText = wxString::Format(_("Services made in %d ms; start-up layout after %d ms."),
                                        mpCMain->mMillisParallel, mpCMain->mMillisLayout);
    wxMessageBox(strText, "Status Info", wxOK | wxICON_INFORMATION, this);
}

wxString FrameMain_cls::GetStrGLInfo() {
    if (!GpCGLInfo || GpCGLInfo->mStrVersion.empty())
        return _("No OpenGL context has been made yet: open a 3D view first.");
    wxString strText = "OpenGL: " + GpCGLInfo->mStrVersion + "\nGLSL: " + GpCGLInfo->mStrGLSLVersion + "\n";
    GpCGLInfo->GetAllGLInfo(strText);
    return strText;
}

void FrameMain_cls::ShowGLInfo() {
    AskUser("OpenGL Info", GetStrGLInfo(), {_("OK")});
}

void FrameMain_cls::OnRbnSceneCommand(wxRibbonToolBarEvent& event) {
    if (!mFuncSceneCommand || !mFuncSceneCommand(event.GetId()))
        wxLogMessage("%s: not available yet.", RibbonUI_cls::GetStrToolLabel(event.GetId()));
}

void FrameMain_cls::PopupDropMenu(wxRibbonToolBarEvent& event, wxMenu* pMenu) {
    std::unique_ptr<wxMenu> menu(pMenu);
    event.PopupMenu(menu.get());
}

wxMenu* FrameMain_cls::CreateRecentMenu() {
    auto* pMenu = new wxMenu();
    if (!mpCMain)
        return pMenu;
    for (int i = 0; i < 10; ++i) {
        wxString strPath = mpCMain->GetStrRecent(i);
        if (!strPath.empty())
            pMenu->Append(ID_MENU_RECENT_FIRST + i, strPath);
    }
    return pMenu;
}

wxMenu* FrameMain_cls::CreateSaveMenu() {
    auto* pMenu = new wxMenu();
    auto* pItem = new wxMenuItem(pMenu, ID_RBN_SAVE_PROJECT_AS + ID_MENU_MIRROR_OFFSET, _("Save Project as"));
    pItem->SetBitmap(GetBitmapFromTag("wxART_SAVE_FILE_AS", wxSize(16, 16), wxART_MENU));
    pMenu->Append(pItem);
    return pMenu;
}

wxMenu* FrameMain_cls::CreateCacheMenu() {
    auto* pMenu = new wxMenu();
    pMenu->Append(ID_MENU_CLEAR_TEXTURE_CACHE, RibbonUI_cls::GetStrToolLabel(ID_MENU_CLEAR_TEXTURE_CACHE));
    pMenu->Append(ID_MENU_CLEAR_HF_VBO, RibbonUI_cls::GetStrToolLabel(ID_MENU_CLEAR_HF_VBO));
    return pMenu;
}

wxMenu* FrameMain_cls::CreateObjectsMenu() {
    auto* pMenu = new wxMenu();
    const int vId[] = {ID_RBN_BOX,         ID_RBN_SPHERE,     ID_RBN_PLANE,      ID_RBN_CONE,
                       ID_RBN_CYLINDER,    ID_RBN_MESH_OBJ,   ID_RBN_TEXT_OBJ,   ID_RBN_PARALLEL_LIGHT,
                       ID_RBN_POINT_LIGHT, ID_RBN_SPOT_LIGHT, ID_RBN_CAMERA,     ID_RBN_EMPTY,
                       ID_RBN_WORLD,       ID_RBN_VOLUMEBOX,  ID_RBN_ISOSURFACE, ID_RBN_PARTICLE,
                       ID_RBN_STREAMLINE,  ID_RBN_HEIGHTFIELD};
    for (int id : vId) {
        if (id == ID_RBN_MESH_OBJ || id == ID_RBN_PARALLEL_LIGHT || id == ID_RBN_CAMERA ||
            id == ID_RBN_VOLUMEBOX)
            pMenu->AppendSeparator();
        pMenu->Append(id + ID_MENU_MIRROR_OFFSET, RibbonUI_cls::GetStrToolLabel(id));
    }
    return pMenu;
}

wxMenu* FrameMain_cls::CreateInfoMenu() {
    auto* pMenu = new wxMenu();
    pMenu->Append(ID_RBN_GL_INFO + ID_MENU_MIRROR_OFFSET, "OpenGL Info");
    pMenu->Append(ID_RBN_STATUS_INFO + ID_MENU_MIRROR_OFFSET, "Status Info");
    pMenu->Append(ID_MENU_SHOW_LOG, "Show Log");
    return pMenu;
}

void FrameMain_cls::OnDropRecent(wxRibbonToolBarEvent& event) {
    PopupDropMenu(event, CreateRecentMenu());
}

void FrameMain_cls::OnDropSaveFile(wxRibbonToolBarEvent& event) {
    PopupDropMenu(event, CreateSaveMenu());
}

void FrameMain_cls::OnDropCache(wxRibbonToolBarEvent& event) {
    PopupDropMenu(event, CreateCacheMenu());
}

void FrameMain_cls::OnDropObjects(wxRibbonToolBarEvent& event) {
    PopupDropMenu(event, CreateObjectsMenu());
}

void FrameMain_cls::OnDropInfo(wxRibbonToolBarEvent& event) {
    PopupDropMenu(event, CreateInfoMenu());
}
