#include "Outliner_cls.h"

#include "ClassProvider_cls.h"
#include "PanelBar_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/sizer.h>

Outliner_cls::Outliner_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_OUTLINER) {
    ConstructPanelBar();
    mpCTree = new wxTreeCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                             wxTR_HAS_BUTTONS | wxTR_LINES_AT_ROOT | wxTR_HIDE_ROOT | wxTR_EDIT_LABELS |
                                 wxTR_SINGLE);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(mpCTree, 1, wxEXPAND);
    SetSizer(pSizer);
    mpCTree->Bind(wxEVT_TREE_SEL_CHANGED, &Outliner_cls::OnSelChanged, this);
    mpCTree->Bind(wxEVT_TREE_BEGIN_LABEL_EDIT, &Outliner_cls::OnBeginLabelEdit, this);
    mpCTree->Bind(wxEVT_TREE_END_LABEL_EDIT, &Outliner_cls::OnEndLabelEdit, this);
    mpCTree->Bind(wxEVT_TREE_BEGIN_DRAG, &Outliner_cls::OnBeginDrag, this);
    mpCTree->Bind(wxEVT_TREE_END_DRAG, &Outliner_cls::OnEndDrag, this);
    mpCTree->Bind(wxEVT_TREE_ITEM_MENU, &Outliner_cls::OnItemMenu, this);
    mpCTree->Bind(wxEVT_TREE_KEY_DOWN, &Outliner_cls::OnTreeKeyDown, this);
    Bind(wxEVT_MENU, &Outliner_cls::OnMenuItem, this, ID_MENU_TOGGLE_VISIBLE, ID_MENU_TO_TOP);
    RebuildTree();
}

void Outliner_cls::RebuildTree() {
    ++mRebuildCount;
    mbRebuilding = true;
    mpCTree->Freeze();
    mpCTree->DeleteAllItems();
    wxTreeItemId root = mpCTree->AddRoot("ROOT");
    if (GpCSceneObjCtrl) {
        AddChildren(root, GpCSceneObjCtrl);
        mpCTree->ExpandAll();
        if (SceneObj_cls* pActive = GpCSceneObjCtrl->GetPCActiveObject()) {
            wxTreeItemId item = FindItem(pActive->GetStrName());
            if (item.IsOk())
                mpCTree->SelectItem(item);
        }
    }
    mpCTree->Thaw();
    mbRebuilding = false;
}

void Outliner_cls::AddChildren(const wxTreeItemId& parent, ParentObj_cls* pNode) {
    const wxColour colourHidden = wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT);
    for (SceneObj_cls* pChild : pNode->mLPCChild) {
        wxTreeItemId item = mpCTree->AppendItem(parent, pChild->GetStrName());
        if (!pChild->mCVisible.GetBodyBOOL())
            mpCTree->SetItemTextColour(item, colourHidden);
        if (GpCSceneObjCtrl->IsSelected(pChild))
            mpCTree->SetItemBold(item, true);
        AddChildren(item, pChild);
    }
}

std::vector<wxString> Outliner_cls::GetVStrShownNames() const {
    std::vector<wxString> vOut;
    wxTreeItemId root = mpCTree->GetRootItem();
    if (!root.IsOk())
        return vOut;
    wxTreeItemIdValue cookie;
    for (wxTreeItemId item = mpCTree->GetFirstChild(root, cookie); item.IsOk();
         item = mpCTree->GetNextChild(root, cookie))
        CollectNames(item, 0, vOut);
    return vOut;
}

void Outliner_cls::CollectNames(const wxTreeItemId& item, int depth, std::vector<wxString>& vOut) const {
    vOut.push_back(wxString(' ', depth) + mpCTree->GetItemText(item));
    wxTreeItemIdValue cookie;
    for (wxTreeItemId child = mpCTree->GetFirstChild(item, cookie); child.IsOk();
         child = mpCTree->GetNextChild(item, cookie))
        CollectNames(child, depth + 1, vOut);
}

wxTreeItemId Outliner_cls::FindItem(const wxString& strName) const {
    wxTreeItemId root = mpCTree->GetRootItem();
    return root.IsOk() ? FindItemFrom(root, strName) : wxTreeItemId();
}

wxTreeItemId Outliner_cls::FindItemFrom(const wxTreeItemId& item, const wxString& strName) const {
    wxTreeItemIdValue cookie;
    for (wxTreeItemId child = mpCTree->GetFirstChild(item, cookie); child.IsOk();
         child = mpCTree->GetNextChild(item, cookie)) {
        if (mpCTree->GetItemText(child) == strName)
            return child;
        wxTreeItemId found = FindItemFrom(child, strName);
        if (found.IsOk())
            return found;
    }
    return wxTreeItemId();
}

// ---- gestures -----------------------------------------------------------------------------

void Outliner_cls::SelectObject(const wxString& strName) {
    if (GpCSceneObjCtrl && GpCSceneObjCtrl->GetPCFromName(strName))
        GpCSceneObjCtrl->Select(strName, false, true, false);
}

wxString Outliner_cls::RenameObject(const wxString& strFrom, const wxString& strTo) {
    wxString strNew = strTo;
    strNew.Trim(true).Trim(false);
    if (!GpCSceneObjCtrl || strNew.empty() || !GpCSceneObjCtrl->GetPCFromName(strFrom))
        return wxString();
    if (strNew == strFrom)
        return strFrom;
    return GpCSceneObjCtrl->RenameCommand(strFrom, strNew);
}

void Outliner_cls::ToggleVisibility(const wxString& strName) {
    if (GpCSceneObjCtrl && GpCSceneObjCtrl->GetPCFromName(strName))
        GpCSceneObjCtrl->ToggleVisibleCommand(strName);
}

bool Outliner_cls::DropObjectOn(const wxString& strDragged, const wxString& strTarget) {
    if (!GpCSceneObjCtrl || !GpCSceneObjCtrl->GetPCFromName(strDragged))
        return false;
    wxString strParent = strTarget.empty() ? wxString("ROOT") : strTarget;
    if (strParent == strDragged)
        return false;
    // The controller moves the active object: the dragged one becomes it.
    GpCSceneObjCtrl->Select(strDragged, false, true, false);
    return GpCSceneObjCtrl->SetToChildCommand(strParent);
}

// ---- updates ------------------------------------------------------------------------------

void Outliner_cls::UpdatePanelSelf(const wxString& strName, bool) {
    if (!IsUpdateTarget(strName))
        return;
    RebuildTree();
}

void Outliner_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString&) {
    if (strWhat == "DeleteObject" || strWhat == "RenameObject")
        RebuildTree();
}

// ---- events -------------------------------------------------------------------------------

void Outliner_cls::OnSelChanged(wxTreeEvent& event) {
    if (mbRebuilding || !event.GetItem().IsOk())
        return;
    SelectObject(mpCTree->GetItemText(event.GetItem()));
}

void Outliner_cls::OnBeginLabelEdit(wxTreeEvent& event) {
    if (!event.GetItem().IsOk() || event.GetItem() == mpCTree->GetRootItem())
        event.Veto();
}

void Outliner_cls::OnEndLabelEdit(wxTreeEvent& event) {
    if (event.IsEditCancelled() || !event.GetItem().IsOk())
        return;
    // The tree shows what the controller has: it may add ".001" on a clash.
    event.Veto();
    wxString strFrom = mpCTree->GetItemText(event.GetItem());
    RenameObject(strFrom, event.GetLabel());
    CallAfter([this] { RebuildTree(); });
}

void Outliner_cls::OnBeginDrag(wxTreeEvent& event) {
    if (!event.GetItem().IsOk())
        return;
    mStrDragged = mpCTree->GetItemText(event.GetItem());
    event.Allow();
}

void Outliner_cls::OnEndDrag(wxTreeEvent& event) {
    wxString strDragged = mStrDragged;
    mStrDragged.clear();
    if (strDragged.empty())
        return;
    wxString strTarget = event.GetItem().IsOk() ? mpCTree->GetItemText(event.GetItem()) : wxString("ROOT");
    if (strTarget == strDragged)
        return;
    DropObjectOn(strDragged, strTarget);
    CallAfter([this] { RebuildTree(); });
}

void Outliner_cls::OnItemMenu(wxTreeEvent& event) {
    if (!event.GetItem().IsOk())
        return;
    mStrMenuTarget = mpCTree->GetItemText(event.GetItem());
    wxMenu menu;
    menu.Append(ID_MENU_TOGGLE_VISIBLE, _("Toggle Visibility"));
    menu.Append(ID_MENU_RENAME, _("Rename"));
    menu.Append(ID_MENU_TO_TOP, _("Move to Top Level"));
    menu.AppendSeparator();
    menu.Append(ID_MENU_DELETE, _("Delete"));
    PopupMenu(&menu);
}

void Outliner_cls::OnMenuItem(wxCommandEvent& event) {
    ProcItemCommand(event.GetId(), mStrMenuTarget);
}

void Outliner_cls::OnTreeKeyDown(wxTreeEvent& event) {
    wxTreeItemId item = mpCTree->GetFocusedItem();
    if (!item.IsOk()) {
        event.Skip();
        return;
    }
    const wxString strName = mpCTree->GetItemText(item);
    switch (event.GetKeyCode()) {
    case 'H':
        ProcItemCommand(ID_MENU_TOGGLE_VISIBLE, strName);
        break;
    case WXK_F2:
        ProcItemCommand(ID_MENU_RENAME, strName);
        break;
    case WXK_DELETE:
        ProcItemCommand(ID_MENU_DELETE, strName);
        break;
    default:
        event.Skip();
        break;
    }
}

bool Outliner_cls::ProcItemCommand(int id, const wxString& strName) {
    if (strName.empty() || !GpCSceneObjCtrl || !GpCSceneObjCtrl->GetPCFromName(strName))
        return false;
    switch (id) {
    case ID_MENU_TOGGLE_VISIBLE:
        ToggleVisibility(strName);
        return true;
    case ID_MENU_RENAME: {
        wxTreeItemId item = FindItem(strName);
        if (item.IsOk())
            mpCTree->EditLabel(item);
        return item.IsOk();
    }
    case ID_MENU_TO_TOP:
        return DropObjectOn(strName, "ROOT");
    case ID_MENU_DELETE:
        GpCSceneObjCtrl->Select(strName, false, true, false);
        GpCSceneObjCtrl->DeleteItemsCommand();
        return true;
    default:
        return false;
    }
}
