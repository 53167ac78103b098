// The drawing of volume objects, one per view: for each object its slices and, for each of its
// two prepared sets, the 8-bit 3D texture of the set's bytes. A draw asks the object for the
// frame at the draw's time (the spare set when the worker mixed exactly this frame, else a mix
// now), uploads the set when its bytes changed, cuts the slices perpendicular to the view
// inside the clip box, binds the volume program of "Shader=" with the colour curve and draws
// the slices back to front, blended; then it waits for the worker, so the next draw finds the
// spare set finished. GL thread only; the context must be current when it is deleted.
#pragma once

#include "DrawVolumeBox_cls.h"
#include "GLObject_cls.h"

#include <map>

class GLDrawStatus_cls;
class Material_cls;
class ShaderItem_cls;
class TextureProvider1D_cls;
class VolumeBox_cls;
class VolumeFoRender_cls;

class VolumeDraw_cls {
public:
    // pCurves (not owned, may be null: the volume then draws without its colour curve) holds the
    // colour curves' textures.
    explicit VolumeDraw_cls(TextureProvider1D_cls* pCurves);
    ~VolumeDraw_cls();
    VolumeDraw_cls(const VolumeDraw_cls&) = delete;
    VolumeDraw_cls& operator=(const VolumeDraw_cls&) = delete;

    // Prepares and draws one object with its matrix on the model-view.
    void GLDraw(VolumeBox_cls& obj, GLDrawStatus_cls& status);

    // 1 "VolumeBasic"; 2 "VolumePhong" or "VolumePhongShadow"; 3 "VolumeScatter" or
    // "VolumeScatterShadow"; anything else null.
    static ShaderItem_cls* GetPCShaderItem(int shader, bool selfShadow);
    // Rewrites the item's fragment text for the object's volume modifiers when they differ from
    // those it was built for; the program is then built again at its next use. True when it did.
    static bool ProcShaderModifiers(ShaderItem_cls& item, VolumeBox_cls& obj);
    // Filters and wrapping of the bound 3D texture from the material.
    static void SetTexture3DParameter(Material_cls* pMaterial);
    // The clip range in box space: the material's "ClipMin"/"ClipMax" at nt, narrowed by the
    // object's active "Trimming_cls" modifiers.
    static void ProcTrimming(VolumeBox_cls& obj, double nt, double* min, double* max);
    // Uploads the set's bytes into its texture unless they are up to date; returns the texture.
    GLuint PrepareTexture(VolumeFoRender_cls& set);

    // ---- what the last draws did, for the tests and benchmarks ----
    int mUploadCount = 0;
    int GetNumSlices(const VolumeBox_cls* p) const;
    double GetIntervalGlobal(const VolumeBox_cls* p) const;
    // The slices of the object's last draw; null before its first.
    const DrawVolumeBox_cls* GetPCSlices(const VolumeBox_cls* p) const;

private:
    class Object_cls {
    public:
        DrawVolumeBox_cls mCSlices;
        double mInterval = 0.0;
    };
    std::map<const VolumeBox_cls*, Object_cls> mMapObject;
    std::map<const VolumeFoRender_cls*, GLTexture_cls> mMapTexture;
    TextureProvider1D_cls* mpCCurves;
};
