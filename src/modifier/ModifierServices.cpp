#include "ModifierServices.h"

#include "ArrayCopy_cls.h"
#include "BooleanBase_cls.h"
#include "DataViewerBase_cls.h"
#include "KindTable_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleMerge_cls.h"
#include "ParticleModifierPipeline_cls.h"
#include "ParticleTweak_cls.h"
#include "SequenceRemap_cls.h"
#include "TexSpaceMod_cls.h"
#include "TimeCtrl_cls.h"
#include "Tracking_cls.h"
#include "Trimming_cls.h"

namespace {

bool IsViewer(SceneObj_cls* p) {
    return DataViewerBase_cls::IsDataViewerClass(p->mStrClassWord);
}
bool IsParticle(SceneObj_cls* p) {
    return p->IsClassSameAs("Particle_cls");
}
bool IsAnyObject(SceneObj_cls*) {
    return true;
}

// How a kind is made on the stack it belongs to; it refuses the objects it does not fit.
template <class Kind_T>
KindTable_cls::Entry_cls& RegisterAttribute(KindTable_cls::Group_enum group, const char* pClassWord,
                                            bool (*funcFits)(SceneObj_cls*)) {
    KindTable_cls::Entry_cls& entry = KindTable_cls::Register(pClassWord, group);
    entry.mFuncMakeAttribute = [funcFits](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
        return funcFits(p) ? new Kind_T(strName) : nullptr;
    };
    return entry;
}

template <class Kind_T>
KindTable_cls::Entry_cls& RegisterModifier(const char* pClassWord, bool (*funcFits)(SceneObj_cls*)) {
    return RegisterAttribute<Kind_T>(KindTable_cls::GROUP_MODIFIER, pClassWord, funcFits);
}

template <class Kind_T> void RegisterDataProc(const char* pClassWord, bool (*funcFits)(SceneObj_cls*)) {
    RegisterAttribute<Kind_T>(KindTable_cls::GROUP_DATA_PROC, pClassWord, funcFits);
}

} // namespace

void RegisterModifierServices() {
    RegisterModifier<SequenceRemap_cls>("SequenceRemap_cls", IsViewer);
    RegisterModifier<ParticleFiltering_cls>("ParticleFiltering_cls", IsParticle);
    RegisterDataProc<ParticleDownsizing_cls>("ParticleDownsizing_cls", IsParticle);
    RegisterModifier<ModifyParticleSize_cls>("ModifyParticleSize_cls", IsParticle);
    RegisterModifier<ModifyApparentSize_cls>("ModifyApparentSize_cls", IsParticle);
    RegisterModifier<ParticleBoolean_cls>("ParticleBoolean_cls", IsParticle);
    RegisterModifier<ParticleTweak_cls>("ParticleTweak_cls", IsParticle);
    RegisterModifier<Trimming_cls>("Trimming_cls", IsViewer);
    // The two kinds that act inside the object's own operations: the transform and the instances.
    RegisterModifier<Tracking_cls>("Tracking_cls", IsAnyObject).mFuncTransform =
        [](SceneObj_cls* pObj, Attribute_cls* p, double* C, double* P, double t) {
            static_cast<Tracking_cls*>(p)->Execute(pObj, C, P, t);
        };
    RegisterModifier<ArrayCopy_cls>("ArrayCopy_cls", IsAnyObject).mFuncCopyCount = [](SceneObj_cls*,
                                                                                      Attribute_cls* p) {
        return static_cast<ArrayCopy_cls*>(p)->GetCopyCount(TimeCtrl_cls::GetClockNT());
    };
    RegisterDataProc<ParticleMerge_cls>("ParticleMerge_cls", IsParticle);
    // Objects with textures: the scene has no common base for them, so any object takes it.
    RegisterModifier<TexSpaceMod_cls>("TexSpaceMod_cls", IsAnyObject);

    // The particle modifiers at their fixed places in a preparation.
    KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT)
        .SetSlot(KindTable_cls::SLOT_PREPARE,
                 ParticleForRender_cls::ModifierFunc(&ParticleModifierPipeline_cls::Run));
}
