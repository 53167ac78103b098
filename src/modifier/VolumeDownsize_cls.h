// "VolumeDownsize_cls": the data process of a volume that averages blocks of DownsizeX= by
// DownsizeY= by DownsizeZ= voxels into one before the upload, for big volumes on a small card.
// No executor: the volume object copies the factors into the settings of its preparation.
// Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class VolumeDownsize_cls : public ModifierBase_cls {
public:
    explicit VolumeDownsize_cls(const wxString& strName);

    ConfItemINT_cls mCDownsizeX; // "DownsizeX="
    ConfItemINT_cls mCDownsizeY; // "DownsizeY="
    ConfItemINT_cls mCDownsizeZ; // "DownsizeZ="
};
