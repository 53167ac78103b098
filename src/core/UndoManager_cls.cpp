#include "UndoManager_cls.h"

#include "Main_cls.h"
#include "Parser_cls.h"

#include <sstream>

void UndoManager_cls::PushCommandPair(wxString strUndo, wxString strDo) {
    // Redo entries that led to the saved state go: that state cannot come back.
    if (mSaved > mCurrent)
        mSaved = -1;
    mVStrDo.resize(mCurrent);
    mVStrUndo.resize(mCurrent);
    mVStrDo.push_back(strDo + "\n");
    mVStrUndo.push_back(strUndo + "\n");
}

void UndoManager_cls::PushCommandPairAndDo(const wxString& strUndo, const wxString& strDo) {
    PushCommandPair(strUndo, strDo);
    Redo();
}

void UndoManager_cls::RunText(const wxString& strText) {
    std::wistringstream stream(strText.ToStdWstring());
    std::wstring line;
    while (std::getline(stream, line)) {
        wxString strRest(line);
        wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
        if (strHead == "OpenBlock") {
            ++mBlockDepth;
        } else if (strHead == "CloseBlock") {
            --mBlockDepth;
            return;
        } else if (GCClassProvider) {
            GCClassProvider->ReadStrCommand(stream, strHead, strRest);
        }
    }
}

void UndoManager_cls::Redo() {
    bool bRan = false;
    while (mCurrent < static_cast<int32_t>(mVStrDo.size())) {
        bRan = true;
        // Copy: a command may push pairs of its own while it runs.
        wxString strText = mVStrDo[mCurrent];
        RunText(strText);
        ++mCurrent;
        if (mBlockDepth < 1)
            break;
    }
    // A block cut short by the end of the history must not leave later steps inside it.
    mBlockDepth = 0;
    if (bRan && GCClassProvider)
        GCClassProvider->UpdatePanels("CONSOLE");
}

void UndoManager_cls::Undo() {
    if (mCurrent > static_cast<int32_t>(mVStrUndo.size()))
        mCurrent = static_cast<int32_t>(mVStrUndo.size());
    if (mCurrent == 0)
        return;
    // The undo list holds the block markers swapped, so a block is entered from its end.
    do {
        wxString strText = mVStrUndo[mCurrent - 1];
        RunText(strText);
        --mCurrent;
    } while (mBlockDepth > 0 && mCurrent > 0);
    mBlockDepth = 0;
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("CONSOLE");
}

void UndoManager_cls::PopCommandPair() {
    if (mVStrDo.empty())
        return;
    mVStrDo.pop_back();
    mVStrUndo.pop_back();
    if (mSaved > static_cast<int32_t>(mVStrDo.size()))
        mSaved = -1;
}

static wxString BlockWord(const wxString& strWord, const wxString& strName) {
    return strName.empty() ? strWord : strWord + "::" + strName;
}

void UndoManager_cls::OpenBlock(const wxString& strName) {
    PushCommandPair(BlockWord("CloseBlock", strName), BlockWord("OpenBlock", strName));
    ++mCurrent;
}

void UndoManager_cls::CloseBlock(const wxString& strName) {
    wxString strOpenUndo = BlockWord("CloseBlock", strName) + "\n";
    wxString strOpenDo = BlockWord("OpenBlock", strName) + "\n";
    if (mCurrent > 0 && mCurrent == static_cast<int32_t>(mVStrDo.size()) && mVStrDo.back() == strOpenDo &&
        mVStrUndo.back() == strOpenUndo) {
        PopCommandPair();
        --mCurrent;
        return;
    }
    PushCommandPair(BlockWord("OpenBlock", strName), BlockWord("CloseBlock", strName));
    ++mCurrent;
}

void UndoManager_cls::Clear() {
    mVStrDo.clear();
    mVStrUndo.clear();
    mCurrent = 0;
    mBlockDepth = 0;
    mSaved = 0;
}

wxString UndoManager_cls::GetStrAll(const std::vector<wxString>& vStr, int range) const {
    wxString strMark = wxString::Format("<-- mCurrent=%d\n", mCurrent);
    int count = static_cast<int>(vStr.size());
    wxString str;
    for (int i = 0; i < count; ++i) {
        if (i == mCurrent)
            str += strMark;
        bool bNear = i >= mCurrent - range && i <= mCurrent + range;
        bool bLast = i >= count - range;
        if (range == 0 || bNear || bLast)
            str += vStr[i];
    }
    if (mCurrent >= count)
        str += strMark;
    return str;
}

wxString UndoManager_cls::GetStrUndoAll(int range) const {
    return GetStrAll(mVStrUndo, range);
}

wxString UndoManager_cls::GetStrRedoAll(int range) const {
    return GetStrAll(mVStrDo, range);
}
