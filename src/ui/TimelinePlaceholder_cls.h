// The timeline leaf until the timeline panel exists: the stand-in panel with the clock's play
// strip under its bar, so the transport, the spins and the key type can be used. The strip is
// an ordinary child: the timeline panel will host it the same way. Main thread only.
#pragma once

#include "PlaceholderPanel_cls.h"

class PlayCtrl_cls;

class TimelinePlaceholder_cls : public PlaceholderPanel_cls {
public:
    explicit TimelinePlaceholder_cls(SplittableWindow_cls* pOwner);

    PlayCtrl_cls* GetPCPlayCtrl() const { return mpCPlayCtrl; }

protected:
    // "TIMELINE" and "ALL" refresh the strip as well.
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;

private:
    PlayCtrl_cls* mpCPlayCtrl = nullptr; // a child window: the toolkit deletes it
};
