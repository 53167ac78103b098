#include "RenderServices.h"

#include "ColorProvider_cls.h"
#include "FramePasses_cls.h"
#include "GLDrawKinds_cls.h"
#include "ImageComposer_cls.h"
#include "OwnedService_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShaderItem_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "Stereogram_cls.h"
#include "TextureProvider1D_cls.h"
#include "TextureProvider_cls.h"
#include "WideCamera_cls.h"

#include <wx/filefn.h>

namespace {
void FindShaderResourceDir() {
    // A folder set on purpose (tests, a broken copy) stays.
    if (!GCClassProvider || ShaderItem_cls::msStrResourceDir != "Resource")
        return;
    const wxString strMark = "GL/CommonDefinitionsShader.h";
    const wxString strFound = GCClassProvider->FindResourceFile("Resource/" + strMark);
    if (strFound.EndsWith("/" + strMark) && wxFileExists(strFound))
        ShaderItem_cls::msStrResourceDir = strFound.Left(strFound.length() - strMark.length() - 1);
}

// A service made anew, its GL objects freed with the old one (in the current context).
template <class Service_T> void RenewService(Service_T*& rpService) {
    if (!rpService)
        return;
    delete rpService;
    rpService = new Service_T();
}
} // namespace

void RegisterRenderServices() {
    // The drawing of each object kind, on its entry of the kind table (which the scene's
    // registration clears with each registry).
    GLDrawKinds_cls::RegisterAll();
    OwnedService_cls::RegisterList(SVC_ColorProvider, RECV_COLOR_PROVIDER, GpCColorProvider);
    // Programs and textures are GL objects: the owner of the context deletes these services
    // before the context goes.
    // The programs read their sources when made: from the program's resource folder, found as
    // the program finds its other resources (whatever the working folder), else as set before.
    ClassProvider_cls::SetServiceMaker(
        SVC_ShaderCtrl,
        [] {
            FindShaderResourceDir();
            GpCShaderCtrl = new ShaderCtrl_cls();
        },
        [] {
            delete GpCShaderCtrl;
            GpCShaderCtrl = nullptr;
        });
    OwnedService_cls::Register(SVC_TextureProvider, GpCTextureProvider);
    OwnedService_cls::Register(SVC_TextureProvider1D, GpCTextureProvider1D);
    // Its keys are a block of the project.
    OwnedService_cls::RegisterList(SVC_ShadowVolumeCtrl, RECV_SHADOW_VOLUME_CTRL, GpCShadowVolumeCtrl);
    // The wide camera's faces and display lists are made in the frame, on the GL thread.
    OwnedService_cls::Register(SVC_WideCamera, GpCWideCamera);
    OwnedService_cls::Register(SVC_ImageComposer, GpCImageComposer);
    OwnedService_cls::Register(SVC_Stereogram, GpCStereogram);
    // The window makes the shared buffers once its context is current and frees every GL object
    // before that context goes: the programs and textures go with fresh services in their place,
    // which build again lazily in a later context.
    ClassProvider_cls::SetGLInstanceMaker(&FramePasses_cls::InitializeGLCommonIfNot, [] {
        FramePasses_cls::DeleteGLCommon();
        if (GpCShadowVolumeCtrl)
            GpCShadowVolumeCtrl->ClearFBOBuffer();
        RenewService(GpCShaderCtrl);
        RenewService(GpCTextureProvider);
        RenewService(GpCTextureProvider1D);
        RenewService(GpCWideCamera);
    });
}
