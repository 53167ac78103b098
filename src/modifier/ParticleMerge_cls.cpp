#include "ParticleMerge_cls.h"

#include "ClassProvider_cls.h"
#include "Particle_cls.h"
#include "SceneObjCtrl_cls.h"

ParticleMerge_cls::ParticleMerge_cls(const wxString& strName)
    : ModifierBase_cls("ParticleMerge_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCTarget, "Target=", "None", mStrTag);
}

Particle_cls* ParticleMerge_cls::GetPCTargetParticle(SceneObj_cls* pOwn) {
    const wxString str = mCTarget.GetBodySTR();
    if (str == "None" || !GpCSceneObjCtrl)
        return nullptr;
    SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(str);
    if (!p || p == pOwn)
        return nullptr;
    return Particle_cls::GetPCParticle(p);
}
