// The render page of the property panel: the image output's pattern ("Output"), size and
// size templates, alpha, the stereo save mode and "Render From Start Frame", and the render
// buttons. Every setting goes through its item's command pair, so it is undoable. The buttons
// run the checks before a render command; the questions are yes/no boxes titled "Warning".
// Main thread only.
#pragma once

#include "RenderGuard_cls.h"
#include "wxPanelEX.h"

#include <functional>

class View3D_cls;
class wxButton;
class wxCheckBox;
class wxChoice;
class wxTextCtrl;

class PropertyRender_cls : public wxPanelEX {
public:
    explicit PropertyRender_cls(wxWindow* pParent);

    // "PROPERTY_RENDER", "PROPERTY", "ALL": show the settings again.
    void UpdatePage(const wxString& strName);
    void RefreshFromOutput();

    void OnRenderSnap(wxCommandEvent& event);
    void OnRenderAnim(wxCommandEvent& event);
    void OnRenderPath(wxCommandEvent& event);
    // The alpha of "GLBG" isn't opaque (and no fog overwrites the background).
    static bool IsBGTransparent() { return RenderGuard_cls::IsBGTransparent(); }

    // Settings from the fields; false when the text is no size.
    bool SetSizeFromText(const wxString& strWidth, const wxString& strHeight);
    void SetTemplate(int group, int index);

    // The active 3D view, installed by the 3D view panel; none while that panel does not exist.
    static std::function<View3D_cls*()> msFuncGetActiveView;
    // Answers the checks' questions; null: message boxes. Not owned (tests).
    RenderGuard_cls::Dialog_cls* mpCDialog = nullptr;

    wxTextCtrl* mpCOutput = nullptr;
    wxTextCtrl* mpCWidth = nullptr;
    wxTextCtrl* mpCHeight = nullptr;
    wxChoice* mpCSizeType = nullptr;
    wxChoice* mpCSizeIndex = nullptr;
    wxCheckBox* mpCAlpha = nullptr;
    wxCheckBox* mpCStereoOutput = nullptr;
    wxCheckBox* mpCRenderFromIn = nullptr;
    wxButton* mpCRenderSnap = nullptr;
    wxButton* mpCRenderAnim = nullptr;
    wxButton* mpCRenderPath = nullptr;

private:
    // Runs the checks of a command with the page's dialog; shows changed settings.
    bool RunChecks(RenderGuard_cls::Command_enum command);
    void FillSizeIndex(int group);
};
