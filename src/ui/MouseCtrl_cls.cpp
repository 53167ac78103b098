#include "MouseCtrl_cls.h"

#include <cstdlib>

void MouseCtrl_cls::SetMouseEvent(const wxMouseEvent& event) {
    mPos = event.GetPosition();
    if (event.RightDown()) {
        mbRightDown = true;
        mPosRightDown = mPos;
        mbShowMenu = false;
    } else if (event.RightUp()) {
        bool bStill = std::abs(mPos.x - mPosRightDown.x) <= msClickTolerance &&
                      std::abs(mPos.y - mPosRightDown.y) <= msClickTolerance;
        mbShowMenu = mbRightDown && bStill;
        mbRightDown = false;
    }
}

bool MouseCtrl_cls::IsShowMenu() {
    bool b = mbShowMenu;
    mbShowMenu = false;
    return b;
}
