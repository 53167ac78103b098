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
#include "StreamFiltering_cls.h"
#include "StreamSetAlpha_cls.h"
#include "StreamTransform_cls.h"
#include "TexSpaceMod_cls.h"
#include "TimeCtrl_cls.h"
#include "Tracking_cls.h"
#include "Trimming_cls.h"
#include "VolumeCoord_cls.h"
#include "VolumeDownsize_cls.h"
#include "VolumeMask_cls.h"

namespace {

bool IsViewer(SceneObj_cls* p) {
    return DataViewerBase_cls::IsDataViewerClass(p->mStrClassWord);
}
bool IsParticle(SceneObj_cls* p) {
    return p->IsClassSameAs("Particle_cls");
}
bool IsVolume(SceneObj_cls* p) {
    return p->IsClassSameAs("VolumeBox_cls");
}
bool IsStreamline(SceneObj_cls* p) {
    return p->IsClassSameAs("Streamline_cls");
}
bool IsAnyObject(SceneObj_cls*) {
    return true;
}

// How a kind is made on the stack it belongs to; it refuses the objects it does not fit.
template <class Kind_T, KindTable_cls::Group_enum Group = KindTable_cls::GROUP_MODIFIER>
KindTable_cls::Entry_cls& RegisterAttribute(const char* pClassWord, bool (*funcFits)(SceneObj_cls*)) {
    KindTable_cls::Entry_cls& entry = KindTable_cls::Register(pClassWord, Group);
    entry.mFuncMakeAttribute = [funcFits](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
        return funcFits(p) ? new Kind_T(strName) : nullptr;
    };
    return entry;
}

} // namespace

void RegisterModifierServices() {
    RegisterAttribute<SequenceRemap_cls>("SequenceRemap_cls", IsViewer);
    RegisterAttribute<ParticleFiltering_cls>("ParticleFiltering_cls", IsParticle);
    RegisterAttribute<ParticleDownsizing_cls, KindTable_cls::GROUP_DATA_PROC>("ParticleDownsizing_cls",
                                                                              IsParticle);
    RegisterAttribute<ModifyParticleSize_cls>("ModifyParticleSize_cls", IsParticle);
    RegisterAttribute<ModifyApparentSize_cls>("ModifyApparentSize_cls", IsParticle);
    RegisterAttribute<ParticleBoolean_cls>("ParticleBoolean_cls", IsParticle);
    RegisterAttribute<ParticleTweak_cls>("ParticleTweak_cls", IsParticle);
    RegisterAttribute<Trimming_cls>("Trimming_cls", IsViewer);
    // The two volume kinds that act inside the volume programs.
    RegisterAttribute<VolumeCoord_cls>("VolumeCoord_cls", IsVolume);
    RegisterAttribute<VolumeMask_cls>("VolumeMask_cls", IsVolume);
    // The two volume kinds that change the prepared voxels: the volume reads their keys.
    RegisterAttribute<VolumeBoolean_cls, KindTable_cls::GROUP_DATA_PROC>("VolumeBoolean_cls", IsVolume);
    RegisterAttribute<VolumeDownsize_cls, KindTable_cls::GROUP_DATA_PROC>("VolumeDownsize_cls", IsVolume);
    // The two kinds that act inside the object's own operations: the transform and the instances.
    RegisterAttribute<Tracking_cls>("Tracking_cls", IsAnyObject).mFuncTransform =
        [](SceneObj_cls* pObj, Attribute_cls* p, double* C, double* P, double t) {
            static_cast<Tracking_cls*>(p)->Execute(pObj, C, P, t);
        };
    KindTable_cls::Entry_cls& arrayCopy = RegisterAttribute<ArrayCopy_cls>("ArrayCopy_cls", IsAnyObject);
    arrayCopy.mFuncCopyCount = [](SceneObj_cls*, Attribute_cls* p) {
        return static_cast<ArrayCopy_cls*>(p)->GetCopyCount(TimeCtrl_cls::GetClockNT());
    };
    arrayCopy.mFuncCopyOffset = [](SceneObj_cls*, Attribute_cls* p, int copyIndex, double t, double* out) {
        return static_cast<ArrayCopy_cls*>(p)->GetCopyOffset(copyIndex, t, out);
    };
    RegisterAttribute<ParticleMerge_cls, KindTable_cls::GROUP_DATA_PROC>("ParticleMerge_cls", IsParticle);
    // The stream lines' data processes: the object copies their keys into its preparation.
    RegisterAttribute<StreamFiltering_cls, KindTable_cls::GROUP_DATA_PROC>("StreamFiltering_cls",
                                                                           IsStreamline);
    RegisterAttribute<StreamSetAlpha_cls, KindTable_cls::GROUP_DATA_PROC>("StreamSetAlpha_cls", IsStreamline);
    RegisterAttribute<StreamTransform_cls, KindTable_cls::GROUP_DATA_PROC>("StreamTransform_cls",
                                                                           IsStreamline);
    // Objects with textures: the scene has no common base for them, so any object takes it.
    RegisterAttribute<TexSpaceMod_cls>("TexSpaceMod_cls", IsAnyObject);

    // The particle modifiers at their fixed places in a preparation.
    KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT)
        .SetSlot(KindTable_cls::SLOT_PREPARE,
                 ParticleForRender_cls::ModifierFunc(&ParticleModifierPipeline_cls::Run));
}
