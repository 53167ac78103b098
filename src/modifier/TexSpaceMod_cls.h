// "TexSpaceMod_cls" ("Texture Space Modifier"): fits the texture space of an object with
// textures to the object's scale. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

#include <vector>

class TexSpaceMod_cls : public ModifierBase_cls {
public:
    explicit TexSpaceMod_cls(const wxString& strName);

    // coord holds texture coordinates, dims per point; scale the object's scale, one per axis.
    // With AdjustScale= each coordinate axis is multiplied by the object's scale along it, so a
    // stretched object repeats its texture instead of stretching it. Nothing when switched off.
    void Execute(std::vector<double>& coord, int dims, const double* scale);

    ConfItemBOOL_cls mCAdjustScale; // "AdjustScale="
};
