#include "VolumeMask_cls.h"

VolumeMask_cls::VolumeMask_cls(const wxString& strName)
    : ModifierBase_cls("VolumeMask_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCMaskType, "MaskType=", "0", mStrTag);
}

ShaderStatusVolumeMask_cls VolumeMask_cls::GetStatus(const VolumeMask_cls* p) {
    ShaderStatusVolumeMask_cls s;
    if (!p || !p->IsValid())
        return s;
    s.mbOn = true;
    s.mType = static_cast<int>(p->mCMaskType.GetBodyINT());
    return s;
}

bool VolumeMask_cls::IsStatusChanged(const VolumeMask_cls* p, const ShaderStatusVolumeMask_cls& used) {
    return GetStatus(p) != used;
}

wxString VolumeMask_cls::GetStrModifiedShader(const wxString& strText, const ShaderStatusVolumeMask_cls& s,
                                              const wxString& strFunction) {
    if (!s.mbOn)
        return strText;
    const wxString strBody = wxString::Format("#define VOLUME_MASK_TYPE %d\n", s.mType) + strFunction;
    return ShaderStatusVolume_cls::ReplaceSection(strText, "//##FUNC_VOLUME_MASK_BEGIN##",
                                                  "//##FUNC_VOLUME_MASK_END##", strBody);
}
