#include "FilterServices.h"

#include "Attribute_cls.h"
#include "FilterCtrl_cls.h"
#include "Main_cls.h"

void RegisterFilterServices() {
    ClassProvider_cls::SetServiceMaker(
        SVC_FilterCtrl,
        [] {
            GpCFilterCtrl = new FilterCtrl_cls();
            FrameFilter_ifc::msFuncGet = []() -> FrameFilter_ifc* { return GpCFilterCtrl; };
            FilterTagHost_ifc::msFuncGet = []() -> FilterTagHost_ifc* { return GpCFilterCtrl; };
            Attribute_cls::msFuncFilterCtrlSelf = [] { return FilterCtrl_cls::GetStrSelf(); };
            GCClassProvider->SetReceiver(
                RECV_FILTER_CTRL,
                [](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
                    return GpCFilterCtrl && GpCFilterCtrl->ReadStrLine(stream, strHead, strRest);
                },
                [](wxString& strOut) {
                    if (GpCFilterCtrl)
                        GpCFilterCtrl->Serialize(strOut);
                },
                {"ConfItemList", "FilterCtrl"});
            // A user's project load and quitting empty the chain.
            GCClassProvider->AddClearHook([] {
                if (GpCFilterCtrl)
                    GpCFilterCtrl->Clear();
            });
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_FILTER_CTRL);
            FrameFilter_ifc::msFuncGet = nullptr;
            FilterTagHost_ifc::msFuncGet = nullptr;
            Attribute_cls::msFuncFilterCtrlSelf = nullptr;
            delete GpCFilterCtrl;
            GpCFilterCtrl = nullptr;
        });
}
