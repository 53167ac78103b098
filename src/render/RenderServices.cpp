#include "RenderServices.h"

#include "ClassProvider_cls.h"
#include "ColorProvider_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawTable_cls.h"
#include "Main_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TextureProvider1D_cls.h"
#include "TextureProvider_cls.h"

void RegisterRenderServices() {
    // The drawing of each object kind, on its entry of the kind table (which the scene's
    // registration clears with each registry).
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
    // Textures too are GL objects: the owner of the context deletes these services before it goes.
    ClassProvider_cls::SetServiceMaker(
        SVC_TextureProvider, [] { GpCTextureProvider = new TextureProvider_cls(); },
        [] {
            delete GpCTextureProvider;
            GpCTextureProvider = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_TextureProvider1D, [] { GpCTextureProvider1D = new TextureProvider1D_cls(); },
        [] {
            delete GpCTextureProvider1D;
            GpCTextureProvider1D = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_ShadowVolumeCtrl, [] { GpCShadowVolumeCtrl = new ShadowVolumeCtrl_cls(); },
        [] {
            delete GpCShadowVolumeCtrl;
            GpCShadowVolumeCtrl = nullptr;
        });
}
