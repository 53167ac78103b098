#include "TextEntryCtrl_cls.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "PanelBar_cls.h"
#include "ParamGroup_cls.h"
#include "PlaceholderPanel_cls.h"
#include "SceneObjCtrl_cls.h"
#include "Shortcut_cls.h"
#include "SplittableWindow_cls.h"
#include "UndoManager_cls.h"

#include <wx/button.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

TextEntryCtrl_cls::TextEntryCtrl_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_TEXT_EDITOR) {
    ConstructPanelBar();
    mpCTag = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    auto* pApply = new wxButton(this, wxID_ANY, _("Apply"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCState = new wxStaticText(this, wxID_ANY, wxString());
    mpCText = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                             wxTE_MULTILINE | wxTE_DONTWRAP);
    mpCText->SetFont(wxFont(wxFontInfo(9).Family(wxFONTFAMILY_TELETYPE)));
    auto* pRow = new wxBoxSizer(wxHORIZONTAL);
    pRow->Add(mpCTag, 1, wxEXPAND);
    pRow->Add(pApply, 0, wxLEFT, 4);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(pRow, 0, wxEXPAND | wxALL, 2);
    pSizer->Add(mpCState, 0, wxEXPAND | wxLEFT, 4);
    pSizer->Add(mpCText, 1, wxEXPAND);
    SetSizer(pSizer);
    mpCTag->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { LoadExpression(mpCTag->GetValue()); });
    pApply->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ApplyExpression(); });
    // The editor's own keys come first while its text has the focus, before the frame's
    // accelerators (Ctrl+Z is the project's undo elsewhere); the rest type as usual.
    mpCText->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (!GpCTextShortcut || !GpCTextShortcut->ProcShortcutKey(event, this))
            event.Skip();
    });
    mpCText->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        mVStrUndo.push_back(mStrShown);
        mVStrRedo.clear();
        mStrShown = mpCText->GetValue();
    });
    Bind(
        wxEVT_MENU, [this](wxCommandEvent& event) { ProcCommand(event.GetId()); }, ID_TEXT_EDITOR_APPLY,
        ID_TEXT_EDITOR_TAG);
}

bool TextEntryCtrl_cls::ProcCommand(int id) {
    switch (id) {
    case ID_TEXT_EDITOR_APPLY:
        return ApplyExpression();
    case ID_TEXT_EDITOR_REVERT:
        return !mStrTag.empty() && LoadExpression(mStrTag);
    case ID_TEXT_EDITOR_UNDO:
        return StepTyping(mVStrUndo, mVStrRedo);
    case ID_TEXT_EDITOR_REDO:
        return StepTyping(mVStrRedo, mVStrUndo);
    case ID_TEXT_EDITOR_TAG:
        mpCTag->SetFocus();
        mpCTag->SelectAll();
        return true;
    default:
        return false;
    }
}

bool TextEntryCtrl_cls::StepTyping(std::vector<wxString>& vStrFrom, std::vector<wxString>& vStrTo) {
    if (vStrFrom.empty())
        return false;
    vStrTo.push_back(mStrShown);
    mStrShown = vStrFrom.back();
    vStrFrom.pop_back();
    mpCText->ChangeValue(mStrShown);
    return true;
}

bool TextEntryCtrl_cls::LoadExpression(const wxString& strTag) {
    ParamGroup_cls* pGroup = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParamGroup(strTag) : nullptr;
    mStrTag = pGroup ? strTag : wxString();
    mpCTag->ChangeValue(strTag);
    mpCText->ChangeValue(pGroup ? pGroup->mCExpression.GetBodySTR() : wxString());
    mStrShown = mpCText->GetValue();
    mVStrUndo.clear();
    mVStrRedo.clear();
    mpCState->SetLabel(pGroup ? wxString() : wxString(_("No parameter group at this tag.")));
    ShowSwitch();
    return pGroup != nullptr;
}

bool TextEntryCtrl_cls::ApplyExpression() {
    if (mStrTag.empty() || !GCClassProvider || !GpCSceneObjCtrl || !GpCSceneObjCtrl->GetPCParamGroup(mStrTag))
        return false;
    ParamGroup_cls* pGroup = GpCSceneObjCtrl->GetPCParamGroup(mStrTag);
    // Applying means using it: the switch goes on with the text, in one undo step.
    const bool bSwitch = !pGroup->mCUseExpr.GetBodyBOOL();
    if (bSwitch && GpCUndo)
        GpCUndo->OpenBlock("ApplyExpression");
    GCClassProvider->SetParamGroupConfCommand(mStrTag, "Expression=", mpCText->GetValue());
    if (bSwitch) {
        GCClassProvider->SetParamGroupConfCommand(mStrTag, "UseExpr=", true);
        if (GpCUndo)
            GpCUndo->CloseBlock("ApplyExpression");
    }
    ShowSwitch();
    return true;
}

void TextEntryCtrl_cls::ShowSwitch() {
    ParamGroup_cls* pGroup =
        GpCSceneObjCtrl && !mStrTag.empty() ? GpCSceneObjCtrl->GetPCParamGroup(mStrTag) : nullptr;
    if (pGroup)
        mpCState->SetLabel(pGroup->mCUseExpr.GetBodyBOOL() ? _("The expression is on.")
                                                           : _("The expression is off: Apply turns it on."));
}

bool TextEntryCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    return PlaceholderPanel_cls::ReadBlock(stream, strKey, strRest, mStrBlock);
}

void TextEntryCtrl_cls::UpdatePanelSelf(const wxString& strName, bool) {
    if (!IsUpdateTarget(strName) || mStrTag.empty() || mpCText->HasFocus())
        return;
    // Follows undo of the expression while the user is not typing in it.
    ParamGroup_cls* pGroup = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParamGroup(mStrTag) : nullptr;
    if (!pGroup) {
        LoadExpression(mStrTag);
        return;
    }
    if (pGroup->mCExpression.GetBodySTR() != mpCText->GetValue()) {
        mpCText->ChangeValue(pGroup->mCExpression.GetBodySTR());
        mStrShown = mpCText->GetValue();
    }
    ShowSwitch();
}

void TextEntryCtrl_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) {
    if (strWhat == "SelectExpression")
        LoadExpression(strArg);
    else if ((strWhat == "DeleteObject" || strWhat == "RenameObject") && !mStrTag.empty())
        LoadExpression(mStrTag);
}
