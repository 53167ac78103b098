// A page of the property panel that belongs to one kind of object (the particle object's data,
// format, drawing, materials, modifiers and information). The kind table holds its maker in the
// SLOT_PROPERTY_PAGE of the kind's entry; the property panel shows the page of the active
// object's kind and drops it when another kind becomes active. Main thread only.
#pragma once

#include <wx/scrolwin.h>

#include <functional>

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

    wxString mStrClassWord;
};
