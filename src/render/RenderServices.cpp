#include "RenderServices.h"

#include "ClassProvider_cls.h"
#include "ColorProvider_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawTable_cls.h"
#include "Main_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"

void RegisterRenderServices() {
    // The drawing of each object kind, by class word.
    GLDrawTable_cls::Clear();
    GLDrawKinds_cls::RegisterAll();
    ClassProvider_cls::SetServiceMaker(
        SVC_ColorProvider,
        [] {
            GpCColorProvider = new ColorProvider_cls();
            GCClassProvider->SetReceiverList(RECV_COLOR_PROVIDER, GpCColorProvider);
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_COLOR_PROVIDER);
            delete GpCColorProvider;
            GpCColorProvider = nullptr;
        });
    // The library's programs must be deleted while the GL context is current: the owner of the
    // context deletes this service before the context goes.
    ClassProvider_cls::SetServiceMaker(
        SVC_ShaderCtrl, [] { GpCShaderCtrl = new ShaderCtrl_cls(); },
        [] {
            delete GpCShaderCtrl;
            GpCShaderCtrl = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_ShadowVolumeCtrl, [] { GpCShadowVolumeCtrl = new ShadowVolumeCtrl_cls(); },
        [] {
            delete GpCShadowVolumeCtrl;
            GpCShadowVolumeCtrl = nullptr;
        });
}
