#include "PropertyMesh_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyMesh_cls::PropertyMesh_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "MeshObj_cls", _("Mesh"), GetVField()) {}

PropertyField_cls::Table_type PropertyMesh_cls::GetVField() {
    return WithMaterial(
        {
            F::Item("", "FileName=", "File", W::WIDGET_FILE),
            F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
            F::Item("", "FlipNormal=", "Flip Normal", W::WIDGET_CHECK),
        },
        false);
}
