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
    // The key tables, the frame's and the text editor's: each the receiver of its lines while it
    // lives, so both are saved with the settings and the projects.
    const auto registerTable = [](int slot, Shortcut_cls** ppTable, Receiver_enum receiver,
                                  const wxString& strHead,
                                  const std::vector<Shortcut_cls::Entry_cls>& (*funcDefault)()) {
        ClassProvider_cls::SetServiceMaker(
            slot,
            [=] {
                *ppTable = new Shortcut_cls(strHead, funcDefault());
                GCClassProvider->SetReceiver(
                    receiver,
                    [=](std::wistream& stream, const wxString& strLineHead, const wxString& strRest) {
                        return *ppTable && (*ppTable)->ReadStrLine(stream, strLineHead, strRest);
                    },
                    [=](wxString& strOut) {
                        if (*ppTable)
                            (*ppTable)->Serialize(strOut);
                    },
                    {strHead});
            },
            [=] {
                if (GCClassProvider)
                    GCClassProvider->ClearReceiver(receiver);
                delete *ppTable;
                *ppTable = nullptr;
            });
    };
    registerTable(SVC_Shortcut, &GpCShortcut, RECV_SHORTCUT, Shortcut_cls::msStrHead,
                  &Shortcut_cls::GetVDefault);
    registerTable(SVC_TextShortcut, &GpCTextShortcut, RECV_TEXT_SHORTCUT, Shortcut_cls::msStrTextHead,
                  &Shortcut_cls::GetVDefaultText);
}
