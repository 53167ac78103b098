#include "CoreServices.h"

#include "MousePreference_cls.h"
#include "OwnedService_cls.h"
#include "Preference_cls.h"
#include "UndoManager_cls.h"
#include "UseGZ_cls.h"

void RegisterCoreServices() {
    // The bottom of every registry: what an earlier one registered is forgotten.
    ClassProvider_cls::ResetRegistrations();
    ClassProvider_cls::AddStaticInitializer([] { UseGZ_cls::VersionCheck(); });
    OwnedService_cls::RegisterList(SVC_Preference, RECV_PREFERENCE, GpCPreference);
    OwnedService_cls::RegisterList(SVC_MousePreference, RECV_MOUSE_PREFERENCE, GpCMousePreference);
    OwnedService_cls::Register(SVC_Undo, GpCUndo);
}
