// The registry of the process-wide services. Each service has one global pointer and one
// accessor; the layer that defines a service registers how to make and delete it, and
// CreateSingleton makes the registered ones in the fixed order of the table below.
#pragma once

#include <functional>
#include <vector>

class AutoComplete_cls;
class ColorCurveProvider_cls;
class ColorProvider_cls;
class EnsembleCtrl_cls;
class FilterCtrl_cls;
class GLExtentions_cls;
class GLInfo_cls;
class GLSL_cls;
class Halton_cls;
class IconProvider_cls;
class ImageComposer_cls;
class ImageIO_cls;
class ImageOutput_cls;
class LuaInterpreter_cls;
class LuaMiniCalc_cls;
class MotionBlurCtrl_cls;
class MousePreference_cls;
class ParamDialog_cls;
class ParamGroupDialog_cls;
class PenBrushProvider_cls;
class Preference_cls;
class Queue_cls;
class ReadPNG_cls;
class SceneObjCtrl_cls;
class Scene_cls;
class ShaderCtrl_cls;
class ShadowVolumeCtrl_cls;
class Shortcut_cls;
class SizeAdjuster_cls;
class Stereogram_cls;
class StringProvider_cls;
class TextureProvider1D_cls;
class TextureProvider_cls;
class TimeCtrl_cls;
class UndoManager_cls;
class VBOBaseObject_cls;
class VBOCone_cls;
class VBOCylinder_cls;
class VBOHFProvider_cls;
class VBOPlane_cls;
class VBOSphere_cls;
class VBOWireObject_cls;
class WideCamera_cls;
class wxColourDialogEX;
class wxFileDialogEX;
class wxLogGuiEX;
class Main_cls;

// The global pointer to the one Main_cls, set first thing in its constructor.
extern Main_cls* GCClassProvider;

extern AutoComplete_cls* GpCAutoCompleteLua;
extern AutoComplete_cls* GpCAutoCompleteGLSL;
extern MotionBlurCtrl_cls* GpCBlurCtrl;
extern ColorCurveProvider_cls* GpCColorCurveProvider;
extern ColorProvider_cls* GpCColorProvider;
extern EnsembleCtrl_cls* GpCEnsembleCtrl;
extern FilterCtrl_cls* GpCFilterCtrl;
extern GLExtentions_cls* GpCGLExtention;
extern GLInfo_cls* GpCGLInfo;
extern GLSL_cls* GpCGLSL;
extern Halton_cls* GpCHalton;
extern TextureProvider_cls* GpCTextureProvider;
extern TextureProvider1D_cls* GpCTextureProvider1D;
extern WideCamera_cls* GpCWideCamera;
extern ParamDialog_cls* GpCParamDialog;
extern ParamGroupDialog_cls* GpCParamGroupDialog;
extern PenBrushProvider_cls* GpCPenBrushProvider;
extern Preference_cls* GpCPreference;
extern ReadPNG_cls* GpCReadPNG;
extern MousePreference_cls* GpCMousePreference;
extern ImageOutput_cls* GpCImageOutput;
extern ImageIO_cls* GpCImageIO;
extern wxColourDialogEX* GpCClrDialog;
extern wxFileDialogEX* GpCFileDialog;
extern ImageComposer_cls* GpCImageComposer;
extern Stereogram_cls* GpCStereogram;
extern StringProvider_cls* GpCStringProvider;
extern Scene_cls* GpCScene;
extern Queue_cls* GpCQueue;
extern SceneObjCtrl_cls* GpCSceneObjCtrl;
extern ShaderCtrl_cls* GpCShaderCtrl;
extern ShadowVolumeCtrl_cls* GpCShadowVolumeCtrl;
extern TimeCtrl_cls* GpCTimeCtrl;
extern Shortcut_cls* GpCShortcut;
extern SizeAdjuster_cls* GpCSizeAdjuster;
extern Shortcut_cls* GpCTextShortcut;
extern UndoManager_cls* GpCUndo;
extern LuaInterpreter_cls* GpCLuaInterpreter;
extern LuaMiniCalc_cls* GpCLuaMinicalc;
extern VBOWireObject_cls* GpCVBOCameraBox;
extern VBOCone_cls* GpCVBOCone;
extern VBOBaseObject_cls* GpCVBOCube;
extern VBOCylinder_cls* GpCVBOCylinder;
extern VBOWireObject_cls* GpCVBOEmpty;
extern VBOHFProvider_cls* GpCVBOHFProvider;
extern VBOPlane_cls* GpCVBOPlane;
extern VBOSphere_cls* GpCVBOSphere;
extern wxLogGuiEX* GpCwxLogGuiEX;
extern IconProvider_cls* GpCIconProvider;

// The position of each service in the making order (1 to 48).
enum ServiceOrder_enum {
    SVC_AutoCompleteLua = 1,
    SVC_AutoCompleteGLSL = 2,
    SVC_BlurCtrl = 3,
    SVC_ColorCurveProvider = 4,
    SVC_ColorProvider = 5,
    SVC_EnsembleCtrl = 6,
    SVC_FilterCtrl = 7,
    SVC_GLExtention = 8,
    SVC_GLInfo = 9,
    SVC_GLSL = 10,
    SVC_Halton = 11,
    SVC_TextureProvider = 12,
    SVC_TextureProvider1D = 13,
    SVC_WideCamera = 14,
    SVC_ParamDialog = 15,
    SVC_ParamGroupDialog = 16,
    SVC_PenBrushProvider = 17,
    SVC_Preference = 18,
    SVC_ReadPNG = 19,
    SVC_MousePreference = 20,
    SVC_ImageOutput = 21,
    SVC_ImageIO = 22,
    SVC_ClrDialog = 23,
    SVC_FileDialog = 24,
    SVC_ImageComposer = 25,
    SVC_Stereogram = 26,
    SVC_StringProvider = 27,
    SVC_Scene = 28,
    SVC_Queue = 29,
    SVC_SceneObjCtrl = 30,
    SVC_ShaderCtrl = 31,
    SVC_ShadowVolumeCtrl = 32,
    SVC_TimeCtrl = 33,
    SVC_Shortcut = 34,
    SVC_SizeAdjuster = 35,
    SVC_TextShortcut = 36,
    SVC_Undo = 37,
    SVC_LuaInterpreter = 38,
    SVC_LuaMinicalc = 39,
    SVC_VBOCameraBox = 40,
    SVC_VBOCone = 41,
    SVC_VBOCube = 42,
    SVC_VBOCylinder = 43,
    SVC_VBOEmpty = 44,
    SVC_VBOHFProvider = 45,
    SVC_VBOPlane = 46,
    SVC_VBOSphere = 47,
    SVC_wxLogGuiEX = 48,
    SVC_COUNT = 48,
};

class ClassProvider_cls {
public:
    // Sets values that the services read before they are made (the CPU count of the workers).
    static void InitializeStaticMembers();
    // Makes every registered service in table order, then the default scene. Runs on the
    // start-up worker; services that need a display or GL are registered by the upper layers
    // and make nothing of that kind here.
    void CreateSingleton();
    // Makes the services that must be made on the main thread after the worker (icons).
    void CreateSingletonSerial();
    // Makes what needs the shared GL context (the shared primitive buffers, the driver
    // information): the window calls it once that context is current for the first time.
    void CreateGLInstances();
    // Frees every GL object that the services hold while the shared context is still current; the
    // services stay and build their GL objects anew in a later context. The window calls it
    // before it destroys the shared context.
    void DeleteGLInstances();
    // Deletes the services: first in the fixed order of the program, then the rest in reverse
    // order of making, the log target last.
    void DeleteSingleton();

    // How a layer makes and deletes its service at the given position. Main thread only,
    // before CreateSingleton.
    static void SetServiceMaker(int order, std::function<void()> funcMake, std::function<void()> funcDelete);
    static void SetSerialMaker(std::function<void()> funcMake, std::function<void()> funcDelete);
    // How the GL layer makes and frees its objects in the shared context.
    static void SetGLInstanceMaker(std::function<void()> funcMake, std::function<void()> funcDelete);
    // Builds the default scene after all services exist.
    static void SetDefaultSceneMaker(std::function<void()> funcMake);
    // Runs in InitializeStaticMembers.
    static void AddStaticInitializer(std::function<void()> funcInit);
    // Forgets every registration (tests).
    static void ResetRegistrations();

    AutoComplete_cls* GetPCAutoCompleteLua() { return GpCAutoCompleteLua; }
    AutoComplete_cls* GetPCAutoCompleteGLSL() { return GpCAutoCompleteGLSL; }
    MotionBlurCtrl_cls* GetPCBlurCtrl() { return GpCBlurCtrl; }
    ColorCurveProvider_cls* GetPCColorCurveProvider() { return GpCColorCurveProvider; }
    ColorProvider_cls* GetPCColorProvider() { return GpCColorProvider; }
    EnsembleCtrl_cls* GetPCEnsembleCtrl() { return GpCEnsembleCtrl; }
    FilterCtrl_cls* GetPCFilterCtrl() { return GpCFilterCtrl; }
    GLExtentions_cls* GetPCGLExtentions() { return GpCGLExtention; }
    GLInfo_cls* GetPCGLInfo() { return GpCGLInfo; }
    GLSL_cls* GetPCGLSL() { return GpCGLSL; }
    Halton_cls* GetPCHalton() { return GpCHalton; }
    TextureProvider_cls* GetPCTextureProvider() { return GpCTextureProvider; }
    TextureProvider1D_cls* GetPCTextureProvider1D() { return GpCTextureProvider1D; }
    WideCamera_cls* GetPCWideCamera() { return GpCWideCamera; }
    ParamDialog_cls* GetPCParamDialog() { return GpCParamDialog; }
    ParamGroupDialog_cls* GetPCParamGroupDialog() { return GpCParamGroupDialog; }
    PenBrushProvider_cls* GetPCPenBrushProvider() { return GpCPenBrushProvider; }
    Preference_cls* GetPCPreference() { return GpCPreference; }
    ReadPNG_cls* GetPCReadPNG() { return GpCReadPNG; }
    MousePreference_cls* GetPCMousePreference() { return GpCMousePreference; }
    ImageOutput_cls* GetPCImageOutput() { return GpCImageOutput; }
    ImageIO_cls* GetPCImageIO() { return GpCImageIO; }
    wxColourDialogEX* GetPCColourDialog() { return GpCClrDialog; }
    wxFileDialogEX* GetPCFileDialog() { return GpCFileDialog; }
    ImageComposer_cls* GetPCImageComposer() { return GpCImageComposer; }
    Stereogram_cls* GetPCStereogram() { return GpCStereogram; }
    StringProvider_cls* GetPCStringProvider() { return GpCStringProvider; }
    Scene_cls* GetPCScene() { return GpCScene; }
    Queue_cls* GetPCQueue() { return GpCQueue; }
    SceneObjCtrl_cls* GetPCSceneObjCtrl() { return GpCSceneObjCtrl; }
    ShaderCtrl_cls* GetPCShaderCtrl() { return GpCShaderCtrl; }
    ShadowVolumeCtrl_cls* GetPCShadowVolumeCtrl() { return GpCShadowVolumeCtrl; }
    TimeCtrl_cls* GetPCTimeCtrl() { return GpCTimeCtrl; }
    Shortcut_cls* GetPCShortcut() { return GpCShortcut; }
    SizeAdjuster_cls* GetPCSizeAdjuster() { return GpCSizeAdjuster; }
    Shortcut_cls* GetPCTextShortcut() { return GpCTextShortcut; }
    UndoManager_cls* GetPCUndo() { return GpCUndo; }
    LuaInterpreter_cls* GetPCLuaInterpreter() { return GpCLuaInterpreter; }
    LuaMiniCalc_cls* GetPCLuaMinicalc() { return GpCLuaMinicalc; }
    VBOWireObject_cls* GetPCVBOCameraBox() { return GpCVBOCameraBox; }
    VBOCone_cls* GetPCVBOCone() { return GpCVBOCone; }
    VBOBaseObject_cls* GetPCVBOCube() { return GpCVBOCube; }
    VBOCylinder_cls* GetPCVBOCylinder() { return GpCVBOCylinder; }
    VBOWireObject_cls* GetPCVBOEmpty() { return GpCVBOEmpty; }
    VBOHFProvider_cls* GetPCVBOHFProvider() { return GpCVBOHFProvider; }
    VBOPlane_cls* GetPCVBOPlane() { return GpCVBOPlane; }
    VBOSphere_cls* GetPCVBOSphere() { return GpCVBOSphere; }
    wxLogGuiEX* GetPCwxLogGuiEX() { return GpCwxLogGuiEX; }
    IconProvider_cls* GetPCIconProvider() { return GpCIconProvider; }
    Main_cls* GetPCMain() { return GCClassProvider; }
};
