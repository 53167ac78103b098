// How a layer registers a service that is one object behind its global pointer: made at its
// place in the table, and on deletion deleted and the pointer set back to null. Main thread,
// while registering.
#pragma once

#include "Main_cls.h"

class OwnedService_cls {
public:
    template <class Service_T> static void Register(int order, Service_T*& rpService) {
        Service_T** ppService = &rpService;
        ClassProvider_cls::SetServiceMaker(
            order, [ppService] { *ppService = new Service_T(); },
            [ppService] {
                delete *ppService;
                *ppService = nullptr;
            });
    }

    // A service that is a plain configuration list: also the receiver of its lines while it lives.
    template <class Service_T>
    static void RegisterList(int order, Receiver_enum slot, Service_T*& rpService) {
        Service_T** ppService = &rpService;
        ClassProvider_cls::SetServiceMaker(
            order,
            [ppService, slot] {
                *ppService = new Service_T();
                GCClassProvider->SetReceiverList(slot, *ppService);
            },
            [ppService, slot] {
                if (GCClassProvider)
                    GCClassProvider->ClearReceiver(slot);
                delete *ppService;
                *ppService = nullptr;
            });
    }
};
