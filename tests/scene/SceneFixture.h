// A core with the time, Lua and scene services made in a temporary application directory, the
// default scene built, and one modifier kind of the tests' own ("TestMod_cls") registered on
// the modifier and data-process stacks.
#pragma once

#include "Attribute_cls.h"
#include "CoreServices.h"
#include "LuaServices.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SceneServices.h"
#include "TimeCtrl_cls.h"
#include "TimeServices.h"
#include "UndoManager_cls.h"

#include "CommandText.h"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <wx/filefn.h>

#include <memory>
#include <sstream>

// A modifier of the tests: a validity switch, a text item and one animated group.
class TestModifier_cls : public Attribute_cls {
public:
    explicit TestModifier_cls(const wxString& strName) : Attribute_cls("TestMod_cls", strName) {
        Add(&mCValidity, "Validity=", "1", "VIEW3D::PROPERTY_MODIFIER");
        Add(&mCTarget, "Target=", "None");
        AddOneDimParam("Influence", "Value", 1.0);
    }
    ConfItemBOOL_cls mCValidity;
    ConfItemSTR_cls mCTarget;
};

class SceneFixture : public ::testing::Test {
protected:
    void SetUp() override {
        mStrOldCwd = wxGetCwd();
        Main_cls::msSaveBusyMillis = 0;
        ClassProvider_cls::ResetRegistrations();
        SceneObj_cls::ResetRegistrations();
        RegisterCoreServices();
        RegisterTimeServices();
        RegisterLuaServices();
        RegisterSceneServices();
        for (const char* pStack : {"Modifier", "DataProc"})
            SceneObj_cls::SetAttributeMaker(
                pStack, "TestMod_cls", [](SceneObj_cls* pObj, const wxString& strName) {
                    // Like the real kinds, it refuses objects it does not fit: here, worlds.
                    return pObj->IsClassSameAs("World_cls") ? nullptr : new TestModifier_cls(strName);
                });
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
        ASSERT_NE(GpCSceneObjCtrl, nullptr);
        ASSERT_NE(GpCUndo, nullptr);
        ASSERT_NE(GpCLuaInterpreter, nullptr);
    }
    void TearDown() override {
        mpMain.reset();
        SceneObj_cls::ResetRegistrations();
        wxSetWorkingDirectory(mStrOldCwd);
    }

    SceneObjCtrl_cls* Ctrl() { return GpCSceneObjCtrl; }
    SceneObj_cls* Obj(const wxString& strName) { return GpCSceneObjCtrl->GetPCFromName(strName); }

    // Runs one text of the command language line by line, as a project load does.
    void RunText(const wxString& strText) { RunCommandText(*mpMain, strText); }

    wxString SceneText() {
        wxString str;
        GpCSceneObjCtrl->Serialize(str);
        return str;
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

    void UndoTo(int index) {
        while (GpCUndo->GetCurrent() > index)
            GpCUndo->Undo();
    }
    void RedoAll() {
        while (GpCUndo->GetCurrent() < GpCUndo->GetCount())
            GpCUndo->Redo();
    }

    TempDir_cls mDir;
    wxString mStrOldCwd;
    std::unique_ptr<Main_cls> mpMain;
};
