// Forwarding accessors to the registry: any class that inherits this empty mixin can write
// GetPCTimeCtrl() without holding a reference. It has no data and costs no storage.
#pragma once

#include "ClassProvider_cls.h"

class GetPC_cls {
public:
    static MotionBlurCtrl_cls* GetPCBlurCtrl() { return GpCBlurCtrl; }
    static ColorCurveProvider_cls* GetPCColorCurveProvider() { return GpCColorCurveProvider; }
    static ColorProvider_cls* GetPCColorProvider() { return GpCColorProvider; }
    static EnsembleCtrl_cls* GetPCEnsembleCtrl() { return GpCEnsembleCtrl; }
    static FilterCtrl_cls* GetPCFilterCtrl() { return GpCFilterCtrl; }
    static GLExtentions_cls* GetPCGLExtentions() { return GpCGLExtention; }
    static GLInfo_cls* GetPCGLInfo() { return GpCGLInfo; }
    static Halton_cls* GetPCHalton() { return GpCHalton; }
    static TextureProvider_cls* GetPCTextureProvider() { return GpCTextureProvider; }
    static TextureProvider1D_cls* GetPCTextureProvider1D() { return GpCTextureProvider1D; }
    static WideCamera_cls* GetPCWideCamera() { return GpCWideCamera; }
    static ParamDialog_cls* GetPCParamDialog() { return GpCParamDialog; }
    static ParamGroupDialog_cls* GetPCParamGroupDialog() { return GpCParamGroupDialog; }
    static PenBrushProvider_cls* GetPCPenBrushProvider() { return GpCPenBrushProvider; }
    static Preference_cls* GetPCPreference() { return GpCPreference; }
    static MousePreference_cls* GetPCMousePreference() { return GpCMousePreference; }
    static ImageOutput_cls* GetPCImageOutput() { return GpCImageOutput; }
    static ImageIO_cls* GetPCImageIO() { return GpCImageIO; }
    static wxColourDialogEX* GetPCColourDialog() { return GpCClrDialog; }
    static wxFileDialogEX* GetPCFileDialog() { return GpCFileDialog; }
    static ImageComposer_cls* GetPCImageComposer() { return GpCImageComposer; }
    static Stereogram_cls* GetPCStereogram() { return GpCStereogram; }
    static StringProvider_cls* GetPCStringProvider() { return GpCStringProvider; }
    static Queue_cls* GetPCQueue() { return GpCQueue; }
    static SceneObjCtrl_cls* GetPCSceneObjCtrl() { return GpCSceneObjCtrl; }
    static ShaderCtrl_cls* GetPCShaderCtrl() { return GpCShaderCtrl; }
    static ShadowVolumeCtrl_cls* GetPCShadowVolumeCtrl() { return GpCShadowVolumeCtrl; }
    static TimeCtrl_cls* GetPCTimeCtrl() { return GpCTimeCtrl; }
    static Shortcut_cls* GetPCShortcut() { return GpCShortcut; }
    static SizeAdjuster_cls* GetPCSizeAdjuster() { return GpCSizeAdjuster; }
    static Shortcut_cls* GetPCTextShortcut() { return GpCTextShortcut; }
    static UndoManager_cls* GetPCUndo() { return GpCUndo; }
    static LuaMiniCalc_cls* GetPCLuaMinicalc() { return GpCLuaMinicalc; }
    static VBOHFProvider_cls* GetPCVBOHFProvider() { return GpCVBOHFProvider; }
    static VBOSphere_cls* GetPCVBOSphere() { return GpCVBOSphere; }
    static IconProvider_cls* GetPCIconProvider() { return GpCIconProvider; }
    static Main_cls* GetPCMain() { return GCClassProvider; }
};
