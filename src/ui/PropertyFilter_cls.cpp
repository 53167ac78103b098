#include "PropertyFilter_cls.h"

#include "EnsembleCtrl_cls.h"
#include "FilterBase_cls.h"
#include "FilterCtrl_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "ParamGroup_cls.h"
#include "PropertyObject_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace {

double CurrentTime() {
    return GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT(false) : 0.0;
}

wxButton* SmallButton(wxWindow* pParent, const wxString& strLabel) {
    return new wxButton(pParent, wxID_ANY, strLabel, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
}

} // namespace

PropertyFilter_cls::PropertyFilter_cls(wxWindow* pParent) : wxPanelEX(pParent, _PANEL_PROPERTY_SCENE) {
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    // The sampling of the frame: a check box and its numbers per feature.
    auto* pSampling = new wxFlexGridSizer(3, wxSize(6, 4));
    auto numberField = [this] {
        return new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxSize(60, -1),
                              wxTE_PROCESS_ENTER, wxDefaultValidator, "text");
    };
    mpCUseEnsemble = new wxCheckBox(this, wxID_ANY, _("Ensemble"));
    mpCEnsembleSampleNum = numberField();
    pSampling->Add(mpCUseEnsemble, 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(new wxStaticText(this, wxID_ANY, _("Samples")), 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(mpCEnsembleSampleNum);
    mpCUseMotionBlur = new wxCheckBox(this, wxID_ANY, _("Motion Blur"));
    mpCBlurLength = numberField();
    mpCBlurQuality = numberField();
    pSampling->Add(mpCUseMotionBlur, 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(new wxStaticText(this, wxID_ANY, _("Length")), 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(mpCBlurLength);
    pSampling->AddSpacer(0);
    pSampling->Add(new wxStaticText(this, wxID_ANY, _("Quality")), 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(mpCBlurQuality);
    // Shadow volumes; the samples are those of each soft light.
    mpCUseShadow = new wxCheckBox(this, wxID_ANY, _("Shadows"));
    mpCSoftShadowSampleNum = numberField();
    pSampling->Add(mpCUseShadow, 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(new wxStaticText(this, wxID_ANY, _("Soft samples")), 0, wxALIGN_CENTER_VERTICAL);
    pSampling->Add(mpCSoftShadowSampleNum);
    pSizer->Add(pSampling, 0, wxALL, 4);
    // Each control writes its item through the undo road; the item is found when the event comes,
    // so a registry made after the page is the one written.
    using ItemOf = ConfItem_cls* (*)();
    auto bindCheck = [this](wxCheckBox* pBox, ItemOf funcItem) {
        pBox->Bind(wxEVT_CHECKBOX, [this, funcItem](wxCommandEvent& event) {
            if (ConfItem_cls* pItem = funcItem())
                pItem->PushCommandPair(event.IsChecked() ? "1" : "0");
            RefreshSampling();
        });
    };
    auto bindText = [this](wxTextCtrl* pText, ItemOf funcItem) {
        pText->Bind(wxEVT_TEXT_ENTER, [this, pText, funcItem](wxCommandEvent&) {
            double value = 0.0;
            ConfItem_cls* pItem = funcItem();
            if (pItem && pText->GetValue().ToCDouble(&value) && value > 0.0)
                pItem->PushCommandPair(pText->GetValue());
            RefreshSampling();
        });
    };
    bindCheck(mpCUseEnsemble, [] {
        return GpCEnsembleCtrl ? static_cast<ConfItem_cls*>(&GpCEnsembleCtrl->mCUseEnsemble) : nullptr;
    });
    bindText(mpCEnsembleSampleNum, [] {
        return GpCEnsembleCtrl ? static_cast<ConfItem_cls*>(&GpCEnsembleCtrl->mCEnsembleSampleNum) : nullptr;
    });
    bindCheck(mpCUseMotionBlur, [] {
        return GpCBlurCtrl ? static_cast<ConfItem_cls*>(&GpCBlurCtrl->mCUseMotionBlur) : nullptr;
    });
    bindText(mpCBlurLength,
             [] { return GpCBlurCtrl ? static_cast<ConfItem_cls*>(&GpCBlurCtrl->mCBlurLength) : nullptr; });
    bindText(mpCBlurQuality,
             [] { return GpCBlurCtrl ? static_cast<ConfItem_cls*>(&GpCBlurCtrl->mCBlurQuality) : nullptr; });
    bindCheck(mpCUseShadow, [] {
        return GpCShadowVolumeCtrl ? static_cast<ConfItem_cls*>(&GpCShadowVolumeCtrl->mCUseShadowVolume)
                                   : nullptr;
    });
    bindText(mpCSoftShadowSampleNum, [] {
        return GpCShadowVolumeCtrl ? static_cast<ConfItem_cls*>(&GpCShadowVolumeCtrl->mCSoftShadowSampleNum)
                                   : nullptr;
    });

    auto* pAddRow = new wxBoxSizer(wxHORIZONTAL);
    mpCClass = new wxChoice(this, wxID_ANY);
    for (const wxString& strClass : FilterCtrl_cls::GetVStrFilterClass())
        mpCClass->Append(strClass.BeforeLast('_'));
    mpCClass->SetSelection(0);
    mpCAdd = SmallButton(this, _("Add"));
    pAddRow->Add(mpCClass, 1, wxEXPAND);
    pAddRow->Add(mpCAdd, 0, wxLEFT, 4);
    pSizer->Add(pAddRow, 0, wxEXPAND | wxALL, 4);

    mpCChain = new wxListBox(this, wxID_ANY, wxDefaultPosition, wxSize(-1, 110));
    pSizer->Add(mpCChain, 0, wxEXPAND | wxLEFT | wxRIGHT, 4);
    auto* pEditRow = new wxBoxSizer(wxHORIZONTAL);
    mpCRemove = SmallButton(this, _("Remove"));
    mpCUp = SmallButton(this, _("Up"));
    mpCDown = SmallButton(this, _("Down"));
    mpCValid = new wxCheckBox(this, wxID_ANY, _("On"));
    for (wxWindow* p : std::initializer_list<wxWindow*>{mpCRemove, mpCUp, mpCDown, mpCValid})
        pEditRow->Add(p, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 4);
    pSizer->Add(pEditRow, 0, wxALL, 4);

    auto* pTargetRow = new wxBoxSizer(wxHORIZONTAL);
    pTargetRow->Add(new wxStaticText(this, wxID_ANY, _("Colour curve of")), 0,
                    wxALIGN_CENTER_VERTICAL | wxRIGHT, 4);
    mpCTarget = new wxChoice(this, wxID_ANY);
    pTargetRow->Add(mpCTarget, 1, wxEXPAND);
    pSizer->Add(pTargetRow, 0, wxEXPAND | wxLEFT | wxRIGHT, 4);

    mpCValues = new wxListBox(this, wxID_ANY, wxDefaultPosition, wxSize(-1, 160));
    pSizer->Add(mpCValues, 1, wxEXPAND | wxALL, 4);
    // The window name "text" keeps the frame's shortcuts out of typing, as on the object page.
    mpCValue = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_PROCESS_ENTER, wxDefaultValidator, "text");
    pSizer->Add(mpCValue, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, 4);
    SetSizer(pSizer);
    SetScrollRate(0, 10);

    mpCAdd->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        const int i = mpCClass->GetSelection();
        if (i >= 0)
            AddFilter(FilterCtrl_cls::GetVStrFilterClass()[static_cast<size_t>(i)]);
    });
    mpCRemove->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { RemoveSelected(); });
    mpCUp->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { MoveSelected(-1); });
    mpCDown->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { MoveSelected(1); });
    mpCValid->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { SetSelectedValid(event.IsChecked()); });
    mpCChain->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
        const int i = event.GetSelection();
        if (GpCFilterCtrl && i >= 0)
            if (FilterBase_cls* p = GpCFilterCtrl->GetPCFromIndex(i))
                SelectFilter(p->GetStrName());
    });
    mpCValues->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
        const int i = event.GetSelection();
        mpCValue->ChangeValue(i >= 0 ? mpCValues->GetString(static_cast<unsigned>(i)).AfterFirst('=')
                                     : wxString());
    });
    mpCValue->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) {
        SetEntryFromText(mpCValues->GetSelection(), mpCValue->GetValue());
    });
    mpCTarget->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { SetLegendTarget(event.GetString()); });
    RefreshSampling();
    RefreshFromChain();
}

FilterBase_cls* PropertyFilter_cls::GetPCSelectedFilter() const {
    return GpCFilterCtrl ? GpCFilterCtrl->GetPCFromName(mStrSelected) : nullptr;
}

void PropertyFilter_cls::UpdatePage(const wxString& strName) {
    if (strName == "PROPERTY_SCENE" || strName == "PROPERTY" || strName == "ALL") {
        RefreshSampling();
        RefreshFromChain();
    }
}

void PropertyFilter_cls::RefreshSampling() {
    mpCUseEnsemble->Enable(GpCEnsembleCtrl != nullptr);
    mpCEnsembleSampleNum->Enable(GpCEnsembleCtrl != nullptr);
    if (GpCEnsembleCtrl) {
        mpCUseEnsemble->SetValue(GpCEnsembleCtrl->IsUseEnsemble());
        mpCEnsembleSampleNum->ChangeValue(GpCEnsembleCtrl->mCEnsembleSampleNum.GetBodySTR());
    }
    for (wxWindow* p : std::initializer_list<wxWindow*>{mpCUseMotionBlur, mpCBlurLength, mpCBlurQuality})
        p->Enable(GpCBlurCtrl != nullptr);
    if (GpCBlurCtrl) {
        mpCUseMotionBlur->SetValue(GpCBlurCtrl->IsUseMotionBlur());
        mpCBlurLength->ChangeValue(GpCBlurCtrl->mCBlurLength.GetBodySTR());
        mpCBlurQuality->ChangeValue(GpCBlurCtrl->mCBlurQuality.GetBodySTR());
    }
    mpCUseShadow->Enable(GpCShadowVolumeCtrl != nullptr);
    mpCSoftShadowSampleNum->Enable(GpCShadowVolumeCtrl != nullptr);
    if (GpCShadowVolumeCtrl) {
        mpCUseShadow->SetValue(GpCShadowVolumeCtrl->mCUseShadowVolume.GetBodyBOOL());
        mpCSoftShadowSampleNum->ChangeValue(GpCShadowVolumeCtrl->mCSoftShadowSampleNum.GetBodySTR());
    }
}

void PropertyFilter_cls::RefreshFromChain() {
    const bool bChain = GpCFilterCtrl != nullptr;
    for (wxWindow* p : std::initializer_list<wxWindow*>{mpCClass, mpCAdd, mpCChain})
        p->Enable(bChain);
    mpCChain->Clear();
    if (bChain && !GpCFilterCtrl->GetPCFromName(mStrSelected))
        mStrSelected =
            GpCFilterCtrl->GetCount() > 0 ? GpCFilterCtrl->GetPCFromIndex(0)->GetStrName() : wxString();
    if (bChain) {
        for (FilterBase_cls* p : GpCFilterCtrl->GetListFilter())
            mpCChain->Append(p->IsValid() ? p->GetStrName() : p->GetStrName() + " " + _("(off)"));
        const int index = GpCFilterCtrl->GetIndexFromPC(GetPCSelectedFilter());
        if (index >= 0)
            mpCChain->SetSelection(index);
    }
    RefreshValues();
}

void PropertyFilter_cls::RefreshValues() {
    FilterBase_cls* p = GetPCSelectedFilter();
    for (wxWindow* pCtrl :
         std::initializer_list<wxWindow*>{mpCRemove, mpCUp, mpCDown, mpCValid, mpCValues, mpCValue})
        pCtrl->Enable(p != nullptr);
    mpCValid->SetValue(p && p->IsValid());
    mVEntry.clear();
    mpCValues->Clear();
    mpCTarget->Clear();
    const bool bLegend = p && p->IsAttributeSameAs("Legend_cls");
    mpCTarget->Enable(bLegend);
    if (!p)
        return;
    for (ConfItem_cls* pItem : p->mVPItems) {
        // The attribute's own bookkeeping is no setting, and "Validity=" is the check box.
        const wxString& strHead = pItem->mStrHead;
        if (strHead == "Validity=" || strHead == "AttributeName=" || strHead == "Name=" || strHead == "Shy=")
            continue;
        mVEntry.push_back({pItem->mStrHead, wxString(), -1});
        mpCValues->Append(pItem->mStrHead + pItem->GetBodySTR());
    }
    const double t = CurrentTime();
    for (ParamGroup_cls* pGroup : p->mVPCParamGroup)
        for (size_t m = 0; m < pGroup->mVCParam.size(); ++m) {
            mVEntry.push_back({wxString(), pGroup->GetStrName(), static_cast<int>(m)});
            mpCValues->Append(wxString::Format("%s::%s=%g", pGroup->GetStrName(),
                                               pGroup->mVCParam[m].GetStrName(),
                                               pGroup->mVCParam[m].GetValue(t)));
        }
    if (bLegend && GpCSceneObjCtrl) {
        // The objects that carry a colour curve, and "None".
        mpCTarget->Append("None");
        std::vector<SceneObj_cls*> vObjects;
        GpCSceneObjCtrl->GetVPCList(vObjects);
        for (SceneObj_cls* pObj : vObjects)
            if (pObj->GetPCAttributeFromAttribName("ColorCurve_cls", 0))
                mpCTarget->Append(pObj->GetStrName());
        const int at = mpCTarget->FindString(p->GetPCItem("Target=")->GetBodySTR(), true);
        mpCTarget->SetSelection(at == wxNOT_FOUND ? 0 : at);
    }
}

bool PropertyFilter_cls::SelectFilter(const wxString& strName) {
    if (!GpCFilterCtrl || !GpCFilterCtrl->GetPCFromName(strName))
        return false;
    mStrSelected = strName;
    GpCFilterCtrl->Select(strName, false, false);
    RefreshFromChain();
    return true;
}

bool PropertyFilter_cls::AddFilter(const wxString& strClass) {
    if (!GpCFilterCtrl)
        return false;
    const wxString strName = GpCFilterCtrl->AddFilterCommand(strClass, wxString());
    if (strName.empty())
        return false;
    return SelectFilter(strName);
}

bool PropertyFilter_cls::RemoveSelected() {
    FilterBase_cls* p = GetPCSelectedFilter();
    const bool bDone = p && GpCFilterCtrl->DeleteFilterCommand(p->GetStrName());
    RefreshFromChain();
    return bDone;
}

bool PropertyFilter_cls::MoveSelected(int delta) {
    FilterBase_cls* p = GetPCSelectedFilter();
    const bool bDone =
        p && GpCFilterCtrl->MoveFilterCommand(p->GetStrName(), GpCFilterCtrl->GetIndexFromPC(p) + delta);
    RefreshFromChain();
    return bDone;
}

bool PropertyFilter_cls::SetSelectedValid(bool bValid) {
    FilterBase_cls* p = GetPCSelectedFilter();
    const bool bDone = p && GpCFilterCtrl->SetFilterValidityCommand(p->GetStrName(), bValid);
    RefreshFromChain();
    return bDone;
}

bool PropertyFilter_cls::SetEntryFromText(int index, const wxString& strText) {
    FilterBase_cls* p = GetPCSelectedFilter();
    if (!p || index < 0 || index >= static_cast<int>(mVEntry.size()))
        return false;
    const Entry_cls entry = mVEntry[static_cast<size_t>(index)];
    bool bDone = false;
    if (!entry.mStrKey.empty()) {
        wxString str = strText;
        str.Trim(true).Trim(false);
        bDone = GpCFilterCtrl->SetFilterItemCommand(p->GetStrName(), entry.mStrKey, str);
    } else {
        double value = 0.0;
        bDone = PropertyObject_cls::ParseNumber(strText, value) &&
                GpCFilterCtrl->SetFilterParamCommand(p->GetStrName(), entry.mStrGroup, entry.mMember, value);
    }
    RefreshFromChain();
    if (index < static_cast<int>(mpCValues->GetCount()))
        mpCValues->SetSelection(index);
    return bDone;
}

bool PropertyFilter_cls::SetLegendTarget(const wxString& strObject) {
    FilterBase_cls* p = GetPCSelectedFilter();
    if (!p || !p->IsAttributeSameAs("Legend_cls"))
        return false;
    const bool bDone = GpCFilterCtrl->SetFilterItemCommand(p->GetStrName(), "Target=", strObject);
    RefreshFromChain();
    return bDone;
}
