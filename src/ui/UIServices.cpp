#include "UIServices.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "Shortcut_cls.h"
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
    // The key table: the receiver of its lines while it lives.
    ClassProvider_cls::SetServiceMaker(
        SVC_Shortcut,
        [] {
            GpCShortcut = new Shortcut_cls();
            GCClassProvider->SetReceiver(
                RECV_SHORTCUT,
                [](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
                    return GpCShortcut && GpCShortcut->ReadStrLine(stream, strHead, strRest);
                },
                [](wxString& strOut) {
                    if (GpCShortcut)
                        GpCShortcut->Serialize(strOut);
                },
                {Shortcut_cls::msStrHead});
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_SHORTCUT);
            delete GpCShortcut;
            GpCShortcut = nullptr;
        });
}
