#include "UIServices.h"

#include "ClassProvider_cls.h"
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
}
