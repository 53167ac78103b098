#include "ParticleDownsizing_cls.h"

ParticleDownsizing_cls::ParticleDownsizing_cls(const wxString& strName)
    : ModifierBase_cls("ParticleDownsizing_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCDownsizeType, "DownsizeType=", "0", mStrTag);
    Add(&mCDownsize, "Downsize=", "1", mStrTag);
}
