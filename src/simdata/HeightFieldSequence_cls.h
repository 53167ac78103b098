// The sequence of height-field snaps of one height-field object. Unlike the image sequence of
// overlays, its heights live in the snaps (the preparation needs them on the processor), so it
// counts their memory.
#pragma once

#include "DataSequence_cls.h"
#include "HeightFieldSnap_cls.h"

class HeightFieldSequence_cls : public DataSequence_cls {
public:
    HeightFieldSequence_cls() : DataSequence_cls(2) {}
    ~HeightFieldSequence_cls() override { ClearSequence(); }

    HeightFieldSnap_cls* GenerateIfNot(int index) {
        return static_cast<HeightFieldSnap_cls*>(DataSequence_cls::GenerateIfNot(index));
    }
    HeightFieldSnap_cls* GetPCSnap(int index) const {
        return static_cast<HeightFieldSnap_cls*>(DataSequence_cls::GetPCSnap(index));
    }
    // Gives the snap of index its file and the channel. A snap read with another channel is read
    // again.
    void PrepareSnap(HeightFieldSnap_cls* pSnap, int index, int channel) {
        if (pSnap->IsReading())
            return;
        if (pSnap->mChannel != channel)
            pSnap->mReadFile.clear();
        pSnap->SetChannel(channel);
        pSnap->SetStrFile(GetStrFileOfIndex(index));
    }
    // Starts at most one read of a step that the next PrefetchLength= frames need.
    bool PrefetchData(SequenceRemapBase_cls* pRemap, int channel) {
        return PrefetchLoop(pRemap, [&](int index) {
            HeightFieldSnap_cls* pSnap = GenerateIfNot(index);
            if (!pSnap)
                return false;
            PrepareSnap(pSnap, index, channel);
            return pSnap->PrefetchData();
        });
    }

protected:
    DataSnap_cls* NewSnap(int index) override { return new HeightFieldSnap_cls(this, index); }
};
