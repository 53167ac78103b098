#include "PrepServices.h"

#include "ClassProvider_cls.h"
#include "ThreadCommon_cls.h"

#include <wx/thread.h>

void RegisterPrepServices() {
    // The modifier layer puts its pipeline in the kind table, which the scene layer cleared: without
    // it a preparation runs none.
    ClassProvider_cls::AddStaticInitializer([] {
        int count = wxThread::GetCPUCount();
        ThreadCommon_cls::msCPUCount = count > 0 ? count : 1;
    });
}
