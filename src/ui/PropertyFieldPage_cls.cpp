#include "PropertyFieldPage_cls.h"

#include "ModifierStack_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

#include <wx/intl.h>
#include <wx/sizer.h>

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

    mpCStack = new ModifierStack_cls(
        this, [this] { return GetPCObject(); }, false);
    pSizer->Add(mpCStack, 0, wxEXPAND);

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
        mpCStack->UpdateIdle();
        return;
    }
    if (strName == "PROPERTY_OBJECT" || strName == "PROPERTY_MATERIAL" || strName == "PROPERTY_MODIFIER" ||
        strName == "PROPERTY" || strName == "ALL")
        RefreshFromObject();
}

void PropertyFieldPage_cls::RefreshFromObject() {
    mpCFields->RefreshFromObject();
    mpCStack->RefreshFromObject();
}
