// The controls of a table of fields (PropertyField_cls) for the active object: a label and a
// control per row, and for an animated group one number per member with a key button, which
// sets a key of the whole group at the current time, and an expression button. The panel holds
// no object pointer between events: it asks for the object each time, so a deleted or renamed
// object never dangles. Every edit goes through a command (undo, redo); the panel follows edits
// made elsewhere on the idle road (UpdateIdle) unless one of its fields is being typed in.
// Text fields keep the window name "text", which keeps the frame's shortcuts out of typing.
// Main thread only.
#pragma once

#include "PropertyField_cls.h"

#include <wx/panel.h>

#include <functional>
#include <vector>

class ConfItem_cls;
class ConfListContainer_cls;
class ParamGroup_cls;
class SceneObj_cls;
class wxButton;
class wxTextCtrl;

class PropertyFieldPanel_cls : public wxPanel {
public:
    // funcObject gives the object the rows edit (null: none, the rows are disabled).
    PropertyFieldPanel_cls(wxWindow* pParent, PropertyField_cls::Table_type vField,
                           std::function<SceneObj_cls*()> funcObject);
    // Rows of lists that belong to no object (the preferences): funcList gives the list of a
    // row's mStrAttr. Such rows have items only.
    using ListFunc_type = std::function<ConfListContainer_cls*(const wxString& strAttr)>;
    PropertyFieldPanel_cls(wxWindow* pParent, PropertyField_cls::Table_type vField, ListFunc_type funcList);

    // ---- what the controls do; false when nothing was set (no object, no such setting, text
    // that is no number) ----
    // An item row: a number, a text, a 0/1 or an entry index.
    bool SetItemFromText(int field, const wxString& strText);
    // One member of a group row at the current time: a key there when the group has keys,
    // else the group's value.
    bool SetMemberFromText(int field, int member, const wxString& strText);
    // The key button: a key of every member at the current time, of the default kind.
    bool SetKeyAtCurrentTime(int field);
    // What every key button does: a key of each member of the group at the current time, of
    // the default kind, in one undo step. False without a group.
    static bool InsertKeyNow(ParamGroup_cls* pGroup, const wxString& strTag);
    // The expression button: opens the group's expression in the text editors.
    bool EditExpression(int field);

    // Fills every control from the object.
    void RefreshFromObject();
    // The idle road: refills when the values shown are out of date and nobody is typing.
    void UpdateIdle();

    // The row of a setting, -1 when the table has none.
    int FindField(const wxString& strAttr, const wxString& strKey) const;
    // Where a row's setting lives; null when the object or the setting is missing.
    ConfListContainer_cls* GetPCList(int field) const;
    ConfItem_cls* GetPCItem(int field) const;
    ParamGroup_cls* GetPCGroup(int field) const;
    // The command address of a group row: "SceneObjCtrl::Obj::<object>::<attribute>::<group>".
    wxString GetStrGroupTag(int field) const;

    // The controls of one row: mpCtrl for items (wxTextCtrl, wxCheckBox or wxChoice), the member
    // fields and the buttons for groups.
    class Row_cls {
    public:
        wxWindow* mpCtrl = nullptr;
        std::vector<wxTextCtrl*> mVPCMember;
        wxButton* mpCKey = nullptr;
        wxButton* mpCExpr = nullptr;
    };

    PropertyField_cls::Table_type mVField;
    std::vector<Row_cls> mVRow;
    std::function<SceneObj_cls*()> mFuncObject;
    ListFunc_type mFuncList;
    // On an object's page: the block of a service that a row's mStrAttr names, shown beside the
    // object's own settings (a light's page shows the soft lights' samples); null for the object's.
    ListFunc_type mFuncBlock;
    int mRefreshCount = 0;

private:
    void Build();
    SceneObj_cls* GetPCObject() const { return mFuncObject ? mFuncObject() : nullptr; }
    void BuildRow(class wxFlexGridSizer* pGrid, int field);
    // The object's values as shown; a change means the panel is out of date.
    wxString GetStrSignature() const;
    bool IsTyping() const;
    double Clamp(int field, double value) const;
    wxString mStrSignature;
};
