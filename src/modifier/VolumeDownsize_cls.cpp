#include "VolumeDownsize_cls.h"

VolumeDownsize_cls::VolumeDownsize_cls(const wxString& strName)
    : ModifierBase_cls("VolumeDownsize_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCDownsizeX, "DownsizeX=", "2", mStrTag);
    Add(&mCDownsizeY, "DownsizeY=", "2", mStrTag);
    Add(&mCDownsizeZ, "DownsizeZ=", "2", mStrTag);
}
