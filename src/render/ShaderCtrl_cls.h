// The shader library: one item per GLSL program, sources read and composed from the resource
// files at start-up, each program compiled on its first use, and one typed entry point per
// program that binds it and sets its uniforms. A program that cannot be built leaves its entry
// point without effect, so the caller draws with the fixed pipeline.
#pragma once

#include "ShaderItem_cls.h"
#include "ShaderParams_cls.h"

#include <wx/string.h>

#include <vector>

class ShaderCtrl_cls {
public:
    // Reads every source and snippet; makes no GL call, so no context need exist yet.
    ShaderCtrl_cls();

    // The rest: GL thread only.
    // Binds one of the thirteen filter and volume programs by name; any other name does nothing.
    void BeginShader(const wxString& strName, ShaderParams_cls* pParams);
    void BeginClampAlpha(ShaderParams_cls* pParams);
    void BeginExposure(ExposureParams_cls* pParams);
    void BeginBlur(BlurParams_cls* pParams);
    void BeginFocalBlur(FocalBlurParams_cls* pParams);
    void BeginFocalBlurB(FocalBlurParamsB_cls* pParams);
    void BeginGlare(GlareParams_cls* pParams);
    void BeginRemoveAlpha(RemoveAlphaParam_cls* pParams);
    void BeginOverlay(OverlayParam_cls* pParams);
    void BeginSSAO(SSAOParam_cls* pParams);
    void BeginDepth(ShaderParams_cls* pParams);
    void BeginVolumeBasic(VolumeBasicParams_cls* pParams);
    void BeginVolumePhong(VolumePhongParams_cls* pParams);
    void BeginVolumePhongShadow(VolumePhongShadowParams_cls* pParams);
    void BeginVolumeScatter(VolumeScatterParams_cls* pParams);
    void BeginVolumeScatterShadow(VolumeScatterShadowParams_cls* pParams);
    void BeginObjectGouraud(ObjectGouraudParam_cls* pParams);
    void BeginObjectPhong(ObjectPhongParam_cls* pParams);
    void BeginObjectToon(ObjectToonParam_cls* pParams);
    void BeginObjectProjectNormal(ObjectNormalParam_cls* pParams);
    void BeginLineBasic(LineBasicParam_cls* pParams);
    // The point, sphere, mesh and streamline programs: a null record only binds the program and
    // keeps the uniforms of the last draw (the sphere walk switches programs per particle). The
    // point programs bind their plain variant for draws without lights, fog, dissolve or images.
    void BeginPointBasic(PointBasicParam_cls* pParams);
    // "Point" (square) or "Circle" points without an image: in a plain draw the variant of that one
    // shape, else BeginPointBasic. bGrid: every point has a whole number of pixels, and may be
    // drawn without sprite coordinates (the plain variants then need none; for circles the depth
    // test must be "less" and the stencil test off); returns whether the bound program needs none.
    bool BeginPointShape(PointBasicParam_cls* pParams, bool bCircle, bool bGrid = false);
    // bFarDepth: the depth test is "less" and the stencil test off, so a plain draw may reject the
    // fragments outside the square by the far depth instead of a discard.
    void BeginPointBillboard(PointBillboardParam_cls* pParams, bool bFarDepth = false);
    // The ray-cast sphere of a point ("PseudoSphere"): writes each fragment's true depth. bFarDepth
    // as for the billboards, for the fragments outside the sphere's outline.
    void BeginPointPseudoSphere(PointBasicParam_cls* pParams, bool bFarDepth = false);
    void BeginSphereGouraud(SphereGouraudParam_cls* pParams);
    void BeginSpherePhong(SpherePhongParam_cls* pParams);
    void BeginSphereToon(SphereToonParam_cls* pParams);
    // "Trinagle" is the name callers use: kept on purpose.
    void BeginSVTrinagleMesh(ShaderSVTriangleMesh_cls* pParams);
    void BeginHF(ShaderHF_cls* pParams);
    void BeginSVTrinagleMeshHF(ShaderSVTriangleMesh_cls* pParams);
    void BeginStreamlineBasic(StreamlineBasicParam_cls* pParams);
    void BeginStreamlineTriangle(StreamlineTriangleParam_cls* pParams);
    // The shadow volumes of ribbons drawn with the ribbon's record.
    void BeginSVStreamlineTriangle(ShaderSVTriangleMesh_cls* pParams,
                                   const StreamlineTriangleParam_cls& ribbon);
    void EndShader();
    // cullingSide of the two shadow volume programs, while bound; bFlat of "HF".
    void SetCullingSide(int side);
    void SetCullingSideHF(int side);
    void SetHFFlat(bool bFlat);

    // Every direct glUseProgram goes through here or EndShader, or the current-program cache breaks.
    void UseProgram(ShaderItem_cls& item);
    // Reads the viewport and projection of the sub-pass about to draw (once per sub-pass).
    void PrepareViewportInfo();
    void SetEnsembleShaderSetting(ShaderItem_cls& item, int step);
    void SetFogSetting(ShaderItem_cls& item);

    // Null when no program has the name.
    ShaderItem_cls* GetPCItem(const wxString& strName);
    std::vector<ShaderItem_cls>& GetVItems() { return mVItems; }
    GLuint GetCurrentProgram() const { return mCurrentProgram; }
    // The snippets of the volume shader modifiers ("GL/FUNCTION/VolumeCoord.txt",
    // "GL/FUNCTION/VolumeMask.txt"); empty when the files are missing.
    const wxString& GetStrVolumeCoord() const { return mStrVolumeCoord; }
    const wxString& GetStrVolumeMask() const { return mStrVolumeMask; }

    int mFogMode = 0;
    float mProjInv11 = 0.f;
    float mProjInv15 = 0.f;
    float mProjMatrix10 = 0.f;
    float mProjMatrix14 = 0.f;

private:
    // The first steps of every entry point: build on first use, then bind. False when the program
    // is not valid, and nothing was bound.
    bool Prepare(ShaderItem_cls& item);
    ShaderItem_cls& Item(int index) { return mVItems[static_cast<size_t>(index)]; }
    void BeginFocal(int index, FocalBlurParams_cls* pParams);
    void BeginVolume(int index, VolumeBasicParams_cls* pParams);
    void BeginObject(int index, ShaderParamEnsemble_cls* pParams, int bFlat);
    // The head shared by the object-drawing programs: ensemble (with dissolve) and fog.
    void SetEnsembleAndFog(ShaderItem_cls& item, const ShaderParamEnsemble_cls& params);
    void BeginSphere(int index, SphereGouraudParam_cls* pParams);
    // Whether a point draw needs no light, fog, dissolve or image (texture mode 0): it then takes
    // the plain variant.
    bool IsPlain(const ShaderParamEnsemble_cls* pParams) const;
    // PointBasic and PointPseudoSphere: the same uniforms.
    void BeginPoint(int index, PointBasicParam_cls* pParams);
    void BeginStreamline(int index, StreamlineBasicParam_cls* pParams);
    void BeginSV(int index, ShaderSVTriangleMesh_cls* pParams);
    void SetUniformWhileBound(int index, size_t uniform, int value);

    GLuint mCurrentProgram = 0;
    wxString mStrCommonDefinitions;
    wxString mStrSpotEffect;
    wxString mStrFogEffect;
    wxString mStrNormal;
    wxString mStrEnsembleDithering;
    wxString mStrVolumeCoord;
    wxString mStrVolumeMask;
    std::vector<ShaderItem_cls> mVItems;
};
