#include "Main_cls.h"

#include "Parser_cls.h"
#include "Preference_cls.h"
#include "UndoManager_cls.h"
#include "UseGZ_cls.h"

#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/stdpaths.h>
#include <wx/textfile.h>
#include <wx/tokenzr.h>
#include <wx/utils.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>

bool GbLockProjectLoading = false;

const wxString Main_cls::msStrVersion = "0.47 (2018/9/27)";

namespace {

bool IsConfigurePath(const wxString& strPath) {
    return wxMatchWild("*Orvantis4Configure.txt", strPath, false);
}

bool IsLayoutPath(const wxString& strPath) {
    return wxMatchWild("*InitLayout.ovp", strPath, false);
}

// The comment rules of the project language, one line at a time: false for a line that is part
// of a comment. A "/*" opens a block only at the start of a line; the line that holds the "*/"
// is dropped whole, whatever stands before it.
bool IsLiveLine(const wxString& strLine, bool& bInComment) {
    if (bInComment) {
        if (strLine.Contains("*/"))
            bInComment = false;
        return false;
    }
    if (strLine.StartsWith("--"))
        return false;
    if (strLine.StartsWith("/*")) {
        if (!strLine.Mid(2).Contains("*/"))
            bInComment = true;
        return false;
    }
    return true;
}

// Writes the text beside the target and renames it over the target, so a failed write never
// destroys the previous file. On failure the reason is the system's words for the failing step.
bool WriteTextFileSafely(const wxString& strPath, const wxString& strText, wxString* pStrReason = nullptr) {
    wxScopedCharBuffer buf = strText.mb_str(*wxConvFileName);
    // A text the locale cannot hold converts to nothing: write it as UTF-8 instead, which the
    // reader takes when the locale's conversion fails, rather than an empty file.
    if (buf.length() == 0 && !strText.empty())
        buf = strText.utf8_str();
    wxString strTemp = strPath + ".saving~";
    auto fail = [pStrReason](int err) {
        if (pStrReason)
            *pStrReason = wxString(strerror(err));
        return false;
    };
    errno = 0;
    FILE* fp = fopen(strTemp.fn_str(), "wb");
    if (!fp)
        return fail(errno);
    size_t len = buf.length();
    bool bOk = len == 0 || fwrite(buf.data(), 1, len, fp) == len;
    bOk = (fflush(fp) == 0) && bOk;
    int err = errno;
    bOk = (fclose(fp) == 0) && bOk;
    if (!bOk) {
        err = err ? err : errno;
        wxRemoveFile(strTemp);
        return fail(err ? err : EIO);
    }
    errno = 0;
    if (rename(strTemp.fn_str(), strPath.fn_str()) != 0) {
        err = errno;
        wxRemoveFile(strTemp);
        return fail(err);
    }
    return true;
}

} // namespace

Main_cls::Main_cls(const wxString& strAppDir) {
    mStopWatch.Start();
    GCClassProvider = this;
    TextHost_cls::Install(this);

    mStrAppDir = strAppDir;
    if (mStrAppDir.empty())
        mStrAppDir = wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath();
    mStrStartDir = wxGetCwd();

    SetTag("MainConfList");
    Add(&mCLastFileOVP, "LastFileOVP=", "NONE");
    Add(&mCLastFileIMG, "LastFileIMG=", "NONE");
    Add(&mCLastFilePARTICLE, "LastFilePARTICLE=", "NONE");
    Add(&mCLastFileVOLUME, "LastFileVOLUME=", "NONE");
    Add(&mCLastFileMESH, "LastFileMESH=", "NONE");
    Add(&mCLastFileHF, "LastFileHF=", "NONE");
    Add(&mCLastFileSTREAM, "LastFileSTREAM=", "NONE");
    Add(&mCVersionProject, "VersionProject=", msStrVersion);
    for (ConfItemSTR_cls* pItem : {&mCLastFileOVP, &mCLastFileIMG, &mCLastFilePARTICLE, &mCLastFileVOLUME,
                                   &mCLastFileMESH, &mCLastFileHF, &mCLastFileSTREAM})
        pItem->SetRawString(true);

    SetReceiver(
        RECV_FRAME_MAIN,
        [this](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
            if (mVPFrameMain.empty() || !mVPFrameMain[0])
                return false;
            return mVPFrameMain[0]->ReadStrLine(stream, strHead, strRest);
        },
        [this](wxString& strOut) {
            for (size_t i = 0; i < mVPFrameMain.size(); ++i)
                if (mVPFrameMain[i])
                    mVPFrameMain[i]->Serialize(strOut, static_cast<int>(i));
        },
        {"FrameMain"});
    SetReceiverList(RECV_MAIN, this);
}

Main_cls::~Main_cls() {
    DeleteSingleton();
    if (TextHost_cls::Get() == this)
        TextHost_cls::Install(nullptr);
    if (GCClassProvider == this)
        GCClassProvider = nullptr;
}

// ---- panel updates ------------------------------------------------------------------------

void Main_cls::UpdatePanels(const wxString& strPanels) {
    for (const wxString& str : mVStrPanelQueue)
        if (str == strPanels)
            return;
    mVStrPanelQueue.push_back(strPanels);
}

void Main_cls::UpdatePanelsFlush() {
    while (!mVStrPanelQueue.empty()) {
        wxString strPanels = mVStrPanelQueue.back();
        mVStrPanelQueue.pop_back();
        // An empty item ends the walk: the names behind it are not reached.
        for (;;) {
            wxString strItem = Parser_cls::PopStrItemFromStrLine(strPanels, "::");
            if (strItem.empty())
                break;
            for (FrameHost_cls* pFrame : mVPFrameMain)
                if (pFrame)
                    pFrame->UpdatePanels(strItem);
            if (GpCPreference)
                GpCPreference->UpdatePanels(strItem);
        }
    }
    if (mFuncFlushEnd)
        mFuncFlushEnd();
}

void Main_cls::ProcAfterMath(const wxString& strWhat, const wxString& strArg) {
    for (FrameHost_cls* pFrame : mVPFrameMain)
        if (pFrame)
            pFrame->ProcAfterMath(strWhat, strArg);
    if (strWhat != "Quit")
        return;
    for (auto& funcClear : mVFuncClear)
        funcClear();
    SaveRecentFile(GetStrRecentPath());
    SaveConfigureFile(GetStrConfigurePath());
}

// ---- command language ---------------------------------------------------------------------

bool Main_cls::ReadStrCommand(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    bool bTaken = false;
    for (auto& funcRead : mVFuncRead)
        if (funcRead && funcRead(stream, strHead, strRest))
            bTaken = true;
    return bTaken;
}

void Main_cls::SetReceiver(Receiver_enum slot, ReaderFunc funcRead, WriterFunc funcWrite,
                           const std::vector<wxString>& vStrHeads) {
    mVFuncRead[slot] = std::move(funcRead);
    mVFuncWrite[slot] = std::move(funcWrite);
    mVVStrHeads[slot] = mVFuncRead[slot] ? vStrHeads : std::vector<wxString>();
}

bool Main_cls::IsProjectText(const wxString& strText) const {
    wxStringTokenizer tokens(strText, "\n");
    bool bInComment = false;
    while (tokens.HasMoreTokens()) {
        wxString strLine = tokens.GetNextToken();
        if (!IsLiveLine(strLine, bInComment))
            continue;
        wxString strHead = Parser_cls::PopStrItemFromStrLine(strLine, "::");
        for (const std::vector<wxString>& vStrHeads : mVVStrHeads)
            if (std::find(vStrHeads.begin(), vStrHeads.end(), strHead) != vStrHeads.end())
                return true;
    }
    return false;
}

void Main_cls::SetReceiverList(Receiver_enum slot, ConfListContainer_cls* pList) {
    SetReceiver(
        slot,
        [pList](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
            return pList->ReadStrLine(stream, strHead, strRest);
        },
        [pList](wxString& strOut) { pList->Serialize(strOut); }, {"ConfItemList"});
}

void Main_cls::PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) {
    if (GpCUndo)
        GpCUndo->PushCommandPairAndDo(strUndo, strDo);
}

int Main_cls::GetGZQuality() {
    return GpCPreference ? GpCPreference->GetPrefGZQuality() : 0;
}

int Main_cls::GetRelativePathMode() {
    return GpCPreference ? GpCPreference->GetRelativePath() : 1;
}

// ---- project files ------------------------------------------------------------------------

wxString Main_cls::ConvertToWide(const char* pData) {
    // The locale's multibyte conversion first; text it cannot convert is taken as UTF-8, and
    // as Latin-1 when that fails too, so no file is refused for its bytes.
    wxString str(pData, wxConvLibc);
    if (str.empty() && *pData)
        str = wxString::FromUTF8(pData);
    if (str.empty() && *pData)
        str = wxString(pData, wxConvISO8859_1);
    return str;
}

int Main_cls::ReplayText(const wxString& strText, std::vector<wxString>& vStrDropped) {
    std::wistringstream stream(strText.ToStdWstring());
    std::wstring line;
    bool bInComment = false;
    int dropped = 0;
    while (std::getline(stream, line)) {
        wxString strLine(line);
        if (!IsLiveLine(strLine, bInComment))
            continue;
        wxString strWhole(line);
        wxString strHead = Parser_cls::PopStrItemFromStrLine(strLine, "::");
        if (ReadStrCommand(stream, strHead, strLine) || strWhole.Strip(wxString::both).empty())
            continue;
        if (dropped++ < msDroppedLinesShown)
            vStrDropped.push_back(strWhole);
    }
    return dropped;
}

void Main_cls::ClearProject() {
    for (auto& funcClear : mVFuncClear)
        funcClear();
}

bool Main_cls::OpenProjectMain(const wxString& strPath, bool bUser) {
    unsigned char* pData = nullptr;
    long long size = 0;
    if (!UseGZ_cls::CopyToMemory(&pData, strPath, size)) {
        // A missing start layout is no error to the user: the single view takes its place.
        if (IsLayoutPath(strPath))
            wxLogMessage("%s", "Read Configure Fails " + strPath);
        else if (!IsConfigurePath(strPath))
            wxLogError("%s", "Read Configure Fails " + strPath);
        if (bUser)
            UpdatePanels("ALL");
        return false;
    }
    std::unique_ptr<unsigned char[]> data(pData);
    wxString strText = size > 1 ? ConvertToWide(reinterpret_cast<const char*>(data.get())) : wxString();
    data.reset();
    strText.Replace("\r", "");
    // Random bytes, or a text none of whose lines the program knows, opened as a project are
    // refused before anything is cleared: the scene, the title and the recent list stay, so a later save
    // cannot overwrite that file with the project.
    if (bUser && !IsProjectText(strText)) {
        wxLogError("Cannot open \"%s\": not a project file.", strPath);
        UpdatePanels("ALL");
        return false;
    }
    if (size <= 1)
        return false;
    if (!IsConfigurePath(strPath) && !IsLayoutPath(strPath))
        PushBackRecent(strPath);

    if (bUser) {
        ClearProject();
        // Keep exactly the first window.
        while (mVPFrameMain.size() > 1) {
            FrameHost_cls* pFrame = mVPFrameMain.back();
            mVPFrameMain.pop_back();
            if (pFrame)
                pFrame->CloseWindow();
        }
        if (mVPFrameMain.empty())
            mVPFrameMain.push_back(nullptr);
    }

    GbLockProjectLoading = true;
    std::vector<wxString> vStrDropped;
    const int dropped = ReplayText(strText, vStrDropped);
    if (GpCUndo)
        GpCUndo->Clear();
    UpdatePanels("PROPERTY_OBJECT");
    if (GpCPreference)
        GpCPreference->UpdatePanels("ALL");
    GbLockProjectLoading = false;

    if (bUser) {
        mbProjectFileCurrent = true;
        mStrProjectPath = strPath;
        mCLastFileOVP.SetBodyFromData(strPath);
        if (!mVPFrameMain.empty() && mVPFrameMain[0])
            mVPFrameMain[0]->UpdateTitle();
        // Every panel is rebuilt from the model, so none shows what the load replaced.
        UpdatePanels("ALL");
    }
    if (dropped > 0 && !IsConfigurePath(strPath)) {
        wxString strShown;
        for (const wxString& str : vStrDropped)
            strShown += "\n    " + str;
        if (dropped > static_cast<int>(vStrDropped.size()))
            strShown += "\n    ...";
        wxLogWarning("\"%s\": %d %s not understood and dropped; the rest was read. The first:%s", strPath,
                     dropped, dropped == 1 ? "line was" : "lines were", strShown);
    }
    return true;
}

bool Main_cls::OpenProject(wxString strPath) {
    if (!CheckUnsavedChanges())
        return false;
    const wxString strOldDir = wxGetCwd();
    if (strPath.empty()) {
        if (mVPFrameMain.empty() || !mVPFrameMain[0])
            return false;
        strPath = mVPFrameMain[0]->AskFilePath("Select project file", "Project file (*.ovp)|*.ovp",
                                               mCLastFileOVP.GetBodySTR(), false);
        if (strPath.empty())
            return false;
        // Relative data paths of the project resolve against its folder while it loads. The path
        // becomes the project's only when the load succeeds: a refused file must not be saved over.
        wxSetWorkingDirectory(wxFileName(strPath).GetPath());
    }
    if (!OpenProjectMain(strPath, true)) {
        wxSetWorkingDirectory(strOldDir);
        return false;
    }
    wxString strDir = wxFileName(strPath).GetPath();
    if (wxDirExists(strDir))
        wxSetWorkingDirectory(strDir);
    return true;
}

wxString Main_cls::SerializeProject() {
    wxString strText;
    for (auto& funcWrite : mVFuncWrite)
        if (funcWrite)
            funcWrite(strText);
    return strText;
}

bool Main_cls::SaveProjectMain(const wxString& strPath, int) {
    mCVersionProject.SetBodyFromData(msStrVersion);
    FrameHost_cls* pFirst = GetPCFirstFrame();
    if (pFirst)
        pFirst->SetBusy(true);
    const bool bProject = !IsConfigurePath(strPath);
    const wxString strOldDir = wxGetCwd();
    if (bProject) {
        // Raw paths are then written relative to the project's own folder.
        wxString strDir = wxFileName(strPath).GetPath();
        if (wxDirExists(strDir))
            wxSetWorkingDirectory(strDir);
    }
    wxString strText = SerializeProject();
    wxString strReason;
    bool bOk = WriteTextFileSafely(strPath, strText, &strReason);
    if (bOk && msSaveBusyMillis > 0)
        wxMilliSleep(msSaveBusyMillis);
    if (pFirst)
        pFirst->SetBusy(false);
    if (!bOk) {
        // The previous file, the project's path and the recent list stay as they were.
        if (bProject)
            wxSetWorkingDirectory(strOldDir);
        wxLogError("Cannot save the project to \"%s\": %s.", strPath, strReason);
        return false;
    }
    if (bProject) {
        mStrProjectPath = strPath;
        mbProjectFileCurrent = true;
        mCLastFileOVP.SetBodyFromData(strPath);
        PushBackRecent(strPath);
        if (GpCUndo)
            GpCUndo->MarkSaved();
        if (pFirst)
            pFirst->UpdateTitle();
    }
    return true;
}

bool Main_cls::SaveProject(int n) {
    if (!mStrProjectPath.empty() && mbProjectFileCurrent)
        return SaveProjectMain(mStrProjectPath, n);
    return SaveProjectAs(n);
}

bool Main_cls::IsProjectModified() const {
    return GpCUndo && GpCUndo->IsModified();
}

bool Main_cls::CheckUnsavedChanges() {
    FrameHost_cls* pFirst = GetPCFirstFrame();
    if (!pFirst || !IsProjectModified())
        return true;
    wxString strName = mStrProjectPath.empty() ? wxString("the new project") : "\"" + mStrProjectPath + "\"";
    int answer =
        pFirst->AskUser("Unsaved changes", "Save the changes to " + strName + " before it is closed?",
                        {"Save", "Discard", "Cancel"});
    if (answer == ANSWER_SAVE)
        return SaveProject(1);
    return answer == ANSWER_DISCARD;
}

bool Main_cls::OpenRecentProject(int index) {
    if (index < 0 || index > 9 || mStrRecent[index].empty())
        return false;
    const wxString strPath = mStrRecent[index];
    if (!wxFileName::FileExists(strPath)) {
        wxLogWarning("The recent project \"%s\" is not there any more.", strPath);
        FrameHost_cls* pFirst = GetPCFirstFrame();
        if (pFirst &&
            pFirst->AskUser("Recent project missing",
                            "\"" + strPath + "\" has been moved or deleted.\nRemove it from the recent list?",
                            {"Remove", "Keep"}) == 0)
            RemoveRecent(strPath);
        return false;
    }
    return OpenProject(strPath);
}

void Main_cls::RemoveRecent(const wxString& strPath) {
    auto end = std::remove(mStrRecent.begin(), mStrRecent.end(), strPath);
    std::fill(end, mStrRecent.end(), wxString());
}

bool Main_cls::SaveProjectAs(int n) {
    if (mVPFrameMain.empty() || !mVPFrameMain[0])
        return false;
    wxString strPath = mVPFrameMain[0]->AskFilePath(
        "Select project file name to save", "Project file (*.ovp)|*.ovp", mCLastFileOVP.GetBodySTR(), true);
    if (strPath.empty())
        return false;
    if (!strPath.EndsWith(".ovp"))
        strPath += ".ovp";
    return SaveProjectMain(strPath, n);
}

std::vector<wxString> Main_cls::GetVStrResourceRoots(const wxString& strAppDir) {
    std::vector<wxString> vStr = {wxGetCwd()};
    if (!strAppDir.empty()) {
        vStr.push_back(strAppDir);
        vStr.push_back(strAppDir + "/../share/orvantis4");
        vStr.push_back(strAppDir + "/..");
        vStr.push_back(strAppDir + "/../..");
    }
    return vStr;
}

wxString Main_cls::FindResourceFile(const wxString& strRelative) const {
    for (const wxString& strRoot : GetVStrResourceRoots(mStrAppDir)) {
        wxFileName fn(strRoot + "/" + strRelative);
        if (fn.FileExists()) {
            fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE);
            return fn.GetFullPath();
        }
    }
    return strRelative;
}

bool Main_cls::InitLayout() {
    bool bOk = OpenProjectMain(FindResourceFile("Resource/InitLayout.ovp"), false);
    mMillisLayout = static_cast<int32_t>(mStopWatch.Time());
    return bOk;
}

// ---- settings and recent files ------------------------------------------------------------

void Main_cls::PushBackRecent(const wxString& strPath) {
    if (mStrRecent[0] == strPath) {
        mStrRecent[0] = strPath;
        return;
    }
    int found = -1;
    for (int k = 1; k < 10; ++k)
        if (mStrRecent[k] == strPath) {
            found = k;
            break;
        }
    int last = found > 0 ? found : 9; // the old slot 9 is lost when the path is new
    for (int i = last; i > 0; --i)
        mStrRecent[i] = mStrRecent[i - 1];
    mStrRecent[0] = strPath;
}

void Main_cls::OpenRecentFile(const wxString& strPath) {
    if (!wxFileName::FileExists(strPath))
        return;
    wxTextFile file;
    if (!file.Open(strPath))
        return;
    int slot = 0;
    for (size_t i = 0; i < file.GetLineCount() && slot < 10; ++i) {
        wxString strLine = file.GetLine(i);
        strLine.Trim(true);
        if (!strLine.empty())
            mStrRecent[slot++] = strLine;
    }
}

bool Main_cls::SaveRecentFile(const wxString& strPath) {
    wxString strText;
    for (const wxString& str : mStrRecent)
        if (!str.empty())
            strText += str + "\n";
    return WriteTextFileSafely(strPath, strText);
}

bool Main_cls::SaveConfigureFile(const wxString& strPath) {
    wxString strText;
    Serialize(strText);
    return WriteTextFileSafely(strPath, strText);
}

void Main_cls::RemoveFrame(FrameHost_cls* pFrame) {
    for (size_t i = 0; i < mVPFrameMain.size(); ++i)
        if (mVPFrameMain[i] == pFrame) {
            mVPFrameMain.erase(mVPFrameMain.begin() + static_cast<long>(i));
            return;
        }
}
