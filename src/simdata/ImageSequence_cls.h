// The sequence of image snaps of a height field or overlay. Its memory is counted by the texture
// stock, so it reports none.
#pragma once

#include "DataSequence_cls.h"
#include "ImageSnap_cls.h"

class ImageSequence_cls : public DataSequence_cls {
public:
    ImageSequence_cls() : DataSequence_cls(2) {}
    ~ImageSequence_cls() override { ClearSequence(); }

    ImageSnap_cls* GenerateIfNot(int index) {
        return static_cast<ImageSnap_cls*>(DataSequence_cls::GenerateIfNot(index));
    }
    ImageSnap_cls* GetPCSnap(int index) const {
        return static_cast<ImageSnap_cls*>(DataSequence_cls::GetPCSnap(index));
    }
    int GetTotalUsedMemoryMB() override {
        mTotalMB = 0;
        return 0;
    }

protected:
    DataSnap_cls* NewSnap(int index) override { return new ImageSnap_cls(this, index); }
};
