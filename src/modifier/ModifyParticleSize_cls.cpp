#include "ModifyParticleSize_cls.h"

ModifyParticleSize_cls::ModifyParticleSize_cls(const wxString& strName)
    : ModifierBase_cls("ModifyParticleSize_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCTargetType, "TargetType=", "0", mStrTag);
    Add(&mCDependType, "DependType=", "3", mStrTag);
    Add(&mCColorCurveIndex, "ColorCurveIndex=", "0", mStrTag);
    Add(&mCChannelType, "ChannelType=", "3", mStrTag);
}
