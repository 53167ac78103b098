#include "PropertyWorld_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyWorld_cls::PropertyWorld_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "World_cls", _("World"), GetVField()) {}

PropertyField_cls::Table_type PropertyWorld_cls::GetVField() {
    const wxString f = "Fog";
    return {
        F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
        F::Section("Fog"),
        F::Item(f, "FogType=", "Fog Type", W::WIDGET_CHOICE),
        F::Item(f, "FogOverwrite=", "Fog Color as Background", W::WIDGET_CHECK),
        F::Group(f, "FogColor", "Fog Color", 0.0, 1.0),
        F::Group(f, "FogRange", "Fog Range", 0.0, 1e300),
        F::Group(f, "FogDensity", "Fog Density", 0.0, 1e300),
    };
}
