#include "TimeServices.h"

#include "EnsembleCtrl_cls.h"
#include "Halton_cls.h"
#include "Main_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "OwnedService_cls.h"
#include "Queue_cls.h"
#include "TimeCtrl_cls.h"

void RegisterTimeServices() {
    OwnedService_cls::RegisterList(SVC_BlurCtrl, RECV_BLUR_CTRL, GpCBlurCtrl);
    OwnedService_cls::RegisterList(SVC_EnsembleCtrl, RECV_ENSEMBLE_CTRL, GpCEnsembleCtrl);
    OwnedService_cls::Register(SVC_Halton, GpCHalton);
    ClassProvider_cls::SetServiceMaker(
        SVC_Queue,
        [] {
            GpCQueue = new Queue_cls();
            // The end of every delivery of panel updates drops what this pass queued.
            GCClassProvider->SetFlushHook([] {
                if (GpCQueue)
                    GpCQueue->ClearQueue();
            });
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->SetFlushHook(nullptr);
            delete GpCQueue;
            GpCQueue = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_TimeCtrl,
        [] {
            GpCTimeCtrl = new TimeCtrl_cls();
            GCClassProvider->SetReceiver(
                RECV_TIME_CTRL,
                [](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
                    return GpCTimeCtrl && GpCTimeCtrl->ReadStrLine(stream, strHead, strRest);
                },
                [](wxString& strOut) {
                    if (GpCTimeCtrl)
                        GpCTimeCtrl->Serialize(strOut);
                },
                {"ConfItemList", "TimeCtrl"});
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_TIME_CTRL);
            delete GpCTimeCtrl;
            GpCTimeCtrl = nullptr;
        });
}
