// A page of the property panel that belongs to one kind of object (the particle object's data,
// format, drawing, materials, modifiers and information). The kind table holds its maker in the
// SLOT_PROPERTY_PAGE of the kind's entry; the property panel shows the page of the active
// object's kind and drops it when another kind becomes active. Main thread only.
#pragma once

#include <wx/scrolwin.h>

#include <functional>
#include <vector>

class Attribute_cls;
class ConfItem_cls;
class ConfListContainer_cls;
class SceneObj_cls;
class wxFlexGridSizer;

class PropertyKindPage_cls : public wxScrolledWindow {
public:
    PropertyKindPage_cls(wxWindow* pParent, const wxString& strClassWord);

    // What the kind table's slot holds.
    using Maker_fn = std::function<PropertyKindPage_cls*(wxWindow* pParent)>;

    // The page's share of the property panel's updates (panel names, "IDLE", "ALL").
    virtual void UpdatePage(const wxString& strName) = 0;
    // Fills every control from the active object.
    virtual void RefreshFromObject() = 0;
    // The label of the page's tab.
    virtual wxString GetStrLabel() const = 0;

    // The page of the class word's kind, or null when its kind has none.
    static PropertyKindPage_cls* MakePage(const wxString& strClassWord, wxWindow* pParent);
    // Installs the makers of the kinds that have a page, into the entries the layers below have
    // registered (a kind that is not registered gets no entry from here), and the field tables
    // of the modifier kinds.
    static void RegisterPages();

    // ---- what the pages of the kinds share ----
    // Sets the item's body through its command (tags in step with the owner's name first): a
    // number field takes plain or arithmetic text, a switch "1"/"true". False without an item or
    // for a number field whose text is no number.
    static bool PushItemBody(SceneObj_cls* pObj, ConfItem_cls* pItem, const wxString& strBody);
    // Shows the item's body in a wxChoice (index), wxCheckBox or wxTextCtrl; disables the control
    // without an item.
    static void ShowItem(const ConfItem_cls* pItem, wxWindow* pCtrl);
    // The entries the user added to a stack (0 modifiers, 1 data processes), in stack order: the
    // built-in ones and the colour curves are not shown. Not owned.
    static std::vector<Attribute_cls*> GetVPCStackEntries(SceneObj_cls* pObj, int stack);
    // The kinds of the stack that the object takes (each kind's maker says so).
    static wxArrayString GetAStrStackKinds(SceneObj_cls* pObj, int stack);

    // A control bound to one key of one of the page's lists; the target numbers the lists as
    // the kind's page does.
    class ItemCtrl_cls {
    public:
        int mTarget = 0;
        wxString mStrKey;
        wxWindow* mpCtrl = nullptr; // a wxChoice (index), wxCheckBox (0/1) or wxTextCtrl
    };
    std::vector<ItemCtrl_cls> mVCItem;
    // The control of a key, null when the page has none.
    wxWindow* FindItemCtrl(int target, const wxString& strKey) const;
    // The list of the active object that the target edits; null without one (and on pages that
    // build their rows from field tables instead).
    virtual ConfListContainer_cls* GetPCList(int) const { return nullptr; }
    // The active object when it is of the page's kind; null otherwise.
    virtual SceneObj_cls* GetPCKindObject() const { return nullptr; }
    // Sets the key's body through its command, then shows the object again; false without the
    // object or the list, an unknown key, or a number field whose text is no number (plain or
    // arithmetic).
    bool SetItem(int target, const wxString& strKey, const wxString& strBody);

    wxString mStrClassWord;

protected:
    // A row of the grid: a label and a text field, a choice (with choices) or a check box, whose
    // changes go to SetItem. Returns the control.
    wxWindow* AddItemRow(wxWindow* pPage, wxFlexGridSizer* pGrid, int target, const wxString& strKey,
                         const wxString& strLabel, const wxArrayString& aStrChoices = wxArrayString(),
                         bool bCheck = false);
    // Fills every bound control from its item; a control whose item is missing is disabled.
    void RefreshItems();
};
