#include "CoreServices.h"

#include "Main_cls.h"
#include "Preference_cls.h"
#include "UndoManager_cls.h"
#include "UseGZ_cls.h"

void RegisterCoreServices() {
    // The bottom of every registry: what an earlier one registered is forgotten.
    ClassProvider_cls::ResetRegistrations();
    ClassProvider_cls::AddStaticInitializer([] { UseGZ_cls::VersionCheck(); });
    ClassProvider_cls::SetServiceMaker(
        SVC_Preference,
        [] {
            GpCPreference = new Preference_cls();
            GCClassProvider->SetReceiverList(RECV_PREFERENCE, GpCPreference);
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_PREFERENCE);
            delete GpCPreference;
            GpCPreference = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_Undo, [] { GpCUndo = new UndoManager_cls(); },
        [] {
            delete GpCUndo;
            GpCUndo = nullptr;
        });
}
