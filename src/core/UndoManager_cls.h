// Keeps every user edit as a pair of texts in the project-file language: one that does it and
// one that undoes it. Main thread only.
#pragma once

#include <wx/string.h>

#include <cstdint>
#include <vector>

class UndoManager_cls {
public:
    // Records a pair without running it; redo entries beyond the current index are lost.
    void PushCommandPair(wxString strUndo, wxString strDo);
    void PushCommandPairAndDo(const wxString& strUndo, const wxString& strDo);
    // Runs the do text at the current index; a block runs to its end as one step.
    void Redo();
    void Undo();
    // Makes the pair at the index undoable without running it: the change was made natively.
    void Skip() { ++mCurrent; }
    void PopCommandPair();
    // Brackets the pairs pushed in between so that Undo and Redo treat them as one step.
    // An empty block leaves no trace.
    void OpenBlock(const wxString& strName = wxString());
    void CloseBlock(const wxString& strName = wxString());
    // Empties the history; the state it leaves counts as the saved one.
    void Clear();

    // The project is modified when the index differs from the one at the last save or open, or
    // when the history that led to that state was cut off by a new edit.
    void MarkSaved() { mSaved = mCurrent; }
    bool IsModified() const { return mCurrent != mSaved; }

    // Texts for a debugging panel; range 0 gives everything.
    wxString GetStrUndoAll(int range) const;
    wxString GetStrRedoAll(int range) const;

    int GetCurrent() const { return mCurrent; }
    int GetCount() const { return static_cast<int>(mVStrDo.size()); }

    std::vector<wxString> mVStrDo;
    std::vector<wxString> mVStrUndo;
    int32_t mCurrent = 0;
    int32_t mBlockDepth = 0;
    int32_t mSaved = 0; // the index at the last save or open; -1 when no index leads back to it

private:
    // Runs the lines of one text; returns after a CloseBlock line or the last line.
    void RunText(const wxString& strText);
    wxString GetStrAll(const std::vector<wxString>& vStr, int range) const;
};
