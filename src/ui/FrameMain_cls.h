// The main window: the ribbon over the tree of split panels, and a six-field status bar with a
// progress gauge, an abort button and a recording gauge. It turns ribbon clicks and menu events
// into calls on the core, owns the idle loop that drives playback and redraw, and reads and
// writes the window layout as lines of the project file. Main thread only, except where a
// member says otherwise.
#pragma once

#include "FrameHost_cls.h"
#include "GetPC_cls.h"
#include "Parser_cls.h"
#include "WidgetCommon_cls.h"

#include <wx/aboutdlg.h>
#include <wx/frame.h>
#include <wx/ribbon/toolbar.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class LogWindow_cls;
class Main_cls;
class RibbonUI_cls;
class SplittableWindow_cls;
class wxBitmapButton;
class wxBoxSizer;
class wxGauge;
class wxPanelEX;

// Menu events with fixed ids: the ways into the main thread and the frame's own commands.
enum FrameMenu_enum {
    ID_MENU_WAKE_IDLE = 6000,       // no handler: it only keeps the idle loop running
    ID_MENU_SPLITTER_SIZE = 6042,   // recompute the minimum pane sizes
    ID_MENU_FROM_SUB_THREAD = 6043, // a worker asks for a timeline refresh
    ID_MENU_LOG = 6163,             // a text for the log, from any thread
    ID_MENU_SHOW_LOG = 6165,        // the log window
    ID_BTN_ABORT = 5154
};

class FrameMain_cls : public wxFrame,
                      public Parser_cls,
                      public WidgetCommon_cls,
                      public GetPC_cls,
                      public FrameHost_cls {
public:
    // Registers itself with the core. Uses no service: it is built while the services are
    // still being made on the start-up worker.
    FrameMain_cls(const wxString& strTitle, Main_cls* pMain, int x, int y, int width, int height);
    ~FrameMain_cls() override;

    // The status bar field widths; the fifth stretches.
    static const int msStatusWidths[6];
    // The idle loop aims at one pass per this many milliseconds while playing or in inertia.
    static constexpr int msIdlePassMillis = 7;
    // The gauges repaint at most this often unless forced.
    static constexpr int msGaugeIntervalMillis = 100;
    // The address the help tool opens in the browser.
    static wxString msStrHelpURL;
    // The program's icon (window, About box, desktop entry): the particle picture.
    static const wxString msStrIconTag;
    // Replaces the system browser, for runs without a desktop; true when the page was opened.
    static inline std::function<bool(const wxString&)> msFuncLaunchBrowser;

    // ---- FrameHost_cls ----
    void UpdatePanels(const wxString& strPanel) override;
    void ProcAfterMath(const wxString& strWhat, const wxString& strArg) override;
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) override;
    void Serialize(wxString& strOut, int index) override;
    void UpdateTitle() override;
    void CloseWindow() override;
    void SetBusy(bool bBusy) override;
    wxString AskFilePath(const wxString& strTitle, const wxString& strFilter, const wxString& strStart,
                         bool bSave) override;
    // The one road of the program's questions and notices to the user: a modal box, or the
    // answer of mFuncAskUser when it is installed.
    int AskUser(const wxString& strTitle, const wxString& strMessage,
                const std::vector<wxString>& vStrAnswers) override;

    // ---- operations used by others ----
    void SetStatusAborted();
    // Rate-limited unless forced; also refreshes the recording state.
    void SetGauge(int percent, bool bForce);
    // Polled from long loops that hold the main thread: a press on the abort button.
    void CheckAbortion();
    wxPanelEX* GetPCActiveView3D();
    // The layout text of the tree.
    wxString GetStrWindows();
    void ReplaceTopSplitterbleWindow(SplittableWindow_cls* pNode);
    // A new tree of one 3D view.
    void MakeSinglePanel();
    // The "FrameMain::<index>::<width>::<height>" block; strRest is what follows the head.
    void ProceedParse(std::wistream& stream, const wxString& strRest);

    // The first idle pass: the start-up layout, or a single 3D view when it cannot be read;
    // then the window shows.
    void ProcInitIdle();
    // Every later idle pass. Returns true when the loop was kept awake (playing or inertia).
    bool ProcIdle();
    // The lines logged since the last call: the newest goes to status field 0 and to the log
    // window, and errors are shown in one notice. Called by the idle pass.
    void ShowNewLogLines();
    // Opens (or raises) the log window with every kept line.
    void ShowLogWindow();
    LogWindow_cls* GetPCLogWindow() const { return mpCLogWindow; }

    SplittableWindow_cls* GetPCTopWindow() const { return mpCSWindowTop; }
    RibbonUI_cls* GetPCRibbon() const { return mpCRibbon.get(); }

    // ---- event handlers (tests call some of them as the events would) ----
    void OnIdle(wxIdleEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnKeyDown(wxKeyEvent& event);
    void OnSizeFrameMain(wxSizeEvent& event);
    void OnMenuCommon(wxCommandEvent& event);
    void OnMenuRecent(wxCommandEvent& event);
    void OnMenuSplitterSize(wxCommandEvent& event);
    void OnMenuFromSubThread(wxCommandEvent& event);
    void OnMenuLog(wxCommandEvent& event);
    void OnMenuShowLog(wxCommandEvent& event);
    void OnMenuQuit(wxCommandEvent& event);
    void OnMenuClearCache(wxCommandEvent& event);
    void OnButtonAbort(wxCommandEvent& event);
    void OnRbnOpenProject(wxRibbonToolBarEvent& event);
    void OnRbnOpenRecent(wxRibbonToolBarEvent& event);
    void OnRbnSaveProject(wxRibbonToolBarEvent& event);
    void OnRbnSaveProjectAs(wxRibbonToolBarEvent& event);
    void OnRbnUndo(wxRibbonToolBarEvent& event);
    void OnRbnRedo(wxRibbonToolBarEvent& event);
    void OnRbnToolTip(wxRibbonToolBarEvent& event);
    void OnRbnInfo(wxRibbonToolBarEvent& event);
    void OnRbnHelp(wxRibbonToolBarEvent& event);
    void OnRbnStatusInfo(wxRibbonToolBarEvent& event);
    // The tools that act on the scene and its services.
    void OnRbnSceneCommand(wxRibbonToolBarEvent& event);
    void OnDropRecent(wxRibbonToolBarEvent& event);
    void OnDropSaveFile(wxRibbonToolBarEvent& event);
    void OnDropCache(wxRibbonToolBarEvent& event);
    void OnDropObjects(wxRibbonToolBarEvent& event);
    void OnDropInfo(wxRibbonToolBarEvent& event);

    // The driver's information of the shared GL context, as the "OpenGL Info" item shows it.
    wxString GetStrGLInfo();
    void ShowGLInfo();

    wxIcon GetProgramIcon();
    // What the About box shows.
    wxAboutDialogInfo GetAboutInfo();

    // The menus of the drop-down tools, as they pop up.
    wxMenu* CreateRecentMenu();
    wxMenu* CreateSaveMenu();
    wxMenu* CreateCacheMenu();
    wxMenu* CreateObjectsMenu();
    wxMenu* CreateInfoMenu();

    // ---- hooks for the parts that later layers bring; each stays empty until installed ----
    std::function<void(wxKeyEvent&, FrameMain_cls*)> mFuncShortcutKey; // Shortcut_cls::ProcShortcutKey
    std::function<long long()> mFuncSceneMemoryMB;   // GetTotalUsedMemoryMB of the scene root
    std::function<long long()> mFuncTextureMemoryMB; // GetUsedMemoryMB of the texture provider
    std::function<void()> mFuncReleaseMemory;        // ReleaseMemory on the scene root
    std::function<void()> mFuncPrefetch;             // Prefetch on the scene root
    // The ribbon and menu commands on the scene and its services (add, duplicate, delete, the
    // scene and preference windows, caches, GL info); true when taken.
    std::function<bool(int id)> mFuncSceneCommand;
    // Replaces the file dialog, for runs without a user.
    std::function<wxString(const wxString&, const wxString&, const wxString&, bool)> mFuncAskFilePath;
    // Replaces the question box (title, message, answers), for runs without a user.
    std::function<int(const wxString&, const wxString&, const std::vector<wxString>&)> mFuncAskUser;

    Main_cls* mpCMain = nullptr; // not owned
    std::unique_ptr<RibbonUI_cls> mpCRibbon;
    SplittableWindow_cls* mpCSWindowTop = nullptr; // a child window
    wxString mStrBaseTitle;
    wxBitmapButton* mpCBtnAbort = nullptr;
    wxGauge* mpCGauge = nullptr;
    wxGauge* mpCGaugeRecord = nullptr;
    wxBoxSizer* mpCSizer = nullptr;
    // The name of the window that held the focus at the last idle pass; text widgets are "text".
    wxString mStrFocusName;

private:
    void BindEvents();
    // The keys that work from every panel: open, save, save as, undo, redo, quit.
    void SetAccelerators();
    // The title marks a modified project; the idle pass refreshes it when that changes.
    bool mbTitleModified = false;
    int64_t mLogSerial = 0;                // the last log line shown
    bool mbShowingNotice = false;          // a notice is up: its own event loop must not show another
    LogWindow_cls* mpCLogWindow = nullptr; // a child window

    void SetGaugeValue(wxGauge* pGauge, int value);
    // The menu of a drop-down tool, popped at the tool.
    void PopupDropMenu(wxRibbonToolBarEvent& event, wxMenu* pMenu);

    class LuaSink_cls;
    std::unique_ptr<LuaSink_cls> mpCLuaSink;
    class ReadSink_cls;
    std::unique_ptr<ReadSink_cls> mpCReadSink;
};
