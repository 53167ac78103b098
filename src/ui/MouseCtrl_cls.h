// Reads the mouse events of one panel and tells when the context menu is due: the right
// button released close to where it went down. Main thread only.
#pragma once

#include <wx/event.h>
#include <wx/gdicmn.h>

class MouseCtrl_cls {
public:
    void SetMouseEvent(const wxMouseEvent& event);
    // True once after a right click that did not drag.
    bool IsShowMenu();
    wxPoint GetPosition() const { return mPos; }

    // Farther than this from the press point makes the right button a drag.
    static constexpr int msClickTolerance = 4;

    wxPoint mPos;
    wxPoint mPosRightDown;
    bool mbRightDown = false;
    bool mbShowMenu = false;
};
