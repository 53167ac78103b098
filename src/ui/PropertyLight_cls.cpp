#include "PropertyLight_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyLight_cls::PropertyLight_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "LightSource_cls", _("Light"), GetVField()) {}

PropertyField_cls::Table_type PropertyLight_cls::GetVField() {
    return WithMaterial(
        {
            F::Item("", "LightType=", "Light Type", W::WIDGET_CHOICE),
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Item("", "CastShadow=", "Cast Shadow", W::WIDGET_CHECK),
            F::Item("", "SoftShadow=", "Soft Shadow", W::WIDGET_CHECK),
        },
        true);
}
