// The object page of the property panel: the active object's name, its visibility and its
// transform groups (Position, RotationEuler, Scale) at the current time. Number fields take
// arithmetic ("2*3") and Lua ("math.pi"); every change goes through the controller's
// or the object's commands, so it is undoable. The fields are plain text controls and keep the
// window name "text", which keeps the frame's shortcuts (and Escape) out of typing.
// Main thread only.
#pragma once

#include "wxPanelEX.h"

class SceneObj_cls;
class wxButton;
class wxCheckBox;
class wxStaticText;
class wxTextCtrl;

class PropertyObject_cls : public wxPanelEX {
public:
    explicit PropertyObject_cls(wxWindow* pParent);

    static const wxString msStrGroup[3];

    // The page's share of the property panel's updates: "PROPERTY_OBJECT", "PROPERTY", "ALL",
    // and "IDLE", on which it follows edits made elsewhere (undo, scripts) unless a field of
    // the page is being typed in.
    void UpdatePage(const wxString& strName);
    // Fills every field from the active object; empty and disabled when there is none.
    void RefreshFromObject();

    // What Enter in a field does; false when the text is not a number or there is no active
    // object (the field then shows the value again).
    bool SetMemberFromText(int group, int member, const wxString& strText);
    bool RenameFromText(const wxString& strText);
    void SetVisible(bool bVisible);
    // The key button: a key of the whole group at the current time, through the undo road.
    bool SetKeyAtCurrentTime(int group);
    // Opens the group's expression in the text editors.
    void EditExpression(int group);
    // A plain number, arithmetic or a Lua expression (MultiInput_cls).
    static bool ParseNumber(const wxString& strText, double& value);

    wxStaticText* mpCClass = nullptr;
    wxTextCtrl* mpCName = nullptr;
    wxCheckBox* mpCVisible = nullptr;
    wxTextCtrl* mpCField[3][3] = {};
    wxButton* mpCExpr[3] = {};
    wxButton* mpCKey[3] = {};
    int mRefreshCount = 0;
    // What drives each field's value besides a typed number: "Expression", "Keys" or empty. A
    // driven field is tinted and says so in its tool tip, so an edit that seems not to hold is
    // explained.
    wxString mStrDriver[3][3];

private:
    // The active object's values as shown; a change means the page is out of date.
    wxString GetStrSignature();
    bool IsTyping() const;
    wxString mStrSignature;
};
