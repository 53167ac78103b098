#include "StreamSetAlpha_cls.h"

StreamSetAlpha_cls::StreamSetAlpha_cls(const wxString& strName)
    : ModifierBase_cls("StreamSetAlpha_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCSetAlphaType, "SetAlphaType=", "0", mStrTag);
    Add(&mCCrit, "Crit=", "0", mStrTag);
}
