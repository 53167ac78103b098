#include "VolumeDraw_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "DataViewerBase_cls.h"
#include "GLCheckError_cls.h"
#include "GLDrawStatus_cls.h"
#include "GetPC_cls.h"
#include "Material_cls.h"
#include "ParamGroup_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TensorMath_cls.h"
#include "TextureProvider1D_cls.h"
#include "Trimming_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeCoord_cls.h"
#include "VolumeMask_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<double> GetGroup(Attribute_cls* p, const wxString& strGroup, double nt,
                             std::vector<double> fallback) {
    ParamGroup_cls* pGroup = p ? p->GetPCParamGroup(strGroup) : nullptr;
    if (!pGroup)
        return fallback;
    std::vector<double> v = pGroup->GetVInterpolatedValue(nt, true, nullptr, false);
    v.resize(fallback.size(), 0.0);
    return v;
}

GLenum ToGLBlendFactor(MaterialOption_cls::BlendFactor_enum factor) {
    static const GLenum kFactors[] = {GL_ZERO, GL_ONE, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_DST_COLOR};
    return kFactors[factor];
}

void CopyColor(const std::vector<double>& v, float* out) {
    for (int i = 0; i < 3; ++i)
        out[i] = static_cast<float>(v[static_cast<size_t>(i)]);
}

} // namespace

VolumeDraw_cls::VolumeDraw_cls(TextureProvider1D_cls* pCurves) : mpCCurves(pCurves) {}

VolumeDraw_cls::~VolumeDraw_cls() = default;

int VolumeDraw_cls::GetNumSlices(const VolumeBox_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : static_cast<int>(it->second.mCSlices.mVSlice.size());
}
double VolumeDraw_cls::GetIntervalGlobal(const VolumeBox_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0.0 : it->second.mInterval;
}
const DrawVolumeBox_cls* VolumeDraw_cls::GetPCSlices(const VolumeBox_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? nullptr : &it->second.mCSlices;
}

ShaderItem_cls* VolumeDraw_cls::GetPCShaderItem(int shader, bool selfShadow) {
    ShaderCtrl_cls* pCtrl = GetPC_cls::GetPCShaderCtrl();
    if (!pCtrl)
        return nullptr;
    switch (shader) {
    case 1:
        return pCtrl->GetPCItem("VolumeBasic");
    case 2:
        return pCtrl->GetPCItem(selfShadow ? "VolumePhongShadow" : "VolumePhong");
    case 3:
        return pCtrl->GetPCItem(selfShadow ? "VolumeScatterShadow" : "VolumeScatter");
    default:
        return nullptr;
    }
}

bool VolumeDraw_cls::ProcShaderModifiers(ShaderItem_cls& item, VolumeBox_cls& obj) {
    ShaderCtrl_cls* pCtrl = GetPC_cls::GetPCShaderCtrl();
    if (!pCtrl)
        return false;
    auto* pCoord = static_cast<VolumeCoord_cls*>(obj.GetPCValidModifier("VolumeCoord_cls"));
    auto* pMask = static_cast<VolumeMask_cls*>(obj.GetPCValidModifier("VolumeMask_cls"));
    if (!VolumeCoord_cls::IsStatusChanged(pCoord, item.mCStatusVolumeCoord) &&
        !VolumeMask_cls::IsStatusChanged(pMask, item.mCStatusVolumeMask))
        return false;
    item.Clear();
    VolumeCoord_cls::SetStatus(pCoord, item.mCStatusVolumeCoord);
    VolumeMask_cls::SetStatus(pMask, item.mCStatusVolumeMask);
    // Always from the text as read, whose marks are intact.
    wxString strFrag = VolumeCoord_cls::GetStrModifiedShader(item.mStrFrag, item.mCStatusVolumeCoord,
                                                             pCtrl->GetStrVolumeCoord());
    strFrag =
        VolumeMask_cls::GetStrModifiedShader(strFrag, item.mCStatusVolumeMask, pCtrl->GetStrVolumeMask());
    item.mStrFragCompiled = strFrag;
    return true;
}

void VolumeDraw_cls::SetTexture3DParameter(Material_cls* p) {
    const GLint filter = p && p->mCTextureInterp.GetBodyINT() == 0 ? GL_NEAREST : GL_LINEAR;
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MAG_FILTER, filter);
    static const GLint kWrap[3] = {GL_CLAMP_TO_EDGE, GL_REPEAT, GL_CLAMP};
    const long long wrap = p ? p->mCVolumeWrap.GetBodyINT() : 0;
    const GLint mode = kWrap[wrap >= 0 && wrap < 3 ? wrap : 0];
    for (GLenum axis : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
        glTexParameteri(GL_TEXTURE_3D, axis, mode);
}

void VolumeDraw_cls::ProcTrimming(VolumeBox_cls& obj, double nt, double* min, double* max) {
    Material_cls* pMaterial = obj.GetPCMaterial();
    const std::vector<double> lo = GetGroup(pMaterial, "ClipMin", nt, {-0.5, -0.5, -0.5});
    const std::vector<double> hi = GetGroup(pMaterial, "ClipMax", nt, {0.5, 0.5, 0.5});
    for (int i = 0; i < 3; ++i) {
        min[i] = std::max(-0.5, lo[static_cast<size_t>(i)]);
        max[i] = std::min(0.5, hi[static_cast<size_t>(i)]);
    }
    // Each active trimming narrows the range further, in stack order.
    for (int i = 0, n = obj.GetNumAttribute("Trimming_cls"); i < n; ++i) {
        auto* p = static_cast<Trimming_cls*>(obj.GetPCAttributeFromAttribName("Trimming_cls", i));
        if (!p || !p->IsValid())
            continue;
        double tMin[3] = {-0.5, -0.5, -0.5}, tMax[3] = {0.5, 0.5, 0.5};
        p->Execute(nt, tMin, tMax);
        for (int a = 0; a < 3; ++a) {
            min[a] = std::max(min[a], tMin[a]);
            max[a] = std::min(max[a], tMax[a]);
        }
    }
}

GLuint VolumeDraw_cls::PrepareTexture(VolumeFoRender_cls& set) {
    GLTexture_cls& texture = mMapTexture[&set];
    if (set.mbTextureUpToDate && texture)
        return texture.Get();
    texture = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_3D, texture.Get());
    GLint alignment = 1;
    for (GLint a : {8, 4, 2})
        if (set.mWidth % a == 0) {
            alignment = a;
            break;
        }
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexImage3D(GL_TEXTURE_3D, 0, GL_LUMINANCE, set.mWidth, set.mHeight, set.mDepth, 0, GL_LUMINANCE,
                 GL_UNSIGNED_BYTE, set.mData.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    set.mbTextureUpToDate = true;
    ++mUploadCount;
    return texture.Get();
}

void VolumeDraw_cls::GLDraw(VolumeBox_cls& obj, GLDrawStatus_cls& status) {
    if (!status.mbData)
        return;
    // Volumes cast no shadow volumes: nothing to draw in the stencil phases.
    if (GpCShadowVolumeCtrl && GpCShadowVolumeCtrl->GetPhase() != 0 && GpCShadowVolumeCtrl->GetPhase() != 3)
        return;
    if (!DataViewerBase_cls::PrepareDrawByKind(&obj, status.mCompositeIndex) ||
        obj.mpCCurrent->mData.empty()) {
        // A missing snap: nothing is drawn in this frame.
        obj.WaitPrepareNext();
        return;
    }
    const double nt = status.mTime;
    Object_cls& o = mMapObject[&obj];

    // Box space: the inverse of the model-view gives the eye's axes there.
    double modelView[16], inverse[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
    if (!TensorMath_cls::Invert(modelView, inverse))
        TensorMath_cls::SetIdentity(inverse);
    Direction_cls direction;
    const double tgt[3] = {0.0, 0.0, -1.0}, top[3] = {0.0, 1.0, 0.0}, right[3] = {1.0, 0.0, 0.0};
    TensorMath_cls::TransformVector(inverse, tgt, direction.mTgt);
    TensorMath_cls::TransformVector(inverse, top, direction.mTop);
    TensorMath_cls::TransformVector(inverse, right, direction.mRight);

    Material_cls* pMaterial = obj.GetPCMaterial();
    double clipMin[3], clipMax[3];
    ProcTrimming(obj, nt, clipMin, clipMax);
    o.mInterval =
        o.mCSlices.CalcAllSlices(direction, static_cast<int>(obj.mCQuality.GetBodyINT()), clipMin, clipMax);

    const int shader = static_cast<int>(obj.mCShader.GetBodyINT());
    const bool bSelfShadow = obj.mCSelfShadow.GetBodyBOOL();
    ShaderItem_cls* pItem = shader > 0 ? GetPCShaderItem(shader, bSelfShadow) : nullptr;
    if (pItem)
        ProcShaderModifiers(*pItem, obj);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(pMaterial && pMaterial->mCDepthWrite.GetBodyBOOL() ? GL_TRUE : GL_FALSE);
    glPushMatrix();

    glActiveTexture(GL_TEXTURE0);
    const GLuint volume = PrepareTexture(*obj.mpCCurrent);
    glBindTexture(GL_TEXTURE_3D, volume);
    SetTexture3DParameter(pMaterial);

    ColorCurve_cls* pCurve = obj.GetPCColorCurve();
    if (pCurve && mpCCurves) {
        const bool bRebuilt = pCurve->PrepareTexture(obj.mCRepeatCC.GetBodyBOOL(), 1.f, false);
        GLuint curve = mpCCurves->Find(pCurve);
        if (bRebuilt || curve == 0) {
            std::vector<float> vTexel(pCurve->mVTextureBytes.size());
            for (size_t i = 0; i < vTexel.size(); ++i)
                vTexel[i] = pCurve->mVTextureBytes[i] / 255.f;
            curve = mpCCurves->Upload(pCurve, vTexel.data(), ColorCurve_cls::kTexelCount);
        }
        glActiveTexture(GL_TEXTURE1);
        glBindTexture(GL_TEXTURE_1D, curve);
        glActiveTexture(GL_TEXTURE0);
    }

    // The record of the richest program; each entry point takes what its program has.
    VolumeScatterShadowParams_cls params;
    for (int i = 0; i < 3; ++i) {
        params.mClipBoxMin[i] = static_cast<float>(clipMin[i] + 0.5);
        params.mClipBoxMax[i] = static_cast<float>(clipMax[i] + 0.5);
    }
    params.mForceDiscard0 = obj.mCDiscard0.GetBodyBOOL() ? 1 : 0;
    params.mTrim = 0.f;
    params.mIntervalGlobal = static_cast<float>(o.mInterval);
    params.mSubQuality = static_cast<int>(std::max<long long>(1, obj.mCSubQuality.GetBodyINT()));
    params.mLightNumber = status.mLightNumber;
    if (pMaterial) {
        CopyColor(pMaterial->GetColor("Ambient", nt), params.mAmbientClr);
        CopyColor(pMaterial->GetColor("Diffuse", nt), params.mDiffuseClr);
        CopyColor(pMaterial->GetColor("Specular", nt), params.mSpecularClr);
        const std::vector<double> shininess = GetGroup(pMaterial, "Shininess", nt, {32.0});
        params.mShininess = static_cast<int>(shininess[0]);
    }
    params.mShadowQuality = static_cast<int>(std::max<long long>(1, obj.mCShaderQuality.GetBodyINT()));
    // -1 is "the program's own strength".
    const double factor = obj.mCShaderFactor.GetBodyDOUBLE();
    params.mShadowAlpha = factor < 0.0 ? 1.f : static_cast<float>(factor);
    params.mScatterFactor = params.mShadowAlpha;

    ShaderCtrl_cls* pCtrl = GetPC_cls::GetPCShaderCtrl();
    bool bShader = false;
    if (pItem && pCtrl) {
        if (pItem->mStrName == "VolumeBasic")
            pCtrl->BeginVolumeBasic(&params);
        else if (pItem->mStrName == "VolumePhong")
            pCtrl->BeginVolumePhong(&params);
        else if (pItem->mStrName == "VolumePhongShadow")
            pCtrl->BeginVolumePhongShadow(&params);
        else if (pItem->mStrName == "VolumeScatter") {
            VolumeScatterParams_cls scatter;
            static_cast<VolumePhongParams_cls&>(scatter) = params;
            scatter.mScatterFactor = params.mScatterFactor;
            pCtrl->BeginVolumeScatter(&scatter);
        } else
            pCtrl->BeginVolumeScatterShadow(&params);
        bShader = pItem->IsValid();
    }
    if (!bShader) {
        // "Original", or a program that did not build: the fixed pipeline with the 3D texture.
        glEnable(GL_TEXTURE_3D);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    }

    glEnable(GL_BLEND);
    MaterialOption_cls::BlendFactor_enum src = MaterialOption_cls::FACTOR_SRC_ALPHA,
                                         dst = MaterialOption_cls::FACTOR_ONE_MINUS_SRC_ALPHA;
    if (pMaterial)
        pMaterial->SetBlendFunc(src, dst);
    // The alpha of the buffer gathers coverage whatever the colour's blending.
    glBlendFuncSeparate(ToGLBlendFactor(src), ToGLBlendFactor(dst), GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    o.mCSlices.DrawAllSlice(0, 1.f);

    if (pCtrl)
        pCtrl->EndShader();
    glDisable(GL_TEXTURE_3D);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_1D, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_3D, 0);
    glPopMatrix();
    glPopAttrib();
    obj.WaitPrepareNext();
    GLCheckError_cls::CheckGLError("VolumeBox::End");
}
