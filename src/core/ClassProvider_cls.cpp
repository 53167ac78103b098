#include "ClassProvider_cls.h"

#include <array>

Main_cls* GCClassProvider = nullptr;
AutoComplete_cls* GpCAutoCompleteLua = nullptr;
AutoComplete_cls* GpCAutoCompleteGLSL = nullptr;
MotionBlurCtrl_cls* GpCBlurCtrl = nullptr;
ColorCurveProvider_cls* GpCColorCurveProvider = nullptr;
ColorProvider_cls* GpCColorProvider = nullptr;
EnsembleCtrl_cls* GpCEnsembleCtrl = nullptr;
FilterCtrl_cls* GpCFilterCtrl = nullptr;
GLExtentions_cls* GpCGLExtention = nullptr;
GLInfo_cls* GpCGLInfo = nullptr;
GLSL_cls* GpCGLSL = nullptr;
Halton_cls* GpCHalton = nullptr;
TextureProvider_cls* GpCTextureProvider = nullptr;
TextureProvider1D_cls* GpCTextureProvider1D = nullptr;
WideCamera_cls* GpCWideCamera = nullptr;
ParamDialog_cls* GpCParamDialog = nullptr;
ParamGroupDialog_cls* GpCParamGroupDialog = nullptr;
PenBrushProvider_cls* GpCPenBrushProvider = nullptr;
Preference_cls* GpCPreference = nullptr;
ReadPNG_cls* GpCReadPNG = nullptr;
MousePreference_cls* GpCMousePreference = nullptr;
ImageOutput_cls* GpCImageOutput = nullptr;
ImageIO_cls* GpCImageIO = nullptr;
wxColourDialogEX* GpCClrDialog = nullptr;
wxFileDialogEX* GpCFileDialog = nullptr;
ImageComposer_cls* GpCImageComposer = nullptr;
Stereogram_cls* GpCStereogram = nullptr;
StringProvider_cls* GpCStringProvider = nullptr;
Scene_cls* GpCScene = nullptr;
Queue_cls* GpCQueue = nullptr;
SceneObjCtrl_cls* GpCSceneObjCtrl = nullptr;
ShaderCtrl_cls* GpCShaderCtrl = nullptr;
ShadowVolumeCtrl_cls* GpCShadowVolumeCtrl = nullptr;
TimeCtrl_cls* GpCTimeCtrl = nullptr;
Shortcut_cls* GpCShortcut = nullptr;
SizeAdjuster_cls* GpCSizeAdjuster = nullptr;
Shortcut_cls* GpCTextShortcut = nullptr;
UndoManager_cls* GpCUndo = nullptr;
LuaInterpreter_cls* GpCLuaInterpreter = nullptr;
LuaMiniCalc_cls* GpCLuaMinicalc = nullptr;
VBOWireObject_cls* GpCVBOCameraBox = nullptr;
VBOCone_cls* GpCVBOCone = nullptr;
VBOBaseObject_cls* GpCVBOCube = nullptr;
VBOCylinder_cls* GpCVBOCylinder = nullptr;
VBOWireObject_cls* GpCVBOEmpty = nullptr;
VBOHFProvider_cls* GpCVBOHFProvider = nullptr;
VBOPlane_cls* GpCVBOPlane = nullptr;
VBOSphere_cls* GpCVBOSphere = nullptr;
wxLogGuiEX* GpCwxLogGuiEX = nullptr;
IconProvider_cls* GpCIconProvider = nullptr;

namespace {

struct ServiceMaker_cls {
    std::function<void()> mFuncMake;
    std::function<void()> mFuncDelete;
    bool bMade = false;
};

std::array<ServiceMaker_cls, SVC_COUNT + 1>& Makers() {
    static std::array<ServiceMaker_cls, SVC_COUNT + 1> sMakers;
    return sMakers;
}

ServiceMaker_cls& SerialMaker() {
    static ServiceMaker_cls sMaker;
    return sMaker;
}

ServiceMaker_cls& GLInstanceMaker() {
    static ServiceMaker_cls sMaker;
    return sMaker;
}

std::function<void()>& DefaultSceneMaker() {
    static std::function<void()> sFunc;
    return sFunc;
}

std::vector<std::function<void()>>& StaticInitializers() {
    static std::vector<std::function<void()>> sVFunc;
    return sVFunc;
}

void MakeOne(ServiceMaker_cls& maker) {
    if (!maker.mFuncMake || maker.bMade)
        return;
    maker.mFuncMake();
    maker.bMade = true;
}

void DeleteOne(ServiceMaker_cls& maker) {
    if (!maker.bMade)
        return;
    if (maker.mFuncDelete)
        maker.mFuncDelete();
    maker.bMade = false;
}

} // namespace

void ClassProvider_cls::InitializeStaticMembers() {
    for (auto& func : StaticInitializers())
        func();
}

void ClassProvider_cls::CreateSingleton() {
    for (int order = 1; order <= SVC_COUNT; ++order)
        MakeOne(Makers()[order]);
    if (DefaultSceneMaker())
        DefaultSceneMaker()();
}

void ClassProvider_cls::CreateSingletonSerial() {
    MakeOne(SerialMaker());
}

void ClassProvider_cls::CreateGLInstances() {
    MakeOne(GLInstanceMaker());
}

void ClassProvider_cls::DeleteGLInstances() {
    DeleteOne(GLInstanceMaker());
}

void ClassProvider_cls::DeleteSingleton() {
    // The program's own order first: the scene goes before the clock.
    static const int vOrder[] = {SVC_TextureProvider,  SVC_TextureProvider1D, SVC_AutoCompleteLua,
                                 SVC_AutoCompleteGLSL, SVC_BlurCtrl,          SVC_ColorCurveProvider,
                                 SVC_ColorProvider,    SVC_EnsembleCtrl,      SVC_FilterCtrl,
                                 SVC_PenBrushProvider, SVC_Preference,        SVC_FileDialog,
                                 SVC_SceneObjCtrl,     SVC_ShadowVolumeCtrl,  SVC_WideCamera,
                                 SVC_TimeCtrl,         SVC_VBOCameraBox,      SVC_VBOCone,
                                 SVC_VBOCube,          SVC_VBOCylinder,       SVC_VBOEmpty,
                                 SVC_VBOHFProvider,    SVC_VBOPlane,          SVC_VBOSphere};
    for (int order : vOrder)
        DeleteOne(Makers()[order]);
    DeleteOne(SerialMaker());
    for (int order = SVC_COUNT - 1; order >= 1; --order)
        DeleteOne(Makers()[order]);
    DeleteOne(Makers()[SVC_wxLogGuiEX]);
}

void ClassProvider_cls::SetServiceMaker(int order, std::function<void()> funcMake,
                                        std::function<void()> funcDelete) {
    if (order < 1 || order > SVC_COUNT)
        return;
    Makers()[order] = ServiceMaker_cls{std::move(funcMake), std::move(funcDelete), false};
}

void ClassProvider_cls::SetSerialMaker(std::function<void()> funcMake, std::function<void()> funcDelete) {
    SerialMaker() = ServiceMaker_cls{std::move(funcMake), std::move(funcDelete), false};
}

void ClassProvider_cls::SetGLInstanceMaker(std::function<void()> funcMake, std::function<void()> funcDelete) {
    GLInstanceMaker() = ServiceMaker_cls{std::move(funcMake), std::move(funcDelete), false};
}

void ClassProvider_cls::SetDefaultSceneMaker(std::function<void()> funcMake) {
    DefaultSceneMaker() = std::move(funcMake);
}

void ClassProvider_cls::AddStaticInitializer(std::function<void()> funcInit) {
    StaticInitializers().push_back(std::move(funcInit));
}

void ClassProvider_cls::ResetRegistrations() {
    for (auto& maker : Makers())
        maker = ServiceMaker_cls{};
    SerialMaker() = ServiceMaker_cls{};
    GLInstanceMaker() = ServiceMaker_cls{};
    DefaultSceneMaker() = nullptr;
    StaticInitializers().clear();
}
