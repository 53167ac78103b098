// The property panel: a book of pages, of which this build has the object page. It hands the
// panel updates to its pages and keeps its own block of the layout text as read, so that a
// save writes it back unchanged. Main thread only.
#pragma once

#include "wxPanelEX.h"

class PropertyObject_cls;
class PropertyRender_cls;
class wxNotebook;

class Property_cls : public wxPanelEX {
public:
    explicit Property_cls(SplittableWindow_cls* pOwner);

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;

    wxNotebook* mpCBook = nullptr;
    PropertyObject_cls* mpCPageObject = nullptr; // a page of the book
    PropertyRender_cls* mpCPageRender = nullptr; // a page of the book
    wxString mStrBlock;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void SerializeSelf(wxString& strOut) override { strOut += mStrBlock; }
};
