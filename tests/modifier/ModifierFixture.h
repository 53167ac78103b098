// The viewer fixture one layer higher: the modifier kinds registered on the scene and the
// modifier pipeline installed in the preparation.
#pragma once

#include "ViewerFixture.h"

#include "Particle_cls.h"

class ModifierFixture : public ViewerFixtureOf<ServiceLayer_enum::Modifier> {
protected:
    Particle_cls* NewParticle(const wxString& strName) {
        const wxString str = Ctrl()->AppendSceneObjCommand("Particle", strName);
        return dynamic_cast<Particle_cls*>(Obj(str));
    }
};
