#include "ParticleFiltering_cls.h"

ParticleFiltering_cls::ParticleFiltering_cls(const wxString& strName)
    : ModifierBase_cls("ParticleFiltering_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCFilteringType, "FilteringType=", "0", mStrTag);
    Add(&mCIndexType, "IndexType=", "0", mStrTag);
    Add(&mCFilteringString, "FilteringString=", "", mStrTag);
}
