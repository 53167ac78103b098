#include "PropertyObject_cls.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "MultiInput_cls.h"
#include "ParamGroup_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

const wxString PropertyObject_cls::msStrGroup[3] = {"Position", "RotationEuler", "Scale"};

namespace {

double CurrentTime() {
    return GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT(false) : 0.0;
}

SceneObj_cls* ActiveObject() {
    return GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCActiveObject() : nullptr;
}

} // namespace

PropertyObject_cls::PropertyObject_cls(wxWindow* pParent) : wxPanelEX(pParent, _PANEL_PROPERTY_OBJECT) {
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    mpCClass = new wxStaticText(this, wxID_ANY, wxString());
    pSizer->Add(mpCClass, 0, wxALL, 4);

    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 4));
    pGrid->AddGrowableCol(1);
    pGrid->Add(new wxStaticText(this, wxID_ANY, _("Name")), 0, wxALIGN_CENTER_VERTICAL);
    mpCName =
        new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    pGrid->Add(mpCName, 1, wxEXPAND);
    pGrid->AddSpacer(0);
    mpCVisible = new wxCheckBox(this, wxID_ANY, _("Visible"));
    pGrid->Add(mpCVisible, 0);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    mpCName->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { RenameFromText(mpCName->GetValue()); });
    mpCVisible->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { SetVisible(event.IsChecked()); });

    const wxString vStrMember[3] = {"X", "Y", "Z"};
    for (int g = 0; g < 3; ++g) {
        auto* pBox = new wxStaticBoxSizer(wxVERTICAL, this, msStrGroup[g]);
        auto* pRow = new wxBoxSizer(wxHORIZONTAL);
        for (int m = 0; m < 3; ++m) {
            pRow->Add(new wxStaticText(pBox->GetStaticBox(), wxID_ANY, vStrMember[m]), 0,
                      wxALIGN_CENTER_VERTICAL | wxLEFT | wxRIGHT, 2);
            mpCField[g][m] = new wxTextCtrl(pBox->GetStaticBox(), wxID_ANY, wxString(), wxDefaultPosition,
                                            wxSize(56, -1), wxTE_PROCESS_ENTER);
            pRow->Add(mpCField[g][m], 1, wxEXPAND);
            mpCField[g][m]->Bind(wxEVT_TEXT_ENTER, [this, g, m](wxCommandEvent&) {
                SetMemberFromText(g, m, mpCField[g][m]->GetValue());
            });
        }
        mpCExpr[g] = new wxButton(pBox->GetStaticBox(), wxID_ANY, _("Expr"), wxDefaultPosition, wxDefaultSize,
                                  wxBU_EXACTFIT);
        mpCExpr[g]->Bind(wxEVT_BUTTON, [this, g](wxCommandEvent&) { EditExpression(g); });
        // The key button: a diamond, as keys are drawn on the timeline.
        mpCKey[g] = new wxButton(pBox->GetStaticBox(), wxID_ANY, wxString::FromUTF8("\xE2\x97\x86"),
                                 wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
        mpCKey[g]->SetToolTip(_("Set a key at the current time"));
        mpCKey[g]->Bind(wxEVT_BUTTON, [this, g](wxCommandEvent&) { SetKeyAtCurrentTime(g); });
        pRow->Add(mpCKey[g], 0, wxLEFT, 4);
        pRow->Add(mpCExpr[g], 0, wxLEFT, 2);
        pBox->Add(pRow, 0, wxEXPAND | wxALL, 2);
        pSizer->Add(pBox, 0, wxEXPAND | wxALL, 4);
    }
    SetSizer(pSizer);
    SetScrollRate(0, 10);
    RefreshFromObject();
}

bool PropertyObject_cls::ParseNumber(const wxString& strText, double& value) {
    return MultiInput_cls::ParseNumber(strText, value);
}

wxString PropertyObject_cls::GetStrSignature() {
    SceneObj_cls* p = ActiveObject();
    if (!p)
        return wxString();
    wxString str = p->GetStrName() + (p->mCVisible.GetBodyBOOL() ? "::1" : "::0");
    const double t = CurrentTime();
    for (const wxString& strGroup : msStrGroup)
        if (ParamGroup_cls* pGroup = p->GetPCParamGroup(wxString(), strGroup))
            for (const Parameter_cls& param : pGroup->mVCParam)
                str += wxString::Format("::%g", param.GetValue(t));
    return str;
}

bool PropertyObject_cls::IsTyping() const {
    wxWindow* pFocus = wxWindow::FindFocus();
    return pFocus && pFocus->GetParent() && (pFocus == mpCName || pFocus->GetGrandParent() == this);
}

void PropertyObject_cls::UpdatePage(const wxString& strName) {
    if (strName == "IDLE") {
        if (!IsTyping() && GetStrSignature() != mStrSignature)
            RefreshFromObject();
        return;
    }
    if (strName == "PROPERTY_OBJECT" || strName == "PROPERTY" || strName == "ALL")
        RefreshFromObject();
}

void PropertyObject_cls::RefreshFromObject() {
    ++mRefreshCount;
    SceneObj_cls* p = ActiveObject();
    mStrSignature = GetStrSignature();
    const bool bOn = p != nullptr;
    mpCClass->SetLabel(bOn ? p->mStrClassWord : wxString(_("No active object")));
    mpCName->ChangeValue(bOn ? p->GetStrName() : wxString());
    mpCName->Enable(bOn);
    mpCVisible->SetValue(bOn && p->mCVisible.GetBodyBOOL());
    mpCVisible->Enable(bOn);
    const double t = CurrentTime();
    for (int g = 0; g < 3; ++g) {
        ParamGroup_cls* pGroup = bOn ? p->GetPCParamGroup(wxString(), msStrGroup[g]) : nullptr;
        mpCExpr[g]->Enable(pGroup != nullptr);
        mpCKey[g]->Enable(pGroup != nullptr);
        for (int m = 0; m < 3; ++m) {
            const bool bHas = pGroup && m < static_cast<int>(pGroup->mVCParam.size());
            mpCField[g][m]->ChangeValue(bHas ? wxString::Format("%g", pGroup->mVCParam[m].GetValue(t))
                                             : wxString());
            mpCField[g][m]->Enable(bHas);
            // A parameter always holds one key; more than one animate it.
            wxString strDriver;
            if (bHas && pGroup->mCUseExpr.GetBodyBOOL())
                strDriver = "Expression";
            else if (bHas && pGroup->mVCParam[m].GetKeyNum() > 1)
                strDriver = "Keys";
            if (strDriver == mStrDriver[g][m])
                continue;
            mStrDriver[g][m] = strDriver;
            wxTextCtrl* pField = mpCField[g][m];
            if (strDriver == "Expression") {
                pField->SetBackgroundColour(wxColour(0xDD, 0xCC, 0xF4));
                pField->SetToolTip(_("Driven by the group's expression"));
            } else if (strDriver == "Keys") {
                pField->SetBackgroundColour(wxColour(0xF4, 0xE8, 0xB0));
                pField->SetToolTip(_("Animated by keys"));
            } else {
                pField->SetBackgroundColour(wxNullColour);
                pField->UnsetToolTip();
            }
            pField->Refresh();
        }
        mpCExpr[g]->SetLabel(pGroup && pGroup->mCUseExpr.GetBodyBOOL() ? _("Expr on") : _("Expr"));
    }
    Layout();
}

bool PropertyObject_cls::SetMemberFromText(int group, int member, const wxString& strText) {
    SceneObj_cls* p = ActiveObject();
    ParamGroup_cls* pGroup =
        (p && group >= 0 && group < 3) ? p->GetPCParamGroup(wxString(), msStrGroup[group]) : nullptr;
    double value = 0.0;
    if (!pGroup || member < 0 || member >= static_cast<int>(pGroup->mVCParam.size()) || member >= 3 ||
        !ParseNumber(strText, value)) {
        RefreshFromObject();
        return false;
    }
    const double t = CurrentTime();
    double values[3] = {0.0, 0.0, 0.0};
    for (size_t i = 0; i < pGroup->mVCParam.size() && i < 3; ++i)
        values[i] = pGroup->mVCParam[i].GetValue(t);
    values[member] = value;
    p->SetParam3Command(msStrGroup[group], values);
    RefreshFromObject();
    return true;
}

bool PropertyObject_cls::RenameFromText(const wxString& strText) {
    SceneObj_cls* p = ActiveObject();
    wxString strNew = strText;
    strNew.Trim(true).Trim(false);
    if (!p || strNew.empty()) {
        RefreshFromObject();
        return false;
    }
    if (strNew != p->GetStrName())
        GpCSceneObjCtrl->RenameCommand(p->GetStrName(), strNew);
    RefreshFromObject();
    return true;
}

void PropertyObject_cls::SetVisible(bool bVisible) {
    SceneObj_cls* p = ActiveObject();
    if (p && p->mCVisible.GetBodyBOOL() != bVisible)
        GpCSceneObjCtrl->ToggleVisibleCommand(p->GetStrName());
    RefreshFromObject();
}

bool PropertyObject_cls::SetKeyAtCurrentTime(int group) {
    SceneObj_cls* p = ActiveObject();
    ParamGroup_cls* pGroup =
        (p && group >= 0 && group < 3) ? p->GetPCParamGroup(wxString(), msStrGroup[group]) : nullptr;
    const bool bDone = pGroup && PropertyFieldPanel_cls::InsertKeyNow(pGroup, p->GetStrTag(pGroup));
    RefreshFromObject();
    return bDone;
}

void PropertyObject_cls::EditExpression(int group) {
    SceneObj_cls* p = ActiveObject();
    if (!p || group < 0 || group >= 3 || !GCClassProvider)
        return;
    if (ParamGroup_cls* pGroup = p->GetPCParamGroup(wxString(), msStrGroup[group]))
        GCClassProvider->ProcAfterMath("SelectExpression", p->GetStrTag(pGroup));
}
