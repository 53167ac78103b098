#include "PropertyText_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyText_cls::PropertyText_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "TextObj_cls", _("Text"), GetVField()) {}

PropertyField_cls::Table_type PropertyText_cls::GetVField() {
    const wxString t = "TextProp";
    return WithMaterial(
        {
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Section("Text"),
            F::Item(t, "Text=", "Text", W::WIDGET_TEXT),
            F::Item(t, "Font=", "Font", W::WIDGET_FILE),
            F::Item(t, "Align=", "Align", W::WIDGET_CHOICE),
            F::Item(t, "Billboard=", "Face the Camera", W::WIDGET_CHECK),
            F::Group(t, "FontSize", "Font Size", 0.0, 1e300),
            F::Group(t, "LineSpacing", "Line Spacing", 0.0, 1e300),
        },
        false);
}
