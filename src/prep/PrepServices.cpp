#include "PrepServices.h"

#include "ClassProvider_cls.h"
#include "ParticleForRender_cls.h"
#include "ThreadCommon_cls.h"

#include <wx/thread.h>

void RegisterPrepServices() {
    // The modifier layer installs its pipeline here; without it a preparation runs none.
    ParticleForRender_cls::msFuncParticleModifier = nullptr;
    ClassProvider_cls::AddStaticInitializer([] {
        int count = wxThread::GetCPUCount();
        ThreadCommon_cls::msCPUCount = count > 0 ? count : 1;
    });
}
