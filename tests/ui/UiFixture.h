// The fixture of the window tests: a core with its services in a temporary application folder,
// the art of the source tree, and one main window that is built but never runs an event loop.
// Tests skip when the toolkit could not reach a display.
#pragma once

#include "FrameMain_cls.h"
#include "Main_cls.h"
#include "ServicesFixture.h"
#include "SplittableWindow_cls.h"
#include "wxPanelEX.h"

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/ribbon/toolbar.h>
#include <wx/textctrl.h>

#include <vector>

// Lines of the window layout text: one leaf of a panel type (with the panel's own block), a split of
// two subtrees ('V' side by side, 'H' one over the other), and the frame's block around a tree.
inline wxString Leaf(const wxString& strType, const wxString& strBlock = wxString()) {
    return "SplittableWindow::Panel\nwxPanelEX::" + strType + "\n" + strBlock + "SplittableWindow::Close\n";
}
inline wxString Split(char dir, int pos, const wxString& strA, const wxString& strB) {
    return wxString::Format("SplittableWindow::SeparatePanel::%c::%d\nPanelA\n", dir, pos) + strA +
           "PanelB\n" + strB + "SplittableWindow::Close\n";
}
inline wxString Frame(const wxString& strTree, const wxString& strSize = "0::1000::800") {
    return "FrameMain::" + strSize + "\n" + strTree + "FrameMain::Close\n";
}

// Events as a click or a choice sends them.
inline void Send(wxWindow* pControl, wxEventType type) {
    wxCommandEvent event(type, pControl->GetId());
    event.SetEventObject(pControl);
    pControl->GetEventHandler()->ProcessEvent(event);
}
// Typing a text and Enter; picking a choice's entry; setting a check box.
inline void SendTextEnter(wxTextCtrl* pText, const wxString& strValue) {
    pText->ChangeValue(strValue);
    wxCommandEvent event(wxEVT_TEXT_ENTER, pText->GetId());
    event.SetEventObject(pText);
    event.SetString(strValue);
    pText->GetEventHandler()->ProcessEvent(event);
}
inline void SendChoice(wxChoice* pChoice, int index) {
    pChoice->SetSelection(index);
    wxCommandEvent event(wxEVT_CHOICE, pChoice->GetId());
    event.SetEventObject(pChoice);
    event.SetInt(index);
    pChoice->GetEventHandler()->ProcessEvent(event);
}
inline void SendCheck(wxCheckBox* pCheck, bool bValue) {
    pCheck->SetValue(bValue);
    wxCommandEvent event(wxEVT_CHECKBOX, pCheck->GetId());
    event.SetEventObject(pCheck);
    event.SetInt(bValue ? 1 : 0);
    pCheck->GetEventHandler()->ProcessEvent(event);
}
inline void SendRibbonClick(wxWindow* pFrame, int id) {
    wxRibbonToolBarEvent event(wxEVT_RIBBONTOOLBAR_CLICKED, id);
    event.SetEventObject(pFrame);
    pFrame->GetEventHandler()->ProcessEvent(event);
}
inline void SendMenu(wxWindow* pFrame, int id, const wxString& strText = wxString()) {
    wxCommandEvent event(wxEVT_MENU, id);
    event.SetString(strText);
    event.SetEventObject(pFrame);
    pFrame->GetEventHandler()->ProcessEvent(event);
}

// True when the test program runs with the GUI toolkit up (a display was reachable).
bool IsGuiAvailable();
// The art of the source tree, the image handlers and the panel tables, once per program: what a
// main window needs before it is built.
void PrepareWindowResources();

// The core and the clock are enough for the window's own tests; a test that needs more stops at a
// higher layer in its RegisterLayers.
class UiFixture : public ServicesFixture<ServiceLayer_enum::Time> {
protected:
    void SetUp() override;
    void TearDown() override;

    // Each test starts from the stand-in panels: a test that installs the real ones says so here.
    void RegisterLayers() override;

    // Replaces the tree with the layout text, read through the core's command language.
    void ReadLayout(const wxString& strLayoutBlock);
    // Reads a tree straight into the frame: opening it as a project would clear the model.
    void ReadFrameLayout(const wxString& strTree);
    // What the idle pass does with the queued panel names.
    void Flush() { mpMain->UpdatePanelsFlush(); }
    // Every leaf panel in tree order.
    static void CollectLeaves(SplittableWindow_cls* pNode, std::vector<wxPanelEX*>& vLeaves);
    std::vector<wxPanelEX*> Leaves() {
        std::vector<wxPanelEX*> v;
        CollectLeaves(mpFrame->GetPCTopWindow(), v);
        return v;
    }
    // The first leaf panel of the class, null when there is none.
    template <class T> T* FindLeaf() {
        for (wxPanelEX* p : Leaves())
            if (auto* pLeaf = dynamic_cast<T*>(p))
                return pLeaf;
        return nullptr;
    }
    // Runs the events queued on the frame (menu mirrors, deferred tree changes).
    static void RunPendingEvents();

    FrameMain_cls* mpFrame = nullptr;
};

#define SKIP_WITHOUT_DISPLAY()                                                                               \
    do {                                                                                                     \
        if (!IsGuiAvailable())                                                                               \
            GTEST_SKIP() << "no display: the window tests need one (run under xvfb-run)";                    \
    } while (0)
