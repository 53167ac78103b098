// A window with the scene services and the real panels: the outliner and the property panel
// over the console and the text editor, read as a layout straight into the frame.
#pragma once

#include "UiFixture.h"

#include "ConsolePanel_cls.h"
#include "Outliner_cls.h"
#include "PanelMakers.h"
#include "ParamGroup_cls.h"
#include "PropertyObject_cls.h"
#include "Property_cls.h"
#include "RibbonUI_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TextEntryCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/textctrl.h>

#include <vector>

// Outliner and property panel over the console and the text editor.
inline const wxString gLayout = Split('V', 500, Split('H', 300, Leaf("OUTLINER"), Leaf("PROPERTY")),
                                      Split('H', 300, Leaf("CONSOLE"), Leaf("TEXT_EDITOR")));

inline const std::vector<wxString> gDefaultScene = {"World", "Initial Light", "Box", "Camera"};

class ScenePanelsFixture : public UiFixture {
protected:
    // The outliner and the property pages show the scene.
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Scene>();
        RegisterPanelMakers();
    }

    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(gLayout);
        mpOutliner = FindLeaf<Outliner_cls>();
        mpProperty = FindLeaf<Property_cls>();
        mpConsole = FindLeaf<ConsolePanel_cls>();
        mpEditor = FindLeaf<TextEntryCtrl_cls>();
        ASSERT_TRUE(mpOutliner && mpProperty && mpConsole && mpEditor);
        mpPage = mpProperty->mpCPageObject;
        ASSERT_NE(mpPage, nullptr);
        ASSERT_NE(GpCSceneObjCtrl, nullptr);
        ASSERT_NE(GpCUndo, nullptr);
    }

    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    std::vector<wxString> Shown() {
        Flush();
        return mpOutliner->GetVStrShownNames();
    }
    SceneObj_cls* Obj(const wxString& strName) { return GpCSceneObjCtrl->GetPCFromName(strName); }
    double Value(const wxString& strObj, const wxString& strGroup, int member) {
        ParamGroup_cls* pGroup = Obj(strObj)->GetPCParamGroup(wxString(), strGroup);
        return pGroup->mVCParam.at(member).GetValue(0.0);
    }

    Outliner_cls* mpOutliner = nullptr;
    Property_cls* mpProperty = nullptr;
    PropertyObject_cls* mpPage = nullptr;
    ConsolePanel_cls* mpConsole = nullptr;
    TextEntryCtrl_cls* mpEditor = nullptr;
};
