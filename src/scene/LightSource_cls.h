// A light: "ParallelLight", "PointLight" or "SpotLight" (item "LightType=" 0, 1, 2). It shines
// along its local -z from its position; its colours, spot and attenuation are the groups of its
// material. "Valid=" is the light's own switch. Draw order 4. Main thread only.
#pragma once

#include "SceneObj_cls.h"

class LightSource_cls : public SceneObj_cls {
public:
    // strVariant is a light kind name; anything else ("ANY") keeps the default, a point light.
    LightSource_cls(ParentObj_cls* pParent, const wxString& strVariant);

    int GetLightType() const { return static_cast<int>(mCLightType.GetBodyINT()); }
    wxString GetStrLightType() const;
    // The direction the light shines in, global, at t.
    void GetDirectionGlobal(double t, double* out);

    ConfItemINT_cls mCLightType;
    ConfItemBOOL_cls mCValid;
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCSoftShadow;
};
