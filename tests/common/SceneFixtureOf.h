// The start of the fixtures from the scene layer up: the services up to Top and short ways to the
// scene. The kinds a test adds go with the registry's scene at the end.
#pragma once

#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

#include "ServicesFixture.h"

template <ServiceLayer_enum Top> class SceneFixtureOf : public ServicesFixture<Top> {
protected:
    void SetUp() override {
        ServicesFixture<Top>::SetUp();
        ASSERT_NE(GpCSceneObjCtrl, nullptr);
    }

    SceneObjCtrl_cls* Ctrl() { return GpCSceneObjCtrl; }
    SceneObj_cls* Obj(const wxString& strName) { return GpCSceneObjCtrl->GetPCFromName(strName); }

    wxString SceneText() {
        wxString str;
        GpCSceneObjCtrl->Serialize(str);
        return str;
    }
};
