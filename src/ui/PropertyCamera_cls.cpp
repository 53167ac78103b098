#include "PropertyCamera_cls.h"

#include <wx/intl.h>

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyCamera_cls::PropertyCamera_cls(wxWindow* pParent)
    : PropertyFieldPage_cls(pParent, "Camera_cls", _("Camera"), GetVField()) {}

PropertyField_cls::Table_type PropertyCamera_cls::GetVField() {
    const wxString c = "CameraProp", b = "FocalBlur", s = "Stereo";
    return {
        F::Item("", "Valid=", "Valid", W::WIDGET_CHECK),
        F::Section("Camera"),
        F::Item(c, "CameraType=", "Camera Type", W::WIDGET_CHOICE),
        // The perspective type draws at most 120 degrees whatever is set; the others take more.
        F::Group(c, "ViewAngle", "View Angle", 0.1, 179.0),
        F::Group(c, "WideAngle", "Wide Angle", 1.0, 360.0),
        F::Group(c, "ClipRange", "Clip Range", 1e-6, 1e300),
        F::Group(c, "DomeTilt", "Dome Tilt", -180.0, 180.0),
        F::Item(c, "1stBufSizeIdx=", "Face Size", W::WIDGET_CHOICE),
        F::Section("Passepartout"),
        F::Item(c, "Passepartout=", "Passepartout", W::WIDGET_CHECK),
        F::Number(c, "PassepartoutAspect=", "Aspect", 0.01, 100.0),
        F::Number(c, "PassepartoutAlpha=", "Alpha", 0.0, 1.0),
        F::Section("Size Override"),
        F::Item(c, "SizeOverride=", "Override Size", W::WIDGET_CHECK),
        F::Number(c, "OverrideWidth=", "Width", 1, 65536),
        F::Number(c, "OverrideHeight=", "Height", 1, 65536),
        F::Section("Focal Blur"),
        F::Item(b, "UseFocalBlur=", "Use Focal Blur", W::WIDGET_CHECK),
        F::Group(b, "FocalDistance", "Focal Distance", 0.0, 1e300),
        F::Group(b, "Aperture", "Aperture", 0.0, 1e300),
        F::Section("Stereo"),
        F::Item(s, "StereoType=", "Stereo Type", W::WIDGET_CHOICE),
        F::Item(s, "EyeType=", "Eye Type", W::WIDGET_CHOICE),
        F::Group(s, "EyeSeparation", "Eye Separation", 0.0, 1e300),
        F::Group(s, "FocusDistance", "Focus Distance", 0.0, 1e300),
    };
}
