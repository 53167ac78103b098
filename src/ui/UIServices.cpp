#include "UIServices.h"

#include "ClassProvider_cls.h"
#include "StringProvider_cls.h"
#include "wxLogGuiEX.h"

void RegisterUIServices() {
    // Made with the other services on the start-up worker; the main thread installs it as the
    // active target once the worker has finished.
    ClassProvider_cls::SetServiceMaker(
        SVC_wxLogGuiEX, [] { GpCwxLogGuiEX = new wxLogGuiEX(); },
        [] {
            if (wxLog::GetActiveTarget() == GpCwxLogGuiEX)
                wxLog::SetActiveTarget(nullptr);
            delete GpCwxLogGuiEX;
            GpCwxLogGuiEX = nullptr;
        });
    // Plain tables: safe to make on the start-up worker.
    ClassProvider_cls::SetServiceMaker(
        SVC_StringProvider, [] { GpCStringProvider = new StringProvider_cls(); },
        [] {
            delete GpCStringProvider;
            GpCStringProvider = nullptr;
        });
}
