#include "ModifierServices.h"

#include "BooleanBase_cls.h"
#include "DataViewerBase_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleTweak_cls.h"
#include "Particle_cls.h"
#include "SceneObj_cls.h"
#include "SequenceRemap_cls.h"
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
}
