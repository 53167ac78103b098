#include "VolumeCoord_cls.h"

VolumeCoord_cls::VolumeCoord_cls(const wxString& strName)
    : ModifierBase_cls("VolumeCoord_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCCoordType, "CoordType=", "0", mStrTag);
    Add(&mCCustomCoord, "CustomCoord=", "", mStrTag);
}

ShaderStatusVolumeCoord_cls VolumeCoord_cls::GetStatus(const VolumeCoord_cls* p) {
    ShaderStatusVolumeCoord_cls s;
    if (!p || !p->IsValid())
        return s;
    s.mbOn = true;
    s.mType = static_cast<int>(p->mCCoordType.GetBodyINT());
    if (s.mType == 3)
        s.mStrExpression = p->mCCustomCoord.GetBodySTR();
    return s;
}

bool VolumeCoord_cls::IsStatusChanged(const VolumeCoord_cls* p, const ShaderStatusVolumeCoord_cls& used) {
    return GetStatus(p) != used;
}

wxString VolumeCoord_cls::GetStrModifiedShader(const wxString& strText, const ShaderStatusVolumeCoord_cls& s,
                                               const wxString& strFunction) {
    if (!s.mbOn)
        return strText;
    wxString strBody = wxString::Format("#define VOLUME_COORD_TYPE %d\n", s.mType);
    // An empty custom expression leaves the point as it is.
    strBody << "#define VOLUME_COORD_CUSTOM(p) ("
            << (s.mStrExpression.Strip(wxString::both).empty() ? wxString("p") : s.mStrExpression) << ")\n";
    for (int i = 0; i < 6; ++i)
        strBody << wxString::Format("#define VOLUME_COORD_RANGE%d %.9g\n", i, s.mRange[i]);
    strBody << strFunction;
    return ShaderStatusVolume_cls::ReplaceSection(strText, "//##FUNC_VOLUME_COORD_BEGIN##",
                                                  "//##FUNC_VOLUME_COORD_END##", strBody);
}
