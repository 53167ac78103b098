// The application core and the registry in one: the main settings, the panel-update queue,
// the project files, the recent files and the one entry point of the command language.
// Main thread only, except where a member says otherwise.
#pragma once

#include "ClassProvider_cls.h"
#include "ConfListContainer_cls.h"
#include "FrameHost_cls.h"
#include "TextHost_cls.h"

#include <wx/stopwatch.h>
#include <wx/string.h>

#include <array>
#include <cstdint>
#include <functional>
#include <istream>
#include <vector>

// True exactly while a file is replayed. It only marks the load: nothing reads it.
extern bool GbLockProjectLoading;

// The receivers of a command line, in the fixed order in which each line is offered to them.
// The same order is the order of writing a project.
enum Receiver_enum {
    RECV_FRAME_MAIN = 0,
    RECV_MAIN,
    RECV_COLOR_PROVIDER,
    RECV_FILTER_CTRL,
    RECV_IMAGE_OUTPUT,
    RECV_PREFERENCE,
    RECV_MOUSE_PREFERENCE,
    RECV_SCENE_OBJ_CTRL,
    RECV_SHORTCUT,
    RECV_TEXT_SHORTCUT,
    RECV_TIME_CTRL,
    RECV_BLUR_CTRL,
    RECV_ENSEMBLE_CTRL,
    RECV_SHADOW_VOLUME_CTRL,
    RECV_COUNT
};

class ParamGroup_cls;
class Parameter_cls;

class Main_cls : public ConfListContainer_cls, public ClassProvider_cls, public TextHost_cls {
public:
    using ReaderFunc = std::function<bool(std::wistream&, const wxString&, const wxString&)>;
    using WriterFunc = std::function<void(wxString&)>;

    // strAppDir empty: the directory of the executable.
    explicit Main_cls(const wxString& strAppDir = wxString());
    ~Main_cls() override;

    static const wxString msStrVersion; // "0.47 (2018/9/27)"

    // ---- panel updates ----
    // Queues a request; a byte-identical request already queued is not queued again.
    void UpdatePanels(const wxString& strPanels) override;
    // Delivers every queued request, last in first out, then drops the read requests of this pass.
    void UpdatePanelsFlush();
    void ProcAfterMath(const wxString& strWhat, const wxString& strArg);

    // ---- command language ----
    // Offers the line to every receiver in the fixed order, whether or not one took it. True when
    // one of them took it; a receiver that knows the head but refuses the line counts as not.
    bool ReadStrCommand(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    // Installs a receiver; adding a subsystem to the language is this one call. The heads are the
    // first items of the lines it answers: a file with none of any receiver's heads is no project.
    void SetReceiver(Receiver_enum slot, ReaderFunc funcRead, WriterFunc funcWrite,
                     const std::vector<wxString>& vStrHeads = {});
    // The same for a service that is a plain configuration list. Not owned.
    void SetReceiverList(Receiver_enum slot, ConfListContainer_cls* pList);
    void ClearReceiver(Receiver_enum slot) { SetReceiver(slot, nullptr, nullptr); }
    // True when some live line of the text starts with a head that a receiver answers.
    bool IsProjectText(const wxString& strText) const;

    // ---- project and settings files ----
    // The user opens a project: unsaved changes are offered for saving first.
    bool OpenProject(wxString strPath);
    bool OpenProjectMain(const wxString& strPath, bool bUser);
    bool SaveProjectMain(const wxString& strPath, int n);
    bool SaveProjectAs(int n);
    // Saves to the current project's file when there is one, otherwise asks for a name.
    bool SaveProject(int n);
    // The recent file in that slot; one that is gone is offered for removal from the list.
    bool OpenRecentProject(int index);
    void RemoveRecent(const wxString& strPath);
    // The project differs from its file: the undo index is not the one of the last save or open.
    bool IsProjectModified() const;
    // Before the project is replaced or the program ends: with unsaved changes the user is asked
    // "Save / Discard / Cancel". True when the caller may go on (saved, discarded or unmodified).
    bool CheckUnsavedChanges();
    // The whole project text, as saving writes it.
    wxString SerializeProject();
    // Loads "Resource/InitLayout.ovp", found as FindResourceFile finds it; false when missing.
    bool InitLayout();
    // The folders that may hold "Resource/", first match wins: the working folder, the program's
    // folder, the install prefix's share folder, and one and two folders above the program (a
    // build tree inside the source tree).
    static std::vector<wxString> GetVStrResourceRoots(const wxString& strAppDir);
    // The absolute path of a file given relative to a resource root ("Resource/Help.html"), or
    // the relative path itself when no root holds it.
    wxString FindResourceFile(const wxString& strRelative) const;
    void PushBackRecent(const wxString& strPath);
    void OpenRecentFile(const wxString& strPath);
    bool SaveRecentFile(const wxString& strPath);
    // Main's own list alone: preferences and shortcuts travel in the project files.
    bool SaveConfigureFile(const wxString& strPath);
    // What a user project load and quitting clear first (the scene, then the filters).
    void AddClearHook(std::function<void()> funcClear) { mVFuncClear.push_back(std::move(funcClear)); }
    // Called by UpdatePanelsFlush when the queue is empty (the read-request queue).
    void SetFlushHook(std::function<void()> funcFlush) { mFuncFlushEnd = std::move(funcFlush); }

    // ---- tag-addressed forwarding to the scene (and later the filter chain) ----
    // These are defined by the scene layer (SceneForwarding.cpp): the core holds no scene types.
    ParamGroup_cls* GetPCParamGroup(const wxString& strTag);
    Parameter_cls* GetPCParameter(const wxString& strTag);
    // The canonical command tag of the group any of whose tags is given; empty when not found.
    wxString GetStrCommandParamGroup(const wxString& strTag);
    void SetParameterConfCommand(const wxString& strTag, const wxString& strKey, bool bValue, bool bAll);
    void SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey, bool bValue);
    void SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey, const wxString& strValue);
    void DeselectKeyFrame(const wxString& strTag);
    void SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd, double tolerance);
    bool ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC);
    void SetSelectedTLKeyTypeCommand(int type, double ease);
    void MoveSelectedTLKeyCommand(double dx, double dy);
    void RescaleParameters(double factor);

    // ---- windows ----
    void AddFrame(FrameHost_cls* pFrame) { mVPFrameMain.push_back(pFrame); }
    void RemoveFrame(FrameHost_cls* pFrame);
    // Not range-checked.
    FrameHost_cls* GetPCFrameHost(int index) { return mVPFrameMain[index]; }

    // ---- TextHost_cls ----
    void PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) override;
    int GetRelativePathMode() override;
    int GetGZQuality() override;

    wxString GetStrAppDir() const { return mStrAppDir; }
    wxString GetStrStartDir() const { return mStrStartDir; }
    wxString GetStrRecent(int index) const { return mStrRecent[index]; }
    wxString GetStrConfigurePath() const { return mStrAppDir + "/Orvantis4Configure.txt"; }
    wxString GetStrRecentPath() const { return mStrAppDir + "/Orvantis4Recent.txt"; }

    // The busy pause of a save: the busy cursor stays up at least this long.
    static inline int msSaveBusyMillis = 500;
    // How many of the dropped lines of a load its message quotes.
    static constexpr int msDroppedLinesShown = 5;
    // The answers of the unsaved-changes question, in the order AskUser gets them.
    enum { ANSWER_SAVE = 0, ANSWER_DISCARD = 1, ANSWER_CANCEL = 2 };

    ConfItemSTR_cls mCLastFileOVP;
    ConfItemSTR_cls mCLastFileIMG;
    ConfItemSTR_cls mCLastFilePARTICLE;
    ConfItemSTR_cls mCLastFileVOLUME;
    ConfItemSTR_cls mCLastFileMESH;
    ConfItemSTR_cls mCLastFileHF;
    ConfItemSTR_cls mCLastFileSTREAM;
    ConfItemSTR_cls mCVersionProject;

    std::vector<wxString> mVStrPanelQueue;
    wxString mStrAppDir;
    wxString mStrStartDir;
    std::array<wxString, 10> mStrRecent; // index 0 is the newest
    wxStopWatch mStopWatch;
    std::vector<FrameHost_cls*> mVPFrameMain; // not owned; index 0 is the first window
    bool mbProjectFileCurrent = false;
    wxString mStrProjectPath;
    int32_t mMillisParallel = 0; // end of the parallel start-up
    int32_t mMillisLayout = 0;   // end of InitLayout
    int32_t mMillisReserved = -1;
    int64_t mReserved0 = -1;
    int64_t mReserved1 = -1;

private:
    void ClearProject();
    // Replays the lines of a project text through the dispatcher with the comment rules. Returns
    // how many lines no receiver took, and keeps the first few of them.
    int ReplayText(const wxString& strText, std::vector<wxString>& vStrDropped);
    FrameHost_cls* GetPCFirstFrame() const { return mVPFrameMain.empty() ? nullptr : mVPFrameMain[0]; }
    static wxString ConvertToWide(const char* pData);

    std::array<ReaderFunc, RECV_COUNT> mVFuncRead;
    std::array<WriterFunc, RECV_COUNT> mVFuncWrite;
    std::array<std::vector<wxString>, RECV_COUNT> mVVStrHeads;
    std::vector<std::function<void()>> mVFuncClear;
    std::function<void()> mFuncFlushEnd;
};
