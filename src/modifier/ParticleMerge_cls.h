// "ParticleMerge_cls": draws the particles of another particle object together with this one's,
// so that both sort as one set. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class Particle_cls;
class SceneObj_cls;

class ParticleMerge_cls : public ModifierBase_cls {
public:
    explicit ParticleMerge_cls(const wxString& strName);

    // The object named by Target= when it is a particle object other than pOwn; null otherwise
    // (the entry then has no effect).
    Particle_cls* GetPCTargetParticle(SceneObj_cls* pOwn);

    ConfItemSTR_cls mCTarget; // "Target="
};
