#include "TexSpaceMod_cls.h"

TexSpaceMod_cls::TexSpaceMod_cls(const wxString& strName)
    : ModifierBase_cls("TexSpaceMod_cls", strName, "VIEW3D::PROPERTY_MODIFIER") {
    Add(&mCAdjustScale, "AdjustScale=", "1", mStrTag);
}

void TexSpaceMod_cls::Execute(std::vector<double>& coord, int dims, const double* scale) {
    if (!IsValid() || !mCAdjustScale.GetBodyBOOL() || !scale || dims < 1 || dims > 3)
        return;
    for (size_t i = 0; i < coord.size(); ++i)
        coord[i] *= scale[i % dims];
}
