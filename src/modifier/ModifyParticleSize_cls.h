// "ModifyParticleSize_cls": scales each particle's size by a colour curve used as a lookup
// table. Main thread only; ModifyParticleSizeExec_cls does the work from a clone.
#pragma once

#include "ModifierBase_cls.h"

class ModifyParticleSize_cls : public ModifierBase_cls {
public:
    explicit ModifyParticleSize_cls(const wxString& strName);

    ConfItemINT_cls mCTargetType; // "TargetType=": 0 all, k > 0 only type k - 1
    // The values of "DependType=": what the lookup reads of each particle. The three value
    // columns follow kDependValue0 in order.
    static constexpr int kDependIndex = 0;
    static constexpr int kDependID = 1;
    static constexpr int kDependSize = 2;
    static constexpr int kDependValue0 = 3;
    static constexpr int kValueColumns = 3;

    ConfItemINT_cls mCDependType;      // "DependType=": one of the kDepend... values
    ConfItemINT_cls mCColorCurveIndex; // "ColorCurveIndex="
    ConfItemINT_cls mCChannelType;     // "ChannelType=": 0 R, 1 G, 2 B, 3 luminance, 4 brightness, 5 A
};
