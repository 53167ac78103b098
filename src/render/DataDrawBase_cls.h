// What the drawings of stream lines, height fields and isosurfaces share: the colour table of an
// object (its first colour curve, or the material's diffuse colour when it is not coloured by a
// curve) as a 1D texture of the registry's TextureProvider1D_cls, rebuilt only when the curve,
// its range or the colour changed. GL thread only.
#pragma once

#include "GLKindResources_cls.h"

#include <epoxy/gl.h>

#include <wx/string.h>

#include <set>

class ColorCurve_cls;
class SceneObj_cls;

class DataDrawBase_cls : public GLKindResource_cls {
public:
    static constexpr int kTableWidth = 1025;

    DataDrawBase_cls() = default;
    ~DataDrawBase_cls() override;
    DataDrawBase_cls(const DataDrawBase_cls&) = delete;
    DataDrawBase_cls& operator=(const DataDrawBase_cls&) = delete;

    // The object's first colour curve; null when it has none. Not owned.
    static ColorCurve_cls* GetPCCurve(SceneObj_cls& obj);
    // The diffuse colour and alpha of the object's material at nt (white without one).
    static void GetMaterialColor(SceneObj_cls& obj, double nt, float* pRGBA);
    // The object's first curve when bCurve, with its range at nt as a linear map of a value v to
    // the curve's coordinate a + (b - a) v; null (a = b = 0) otherwise.
    static ColorCurve_cls* GetCurveMap(SceneObj_cls& obj, bool bCurve, double nt, double& a, double& b);

protected:
    // The colour table of pOwner (one per drawn object): the curve over its domain when bCurve
    // and the object has one, else the material's colour along the whole table. strStamp keeps
    // what the table was made from. 0 without the texture provider.
    GLuint UpdateColorTable(const void* pOwner, SceneObj_cls& obj, bool bCurve, double nt,
                            wxString& strStamp);
    // Forgets the owner's table.
    void ReleaseColorTable(const void* pOwner);

private:
    std::set<const void*> mSetOwner;
};
