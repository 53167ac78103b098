#include "PanelBar_cls.h"

#include "BitmapPanel_cls.h"

#include <wx/sizer.h>

#include <algorithm>

const std::vector<int> PanelBar_cls::msAIDHide = {ID_PANEL_SHOW_BAR};

PanelBar_cls::PanelBar_cls(wxWindow* pParent) : wxPanelEX(pParent, _PANEL_UNDEFINED, "BarPanel") {
    mpCSizer = new wxBoxSizer(wxHORIZONTAL);
    SetSizer(mpCSizer);
}

BitmapPanel_cls* PanelBar_cls::AddBarButton(int id, const wxString& strTag, const wxString& strTagPressed) {
    wxSize sizeIcon(18, 18);
    auto* pButton = new BitmapPanel_cls(this, id, GetBitmapFromTag(strTag, sizeIcon),
                                        GetBitmapFromTag(strTagPressed, sizeIcon), wxSize(20, 20));
    mpCSizer->Add(pButton, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    return pButton;
}

void PanelBar_cls::AddBarSpacer() {
    mpCSizer->AddSpacer(msBarSpacer);
}

void PanelBar_cls::ConstructBarItemDefault() {
    AddBarSpacer();
    AddBarButton(ID_PANEL_SEPARATE_H, "wxART_SPLITTER_H", "wxART_SPLITTER_H_P");
    AddBarButton(ID_PANEL_SEPARATE_V, "wxART_SPLITTER_V", "wxART_SPLITTER_V_P");
    AddBarButton(ID_PANEL_DESTROY, "wxART_SPLITTER_D", "wxART_SPLITTER_D_P");
}

void PanelBar_cls::ConstructBarItemHideShow() {
    AddBarSpacer();
    AddBarButton(ID_PANEL_HIDE_BAR, "wxART_HIDE", "wxART_HIDE_P");
    AddBarButton(ID_PANEL_SHOW_BAR, "wxART_SHOW", "wxART_SHOW_P")->Hide();
}

void PanelBar_cls::ConstructBarItemZoom() {
    AddBarSpacer();
    AddBarButton(ID_PANEL_ZOOM_P, "wxART_ZOOM_P", "wxART_ZOOM_P_P");
    AddBarButton(ID_PANEL_ZOOM_M, "wxART_ZOOM_M", "wxART_ZOOM_M_P");
}

void PanelBar_cls::HideItem() {
    Freeze();
    for (wxSizerItem* pItem : mpCSizer->GetChildren()) {
        if (pItem->IsSpacer()) {
            pItem->Show(false);
            continue;
        }
        wxWindow* pWin = pItem->GetWindow();
        if (!pWin)
            continue;
        bool bKeep = std::find(msAIDHide.begin(), msAIDHide.end(), pWin->GetId()) != msAIDHide.end();
        pWin->Show(bKeep);
    }
    mbHidden = true;
    Layout();
    Thaw();
    if (GetParent())
        GetParent()->Layout();
}

void PanelBar_cls::ShowItem() {
    Freeze();
    for (wxSizerItem* pItem : mpCSizer->GetChildren()) {
        if (pItem->IsSpacer()) {
            pItem->Show(true);
            continue;
        }
        wxWindow* pWin = pItem->GetWindow();
        if (!pWin)
            continue;
        // The items kept while collapsed are exactly the ones hidden while open.
        bool bKeep = std::find(msAIDHide.begin(), msAIDHide.end(), pWin->GetId()) != msAIDHide.end();
        pWin->Show(!bKeep);
    }
    mbHidden = false;
    Layout();
    Thaw();
    if (GetParent())
        GetParent()->Layout();
}

void PanelBar_cls::ToggleItem() {
    if (mbHidden)
        ShowItem();
    else
        HideItem();
}
