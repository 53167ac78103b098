#include "PropertyPrimitive_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyPrimitive_cls::PropertyPrimitive_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "Primitive_cls", _("Primitive"), GetVField()) {}

PropertyField_cls::Table_type PropertyPrimitive_cls::GetVField() {
    return WithMaterial(
        {
            F::Item("", "PrimitiveType=", "Shape", W::WIDGET_CHOICE),
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Number("", "Segments=", "Segments", 3, 256),
        },
        false);
}
