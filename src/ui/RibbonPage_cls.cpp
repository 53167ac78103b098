#include "RibbonPage_cls.h"

RibbonPage_cls::RibbonPage_cls(wxRibbonBar* pBar, const wxString& strLabel,
                               const std::vector<wxString>& vStrPaneLabels)
    : wxRibbonPage(pBar, wxID_ANY, strLabel) {
    for (const wxString& strPane : vStrPaneLabels) {
        auto* pPanel = new wxRibbonPanel(this, wxID_ANY, strPane, wxNullBitmap, wxDefaultPosition,
                                         wxDefaultSize, wxRIBBON_PANEL_NO_AUTO_MINIMISE);
        mVPCPanel.push_back(pPanel);
        mVPCToolBar.push_back(new wxRibbonToolBar(pPanel, wxID_ANY));
    }
}
