#include "RenderGuard_cls.h"

#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "GetPC_cls.h"
#include "ImageOutput_cls.h"
#include "SceneObjCtrl_cls.h"
#include "StereoProp_cls.h"
#include "View3D_cls.h"
#include "World_cls.h"

bool RenderGuard_cls::IsBGTransparent() {
    if (GpCSceneObjCtrl) {
        World_cls* pWorld = GpCSceneObjCtrl->GetPCWorld();
        if (pWorld && pWorld->GetFogType() != 0 && pWorld->IsFogOverwrite())
            return false;
    }
    return GpCColorProvider && GpCColorProvider->GetColor("GLBG")[3] < 1.f;
}

bool RenderGuard_cls::IsStereogram(const View3D_cls& view) {
    if (!GpCSceneObjCtrl)
        return false;
    SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(view.GetStrCameraName());
    if (!p || !p->IsClassSameAs("Camera_cls"))
        return false;
    Camera_cls* pCamera = static_cast<Camera_cls*>(p);
    return pCamera->GetPCStereoProp()->GetStereoType() != 0 && pCamera->GetEyeType() >= 3;
}

bool RenderGuard_cls::Check(Command_enum command, ImageOutput_cls& output, const Scene_cls& scene,
                            Dialog_cls& dialog, bool& rbUpdatePanel) {
    rbUpdatePanel = false;
    if (!output.CheckFileSequence()) {
        dialog.ShowMessage("Filepath is invalid");
        return false;
    }
    if (command == RENDER_PATH)
        return true;
    if (!output.IsSequence() && dialog.AskYesNo("Not Sequence. Append 4-digit tag ?")) {
        output.AppendDefaultSequenceTag();
        rbUpdatePanel = true;
    }
    if (scene.mbBGTransparent && !output.IsAlpha() &&
        !dialog.AskYesNo("BG is transparent, but File format is not RGBA. Continue?"))
        return false;
    if (scene.mpCView && IsStereogram(*scene.mpCView) && output.GetStereoOutput() == 0 &&
        !dialog.AskYesNo("Output combined stereogram ?")) {
        output.mCStereoOutput.SetBodyFromData(static_cast<long long>(1));
        rbUpdatePanel = true;
    }
    if (!scene.mpCView) {
        dialog.ShowMessage("No Active 3DView Panel");
        return false;
    }
    return true;
}
