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
class SceneObj_cls;

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
    // registered (a kind that is not registered gets no entry from here).
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

    wxString mStrClassWord;
};
