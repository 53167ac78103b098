// The property panel: a book of pages, the object page, the scene filter page and the page of the
// active object's kind (from the kind table), which follows the selection. It hands the panel
// updates to its pages and keeps its own block of the layout text as read, so that a save writes
// it back unchanged. Main thread only.
#pragma once

#include "wxPanelEX.h"

class PropertyFilter_cls;
class PropertyKindPage_cls;
class PropertyObject_cls;
class PropertyRender_cls;
class wxNotebook;

class Property_cls : public wxPanelEX {
public:
    explicit Property_cls(SplittableWindow_cls* pOwner);

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;

    wxNotebook* mpCBook = nullptr;
    PropertyObject_cls* mpCPageObject = nullptr; // a page of the book
    PropertyFilter_cls* mpCPageFilter = nullptr; // a page of the book
    PropertyKindPage_cls* mpCPageKind = nullptr; // a page of the book, null when the kind has none
    // Puts the page of the active object's kind in the book, or takes it out; keeps the page
    // while the kind stays.
    void SyncKindPage();
    PropertyRender_cls* mpCPageRender = nullptr; // a page of the book
    wxString mStrBlock;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void SerializeSelf(wxString& strOut) override { strOut += mStrBlock; }
};
