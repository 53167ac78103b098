// The sequence of volume snaps of one volume object.
#pragma once

#include "DataSequence_cls.h"
#include "VolumeSnap_cls.h"

class VolumeSequence_cls : public DataSequence_cls {
public:
    VolumeSequence_cls() : DataSequence_cls(0) {}
    ~VolumeSequence_cls() override { ClearSequence(); }

    VolumeSnap_cls* GenerateIfNot(int index) {
        return static_cast<VolumeSnap_cls*>(DataSequence_cls::GenerateIfNot(index));
    }
    VolumeSnap_cls* GetPCSnap(int index) const {
        return static_cast<VolumeSnap_cls*>(DataSequence_cls::GetPCSnap(index));
    }
    // Gives the snap of index its file (the first slice of the stack for a stack) and, for a
    // stack, its private name rule.
    void PrepareSnap(VolumeSnap_cls* pSnap, int index, bool zStack);
    // Starts at most one read of a step that the next PrefetchLength= frames need.
    bool PrefetchData(SequenceRemapBase_cls* pRemap, bool zStack);

protected:
    DataSnap_cls* NewSnap(int index) override { return new VolumeSnap_cls(this, index); }
};
