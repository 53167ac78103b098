#include "Property_cls.h"

#include "PanelBar_cls.h"
#include "PlaceholderPanel_cls.h"
#include "PropertyFilter_cls.h"
#include "PropertyKindPage_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyRender_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/sizer.h>

Property_cls::Property_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_PROPERTY) {
    ConstructPanelBar();
    mpCBook = new wxNotebook(this, wxID_ANY);
    mpCPageObject = new PropertyObject_cls(mpCBook);
    mpCBook->AddPage(mpCPageObject, _("Object"), true);
    mpCPageFilter = new PropertyFilter_cls(mpCBook);
    mpCBook->AddPage(mpCPageFilter, _("Scene Filter"), false);
    mpCPageRender = new PropertyRender_cls(mpCBook);
    mpCBook->AddPage(mpCPageRender, _("Render"), false);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(mpCBook, 1, wxEXPAND);
    SetSizer(pSizer);
    SyncKindPage();
}

void Property_cls::SyncKindPage() {
    SceneObj_cls* p = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCActiveObject() : nullptr;
    const wxString strClass = p ? p->mStrClassWord : wxString();
    if (mpCPageKind && mpCPageKind->mStrClassWord == strClass)
        return;
    if (mpCPageKind) {
        mpCBook->DeletePage(static_cast<size_t>(mpCBook->FindPage(mpCPageKind)));
        mpCPageKind = nullptr;
    }
    if (strClass.empty())
        return;
    mpCPageKind = PropertyKindPage_cls::MakePage(strClass, mpCBook);
    if (mpCPageKind)
        mpCBook->AddPage(mpCPageKind, mpCPageKind->GetStrLabel(), false);
}

bool Property_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    return PlaceholderPanel_cls::ReadBlock(stream, strKey, strRest, mStrBlock);
}

void Property_cls::UpdatePanelSelf(const wxString& strName, bool) {
    // The pages compare the name with their own.
    mpCPageObject->UpdatePage(strName);
    mpCPageFilter->UpdatePage(strName);
    SyncKindPage();
    if (mpCPageKind)
        mpCPageKind->UpdatePage(strName);
    mpCPageRender->UpdatePage(strName);
}

void Property_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString&) {
    if (strWhat == "SelectObject" || strWhat == "DeleteObject" || strWhat == "RenameObject")
        mpCPageObject->RefreshFromObject();
    // Objects come and go from the legend's curve choice too.
    if (strWhat == "FilterChange" || strWhat == "DeleteFilter" || strWhat == "DeleteObject" ||
        strWhat == "RenameObject")
        mpCPageFilter->RefreshFromChain();
    SyncKindPage();
    if (mpCPageKind && (strWhat == "SelectObject" || strWhat == "RenameObject" ||
                        strWhat == "ModifierChange" || strWhat == "DataProcChange"))
        mpCPageKind->RefreshFromObject();
}
