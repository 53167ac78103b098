#include "PropertyLight_cls.h"

#include "ClassProvider_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyLight_cls::PropertyLight_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "LightSource_cls", _("Light"), GetVField()) {
    // The soft lights' samples and size are the scene's, kept in the shadow controller's block.
    mpCFields->mFuncBlock = [](const wxString& strAttr) -> ConfListContainer_cls* {
        return strAttr == "ShadowVolumeCtrl" ? GpCShadowVolumeCtrl : nullptr;
    };
    mpCFields->RefreshFromObject();
}

PropertyField_cls::Table_type PropertyLight_cls::GetVField() {
    return WithMaterial(
        {
            F::Item("", "LightType=", "Light Type", W::WIDGET_CHOICE),
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Item("", "CastShadow=", "Cast Shadow", W::WIDGET_CHECK),
            F::Item("", "SoftShadow=", "Soft Shadow", W::WIDGET_CHECK),
            F::Number("ShadowVolumeCtrl", "SoftShadowSampleNum=", "Soft Shadow Samples", 1, 256),
            F::Number("ShadowVolumeCtrl", "SoftShadowSize=", "Soft Shadow Size", 0, 1e300),
        },
        true);
}
