#include "TimelinePlaceholder_cls.h"

#include "PlayCtrl_cls.h"

#include <wx/sizer.h>

TimelinePlaceholder_cls::TimelinePlaceholder_cls(SplittableWindow_cls* pOwner)
    : PlaceholderPanel_cls(pOwner, _PANEL_TIMELINE) {
    mpCPlayCtrl = new PlayCtrl_cls(this);
    // Right under the bar, which is the sizer's first item.
    GetSizer()->Insert(1, mpCPlayCtrl, 0, wxEXPAND | wxALL, 2);
    Layout();
}

void TimelinePlaceholder_cls::UpdatePanelSelf(const wxString& strName, bool bForce) {
    PlaceholderPanel_cls::UpdatePanelSelf(strName, bForce);
    if (IsUpdateTarget(strName))
        mpCPlayCtrl->UpdatePanels();
}
