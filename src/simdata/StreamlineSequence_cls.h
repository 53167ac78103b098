// The sequence of stream-line snaps of one stream-line object.
#pragma once

#include "DataSequence_cls.h"
#include "StreamlineSnap_cls.h"

class StreamlineSequence_cls : public DataSequence_cls {
public:
    StreamlineSequence_cls() : DataSequence_cls(3) {}
    ~StreamlineSequence_cls() override { ClearSequence(); }

    StreamlineSnap_cls* GenerateIfNot(int index) {
        return static_cast<StreamlineSnap_cls*>(DataSequence_cls::GenerateIfNot(index));
    }
    StreamlineSnap_cls* GetPCSnap(int index) const {
        return static_cast<StreamlineSnap_cls*>(DataSequence_cls::GetPCSnap(index));
    }
    // Starts at most one read of a step that the next PrefetchLength= frames need.
    bool PrefetchData(SequenceRemapBase_cls* pRemap) {
        return PrefetchLoop(pRemap, [&](int index) {
            StreamlineSnap_cls* pSnap = GenerateIfNot(index);
            if (!pSnap)
                return false;
            pSnap->SetStrFile(GetStrFileOfIndex(index));
            return pSnap->PrefetchData();
        });
    }

protected:
    DataSnap_cls* NewSnap(int index) override { return new StreamlineSnap_cls(this, index); }
};
