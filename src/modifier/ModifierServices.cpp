#include "ModifierServices.h"

#include "ArrayCopy_cls.h"
#include "BooleanBase_cls.h"
#include "ClassProvider_cls.h"
#include "DataViewerBase_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleMerge_cls.h"
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

} // namespace

void RegisterModifierServices() {
    // Each kind refuses the objects it does not fit.
    SceneObj_cls::SetAttributeMaker("Modifier", "SequenceRemap_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsViewer(p) ? new SequenceRemap_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "ParticleFiltering_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ParticleFiltering_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("DataProc", "ParticleDownsizing_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ParticleDownsizing_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "ModifyParticleSize_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ModifyParticleSize_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "ModifyApparentSize_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ModifyApparentSize_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "ParticleBoolean_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ParticleBoolean_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "ParticleTweak_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ParticleTweak_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker("Modifier", "Trimming_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsViewer(p) ? new Trimming_cls(strName) : nullptr;
                                    });
    SceneObj_cls::SetAttributeMaker(
        "Modifier", "Tracking_cls",
        [](SceneObj_cls*, const wxString& strName) -> Attribute_cls* { return new Tracking_cls(strName); });
    SceneObj_cls::SetAttributeMaker(
        "Modifier", "ArrayCopy_cls",
        [](SceneObj_cls*, const wxString& strName) -> Attribute_cls* { return new ArrayCopy_cls(strName); });
    SceneObj_cls::SetAttributeMaker("DataProc", "ParticleMerge_cls",
                                    [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
                                        return IsParticle(p) ? new ParticleMerge_cls(strName) : nullptr;
                                    });
    // Objects with textures: the scene has no common base for them, so any object takes it.
    SceneObj_cls::SetAttributeMaker("Modifier", "TexSpaceMod_cls",
                                    [](SceneObj_cls*, const wxString& strName) -> Attribute_cls* {
                                        return new TexSpaceMod_cls(strName);
                                    });
    // The scene's seams for the two kinds that act inside the object's own operations.
    SceneObj_cls::msFuncTracking = [](SceneObj_cls* pObj, Attribute_cls* pAttr, double* C, double* P,
                                      double t) {
        if (auto* p = dynamic_cast<Tracking_cls*>(pAttr))
            p->Execute(pObj, C, P, t);
    };
    SceneObj_cls::msFuncArrayCopyCount = [](SceneObj_cls*, Attribute_cls* pAttr) {
        auto* p = dynamic_cast<ArrayCopy_cls*>(pAttr);
        return p ? p->GetCopyCount(GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT() : 0.0) : 0;
    };
}
