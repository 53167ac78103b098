// The material of a drawn object, class word "Material_cls": the light model colours
// (MaterialLight_cls), the drawing options (MaterialOption_cls) and, except on a light, the
// texture (MaterialTexture_cls). A light source's material holds the light's own colours and
// its spot and attenuation groups. Main thread only.
#pragma once

#include "Attribute_cls.h"
#include "MaterialLight_cls.h"
#include "MaterialOption_cls.h"
#include "MaterialTexture_cls.h"

#include <vector>

class Material_cls : public Attribute_cls,
                     public MaterialLight_cls,
                     public MaterialOption_cls,
                     public MaterialTexture_cls {
public:
    // strOwnerClass is the class word of the object that owns it.
    Material_cls(const wxString& strName, const wxString& strOwnerClass);

    bool IsForLight() const { return mbForLight; }
    // A colour group's R, G, B and the alpha at t, each in 0..1 as stored.
    std::vector<double> GetColor(const wxString& strGroup, double t);

    bool mbForLight = false;
    // Of a volume's material only (in its list there): how the 3D texture wraps, 0 clamp to
    // edge, 1 repeat, 2 clamp ("VolumeWrap="), and whether its slices write depth
    // ("DepthWrite="); the groups "ClipMin" and "ClipMax" (X, Y, Z in the box, -0.5 to 0.5) cut
    // the box. The 3D texture's filter is "TextureInterp=".
    ConfItemINT_cls mCVolumeWrap;
    ConfItemBOOL_cls mCDepthWrite;
};
