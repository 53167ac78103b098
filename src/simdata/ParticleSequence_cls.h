// The sequence of particle snaps of one particle object.
#pragma once

#include "DataSequence_cls.h"
#include "ParticleSnap_cls.h"

class ParticleFormatClone_cls;

class ParticleSequence_cls : public DataSequence_cls {
public:
    ParticleSequence_cls() : DataSequence_cls(1) {}
    ~ParticleSequence_cls() override { ClearSequence(); }

    ParticleSnap_cls* GenerateIfNot(int index) {
        return static_cast<ParticleSnap_cls*>(DataSequence_cls::GenerateIfNot(index));
    }
    ParticleSnap_cls* GetPCSnap(int index) const {
        return static_cast<ParticleSnap_cls*>(DataSequence_cls::GetPCSnap(index));
    }
    // Starts at most one read of a step that the next PrefetchLength= frames need; true when a
    // read started. The caller keeps pFormat either way.
    bool PrefetchData(ParticleFormatClone_cls* pFormat, SequenceRemapBase_cls* pRemap);

protected:
    DataSnap_cls* NewSnap(int index) override { return new ParticleSnap_cls(this, index); }
};
