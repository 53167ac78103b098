// "VolumeMask_cls": hides part of a volume's box inside the volume programs. "MaskType=" 0
// keeps the sphere inscribed in the box, 1 the cylinder about the box's Z axis, 2 everything
// outside the sphere, 3 everything outside the cylinder. Like "VolumeCoord_cls" it rewrites the
// program's text between its marks. Main thread only.
#pragma once

#include "ModifierBase_cls.h"
#include "ShaderStatusVolume_cls.h"

class VolumeMask_cls : public ModifierBase_cls {
public:
    explicit VolumeMask_cls(const wxString& strName);

    static ShaderStatusVolumeMask_cls GetStatus(const VolumeMask_cls* p);
    static bool IsStatusChanged(const VolumeMask_cls* p, const ShaderStatusVolumeMask_cls& used);
    static void SetStatus(const VolumeMask_cls* p, ShaderStatusVolumeMask_cls& used) {
        used.Update(GetStatus(p));
    }
    // The section between "//##FUNC_VOLUME_MASK_BEGIN##" and "//##FUNC_VOLUME_MASK_END##"
    // replaced, from the snippet "GL/FUNCTION/VolumeMask.txt".
    static wxString GetStrModifiedShader(const wxString& strText, const ShaderStatusVolumeMask_cls& status,
                                         const wxString& strFunction);

    ConfItemINT_cls mCMaskType; // "MaskType="
};
