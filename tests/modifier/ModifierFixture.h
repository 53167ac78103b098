// The viewer fixture with the modifier kinds registered on the scene.
#pragma once

#include "../viewer/ViewerFixture.h"

#include "ModifierServices.h"
#include "Particle_cls.h"

class ModifierFixture : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        RegisterModifierServices();
    }

    Particle_cls* NewParticle(const wxString& strName) {
        const wxString str = Ctrl()->AppendSceneObjCommand("Particle", strName);
        return dynamic_cast<Particle_cls*>(Obj(str));
    }
};
