#include "ModifierServices.h"

#include "ArrayCopy_cls.h"
#include "BooleanBase_cls.h"
#include "DataViewerBase_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleMerge_cls.h"
#include "ParticleModifierPipeline_cls.h"
#include "ParticleTweak_cls.h"
#include "Particle_cls.h"
#include "SceneObj_cls.h"
#include "SequenceRemap_cls.h"
#include "TexSpaceMod_cls.h"
#include "TimeCtrl_cls.h"
#include "Tracking_cls.h"
#include "Trimming_cls.h"

namespace {

bool IsViewer(SceneObj_cls* p) {
    return dynamic_cast<DataViewerBase_cls*>(p) != nullptr;
}
bool IsParticle(SceneObj_cls* p) {
    return dynamic_cast<Particle_cls*>(p) != nullptr;
}
bool IsAnyObject(SceneObj_cls*) {
    return true;
}

// How a kind is made on the stack it belongs to; it refuses the objects it does not fit.
template <class Kind_T>
void SetMaker(const char* pStack, const char* pClassWord, bool (*funcFits)(SceneObj_cls*)) {
    SceneObj_cls::SetAttributeMaker(pStack, pClassWord,
                                    [funcFits](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return funcFits(p) ? new Kind_T(strName) : nullptr;
                                    });
}

} // namespace

void RegisterModifierServices() {
    SetMaker<SequenceRemap_cls>("Modifier", "SequenceRemap_cls", IsViewer);
    SetMaker<ParticleFiltering_cls>("Modifier", "ParticleFiltering_cls", IsParticle);
    SetMaker<ParticleDownsizing_cls>("DataProc", "ParticleDownsizing_cls", IsParticle);
    SetMaker<ModifyParticleSize_cls>("Modifier", "ModifyParticleSize_cls", IsParticle);
    SetMaker<ModifyApparentSize_cls>("Modifier", "ModifyApparentSize_cls", IsParticle);
    SetMaker<ParticleBoolean_cls>("Modifier", "ParticleBoolean_cls", IsParticle);
    SetMaker<ParticleTweak_cls>("Modifier", "ParticleTweak_cls", IsParticle);
    SetMaker<Trimming_cls>("Modifier", "Trimming_cls", IsViewer);
    SetMaker<Tracking_cls>("Modifier", "Tracking_cls", IsAnyObject);
    SetMaker<ArrayCopy_cls>("Modifier", "ArrayCopy_cls", IsAnyObject);
    SetMaker<ParticleMerge_cls>("DataProc", "ParticleMerge_cls", IsParticle);
    // Objects with textures: the scene has no common base for them, so any object takes it.
    SetMaker<TexSpaceMod_cls>("Modifier", "TexSpaceMod_cls", IsAnyObject);

    // The particle modifiers at their fixed places in a preparation.
    ParticleForRender_cls::msFuncParticleModifier = ParticleModifierPipeline_cls::Run;
    // The scene's seams for the two kinds that act inside the object's own operations.
    SceneObj_cls::msFuncTracking = [](SceneObj_cls* pObj, Attribute_cls* pAttr, double* C, double* P,
                                      double t) {
        if (auto* p = dynamic_cast<Tracking_cls*>(pAttr))
            p->Execute(pObj, C, P, t);
    };
    SceneObj_cls::msFuncArrayCopyCount = [](SceneObj_cls*, Attribute_cls* pAttr) {
        auto* p = dynamic_cast<ArrayCopy_cls*>(pAttr);
        return p ? p->GetCopyCount(TimeCtrl_cls::GetClockNT()) : 0;
    };
}
