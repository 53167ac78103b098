// The tree of scene objects. Everything it changes (selection aside, which is not an edit) goes
// through the scene controller's commands, so renames, visibility and moves under a parent are
// undoable; the tree itself is rebuilt from the controller on "OUTLINER" and "ALL". Hidden
// objects show in grey. Main thread only.
#pragma once

#include "wxPanelEX.h"

#include <wx/treectrl.h>

#include <vector>

class ParentObj_cls;

class Outliner_cls : public wxPanelEX {
public:
    explicit Outliner_cls(SplittableWindow_cls* pOwner);

    // Ids of the item menu.
    enum {
        ID_MENU_TOGGLE_VISIBLE = 7101,
        ID_MENU_RENAME = 7102,
        ID_MENU_DELETE = 7103,
        ID_MENU_TO_TOP = 7104
    };

    // Fills the tree from the controller, depth first, and selects the active object.
    void RebuildTree();
    // The names as the tree shows them, depth first; children are indented by one blank per
    // level (a test's view of the tree).
    std::vector<wxString> GetVStrShownNames() const;
    wxTreeItemId FindItem(const wxString& strName) const;

    // ---- what the user's gestures do ----
    void SelectObject(const wxString& strName);
    // Returns the name the object got (".001" and so on when the name was taken); empty when
    // the object is unknown or the new name is empty.
    wxString RenameObject(const wxString& strFrom, const wxString& strTo);
    void ToggleVisibility(const wxString& strName);
    // The dropped object becomes a child of the target ("ROOT" or empty: the top). False when
    // the controller refused (the target lies below the object).
    bool DropObjectOn(const wxString& strDragged, const wxString& strTarget);
    // An item of the item menu (ID_MENU_...) on the named object; false when it is unknown.
    // The keys of the tree reach the same: H toggles visibility, F2 renames, Delete deletes.
    bool ProcItemCommand(int id, const wxString& strName);

    wxTreeCtrl* mpCTree = nullptr;
    int mRebuildCount = 0;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;

private:
    void AddChildren(const wxTreeItemId& parent, ParentObj_cls* pNode);
    void CollectNames(const wxTreeItemId& item, int depth, std::vector<wxString>& vOut) const;
    wxTreeItemId FindItemFrom(const wxTreeItemId& item, const wxString& strName) const;

    void OnSelChanged(wxTreeEvent& event);
    void OnBeginLabelEdit(wxTreeEvent& event);
    void OnEndLabelEdit(wxTreeEvent& event);
    void OnBeginDrag(wxTreeEvent& event);
    void OnEndDrag(wxTreeEvent& event);
    void OnItemMenu(wxTreeEvent& event);
    void OnMenuItem(wxCommandEvent& event);
    void OnTreeKeyDown(wxTreeEvent& event);

    bool mbRebuilding = false; // selection events of the rebuild itself are not the user's
    wxString mStrDragged;
    wxString mStrMenuTarget;
};
