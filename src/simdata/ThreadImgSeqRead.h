// Reads a volume from a stack of images, one per Z slice: the red channel, image rows flipped
// so that the first row of an image is the top (largest Y) of the slice.
#pragma once

#include "FileSequenceDual_cls.h"
#include "GetPC_cls.h"
#include "VolumeReadBase_cls.h"

class ThreadImgSeqRead : public VolumeReadBase_cls, public GetPC_cls {
public:
    void SetParameters(std::atomic<bool>* pbFinished, VolumeSnap_cls* pSnap) override;
    void DoRead() override { ReadImgSeq(); }
    void ReadImgSeq();

    FileSequenceDual_cls mFileSequenceDual; // a private copy of the stack's name rule
    int mIndexT = 0;
};
