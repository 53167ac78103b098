#include "ModifyApparentSize_cls.h"

ModifyApparentSize_cls::ModifyApparentSize_cls(const wxString& strName)
    : ModifierBase_cls("ModifyApparentSize_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCLimitApparentMin, "LimitApparentMin=", "1", mStrTag);
    Add(&mCModifyAlphaMin, "ModifyAlphaMin=", "1", mStrTag);
    Add(&mCPowerAlphaMin, "PowerAlphaMin=", "2", mStrTag);
    Add(&mCLimitApparentMax, "LimitApparentMax=", "0", mStrTag);
    Add(&mCModifyAlphaMax, "ModifyAlphaMax=", "0", mStrTag);
    Add(&mCPowerAlphaMax, "PowerAlphaMax=", "3", mStrTag);
    Add(&mCTargetType, "TargetType=", "0", mStrTag);
    // "Min Apparent" and "Max Apparent": size over depth, as seen from the camera.
    InitializeAndPushParam(GetPCNewParamGroup("Parameters", "MinApparent", "MaxApparent"), 0.002, 0.1);
}
