#include "VolumeSequence_cls.h"

void VolumeSequence_cls::PrepareSnap(VolumeSnap_cls* pSnap, int index, bool zStack) {
    if (!zStack) {
        pSnap->SetStrFile(GetStrFileOfIndex(index));
        return;
    }
    pSnap->SetFileSequenceDual(this, index);
    pSnap->SetStrFile(GetModifiedStrDual(index, 0, 0, mStrScript));
}

bool VolumeSequence_cls::PrefetchData(SequenceRemapBase_cls* pRemap, bool zStack) {
    return PrefetchLoop(pRemap, [&](int index) {
        VolumeSnap_cls* pSnap = GenerateIfNot(index);
        if (!pSnap)
            return false;
        PrepareSnap(pSnap, index, zStack);
        return pSnap->PrefetchData(zStack);
    });
}
