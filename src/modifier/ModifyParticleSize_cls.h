// "ModifyParticleSize_cls": scales each particle's size by a colour curve used as a lookup
// table. Main thread only; ModifyParticleSizeExec_cls does the work from a clone.
#pragma once

#include "ModifierBase_cls.h"

class ModifyParticleSize_cls : public ModifierBase_cls {
public:
    explicit ModifyParticleSize_cls(const wxString& strName);

    ConfItemINT_cls mCTargetType;      // "TargetType=": 0 all, k > 0 only type k - 1
    ConfItemINT_cls mCDependType;      // "DependType=": 0 index, 1 ID, 2 size, 3..5 Value0..2
    ConfItemINT_cls mCColorCurveIndex; // "ColorCurveIndex="
    ConfItemINT_cls mCChannelType;     // "ChannelType=": 0 R, 1 G, 2 B, 3 luminance, 4 brightness, 5 A
};
