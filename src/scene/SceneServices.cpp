#include "SceneServices.h"

#include "Attribute_cls.h"
#include "LuaInterpreter_cls.h"
#include "Main_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

void RegisterSceneServices() {
    // Object kinds, attribute makers and seams of an earlier registry are forgotten.
    SceneObj_cls::ResetRegistrations();
    ClassProvider_cls::SetServiceMaker(
        SVC_SceneObjCtrl,
        [] {
            GpCSceneObjCtrl = new SceneObjCtrl_cls();
            Attribute_cls::msFuncSceneObjName = [](SceneObj_cls* p) {
                return p ? p->GetStrName() : wxString();
            };
            GCClassProvider->SetReceiver(
                RECV_SCENE_OBJ_CTRL,
                [](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
                    return GpCSceneObjCtrl && GpCSceneObjCtrl->ReadStrLine(stream, strHead, strRest);
                },
                [](wxString& strOut) {
                    if (GpCSceneObjCtrl)
                        GpCSceneObjCtrl->Serialize(strOut);
                },
                {"ConfItemList", "SceneObjCtrl"});
            GCClassProvider->AddClearHook([] {
                if (GpCSceneObjCtrl)
                    GpCSceneObjCtrl->Clear();
            });
        },
        [] {
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_SCENE_OBJ_CTRL);
            Attribute_cls::msFuncSceneObjName = nullptr;
            delete GpCSceneObjCtrl;
            GpCSceneObjCtrl = nullptr;
        });
    ClassProvider_cls::SetServiceMaker(
        SVC_LuaInterpreter, [] { GpCLuaInterpreter = new LuaInterpreter_cls(); },
        [] {
            delete GpCLuaInterpreter;
            GpCLuaInterpreter = nullptr;
        });
    ClassProvider_cls::SetDefaultSceneMaker([] {
        if (GpCSceneObjCtrl)
            GpCSceneObjCtrl->MakeDefaultScene();
    });
}
