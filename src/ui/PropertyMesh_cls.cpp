#include "PropertyMesh_cls.h"

#include "MeshObj_cls.h"
#include "PropertyFieldPanel_cls.h"

#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/statbox.h>

#include <algorithm>
#include <iterator>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyMesh_cls::PropertyMesh_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "MeshObj_cls", _("Mesh"), GetVField()) {
    auto* pBox = new wxStaticBoxSizer(wxVERTICAL, this, _("Materials of the file"));
    mpCMtl = new wxChoice(pBox->GetStaticBox(), wxID_ANY);
    mpCMtl->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { SelectMtl(event.GetSelection()); });
    pBox->Add(mpCMtl, 0, wxEXPAND);
    mpCMtlSizer = new wxBoxSizer(wxVERTICAL);
    pBox->Add(mpCMtlSizer, 0, wxEXPAND | wxTOP, 2);
    // Under the object's own rows, above its modifiers.
    GetSizer()->Insert(1, pBox, 0, wxEXPAND | wxALL, 4);
    RefreshMtlList();
}

PropertyField_cls::Table_type PropertyMesh_cls::GetVField() {
    return WithMaterial(
        {
            F::Item("", "FileName=", "File", W::WIDGET_FILE),
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Item("", "FlipNormal=", "Flip Normal", W::WIDGET_CHECK),
        },
        false);
}

PropertyField_cls::Table_type PropertyMesh_cls::GetVMtlField(const wxString& strAttr) {
    // The material rows of what the drawing takes from a .mtl material; shininess as .mtl files
    // write it (up to 1000), the drawing holds it to what GL takes.
    static const wxString vStrKey[] = {"Ambient",   "Diffuse", "Specular",    "Emission",
                                       "Shininess", "Alpha",   "UseTexture=", "TextureFile="};
    F::Table_type v;
    for (F f : GetVMaterialFields(false))
        if (std::find(std::begin(vStrKey), std::end(vStrKey), f.mStrKey) != std::end(vStrKey)) {
            f.mStrAttr = strAttr;
            f.mMax = f.mStrKey == "Shininess" ? 1000.0 : f.mMax;
            v.push_back(f);
        }
    return v;
}

MeshObj_cls* PropertyMesh_cls::GetPCMesh() const {
    return dynamic_cast<MeshObj_cls*>(GetPCObject());
}

void PropertyMesh_cls::UpdatePage(const wxString& strName) {
    PropertyFieldPage_cls::UpdatePage(strName);
    if (strName != "IDLE")
        return;
    // The file is read when first drawn: its materials come then.
    RefreshMtlList();
    if (mpCMtlFields)
        mpCMtlFields->UpdateIdle();
}

void PropertyMesh_cls::RefreshFromObject() {
    PropertyFieldPage_cls::RefreshFromObject();
    // The base class builds its rows before this page's own controls exist.
    if (!mpCMtl)
        return;
    RefreshMtlList();
    if (mpCMtlFields)
        mpCMtlFields->RefreshFromObject();
}

void PropertyMesh_cls::RefreshMtlList() {
    MeshObj_cls* p = GetPCMesh();
    const wxArrayString aStr = p ? p->GetAStrMtlNames() : wxArrayString();
    if (mpCMtl->GetStrings() != aStr)
        mpCMtl->Set(aStr);
    const int index = aStr.Index(mStrMtl);
    if (index == wxNOT_FOUND && mpCMtlFields)
        SelectMtl(wxNOT_FOUND);
    mpCMtl->SetSelection(index);
    mpCMtl->Enable(!aStr.empty());
}

bool PropertyMesh_cls::SelectMtl(int index) {
    MeshObj_cls* p = GetPCMesh();
    const wxArrayString aStr = p ? p->GetAStrMtlNames() : wxArrayString();
    const bool bFound = index >= 0 && index < static_cast<int>(aStr.GetCount());
    const wxString strMtl = bFound ? aStr[static_cast<size_t>(index)] : wxString();
    if (mpCMtlFields && bFound && strMtl == mStrMtl)
        return true;
    if (mpCMtlFields) {
        mpCMtlSizer->Detach(mpCMtlFields);
        mpCMtlFields->Destroy();
        mpCMtlFields = nullptr;
    }
    mStrMtl = strMtl;
    if (bFound) {
        mpCMtlFields = new PropertyFieldPanel_cls(mpCMtl->GetParent(),
                                                  GetVMtlField(MeshObj_cls::GetStrMtlAttribute(strMtl)),
                                                  [this]() -> SceneObj_cls* { return GetPCObject(); });
        mpCMtlSizer->Add(mpCMtlFields, 0, wxEXPAND);
        mpCMtl->SetSelection(index);
    }
    FitInside();
    Layout();
    return bFound;
}
