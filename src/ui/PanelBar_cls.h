// The strip of small buttons at the top of a content panel: the type selector, split, remove,
// zoom, and hide/show of the strip itself. Main thread only.
#pragma once

#include "wxPanelEX.h"

#include <vector>

class BitmapPanel_cls;
class wxBoxSizer;

class PanelBar_cls : public wxPanelEX {
public:
    explicit PanelBar_cls(wxWindow* pParent);

    // Split horizontally, split vertically, remove.
    void ConstructBarItemDefault();
    // Hide and show of the bar; the show button starts hidden.
    void ConstructBarItemHideShow();
    void ConstructBarItemZoom();
    // Adds a 20 by 20 button with a normal and a pressed icon.
    BitmapPanel_cls* AddBarButton(int id, const wxString& strTag, const wxString& strTagPressed);
    void AddBarSpacer();

    // Collapses the bar to the items of msAIDHide; ShowItem restores it.
    void HideItem();
    void ShowItem();
    void ToggleItem();
    bool IsItemHidden() const { return mbHidden; }

    // The ids that stay visible while the bar is collapsed.
    static const std::vector<int> msAIDHide;
    static constexpr int msBarSpacer = 8;

    wxBoxSizer* mpCSizer = nullptr;
    bool mbHidden = false;
};
