// Reads the voxels of a df3 file: one byte per voxel behind the 6-byte header.
#pragma once

#include "GetPC_cls.h"
#include "VolumeReadBase_cls.h"

class ThreadDF3Read : public VolumeReadBase_cls, public GetPC_cls {
public:
    void DoRead() override { ReadDF3(); }
    void ReadDF3();
};
