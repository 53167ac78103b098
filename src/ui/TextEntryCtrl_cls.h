// The text editor panel: edits the expression of one parameter group. The group comes from a
// "SelectExpression" event (the property page's "Expr" buttons) or from its tag typed into the
// tag field; Apply sets the group's Expression= item through the undo road. Main thread only.
#pragma once

#include "wxPanelEX.h"

class wxStaticText;
class wxTextCtrl;

class TextEntryCtrl_cls : public wxPanelEX {
public:
    explicit TextEntryCtrl_cls(SplittableWindow_cls* pOwner);

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
    wxString mStrBlock;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void SerializeSelf(wxString& strOut) override { strOut += mStrBlock; }
};
