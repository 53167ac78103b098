// "VolumeCoord_cls": reads a volume's voxels in other coordinates. The box point p (0 to 1 on
// each axis) is turned into the texture coordinate at which the volume is sampled:
// "CoordType=" 0 Cartesian (as it is), 1 cylindrical (the data's X is the radius from the box's
// Z axis, Y the angle as a fraction of a turn, Z the height), 2 spherical (X the radius from the
// centre, Y the polar angle over pi, Z the azimuth as a fraction of a turn), 3 custom: the GLSL
// expression of "CustomCoord=" in p, giving a vec3. It acts inside the volume programs: the
// program's text between its marks is rewritten, and the program is built again.
// Main thread only.
#pragma once

#include "ModifierBase_cls.h"
#include "ShaderStatusVolume_cls.h"

class VolumeCoord_cls : public ModifierBase_cls {
public:
    explicit VolumeCoord_cls(const wxString& strName);

    // The values that the program text depends on; a null modifier gives the off state.
    static ShaderStatusVolumeCoord_cls GetStatus(const VolumeCoord_cls* p);
    // Whether a program built for used differs from what this modifier (or none) asks now.
    static bool IsStatusChanged(const VolumeCoord_cls* p, const ShaderStatusVolumeCoord_cls& used);
    static void SetStatus(const VolumeCoord_cls* p, ShaderStatusVolumeCoord_cls& used) {
        used.Update(GetStatus(p));
    }
    // strText with the section between "//##FUNC_VOLUME_COORD_BEGIN##" and
    // "//##FUNC_VOLUME_COORD_END##" replaced by the function for the status, made from the
    // snippet strFunction (the resource "GL/FUNCTION/VolumeCoord.txt"). Off, or a text without
    // the marks: unchanged.
    static wxString GetStrModifiedShader(const wxString& strText, const ShaderStatusVolumeCoord_cls& status,
                                         const wxString& strFunction);

    ConfItemINT_cls mCCoordType;   // "CoordType="
    ConfItemSTR_cls mCCustomCoord; // "CustomCoord="
};
