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

#include <sstream>
#include <vector>

// Outliner and property panel over the console and the text editor.
inline const char* const gLayout = "SplittableWindow::SeparatePanel::V::500\n"
                                   "PanelA\n"
                                   "SplittableWindow::SeparatePanel::H::300\n"
                                   "PanelA\n"
                                   "SplittableWindow::Panel\n"
                                   "wxPanelEX::OUTLINER\n"
                                   "SplittableWindow::Close\n"
                                   "PanelB\n"
                                   "SplittableWindow::Panel\n"
                                   "wxPanelEX::PROPERTY\n"
                                   "SplittableWindow::Close\n"
                                   "SplittableWindow::Close\n"
                                   "PanelB\n"
                                   "SplittableWindow::SeparatePanel::H::300\n"
                                   "PanelA\n"
                                   "SplittableWindow::Panel\n"
                                   "wxPanelEX::CONSOLE\n"
                                   "SplittableWindow::Close\n"
                                   "PanelB\n"
                                   "SplittableWindow::Panel\n"
                                   "wxPanelEX::TEXT_EDITOR\n"
                                   "SplittableWindow::Close\n"
                                   "SplittableWindow::Close\n"
                                   "SplittableWindow::Close\n"
                                   "FrameMain::Close\n";

inline const std::vector<wxString> gDefaultScene = {"World", "Initial Light", "Box", "Camera"};

inline void SendRibbonClick(wxWindow* pFrame, int id) {
    wxRibbonToolBarEvent event(wxEVT_RIBBONTOOLBAR_CLICKED, id);
    event.SetEventObject(pFrame);
    pFrame->GetEventHandler()->ProcessEvent(event);
}

inline void SendTextEnter(wxTextCtrl* pText, const wxString& strValue) {
    pText->ChangeValue(strValue);
    wxCommandEvent event(wxEVT_TEXT_ENTER, pText->GetId());
    event.SetEventObject(pText);
    event.SetString(strValue);
    pText->GetEventHandler()->ProcessEvent(event);
}

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
        // Straight to the frame: opening it as a project would clear the default scene.
        std::wistringstream stream(std::wstring(wxString(gLayout).wc_str()));
        ASSERT_TRUE(mpFrame->ReadStrLine(stream, "FrameMain", "0::1000::800"));
        mpFrame->Layout();
        for (wxPanelEX* p : Leaves()) {
            if (auto* pOutliner = dynamic_cast<Outliner_cls*>(p))
                mpOutliner = pOutliner;
            if (auto* pProperty = dynamic_cast<Property_cls*>(p))
                mpPage = pProperty->mpCPageObject;
            if (auto* pConsole = dynamic_cast<ConsolePanel_cls*>(p))
                mpConsole = pConsole;
            if (auto* pEditor = dynamic_cast<TextEntryCtrl_cls*>(p))
                mpEditor = pEditor;
        }
        ASSERT_TRUE(mpOutliner && mpPage && mpConsole && mpEditor);
        ASSERT_NE(GpCSceneObjCtrl, nullptr);
        ASSERT_NE(GpCUndo, nullptr);
    }

    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    // What the idle pass does with the queued panel names.
    void Flush() { mpMain->UpdatePanelsFlush(); }
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
    PropertyObject_cls* mpPage = nullptr;
    ConsolePanel_cls* mpConsole = nullptr;
    TextEntryCtrl_cls* mpEditor = nullptr;
};
