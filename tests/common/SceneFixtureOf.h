// The start of the fixtures from the scene layer up: the services up to Top, short ways to the
// scene, and the object kinds forgotten at the end so that tests without a fixture find none.
#pragma once

#include "KindTable_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

#include "ServicesFixture.h"

template <ServiceLayer_enum Top> class SceneFixtureOf : public ServicesFixture<Top> {
protected:
    void SetUp() override {
        ServicesFixture<Top>::SetUp();
        ASSERT_NE(GpCSceneObjCtrl, nullptr);
    }
    void TearDown() override {
        ServicesFixture<Top>::TearDown();
        KindTable_cls::Clear();
    }

    SceneObjCtrl_cls* Ctrl() { return GpCSceneObjCtrl; }
    SceneObj_cls* Obj(const wxString& strName) { return GpCSceneObjCtrl->GetPCFromName(strName); }

    wxString SceneText() {
        wxString str;
        GpCSceneObjCtrl->Serialize(str);
        return str;
    }
};
