// The text editor panel: edits the expression of one parameter group. The group comes from a
// "SelectExpression" event (the property page's "Expr" buttons) or from its tag typed into the
// tag field; Apply sets the group's Expression= item through the undo road. Main thread only.
#pragma once

#include "wxPanelEX.h"

#include <vector>

class wxStaticText;
class wxTextCtrl;

// The editor's commands, which its shortcut table (GpCTextShortcut) posts to it.
enum TextEditorId_enum {
    ID_TEXT_EDITOR_APPLY = 7310,
    ID_TEXT_EDITOR_REVERT,
    ID_TEXT_EDITOR_UNDO,
    ID_TEXT_EDITOR_REDO,
    ID_TEXT_EDITOR_TAG
};

class TextEntryCtrl_cls : public wxPanelEX {
public:
    explicit TextEntryCtrl_cls(SplittableWindow_cls* pOwner);

    // One of the editor's commands (ID_TEXT_EDITOR_...); false when it had nothing to do.
    bool ProcCommand(int id);
    // Typing steps back (undo into redo) or forth through the texts the editor held; false at
    // either end.
    bool StepTyping(std::vector<wxString>& vStrFrom, std::vector<wxString>& vStrTo);

    // Loads the expression of the group at the tag; false (and an empty editor) when there is
    // no such group.
    bool LoadExpression(const wxString& strTag);
    // Sets the group's Expression= to the editor's text, undoable.
    bool ApplyExpression();
    // Says under the tag whether the group's expression is switched on.
    void ShowSwitch();

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;

    wxTextCtrl* mpCTag = nullptr;
    wxTextCtrl* mpCText = nullptr;
    wxStaticText* mpCState = nullptr;
    wxString mStrTag; // the group being edited
    // The texts before each change of the editor's text, and the ones undone; a load clears them.
    std::vector<wxString> mVStrUndo;
    std::vector<wxString> mVStrRedo;
    wxString mStrShown; // the text as it stood after the last change
    wxString mStrBlock;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void SerializeSelf(wxString& strOut) override { strOut += mStrBlock; }
};
