// "ParticleDownsizing_cls": thins the particles of a viewer. It has no executor: the preparation
// multiplies Downsize= of all valid entries and takes DownsizeType= of the last one
// (PrepareSetting_cls::ReadFromClone). Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class ParticleDownsizing_cls : public ModifierBase_cls {
public:
    explicit ParticleDownsizing_cls(const wxString& strName);

    ConfItemINT_cls mCDownsizeType; // "DownsizeType=": 0 by index, 1 by ID
    ConfItemINT_cls mCDownsize;     // "Downsize=": keep one of this many
};
