#include "SceneServices.h"

#include "Attribute_cls.h"
#include "Camera_cls.h"
#include "KindTable_cls.h"
#include "LightSource_cls.h"
#include "LuaInterpreter_cls.h"
#include "Main_cls.h"
#include "Material_cls.h"
#include "MeshObj_cls.h"
#include "OwnedService_cls.h"
#include "Primitive_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TextObj_cls.h"
#include "World_cls.h"

#include <type_traits>

namespace {

// The kinds whose constructor takes the variant of the New line (the primitive shape, the light
// type) get it; the others are made on their parent alone.
template <class Kind_T> void RegisterObject(const char* pClassWord) {
    KindTable_cls::Register(pClassWord, KindTable_cls::GROUP_OBJECT).mFuncMake =
        [](ParentObj_cls* pParent, [[maybe_unused]] const wxString& strVariant) -> SceneObj_cls* {
        if constexpr (std::is_constructible_v<Kind_T, ParentObj_cls*, const wxString&>)
            return new Kind_T(pParent, strVariant);
        else
            return new Kind_T(pParent);
    };
}

} // namespace

void RegisterSceneServices() {
    // The kinds of an earlier registry are forgotten; the layers above add theirs after these.
    KindTable_cls::Clear();
    RegisterObject<Primitive_cls>("Primitive_cls");
    RegisterObject<MeshObj_cls>("MeshObj_cls");
    // A mesh's further materials are those of its .mtl file, which the file itself brings: the
    // user adds none.
    KindTable_cls::Entry_cls& mesh = KindTable_cls::Register("MeshObj_cls", KindTable_cls::GROUP_OBJECT);
    mesh.mFuncNewMaterial = [](SceneObj_cls*, const wxString& strName) -> Attribute_cls* {
        return MeshObj_cls::GetPNewMtlMaterial(strName);
    };
    mesh.mFuncCanAddMaterial = [](SceneObj_cls*) { return false; };
    mesh.mFuncSavesOwnAttribute = [](SceneObj_cls* p, Attribute_cls* pAttr) {
        return static_cast<MeshObj_cls*>(p)->IsSavedMaterial(pAttr->GetStrName());
    };
    RegisterObject<TextObj_cls>("TextObj_cls");
    RegisterObject<LightSource_cls>("LightSource_cls");
    RegisterObject<Camera_cls>("Camera_cls");
    RegisterObject<World_cls>("World_cls");
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
            // The registry ends with its scene: its kinds go too, so nothing of them reaches
            // the next registry, nor code that runs without one.
            KindTable_cls::Clear();
        });
    OwnedService_cls::Register(SVC_LuaInterpreter, GpCLuaInterpreter);
    ClassProvider_cls::SetDefaultSceneMaker([] {
        if (GpCSceneObjCtrl)
            GpCSceneObjCtrl->MakeDefaultScene();
    });
}
