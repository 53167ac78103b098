// "ModifyApparentSize_cls": keeps the size of particles on screen within limits, for particles
// too far or too near, and fades them by a chosen law. Main thread only;
// ModifyApparentSizeExec_cls does the work from a clone.
#pragma once

#include "ModifierBase_cls.h"

class ModifyApparentSize_cls : public ModifierBase_cls {
public:
    explicit ModifyApparentSize_cls(const wxString& strName);

    ConfItemBOOL_cls mCLimitApparentMin; // "LimitApparentMin="
    ConfItemBOOL_cls mCModifyAlphaMin;   // "ModifyAlphaMin="
    ConfItemINT_cls mCPowerAlphaMin;     // "PowerAlphaMin=": 0, 1, 2
    ConfItemBOOL_cls mCLimitApparentMax; // "LimitApparentMax="
    ConfItemBOOL_cls mCModifyAlphaMax;   // "ModifyAlphaMax="
    ConfItemINT_cls mCPowerAlphaMax;     // "PowerAlphaMax=": 0 .. 3
    ConfItemINT_cls mCTargetType;        // "TargetType=": 0 all, k > 0 only type k - 1
};
