#include "ShaderCtrl_cls.h"

#include "AsciiReader_cls.h"

#include <wx/filefn.h>

#include <cmath>

namespace {

enum ProgramIndex_enum {
    PRG_ClampAlpha,
    PRG_Exposure,
    PRG_Blur,
    PRG_FocalBlur,
    PRG_FocalBlurB,
    PRG_Glare,
    PRG_RemoveAlpha,
    PRG_Overlay,
    PRG_SSAO,
    PRG_Depth,
    PRG_VolumeBasic,
    PRG_VolumePhong,
    PRG_VolumePhongShadow,
    PRG_VolumeScatter,
    PRG_VolumeScatterShadow,
    PRG_ObjectGouraud,
    PRG_ObjectPhong,
    PRG_ObjectToon,
    PRG_ObjectProjectNormal,
    PRG_LineBasic,
    PRG_PointBasic,
    PRG_PointBillboard,
    PRG_SphereGouraud,
    PRG_SpherePhong,
    PRG_SphereToon,
    PRG_SVTriangleMesh,
    PRG_HF,
    PRG_SVTriangleMeshHF,
    PRG_StreamlineBasic,
    PRG_StreamlineTriangles,
    PRG_PointPseudoSphere,
    PRG_PointBasicPlain,
    PRG_PointPseudoSpherePlain,
    PRG_PointBillboardPlain,
    PRG_PointSquarePlain,
    PRG_PointCirclePlain,
    PRG_SVStreamlineTriangles,
    PRG_PointCircleGridPlain,
    PRG_PointBillboardFarPlain,
    PRG_PointPseudoSphereFarPlain,
};

struct ProgramRow_cls {
    const char* strName;
    const char* strStem;
    bool bEnsemble;
    bool bFog;
    std::vector<const char*> vStrUniform;
    std::vector<const char*> vStrAttribute;
    // Defined after the version line of both stages: a variant of another program's sources.
    const char* strDefine = nullptr;
};

// The programs in table order; the uniform order is the index each entry point sets.
// "texturVolume" and "lightRecieve" are spelt as the resource files spell them, on purpose.
const std::vector<ProgramRow_cls>& ProgramTable() {
    static const std::vector<const char*> focal = {"textureImage",  "textureImage1", "quality",
                                                   "gamma",         "projMatrix10",  "projMatrix14",
                                                   "focalDistance", "widthBase"};
    static const std::vector<const char*> object = {"lightNumber", "lightRecieve", "textureImage",
                                                    "textureMode", "useTexAlpha",  "dissolveMode"};
    static const std::vector<const char*> sphere = {"lightNumber",  "lightRecieve", "textureColorCurve",
                                                    "textureImage", "useTexAlpha",  "dissolveMode"};
    static const std::vector<const char*> sv = {"shadowLength", "offsetFactor", "cullingSide", "forClosed"};
    static const std::vector<const char*> curveST = {"colorCurveS", "colorCurveT"};
    static const std::vector<const char*> point = {"lightNumber",  "lightRecieve",    "textureColorCurve",
                                                   "textureImage", "viewport",        "baseDistance",
                                                   "dissolveMode", "pointSizeFactor", "alphaCrit"};
    static const std::vector<const char*> billboard = {
        "lightNumber",    "lightRecieve",       "textureColorCurve",  "textureImage",
        "dissolveMode",   "baseInvModelMatrix", "modelInvBaseMatrix", "baseInvMatrix",
        "rotationMatrix", "twistMode",          "viewport",           "alphaCrit"};
    static const std::vector<const char*> billboardAttributes = {"pointSize",   "colorCurveS", "colorCurveT",
                                                                 "filterAlpha", "paramBit",    "twistID"};
    static const std::vector<const char*> pointAttributes = {"pointSize", "colorCurveS", "colorCurveT",
                                                             "filterAlpha", "paramBit"};
    auto with = [](std::vector<const char*> v, std::initializer_list<const char*> extra) {
        v.insert(v.end(), extra);
        return v;
    };
    static const std::vector<const char*> phong = {
        "texturVolume", "textureCC",      "lightNumber", "clipBoxMin", "clipBoxMax",
        "ambientClr",   "diffuseClr",     "specularClr", "shininess",  "forceDiscard0",
        "trim",         "intervalGlobal", "subQuality"};
    static const std::vector<const char*> phongShadow = {
        "texturVolume", "textureCC",     "lightNumber", "shadowAlpha",    "shadowQuality",
        "clipBoxMin",   "clipBoxMax",    "ambientClr",  "diffuseClr",     "specularClr",
        "shininess",    "forceDiscard0", "trim",        "intervalGlobal", "subQuality"};
    static const std::vector<ProgramRow_cls> table = {
        {"ClampAlpha", "GL/ClampAlpha", false, false, {"textureImage"}, {}},
        {"Exposure",
         "GL/Exposure",
         false,
         false,
         {"textureImage", "levelMin", "levelMax", "gamma", "hueOffset", "saturation", "blendMode", "alpha"},
         {}},
        {"Blur",
         "GL/Blur",
         false,
         false,
         {"textureImage", "type", "kernel", "width", "quality", "gamma"},
         {}},
        {"FocalBlur", "GL/FocalBlur", false, false, focal, {}},
        {"FocalBlurB", "GL/FocalBlurB", false, false, focal, {}},
        {"Glare",
         "GL/Glare",
         false,
         false,
         {"textureImage", "type", "width", "quality", "rayNum", "offset", "crit", "enhance", "fade"},
         {}},
        {"RemoveAlpha",
         "GL/RemoveAlpha",
         false,
         false,
         {"textureImage", "extremeAlpha", "convert", "backgroundTile"},
         {}},
        {"Overlay",
         "GL/Overlay",
         false,
         false,
         {"textureImage", "textureImage1", "texAlpha", "texXScale", "texYScale"},
         {}},
        {"SSAO",
         "GL/SSAO",
         false,
         false,
         {"textureImage", "textureImage1", "quality", "projMatrix10", "projMatrix14", "factor", "radius",
          "baseColor", "type"},
         {}},
        {"Depth", "GL/ConvertDepth", false, false, {"textureImage", "projMatrix10", "projMatrix14"}, {}},
        {"VolumeBasic",
         "GL/VolumeBasic",
         false,
         false,
         {"texturVolume", "textureCC", "clipBoxMin", "clipBoxMax", "forceDiscard0", "trim", "intervalGlobal",
          "subQuality"},
         {}},
        {"VolumePhong", "GL/VolumePhong", false, false, phong, {}},
        {"VolumePhongShadow", "GL/VolumePhongShadow", false, false, phongShadow, {}},
        {"VolumeScatter",
         "GL/VolumeScatter",
         false,
         false,
         with(std::vector<const char*>(phong.begin(), phong.begin() + 9),
              {"scatterFactor", "forceDiscard0", "trim", "intervalGlobal", "subQuality"}),
         {}},
        {"VolumeScatterShadow",
         "GL/VolumeScatterShadow",
         false,
         false,
         with(std::vector<const char*>(phongShadow.begin(), phongShadow.begin() + 11),
              {"scatterFactor", "forceDiscard0", "trim", "intervalGlobal", "subQuality"}),
         {}},
        {"ObjectGouraud", "GL/Gouraud", true, true, object, {}},
        {"ObjectPhong", "GL/Phong", true, true, with(object, {"bFlat"}), {}},
        {"ObjectToon",
         "GL/Outline",
         true,
         true,
         {"boldness", "lightNumber", "lightRecieve", "textureImage", "textureMode", "useTexAlpha",
          "dissolveMode", "shadowVolumeMode", "edgeThreshold", "bFlat"},
         {}},
        {"ObjectProjectNormal", "GL/ProjectedNormal", false, false, {"bFlat"}, {}},
        {"LineBasic", "GL/LineBasic", true, false, {"fogMode", "dissolveMode"}, {}},
        {"PointBasic", "GL/PointBasic", true, true, point, pointAttributes},
        {"PointBillboard", "GL/PointBillboard", true, true, billboard, billboardAttributes},
        {"SphereGouraud", "GL/SphereGouraud", true, true, sphere, curveST},
        {"SpherePhong", "GL/SpherePhong", true, true, with(sphere, {"bFlat", "normalMode"}), curveST},
        {"SphereToon",
         "GL/SphereToon",
         true,
         true,
         {"boldness", "lightNumber", "lightRecieve", "textureColorCurve", "textureImage", "useTexAlpha",
          "dissolveMode", "edgeThreshold", "bFlat"},
         curveST},
        {"SVTriangleMesh", "GL/SVTriangleMesh", false, false, sv, {}},
        {"HF",
         "GL/HF",
         true,
         true,
         {"lightNumber", "lightRecieve", "textureHeight", "channel", "textureImage", "textureCC",
          "textureMode", "useTexAlpha", "dissolveMode", "bFlat"},
         {}},
        {"SVTriangleMeshHF", "GL/SVTriangleMeshHF", false, false, with(sv, {"textureHeight", "channel"}), {}},
        {"StreamlineBasic",
         "GL/StreamlineBasic",
         true,
         true,
         {"lightNumber", "textureMode", "textureColorCurve", "dissolveMode", "useClip", "clipBoxMin",
          "clipBoxMax", "matrix16", "smoothWidth", "thinningFactor"},
         {}},
        {"StreamlineTriangles",
         "GL/StreamlineTriangles",
         true,
         true,
         {"lightNumber", "textureMode", "textureColorCurve", "textureSample", "dissolveMode", "lineWidth",
          "viewport", "mappingType", "useClip", "clipBoxMin", "clipBoxMax", "matrix16", "smoothWidth",
          "thinningFactor"},
         {}},
        // The ray-cast sphere of a point: PointBasic's inputs, its own sources.
        {"PointPseudoSphere", "GL/PointPseudoSphere", true, true, point, pointAttributes},
        // The point programs once more for draws without lights, fog or dissolve, which then do
        // no work per fragment beyond the colour (and the ray of the imposters).
        {"PointBasicPlain", "GL/PointBasic", false, false, point, pointAttributes, "PLAIN"},
        {"PointPseudoSpherePlain", "GL/PointPseudoSphere", false, false, point, pointAttributes, "PLAIN"},
        {"PointBillboardPlain", "GL/PointBillboard", false, false, billboard, billboardAttributes, "PLAIN"},
        // Plain points of one shape and no image: the colour premultiplied once per point.
        {"PointSquarePlain", "GL/PointBasic", false, false, point, pointAttributes, "PLAIN\n#define SQUARE"},
        {"PointCirclePlain", "GL/PointBasic", false, false, point, pointAttributes, "PLAIN\n#define CIRCLE"},
        // The shadow volumes of stream-line ribbons: the ribbon's quads, closed.
        {"SVStreamlineTriangles",
         "GL/SVStreamlineTriangles",
         false,
         false,
         with(sv,
              {"lineWidth", "viewport", "useClip", "clipBoxMin", "clipBoxMax", "matrix16", "thinningFactor"}),
         {}},
        // Plain circles drawn as squares on the pixel grid: the disc by the window position, the
        // rest rejected by the far depth.
        {"PointCircleGridPlain", "GL/PointBasic", false, false, point, pointAttributes,
         "PLAIN\n#define CIRCLE\n#define GRID"},
        // Plain billboards under a "less" depth test: the far depth in place of a discard.
        {"PointBillboardFarPlain", "GL/PointBillboard", false, false, billboard, billboardAttributes,
         "PLAIN\n#define FAR_DEPTH"},
        // Plain imposter spheres under a "less" depth test: the far depth in place of a discard.
        {"PointPseudoSphereFarPlain", "GL/PointPseudoSphere", false, false, point, pointAttributes,
         "PLAIN\n#define FAR_DEPTH"},
    };
    return table;
}

wxString ReadSnippet(const wxString& strStem) {
    wxString strText;
    const wxString strPath = ShaderItem_cls::msStrResourceDir + "/" + strStem;
    if (wxFileExists(strPath))
        AsciiReader_cls::GetStrFullFromFile(strPath, strText);
    return strText;
}

} // namespace

ShaderCtrl_cls::ShaderCtrl_cls() {
    for (const ProgramRow_cls& row : ProgramTable()) {
        ShaderItem_cls item(row.strName);
        for (const char* str : row.vStrUniform)
            item.mVStrUniform.push_back(str);
        for (const char* str : row.vStrAttribute)
            item.mVStrAttribute.push_back(str);
        item.mbEnsemble = row.bEnsemble;
        item.mbFog = row.bFog;
        item.SetShaderPath(row.strStem);
        if (row.strDefine) {
            const wxString strDefine = wxString("#define ") + row.strDefine + "\n";
            for (wxString* pText : {&item.mStrVert, &item.mStrFrag}) {
                const size_t end = pText->find('\n');
                if (end != wxString::npos)
                    pText->insert(end + 1, strDefine);
            }
        }
        mVItems.push_back(std::move(item));
    }
    mStrCommonDefinitions = ReadSnippet("GL/CommonDefinitionsShader.h");
    mStrSpotEffect = ReadSnippet("GL/FUNCTION/SpotEffect.txt");
    mStrFogEffect = ReadSnippet("GL/FUNCTION/FogEffect.txt");
    mStrNormal = ReadSnippet("GL/FUNCTION/Normal.txt");
    mStrEnsembleDithering = ReadSnippet("GL/FUNCTION/EnsembleDithering.txt");
    mStrVolumeCoord = ReadSnippet("GL/FUNCTION/VolumeCoord.txt");
    mStrVolumeMask = ReadSnippet("GL/FUNCTION/VolumeMask.txt");
    // Geometry sources take no snippets.
    for (ShaderItem_cls& item : mVItems) {
        item.mStrVert.Replace("//##COMMON_DEFINITIONS_SHADER##", mStrCommonDefinitions);
        item.mStrVert.Replace("//##FUNC_SPOT_EFFECT##", mStrSpotEffect);
        item.mStrVert.Replace("//##FUNC_FOG_EFFECT##", mStrFogEffect);
        item.mStrFrag.Replace("//##FUNC_SPOT_EFFECT##", mStrSpotEffect);
        item.mStrFrag.Replace("//##FUNC_FOG_EFFECT##", mStrFogEffect);
        item.mStrFrag.Replace("//##FUNC_NORMAL##", mStrNormal);
        // No closing marks in this one: a trailing "##" stays behind as a comment.
        item.mStrFrag.Replace("//##FUNC_ENSEMBLE_DITHERING", mStrEnsembleDithering);
        if (!mStrEnsembleDithering.empty())
            item.mStrFrag.Replace("//##APPLY_ENSEMBLE_DITHERING##", "EnsembleDithering(alpha);");
    }
}

ShaderItem_cls* ShaderCtrl_cls::GetPCItem(const wxString& strName) {
    for (ShaderItem_cls& item : mVItems)
        if (item.mStrName == strName)
            return &item;
    return nullptr;
}

void ShaderCtrl_cls::UseProgram(ShaderItem_cls& item) {
    if (mCurrentProgram == item.GetProgram())
        return;
    mCurrentProgram = item.GetProgram();
    glUseProgram(mCurrentProgram);
}

void ShaderCtrl_cls::EndShader() {
    if (mCurrentProgram == 0)
        return;
    glUseProgram(0);
    mCurrentProgram = 0;
}

bool ShaderCtrl_cls::Prepare(ShaderItem_cls& item) {
    if (!item.IsTried()) {
        item.MakeShader();
        // A successful build leaves program 0 bound, behind the cache's back.
        if (item.IsValid())
            mCurrentProgram = 0;
    }
    if (!item.IsValid())
        return false;
    UseProgram(item);
    return true;
}

void ShaderCtrl_cls::PrepareViewportInfo() {
    GLfloat proj[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, proj);
    mProjMatrix10 = proj[10];
    mProjMatrix14 = proj[14];
    mProjInv11 = 1.f / proj[14];
    mProjInv15 = -proj[10] / (proj[14] * proj[11]);
}

void ShaderCtrl_cls::SetEnsembleShaderSetting(ShaderItem_cls& item, int step) {
    const float s = static_cast<float>(step);
    glUniform2f(item.mEnsembleLocation[0], s, s * 0.5f);
    glUniform1f(item.mEnsembleLocation[1], s + 43758.5453f);
    glUniform2f(item.mEnsembleLocation[2], static_cast<float>(sin((step + 1) * 0.1) * 100.0),
                static_cast<float>(cos((step + 1) * 0.1) * 100.0));
}

void ShaderCtrl_cls::SetFogSetting(ShaderItem_cls& item) {
    glUniform1i(item.mFogLocation[0], mFogMode);
    glUniform1f(item.mFogLocation[1], mProjInv11);
    glUniform1f(item.mFogLocation[2], mProjInv15);
}

void ShaderCtrl_cls::BeginShader(const wxString& strName, ShaderParams_cls* p) {
    if (strName == "ClampAlpha")
        BeginClampAlpha(p);
    else if (strName == "Exposure")
        BeginExposure(static_cast<ExposureParams_cls*>(p));
    else if (strName == "Blur")
        BeginBlur(static_cast<BlurParams_cls*>(p));
    else if (strName == "FocalBlur")
        BeginFocalBlur(static_cast<FocalBlurParams_cls*>(p));
    else if (strName == "FocalBlurB")
        BeginFocalBlurB(static_cast<FocalBlurParamsB_cls*>(p));
    else if (strName == "Glare")
        BeginGlare(static_cast<GlareParams_cls*>(p));
    else if (strName == "RemoveAlpha")
        BeginRemoveAlpha(static_cast<RemoveAlphaParam_cls*>(p));
    else if (strName == "Overlay")
        BeginOverlay(static_cast<OverlayParam_cls*>(p));
    else if (strName == "SSAO")
        BeginSSAO(static_cast<SSAOParam_cls*>(p));
    else if (strName == "Depth")
        BeginDepth(p);
    else if (strName == "VolumeBasic")
        BeginVolumeBasic(static_cast<VolumeBasicParams_cls*>(p));
    else if (strName == "VolumePhong")
        BeginVolumePhong(static_cast<VolumePhongParams_cls*>(p));
    else if (strName == "VolumePhongShadow")
        BeginVolumePhongShadow(static_cast<VolumePhongShadowParams_cls*>(p));
}

void ShaderCtrl_cls::BeginClampAlpha(ShaderParams_cls*) {
    ShaderItem_cls& item = Item(PRG_ClampAlpha);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
}

void ShaderCtrl_cls::BeginExposure(ExposureParams_cls* p) {
    ShaderItem_cls& item = Item(PRG_Exposure);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform4f(item.GetLocation(1), p->mLevelMin[0], p->mLevelMin[1], p->mLevelMin[2], 1.f);
    glUniform4f(item.GetLocation(2), p->mLevelMax[0], p->mLevelMax[1], p->mLevelMax[2], 1.f);
    glUniform4f(item.GetLocation(3), p->mGamma[0], p->mGamma[1], p->mGamma[2], 1.f);
    glUniform1i(item.GetLocation(4), p->mHueOffset);
    glUniform1i(item.GetLocation(5), p->mSaturation);
    glUniform1i(item.GetLocation(6), 1);
    glUniform1f(item.GetLocation(7), p->mAlpha);
}

void ShaderCtrl_cls::BeginBlur(BlurParams_cls* p) {
    ShaderItem_cls& item = Item(PRG_Blur);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), p->mType);
    glUniform1i(item.GetLocation(2), p->mKernel);
    glUniform1f(item.GetLocation(3), p->mWidth);
    glUniform1i(item.GetLocation(4), p->mQuality);
    glUniform4f(item.GetLocation(5), p->mGamma, p->mGamma, p->mGamma, p->mGamma);
}

// The two focal blur programs differ only in how they sample.
void ShaderCtrl_cls::BeginFocal(int index, FocalBlurParams_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), 1);
    glUniform1i(item.GetLocation(2), p->mQuality);
    glUniform4f(item.GetLocation(3), p->mGamma, p->mGamma, p->mGamma, p->mGamma);
    glUniform1f(item.GetLocation(4), mProjMatrix10);
    glUniform1f(item.GetLocation(5), mProjMatrix14);
    glUniform1f(item.GetLocation(6), p->mFocalDistance);
    glUniform1f(item.GetLocation(7), p->mWidthBase);
}

void ShaderCtrl_cls::BeginFocalBlur(FocalBlurParams_cls* p) {
    BeginFocal(PRG_FocalBlur, p);
}
void ShaderCtrl_cls::BeginFocalBlurB(FocalBlurParamsB_cls* p) {
    BeginFocal(PRG_FocalBlurB, p);
}

void ShaderCtrl_cls::BeginGlare(GlareParams_cls* p) {
    ShaderItem_cls& item = Item(PRG_Glare);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), p->mType);
    glUniform1f(item.GetLocation(2), p->mWidth);
    glUniform1i(item.GetLocation(3), p->mQuality);
    glUniform1i(item.GetLocation(4), p->mRayNum);
    glUniform1f(item.GetLocation(5), p->mOffset);
    glUniform1f(item.GetLocation(6), p->mCrit);
    glUniform1f(item.GetLocation(7), p->mEnhance);
    glUniform1f(item.GetLocation(8), p->mFade);
}

void ShaderCtrl_cls::BeginRemoveAlpha(RemoveAlphaParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_RemoveAlpha);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), p->mExtremeAlpha);
    glUniform1i(item.GetLocation(2), p->mConvert);
    glUniform1i(item.GetLocation(3), p->mBackgroundTile);
}

void ShaderCtrl_cls::BeginOverlay(OverlayParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_Overlay);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), 1);
    glUniform1f(item.GetLocation(2), p->mTexAlpha);
    glUniform1f(item.GetLocation(3), p->mTexXScale);
    glUniform1f(item.GetLocation(4), p->mTexYScale);
}

void ShaderCtrl_cls::BeginSSAO(SSAOParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_SSAO);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1i(item.GetLocation(1), 1);
    glUniform1i(item.GetLocation(2), p->mQuality);
    glUniform1f(item.GetLocation(3), mProjMatrix10);
    glUniform1f(item.GetLocation(4), mProjMatrix14);
    glUniform1f(item.GetLocation(5), p->mFactor);
    glUniform1f(item.GetLocation(6), p->mRadius);
    glUniform3f(item.GetLocation(7), p->mBaseColor[0], p->mBaseColor[1], p->mBaseColor[2]);
    glUniform1i(item.GetLocation(8), p->mType);
}

void ShaderCtrl_cls::BeginDepth(ShaderParams_cls*) {
    ShaderItem_cls& item = Item(PRG_Depth);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), 0);
    glUniform1f(item.GetLocation(1), mProjMatrix10);
    glUniform1f(item.GetLocation(2), mProjMatrix14);
}

// Sets each uniform of the volume programs by name, since the families order them differently.
void ShaderCtrl_cls::BeginVolume(int index, VolumeBasicParams_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item))
        return;
    auto loc = [&item](const char* strName) { return item.GetLocationByName(strName); };
    glUniform1i(loc("texturVolume"), 0);
    glUniform1i(loc("textureCC"), 1);
    glUniform3fv(loc("clipBoxMin"), 1, p->mClipBoxMin);
    glUniform3fv(loc("clipBoxMax"), 1, p->mClipBoxMax);
    glUniform1i(loc("forceDiscard0"), p->mForceDiscard0);
    glUniform1f(loc("trim"), p->mTrim);
    glUniform1f(loc("intervalGlobal"), p->mIntervalGlobal);
    glUniform1i(loc("subQuality"), p->mSubQuality);
    if (index == PRG_VolumeBasic)
        return;
    auto* pPhong = static_cast<VolumePhongParams_cls*>(p);
    glUniform1i(loc("lightNumber"), pPhong->mLightNumber);
    glUniform3fv(loc("ambientClr"), 1, pPhong->mAmbientClr);
    glUniform3fv(loc("diffuseClr"), 1, pPhong->mDiffuseClr);
    glUniform3fv(loc("specularClr"), 1, pPhong->mSpecularClr);
    glUniform1i(loc("shininess"), pPhong->mShininess);
    if (index == PRG_VolumePhongShadow || index == PRG_VolumeScatterShadow) {
        auto* pShadow = static_cast<VolumePhongShadowParams_cls*>(p);
        glUniform1f(loc("shadowAlpha"), pShadow->mShadowAlpha);
        glUniform1i(loc("shadowQuality"), pShadow->mShadowQuality);
    }
    if (index == PRG_VolumeScatter)
        glUniform1f(loc("scatterFactor"), static_cast<VolumeScatterParams_cls*>(p)->mScatterFactor);
    if (index == PRG_VolumeScatterShadow)
        glUniform1f(loc("scatterFactor"), static_cast<VolumeScatterShadowParams_cls*>(p)->mScatterFactor);
}

void ShaderCtrl_cls::BeginVolumeBasic(VolumeBasicParams_cls* p) {
    BeginVolume(PRG_VolumeBasic, p);
}
void ShaderCtrl_cls::BeginVolumePhong(VolumePhongParams_cls* p) {
    BeginVolume(PRG_VolumePhong, p);
}
void ShaderCtrl_cls::BeginVolumePhongShadow(VolumePhongShadowParams_cls* p) {
    BeginVolume(PRG_VolumePhongShadow, p);
}
void ShaderCtrl_cls::BeginVolumeScatter(VolumeScatterParams_cls* p) {
    BeginVolume(PRG_VolumeScatter, p);
}
void ShaderCtrl_cls::BeginVolumeScatterShadow(VolumeScatterShadowParams_cls* p) {
    BeginVolume(PRG_VolumeScatterShadow, p);
}

void ShaderCtrl_cls::BeginObject(int index, ShaderParamEnsemble_cls* p, int bFlat) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item))
        return;
    // With dissolve off the ensemble uniforms keep whatever an earlier draw left.
    if (p->mDissolveMode > 0)
        SetEnsembleShaderSetting(item, p->mEnsembleStep);
    SetFogSetting(item);
    const GLint receive[7] = {1, 1, 1, 1, 1, 1, 1};
    glUniform1i(item.GetLocation(0), p->mLightNumber);
    glUniform1iv(item.GetLocation(1), 7, receive);
    glUniform1i(item.GetLocation(2), 0);
    glUniform1i(item.GetLocation(3), p->mTextureMode);
    glUniform1i(item.GetLocation(4), 0);
    glUniform1i(item.GetLocation(5), p->mDissolveMode);
    if (index == PRG_ObjectPhong)
        glUniform1i(item.GetLocation(6), bFlat);
}

void ShaderCtrl_cls::BeginObjectGouraud(ObjectGouraudParam_cls* p) {
    BeginObject(PRG_ObjectGouraud, p, 0);
}
void ShaderCtrl_cls::BeginObjectPhong(ObjectPhongParam_cls* p) {
    BeginObject(PRG_ObjectPhong, p, p->mbFlat);
}

void ShaderCtrl_cls::BeginLineBasic(LineBasicParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_LineBasic);
    if (!Prepare(item))
        return;
    if (p->mDissolveMode > 0)
        SetEnsembleShaderSetting(item, p->mEnsembleStep);
    glUniform1i(item.GetLocation(0), mFogMode);
    glUniform1i(item.GetLocation(1), p->mDissolveMode);
}

namespace {
const GLint kLightRecieve[7] = {1, 1, 1, 1, 1, 1, 1};
const GLint kPointImageUnits[3] = {1, 2, 3};

// Rotation by the angle in degrees about the axis 0, 0, 1, column-major.
void RotationAboutZ(float degrees, float out[16]) {
    const double rad = degrees * 3.14159 / 180.0;
    const float c = static_cast<float>(cos(rad));
    const float s = static_cast<float>(sin(rad));
    const float m[16] = {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::copy(m, m + 16, out);
}
} // namespace

void ShaderCtrl_cls::SetEnsembleAndFog(ShaderItem_cls& item, const ShaderParamEnsemble_cls& p) {
    if (p.mDissolveMode > 0)
        SetEnsembleShaderSetting(item, p.mEnsembleStep);
    SetFogSetting(item);
}

void ShaderCtrl_cls::BeginObjectToon(ObjectToonParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_ObjectToon);
    if (!Prepare(item))
        return;
    SetEnsembleAndFog(item, *p);
    glUniform1f(item.GetLocation(0), p->mBoldness);
    glUniform1i(item.GetLocation(1), p->mLightNumber);
    glUniform1iv(item.GetLocation(2), 7, kLightRecieve);
    glUniform1i(item.GetLocation(3), 0);
    glUniform1i(item.GetLocation(4), p->mTextureMode);
    glUniform1i(item.GetLocation(5), 0);
    glUniform1i(item.GetLocation(6), p->mDissolveMode);
    glUniform1i(item.GetLocation(7), p->mShadowVolumeMode);
    glUniform1f(item.GetLocation(8), p->mEdgeThreshold);
    glUniform1i(item.GetLocation(9), p->mbFlat);
}

void ShaderCtrl_cls::BeginObjectProjectNormal(ObjectNormalParam_cls* p) {
    ShaderItem_cls& item = Item(PRG_ObjectProjectNormal);
    if (!Prepare(item))
        return;
    glUniform1i(item.GetLocation(0), p->mbFlat);
}

void ShaderCtrl_cls::BeginPoint(int index, PointBasicParam_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item) || !p)
        return;
    SetEnsembleAndFog(item, *p);
    glUniform1i(item.GetLocation(0), p->mLightNumber);
    glUniform1iv(item.GetLocation(1), 7, kLightRecieve);
    glUniform1i(item.GetLocation(2), 0);
    glUniform1iv(item.GetLocation(3), 3, kPointImageUnits);
    glUniform4fv(item.GetLocation(4), 1, p->mViewport);
    glUniform1f(item.GetLocation(5), p->mBaseDistance);
    glUniform1i(item.GetLocation(6), p->mDissolveMode);
    glUniform1f(item.GetLocation(7), p->mPointSizeFactor);
    glUniform1f(item.GetLocation(8), p->mAlphaCrit);
}

bool ShaderCtrl_cls::IsPlain(const ShaderParamEnsemble_cls* p) const {
    return p && p->mLightNumber == 0 && p->mDissolveMode == 0 && p->mTextureMode == 0 && mFogMode == 0;
}

void ShaderCtrl_cls::BeginPointBasic(PointBasicParam_cls* p) {
    BeginPoint(IsPlain(p) ? PRG_PointBasicPlain : PRG_PointBasic, p);
}

bool ShaderCtrl_cls::BeginPointShape(PointBasicParam_cls* p, bool bCircle, bool bGrid) {
    if (!IsPlain(p)) {
        BeginPointBasic(p);
        return false;
    }
    BeginPoint(!bCircle ? PRG_PointSquarePlain : bGrid ? PRG_PointCircleGridPlain : PRG_PointCirclePlain, p);
    return bGrid;
}

void ShaderCtrl_cls::BeginPointPseudoSphere(PointBasicParam_cls* p, bool bFarDepth) {
    BeginPoint(!IsPlain(p) ? PRG_PointPseudoSphere
               : bFarDepth ? PRG_PointPseudoSphereFarPlain
                           : PRG_PointPseudoSpherePlain,
               p);
}

void ShaderCtrl_cls::BeginPointBillboard(PointBillboardParam_cls* p, bool bFarDepth) {
    ShaderItem_cls& item = Item(!IsPlain(p) ? PRG_PointBillboard
                                : bFarDepth ? PRG_PointBillboardFarPlain
                                            : PRG_PointBillboardPlain);
    if (!Prepare(item) || !p)
        return;
    SetEnsembleAndFog(item, *p);
    float rotation[16];
    RotationAboutZ(p->mAngle, rotation);
    glUniform1i(item.GetLocation(0), p->mLightNumber);
    glUniform1iv(item.GetLocation(1), 7, kLightRecieve);
    glUniform1i(item.GetLocation(2), 0);
    glUniform1iv(item.GetLocation(3), 3, kPointImageUnits);
    glUniform1i(item.GetLocation(4), p->mDissolveMode);
    glUniformMatrix4fv(item.GetLocation(5), 1, GL_FALSE, p->mBaseInvModelMatrix);
    glUniformMatrix4fv(item.GetLocation(6), 1, GL_FALSE, p->mModelInvBaseMatrix);
    glUniformMatrix4fv(item.GetLocation(7), 1, GL_FALSE, p->mBaseInvMatrix);
    glUniformMatrix4fv(item.GetLocation(8), 1, GL_FALSE, rotation);
    glUniform1i(item.GetLocation(9), p->mTwistMode);
    glUniform4fv(item.GetLocation(10), 1, p->mViewport);
    glUniform1f(item.GetLocation(11), p->mAlphaCrit);
}

void ShaderCtrl_cls::BeginSphere(int index, SphereGouraudParam_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item) || !p)
        return;
    SetEnsembleAndFog(item, *p);
    // The toon program has boldness in front: the rest shifts by one.
    const size_t first = index == PRG_SphereToon ? 1 : 0;
    if (index == PRG_SphereToon)
        glUniform1f(item.GetLocation(0), static_cast<SphereToonParam_cls*>(p)->mBoldness);
    glUniform1i(item.GetLocation(first + 0), p->mLightNumber);
    glUniform1iv(item.GetLocation(first + 1), 7, kLightRecieve);
    glUniform1i(item.GetLocation(first + 2), 0);
    glUniform1iv(item.GetLocation(first + 3), 3, kPointImageUnits);
    glUniform1i(item.GetLocation(first + 4), p->mUseTexAlpha);
    glUniform1i(item.GetLocation(first + 5), p->mDissolveMode);
    if (index == PRG_SpherePhong) {
        glUniform1i(item.GetLocation(6), static_cast<SpherePhongParam_cls*>(p)->mbFlat);
        glUniform1i(item.GetLocation(7), static_cast<SpherePhongParam_cls*>(p)->mNormalMode);
    }
    if (index == PRG_SphereToon) {
        glUniform1f(item.GetLocation(7), static_cast<SphereToonParam_cls*>(p)->mEdgeThreshold);
        glUniform1i(item.GetLocation(8), static_cast<SphereToonParam_cls*>(p)->mbFlat);
    }
}

void ShaderCtrl_cls::BeginSphereGouraud(SphereGouraudParam_cls* p) {
    BeginSphere(PRG_SphereGouraud, p);
}
void ShaderCtrl_cls::BeginSpherePhong(SpherePhongParam_cls* p) {
    BeginSphere(PRG_SpherePhong, p);
}
void ShaderCtrl_cls::BeginSphereToon(SphereToonParam_cls* p) {
    BeginSphere(PRG_SphereToon, p);
}

void ShaderCtrl_cls::BeginSV(int index, ShaderSVTriangleMesh_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item) || !p)
        return;
    glUniform1f(item.GetLocation(0), p->mShadowLength);
    glUniform1f(item.GetLocation(1), p->mOffsetFactor);
    glUniform1i(item.GetLocation(2), p->mCullingSide);
    glUniform1i(item.GetLocation(3), p->mForClosed);
    if (index == PRG_SVTriangleMeshHF) {
        glUniform1i(item.GetLocation(4), 0);
        glUniform1i(item.GetLocation(5), p->mChannel);
    }
}

void ShaderCtrl_cls::BeginSVTrinagleMesh(ShaderSVTriangleMesh_cls* p) {
    BeginSV(PRG_SVTriangleMesh, p);
}
void ShaderCtrl_cls::BeginSVTrinagleMeshHF(ShaderSVTriangleMesh_cls* p) {
    BeginSV(PRG_SVTriangleMeshHF, p);
}
void ShaderCtrl_cls::BeginSVStreamlineTriangle(ShaderSVTriangleMesh_cls* p,
                                               const StreamlineTriangleParam_cls& ribbon) {
    BeginSV(PRG_SVStreamlineTriangles, p);
    ShaderItem_cls& item = Item(PRG_SVStreamlineTriangles);
    if (!item.IsValid() || mCurrentProgram != item.GetProgram())
        return;
    auto loc = [&item](const char* strName) { return item.GetLocationByName(strName); };
    glUniform1f(loc("lineWidth"), ribbon.mLineWidth);
    glUniform4fv(loc("viewport"), 1, ribbon.mViewport);
    glUniform1i(loc("useClip"), ribbon.mUseClip);
    glUniform3fv(loc("clipBoxMin"), 1, ribbon.mClipBoxMin);
    glUniform3fv(loc("clipBoxMax"), 1, ribbon.mClipBoxMax);
    glUniformMatrix4fv(loc("matrix16"), 1, GL_FALSE, ribbon.mMatrix16);
    glUniform1f(loc("thinningFactor"), ribbon.mThinningFactor);
}

void ShaderCtrl_cls::BeginHF(ShaderHF_cls* p) {
    ShaderItem_cls& item = Item(PRG_HF);
    if (!Prepare(item) || !p)
        return;
    SetEnsembleAndFog(item, *p);
    // Units: the height on 0, the image on 1, the colour curve on 2.
    glUniform1i(item.GetLocation(0), p->mLightNumber);
    glUniform1iv(item.GetLocation(1), 7, kLightRecieve);
    glUniform1i(item.GetLocation(2), 0);
    glUniform1i(item.GetLocation(3), p->mChannel);
    glUniform1i(item.GetLocation(4), 1);
    glUniform1i(item.GetLocation(5), 2);
    glUniform1i(item.GetLocation(6), p->mTextureMode);
    glUniform1i(item.GetLocation(7), p->mUseTexAlpha);
    glUniform1i(item.GetLocation(8), p->mDissolveMode);
    glUniform1i(item.GetLocation(9), p->mbFlat);
}

void ShaderCtrl_cls::BeginStreamline(int index, StreamlineBasicParam_cls* p) {
    ShaderItem_cls& item = Item(index);
    if (!Prepare(item) || !p)
        return;
    SetEnsembleAndFog(item, *p);
    auto loc = [&item](const char* strName) { return item.GetLocationByName(strName); };
    glUniform1i(loc("lightNumber"), p->mLightNumber);
    glUniform1i(loc("textureMode"), p->mTextureMode);
    glUniform1i(loc("textureColorCurve"), 0);
    glUniform1i(loc("dissolveMode"), p->mDissolveMode);
    glUniform1i(loc("useClip"), p->mUseClip);
    glUniform3fv(loc("clipBoxMin"), 1, p->mClipBoxMin);
    glUniform3fv(loc("clipBoxMax"), 1, p->mClipBoxMax);
    glUniformMatrix4fv(loc("matrix16"), 1, GL_FALSE, p->mMatrix16);
    glUniform1f(loc("smoothWidth"), p->mSmoothWidth);
    glUniform1f(loc("thinningFactor"), p->mThinningFactor);
    if (index == PRG_StreamlineTriangles) {
        auto* pTri = static_cast<StreamlineTriangleParam_cls*>(p);
        glUniform1i(loc("textureSample"), 1);
        glUniform1f(loc("lineWidth"), pTri->mLineWidth);
        glUniform4fv(loc("viewport"), 1, pTri->mViewport);
        glUniform1i(loc("mappingType"), pTri->mMappingType);
    }
}

void ShaderCtrl_cls::BeginStreamlineBasic(StreamlineBasicParam_cls* p) {
    BeginStreamline(PRG_StreamlineBasic, p);
}
void ShaderCtrl_cls::BeginStreamlineTriangle(StreamlineTriangleParam_cls* p) {
    BeginStreamline(PRG_StreamlineTriangles, p);
}

void ShaderCtrl_cls::SetUniformWhileBound(int index, size_t uniform, int value) {
    ShaderItem_cls& item = Item(index);
    if (!item.IsValid() || mCurrentProgram != item.GetProgram())
        return;
    glUniform1i(item.GetLocation(uniform), value);
}

void ShaderCtrl_cls::SetCullingSide(int side) {
    SetUniformWhileBound(PRG_SVTriangleMesh, 2, side);
}
void ShaderCtrl_cls::SetCullingSideHF(int side) {
    SetUniformWhileBound(PRG_SVTriangleMeshHF, 2, side);
}
void ShaderCtrl_cls::SetHFFlat(bool bFlat) {
    SetUniformWhileBound(PRG_HF, 9, bFlat ? 1 : 0);
}
