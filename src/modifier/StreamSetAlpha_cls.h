// "StreamSetAlpha_cls": the opacity of each stream-line point from its value. SetAlphaType= 0
// hides the points whose value lies below Crit=, 1 those above it, 2 fades them in as value /
// Crit (clamped to 0 .. 1). No executor: the stream-line object copies the keys into its
// preparation settings. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class StreamSetAlpha_cls : public ModifierBase_cls {
public:
    explicit StreamSetAlpha_cls(const wxString& strName);

    ConfItemINT_cls mCSetAlphaType;
    ConfItemFLOAT_cls mCCrit;
};
