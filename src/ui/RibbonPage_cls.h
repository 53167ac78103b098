// One page of the ribbon: a panel with one tool bar for each pane label, in pane order.
// Main thread only.
#pragma once

#include <wx/ribbon/page.h>
#include <wx/ribbon/panel.h>
#include <wx/ribbon/toolbar.h>

#include <vector>

class RibbonPage_cls : public wxRibbonPage {
public:
    RibbonPage_cls(wxRibbonBar* pBar, const wxString& strLabel, const std::vector<wxString>& vStrPaneLabels);

    std::vector<wxRibbonPanel*> mVPCPanel;     // toolkit-owned children
    std::vector<wxRibbonToolBar*> mVPCToolBar; // one per panel
};
