// The executor of "ParticleMerge_cls": appends the prepared arrays of another particle object's
// frame to this one's. It replaces arrays, so it runs between passes on the main thread only,
// never while workers use either set.
#pragma once

class AttributeClone_cls;
class ParticleForRender_cls;

class ParticleMergeExe_cls {
public:
    // Not owned: the three belong to the caller for the call.
    ParticleMergeExe_cls(AttributeClone_cls* pClone, ParticleForRender_cls* pOwn,
                         ParticleForRender_cls* pOther);

    // Nothing when switched off, when either set is missing or the other has no element. Otherwise
    // every prepared array of own holds own's elements first and then the other's; the order
    // entries of the other's elements point past own's. False when memory was refused (own is
    // then cleared, as a failed preparation leaves it).
    bool Execute();

private:
    bool mbValid = true;
    ParticleForRender_cls* mpOwn;
    ParticleForRender_cls* mpOther;
};
