#include "Property_cls.h"

#include "PanelBar_cls.h"
#include "PlaceholderPanel_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyRender_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/sizer.h>

Property_cls::Property_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_PROPERTY) {
    ConstructPanelBar();
    mpCBook = new wxNotebook(this, wxID_ANY);
    mpCPageObject = new PropertyObject_cls(mpCBook);
    mpCBook->AddPage(mpCPageObject, _("Object"), true);
    mpCPageRender = new PropertyRender_cls(mpCBook);
    mpCBook->AddPage(mpCPageRender, _("Render"), false);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(mpCBook, 1, wxEXPAND);
    SetSizer(pSizer);
}

bool Property_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    return PlaceholderPanel_cls::ReadBlock(stream, strKey, strRest, mStrBlock);
}

void Property_cls::UpdatePanelSelf(const wxString& strName, bool) {
    // The pages compare the name with their own.
    mpCPageObject->UpdatePage(strName);
    mpCPageRender->UpdatePage(strName);
}

void Property_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString&) {
    if (strWhat == "SelectObject" || strWhat == "DeleteObject" || strWhat == "RenameObject")
        mpCPageObject->RefreshFromObject();
}
