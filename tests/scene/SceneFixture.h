// A core with the time, Lua and scene services made in a temporary application directory, the
// default scene built, and an attribute kind of the tests' own on each stack: "TestMod_cls" a
// modifier, "TestProc_cls" a data process.
#pragma once

#include "Attribute_cls.h"
#include "KindTable_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include "SceneFixtureOf.h"

#include <sstream>
#include <vector>

// A modifier of the tests: a validity switch, a text item and one animated group.
class TestModifier_cls : public Attribute_cls {
public:
    explicit TestModifier_cls(const wxString& strName, const wxString& strClass = "TestMod_cls")
        : Attribute_cls(strClass, strName) {
        Add(&mCValidity, "Validity=", "1", "VIEW3D::PROPERTY_MODIFIER");
        Add(&mCTarget, "Target=", "None");
        AddOneDimParam("Influence", "Value", 1.0);
    }
    ConfItemBOOL_cls mCValidity;
    ConfItemSTR_cls mCTarget;
};

class SceneFixture : public SceneFixtureOf<ServiceLayer_enum::Scene> {
protected:
    void RegisterLayers() override {
        SceneFixtureOf::RegisterLayers();
        for (auto group : {KindTable_cls::GROUP_MODIFIER, KindTable_cls::GROUP_DATA_PROC}) {
            const wxString strClass = group == KindTable_cls::GROUP_MODIFIER ? "TestMod_cls" : "TestProc_cls";
            KindTable_cls::Register(strClass, group).mFuncMakeAttribute =
                [strClass](SceneObj_cls* pObj, const wxString& strName) -> Attribute_cls* {
                // Like the real kinds, it refuses objects it does not fit: here, worlds.
                return pObj->IsClassSameAs("World_cls") ? nullptr : new TestModifier_cls(strName, strClass);
            };
        }
    }
    void SetUp() override {
        SceneFixtureOf::SetUp();
        ASSERT_NE(GpCUndo, nullptr);
        ASSERT_NE(GpCLuaInterpreter, nullptr);
    }

    // The tree as "name(child,child)" in order, for short comparisons.
    static wxString Tree(ParentObj_cls* p) {
        wxString str;
        bool bFirst = true;
        for (SceneObj_cls* pChild : p->mLPCChild) {
            if (!bFirst)
                str += ",";
            bFirst = false;
            str += pChild->GetStrName();
            if (pChild->mChildCount > 0)
                str += "(" + Tree(pChild) + ")";
        }
        return str;
    }
    wxString Tree() { return Tree(GpCSceneObjCtrl); }

    // Selects the first name alone and adds the others, as clicks with the extend key would.
    void Sel(const std::vector<const char*>& names) {
        bool bAdd = false;
        for (const char* p : names) {
            GpCSceneObjCtrl->Select(p, bAdd, false, false);
            bAdd = true;
        }
    }

    void UndoTo(int index) {
        while (GpCUndo->GetCurrent() > index)
            GpCUndo->Undo();
    }
    void RedoAll() {
        while (GpCUndo->GetCurrent() < GpCUndo->GetCount())
            GpCUndo->Redo();
    }
};
