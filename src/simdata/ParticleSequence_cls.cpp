#include "ParticleSequence_cls.h"

bool ParticleSequence_cls::PrefetchData(ParticleFormatClone_cls* pFormat, SequenceRemapBase_cls* pRemap) {
    return PrefetchLoop(pRemap, [&](int index) {
        ParticleSnap_cls* pSnap = GenerateIfNot(index);
        if (!pSnap)
            return false;
        pSnap->SetStrFile(GetStrFileOfIndex(index));
        return pSnap->PrefetchData(pFormat);
    });
}
