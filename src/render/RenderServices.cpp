#include "RenderServices.h"

#include "ClassProvider_cls.h"
#include "ShaderCtrl_cls.h"

void RegisterRenderServices() {
    // The library's programs must be deleted while the GL context is current: the owner of the
    // context deletes this service before the context goes.
    ClassProvider_cls::SetServiceMaker(
        SVC_ShaderCtrl, [] { GpCShaderCtrl = new ShaderCtrl_cls(); },
        [] {
            delete GpCShaderCtrl;
            GpCShaderCtrl = nullptr;
        });
}
