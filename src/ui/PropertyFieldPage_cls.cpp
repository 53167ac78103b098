#include "PropertyFieldPage_cls.h"

#include "Attribute_cls.h"
#include "KindTable_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "PropertyModifier_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/listbox.h>
#include <wx/log.h>
#include <wx/sizer.h>

#include <memory>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyFieldPage_cls::PropertyFieldPage_cls(wxWindow* pParent, const wxString& strClassWord,
                                             const wxString& strLabel, PropertyField_cls::Table_type vField)
    : PropertyKindPage_cls(pParent, strClassWord), mStrLabel(strLabel) {
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    mpCFields = new PropertyFieldPanel_cls(this, std::move(vField), [this] { return GetPCObject(); });
    pSizer->Add(mpCFields, 0, wxEXPAND);

    auto* pBox = new wxStaticBoxSizer(wxVERTICAL, this, _("Property Modifier"));
    mpCModList = new wxListBox(pBox->GetStaticBox(), wxID_ANY, wxDefaultPosition, wxSize(-1, 70));
    mpCModList->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) { SelectModifier(event.GetSelection()); });
    pBox->Add(mpCModList, 0, wxEXPAND);
    auto* pRow = new wxBoxSizer(wxHORIZONTAL);
    mpCModKind = new wxChoice(pBox->GetStaticBox(), wxID_ANY);
    pRow->Add(mpCModKind, 1, wxEXPAND);
    auto* pAdd = new wxButton(pBox->GetStaticBox(), wxID_ANY, _("Add"), wxDefaultPosition, wxDefaultSize,
                              wxBU_EXACTFIT);
    pAdd->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { AddModifier(mpCModKind->GetStringSelection()); });
    auto* pRemove = new wxButton(pBox->GetStaticBox(), wxID_ANY, _("Remove"), wxDefaultPosition,
                                 wxDefaultSize, wxBU_EXACTFIT);
    pRemove->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { DeleteModifier(mpCModList->GetSelection()); });
    pRow->Add(pAdd, 0, wxLEFT, 2);
    pRow->Add(pRemove, 0, wxLEFT, 2);
    pBox->Add(pRow, 0, wxEXPAND | wxTOP, 2);
    mpCModSizer = new wxBoxSizer(wxVERTICAL);
    pBox->Add(mpCModSizer, 0, wxEXPAND);
    pSizer->Add(pBox, 0, wxEXPAND | wxALL, 4);

    SetSizer(pSizer);
    SetScrollRate(0, 10);
    RefreshFromObject();
}

SceneObj_cls* PropertyFieldPage_cls::GetPCObject() const {
    SceneObj_cls* p = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCActiveObject() : nullptr;
    return (p && p->mStrClassWord == mStrClassWord) ? p : nullptr;
}

PropertyField_cls::Table_type PropertyFieldPage_cls::GetVMaterialFields(bool bLight) {
    const wxString m = "Material";
    F::Table_type v = {
        F::Section(bLight ? "Light Color" : "Material"),
        F::Group(m, "Ambient", "Ambient", 0.0, 1.0),
        F::Group(m, "Diffuse", "Diffuse", 0.0, 1.0),
        F::Group(m, "Specular", "Specular", 0.0, 1.0),
        F::Group(m, "Emission", "Emission", 0.0, 1.0),
        F::Group(m, "Shininess", "Shininess", 0.0, 128.0),
        F::Group(m, "Alpha", "Alpha", 0.0, 1.0),
        F::Item(m, "BlendType=", "Blend", W::WIDGET_CHOICE),
        F::Item(m, "TwoSide=", "Two Side", W::WIDGET_CHECK),
        F::Item(m, "Smooth=", "Smooth", W::WIDGET_CHECK),
        F::Item(m, "Wireframe=", "Wireframe", W::WIDGET_CHECK),
        F::Item(m, "CastShadow=", "Cast Shadow", W::WIDGET_CHECK),
        F::Item(m, "ReceiveShadow=", "Receive Shadow", W::WIDGET_CHECK),
    };
    const F::Table_type vExtra =
        bLight ? F::Table_type{F::Group(m, "SpotCutoff", "Spot Cutoff", 0.0, 90.0),
                               F::Group(m, "SpotExponent", "Spot Exponent", 0.0, 128.0),
                               F::Group(m, "Attenuation", "Attenuation", 0.0, 1e300)}
               : F::Table_type{F::Section("Texture"),
                               F::Item(m, "UseTexture=", "Use Texture", W::WIDGET_CHECK),
                               F::Item(m, "TextureFile=", "Texture File", W::WIDGET_FILE),
                               F::Item(m, "TextureWrap=", "Wrap", W::WIDGET_CHOICE),
                               F::Item(m, "TextureInterp=", "Interpolation", W::WIDGET_CHOICE),
                               F::Item(m, "TextureMode=", "Mode", W::WIDGET_CHOICE),
                               F::Group(m, "TexScale", "Scale"),
                               F::Group(m, "TexOffset", "Offset")};
    v.insert(v.end(), vExtra.begin(), vExtra.end());
    return v;
}

PropertyField_cls::Table_type PropertyFieldPage_cls::WithMaterial(PropertyField_cls::Table_type vField,
                                                                  bool bLight) {
    const F::Table_type vMaterial = GetVMaterialFields(bLight);
    vField.insert(vField.end(), vMaterial.begin(), vMaterial.end());
    return vField;
}

// ---- updates -----------------------------------------------------------------------------------

void PropertyFieldPage_cls::UpdatePage(const wxString& strName) {
    if (strName == "IDLE") {
        mpCFields->UpdateIdle();
        if (mpCModifier)
            mpCModifier->UpdateIdle();
        return;
    }
    if (strName == "PROPERTY_OBJECT" || strName == "PROPERTY_MATERIAL" || strName == "PROPERTY_MODIFIER" ||
        strName == "PROPERTY" || strName == "ALL")
        RefreshFromObject();
}

void PropertyFieldPage_cls::RefreshFromObject() {
    mpCFields->RefreshFromObject();
    RefreshModifiers();
}

// ---- the modifier stack ------------------------------------------------------------------------

std::vector<Attribute_cls*> PropertyFieldPage_cls::GetVPCModifiers() const {
    std::vector<Attribute_cls*> v;
    SceneObj_cls* p = GetPCObject();
    if (!p)
        return v;
    int index = 0;
    for (Attribute_cls* pAttr : p->mLPCModifier)
        if (index++ >= p->GetIndexModifierInit())
            v.push_back(pAttr);
    return v;
}

void PropertyFieldPage_cls::RefreshModifiers() {
    SceneObj_cls* p = GetPCObject();
    const std::vector<Attribute_cls*> v = GetVPCModifiers();
    wxArrayString aStr;
    for (Attribute_cls* pAttr : v)
        aStr.Add(pAttr->GetStrName() + "  [" + pAttr->GetStrAttributeName() + "]");
    const wxString strShown = mpCModifier ? mpCModifier->mStrEntryName : wxString();
    if (mpCModList->GetStrings() != aStr)
        mpCModList->Set(aStr);
    // The kinds that fit this object: the kind's maker says so. The answer depends on the kind
    // of object only, so it is asked once.
    if (p && mpCModKind->IsEmpty()) {
        wxLogNull noLog;
        for (const wxString& strClass : KindTable_cls::GetClassWords(KindTable_cls::GROUP_MODIFIER)) {
            const KindTable_cls::Entry_cls* pKind =
                KindTable_cls::Find(strClass, KindTable_cls::GROUP_MODIFIER);
            if (!pKind || !pKind->mFuncMakeAttribute)
                continue;
            std::unique_ptr<Attribute_cls> pProbe(pKind->mFuncMakeAttribute(p, "Probe"));
            if (pProbe)
                mpCModKind->Append(strClass);
        }
        mpCModKind->SetSelection(mpCModKind->IsEmpty() ? wxNOT_FOUND : 0);
    }
    // The page shown stays while its entry does.
    int row = wxNOT_FOUND;
    for (size_t i = 0; i < v.size(); ++i)
        if (v[i]->GetStrName() == strShown)
            row = static_cast<int>(i);
    mpCModList->SetSelection(row);
    if (row == wxNOT_FOUND && mpCModifier)
        SelectModifier(-1);
    else if (mpCModifier)
        mpCModifier->RefreshFromObject();
}

bool PropertyFieldPage_cls::SelectModifier(int row) {
    const std::vector<Attribute_cls*> v = GetVPCModifiers();
    Attribute_cls* pEntry =
        (row >= 0 && row < static_cast<int>(v.size())) ? v[static_cast<size_t>(row)] : nullptr;
    if (mpCModifier && pEntry && mpCModifier->mStrEntryName == pEntry->GetStrName())
        return true;
    if (mpCModifier) {
        mpCModSizer->Detach(mpCModifier);
        mpCModifier->Destroy();
        mpCModifier = nullptr;
    }
    if (pEntry) {
        mpCModifier = new PropertyModifier_cls(
            mpCModList->GetParent(), [this] { return GetPCObject(); }, pEntry);
        mpCModSizer->Add(mpCModifier, 0, wxEXPAND);
        mpCModList->SetSelection(row);
    }
    FitInside();
    Layout();
    return pEntry != nullptr;
}

bool PropertyFieldPage_cls::AddModifier(const wxString& strClass) {
    SceneObj_cls* p = GetPCObject();
    if (!p || strClass.empty())
        return false;
    const size_t before = GetVPCModifiers().size();
    p->SyncConfListTag();
    p->AddModifierCommand(strClass, wxString());
    RefreshModifiers();
    const size_t after = GetVPCModifiers().size();
    if (after == before)
        return false;
    SelectModifier(static_cast<int>(after) - 1);
    return true;
}

bool PropertyFieldPage_cls::DeleteModifier(int row) {
    const std::vector<Attribute_cls*> v = GetVPCModifiers();
    SceneObj_cls* p = GetPCObject();
    if (!p || row < 0 || row >= static_cast<int>(v.size()))
        return false;
    p->SyncConfListTag();
    p->DeleteModifierCommand(v[static_cast<size_t>(row)]->GetStrName());
    RefreshModifiers();
    return true;
}
