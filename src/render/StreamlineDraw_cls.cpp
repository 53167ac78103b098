#include "StreamlineDraw_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "DataViewerBase_cls.h"
#include "GLCheckError_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLKindDraw.h"
#include "Material_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "Streamline_cls.h"
#include "Trimming_cls.h"

#include <algorithm>
#include <cmath>
#include <memory>

void StreamlineDraw_cls::Register() {
    RegisterGLKindDraw<StreamlineDraw_cls, Streamline_cls, true>("Streamline_cls");
}

StreamlineDraw_cls::~StreamlineDraw_cls() {
    for (const auto& entry : mMapObject)
        ReleaseColorTable(&entry.second);
}

int StreamlineDraw_cls::GetUploadCount(const Streamline_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : it->second.mUploadCount;
}

int StreamlineDraw_cls::GetDrawnPointCount(const Streamline_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? 0 : it->second.mPointCount;
}

void StreamlineDraw_cls::Upload(Object_cls& o, const StreamlineForRender_cls& set, Streamline_cls& obj,
                                double nt) {
    double a = 0.0, b = 0.0;
    ColorCurve_cls* pCurve = GetCurveMap(obj, obj.mCColorType.GetBodyINT() == 1, nt, a, b);
    const bool bRepeat = obj.mCMappingType.GetBodyINT() == 1;
    wxString strStamp;
    strStamp.Printf("%lld:%p:%.9g:%.9g:%d", set.mSerial, static_cast<const void*>(pCurve), a, b,
                    bRepeat ? 1 : 0);
    if (o.mPosition && strStamp == o.mStrStamp)
        return;
    o.mStrStamp = strStamp;
    const int lineCount = set.GetLineCount();
    const int pointCount = set.GetPointCount();
    o.mVFirst.clear();
    o.mVCount.clear();
    o.mVSingle.clear();
    // s: the colour-curve coordinate; t: the line's number; p: along the line (its share of the
    // length, or the distance when the ribbon's texture repeats); q: the point's opacity.
    std::vector<float> vCoord(static_cast<size_t>(pointCount) * 4, 0.f);
    const bool bAlpha = set.mAlpha.size() == static_cast<size_t>(pointCount);
    const float* xyz = set.mXYZ.data();
    const bool bValue = set.mValue.size() == static_cast<size_t>(pointCount);
    for (int k = 0; k < lineCount; ++k) {
        const int first = set.mOffsets[static_cast<size_t>(k)];
        const int end = set.mOffsets[static_cast<size_t>(k) + 1];
        if (end - first == 1)
            o.mVSingle.push_back(first);
        else if (end - first > 1) {
            o.mVFirst.push_back(first);
            o.mVCount.push_back(end - first);
        }
        double along = 0.0;
        for (int i = first; i < end; ++i) {
            if (i > first) {
                const float* p0 = xyz + 3 * static_cast<size_t>(i - 1);
                const float* p1 = p0 + 3;
                along += std::sqrt(double(p1[0] - p0[0]) * (p1[0] - p0[0]) +
                                   double(p1[1] - p0[1]) * (p1[1] - p0[1]) +
                                   double(p1[2] - p0[2]) * (p1[2] - p0[2]));
            }
            float* c = vCoord.data() + 4 * static_cast<size_t>(i);
            c[0] =
                pCurve && bValue ? static_cast<float>(a + (b - a) * set.mValue[static_cast<size_t>(i)]) : 0.f;
            c[1] = static_cast<float>(k);
            c[2] = static_cast<float>(along);
            c[3] = bAlpha ? set.mAlpha[static_cast<size_t>(i)] : 1.f;
        }
        if (!bRepeat && along > 0.0)
            for (int i = first; i < end; ++i)
                vCoord[4 * static_cast<size_t>(i) + 2] /= static_cast<float>(along);
    }
    if (!o.mPosition)
        o.mPosition = GLBuffer_cls::Make();
    if (!o.mCoord)
        o.mCoord = GLBuffer_cls::Make();
    const GLsizeiptr bytes = static_cast<GLsizeiptr>(pointCount) * 3 * sizeof(float);
    glBindBuffer(GL_ARRAY_BUFFER, o.mPosition.Get());
    glBufferData(GL_ARRAY_BUFFER, bytes, pointCount ? xyz : nullptr, GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, o.mCoord.Get());
    glBufferData(GL_ARRAY_BUFFER, bytes / 3 * 4, pointCount ? vCoord.data() : nullptr, GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    o.mPointCount = pointCount;
    ++o.mUploadCount;
}

void StreamlineDraw_cls::SetClip(Streamline_cls& obj, double nt, StreamlineBasicParam_cls& params) {
    // An active trimming modifier cuts exactly at its box (in the scene's space with Global=),
    // fades the lines over SmoothWidth= inside it with Smooth=, and keeps 1 - "Thinning" of them.
    if (auto* pTrim = static_cast<Trimming_cls*>(obj.GetPCValidModifier("Trimming_cls"))) {
        double low[3] = {-1, -1, -1}, high[3] = {1, 1, 1};
        pTrim->Execute(nt, low, high);
        params.mUseClip = 1;
        std::copy(low, low + 3, params.mClipBoxMin);
        std::copy(high, high + 3, params.mClipBoxMax);
        if (pTrim->mCGlobal.GetBodyBOOL()) {
            double m[16];
            obj.GetMatrix16(m, nt);
            std::copy(m, m + 16, params.mMatrix16);
        }
        params.mSmoothWidth = pTrim->mCSmooth.GetBodyBOOL()
                                  ? static_cast<float>(std::max(0.0, pTrim->mCSmoothWidth.GetBodyDOUBLE()))
                                  : 0.f;
        params.mThinningFactor = static_cast<float>(1.0 - std::clamp(pTrim->GetThinning(nt), 0.0, 1.0));
        return;
    }
    // Else the object's own box, which the preparation cut at points, cuts exactly here too.
    params.mUseClip = obj.mCClip.GetBodyBOOL() ? 1 : 0;
    const std::vector<double> low = obj.mCClipLow.GetBodyFLOATARRAY();
    const std::vector<double> high = obj.mCClipHigh.GetBodyFLOATARRAY();
    for (size_t i = 0; i < 3; ++i) {
        params.mClipBoxMin[i] = i < low.size() ? static_cast<float>(low[i]) : -1.f;
        params.mClipBoxMax[i] = i < high.size() ? static_cast<float>(high[i]) : 1.f;
    }
}

void StreamlineDraw_cls::SetRibbon(Streamline_cls& obj, double nt, StreamlineTriangleParam_cls& params) {
    SetClip(obj, nt, params);
    params.mLineWidth = static_cast<float>(std::max(1.0, obj.mCLineWidth.GetBodyDOUBLE()));
    params.mMappingType = obj.mCMappingType.GetBodyINT() == 1 ? 1 : 0;
    GLint viewport[4] = {0, 0, 1, 1};
    glGetIntegerv(GL_VIEWPORT, viewport);
    for (int i = 0; i < 4; ++i)
        params.mViewport[i] = static_cast<float>(viewport[i]);
}

void StreamlineDraw_cls::BindBuffers(const Object_cls& o) {
    glBindBuffer(GL_ARRAY_BUFFER, o.mPosition.Get());
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glClientActiveTexture(GL_TEXTURE0);
    glBindBuffer(GL_ARRAY_BUFFER, o.mCoord.Get());
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(4, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
}

void StreamlineDraw_cls::GLDrawSV(Streamline_cls& obj, GLDrawStatus_cls& status) {
    // Ribbons cast; lines and points are too thin to.
    const Material_cls* pMaterial = obj.GetPCMaterial();
    if (!status.mbData || !GpCShadowVolumeCtrl || obj.mCDrawType.GetBodyINT() != 1 ||
        (pMaterial && !pMaterial->mCCastShadow.GetBodyBOOL()))
        return;
    auto it = mMapObject.find(&obj);
    if (it == mMapObject.end() || it->second.mPointCount == 0 || it->second.mVFirst.empty())
        return;
    const Object_cls& o = it->second;
    StreamlineTriangleParam_cls params;
    SetRibbon(obj, status.mTime, params);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    BindBuffers(o);
    if (GpCShadowVolumeCtrl->BeginShaderRibbon(params)) {
        glMultiDrawArrays(GL_LINE_STRIP, o.mVFirst.data(), o.mVCount.data(),
                          static_cast<GLsizei>(o.mVFirst.size()));
        GpCShadowVolumeCtrl->EndShader();
    }
    glPopClientAttrib();
    GLCheckError_cls::CheckGLError("StreamlineDraw::GLDrawSV");
}

void StreamlineDraw_cls::GLDraw(Streamline_cls& obj, GLDrawStatus_cls& status) {
    if (!status.mbData)
        return;
    // The lines' colour is their own, not the lights': the shadow takes nothing off them.
    const ShadowVolumeCtrl_cls* pShadow = GpCShadowVolumeCtrl;
    if (pShadow && pShadow->GetPhase() == 2)
        return;
    Object_cls& o = mMapObject[&obj];
    // A frame without data draws nothing, not the lines of an earlier frame.
    if (!DataViewerBase_cls::PrepareDrawByKind(&obj, status.mCompositeIndex) || !obj.mpCCurrent ||
        obj.mpCCurrent->GetPointCount() == 0) {
        o.mPointCount = 0;
        o.mStrStamp.clear();
        return;
    }
    const double nt = status.mTime;
    Upload(o, *obj.mpCCurrent, obj, nt);
    const bool bCurve = obj.mCColorType.GetBodyINT() == 1 && GetPCCurve(obj);
    const GLuint table = UpdateColorTable(&o, obj, bCurve, nt, o.mStrTableStamp);
    const bool bRibbon = obj.mCDrawType.GetBodyINT() == 1;
    // A later shadow step adds light only: the lines, drawn on the first, are black there and
    // still hide what lies behind them.
    const bool bBlack = pShadow && pShadow->IsLightOnlyStep();
    float color[4];
    GetMaterialColor(obj, nt, color);
    if (bBlack)
        color[0] = color[1] = color[2] = 0.f;

    StreamlineTriangleParam_cls params;
    params.mEnsembleStep = status.mEnsembleStep;
    params.mLightNumber = status.mLightNumber;
    params.mTextureMode = bCurve && !bBlack ? 1 : 0;
    SetRibbon(obj, nt, params);
    const float width = params.mLineWidth;

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4fv(color);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_1D, table);
    // A ribbon carries the material's image, stretched or repeated along it.
    const bool bImage = bRibbon && !status.mbHitTest && !bBlack &&
                        GLDrawKinds_cls::BindMaterialTexture(obj.GetPCMaterial(), status, 1) != 0;
    if (bImage)
        params.mTextureMode |= 2;

    BindBuffers(o);

    if (!o.mVFirst.empty()) {
        if (bRibbon) {
            if (GpCShaderCtrl)
                GpCShaderCtrl->BeginStreamlineTriangle(&params);
        } else {
            glLineWidth(width);
            if (GpCShaderCtrl)
                GpCShaderCtrl->BeginStreamlineBasic(&params);
        }
        glMultiDrawArrays(GL_LINE_STRIP, o.mVFirst.data(), o.mVCount.data(),
                          static_cast<GLsizei>(o.mVFirst.size()));
        if (GpCShaderCtrl)
            GpCShaderCtrl->EndShader();
    }
    if (!o.mVSingle.empty()) {
        // A line of one point: a square point as wide as the line.
        glPointSize(width);
        glDisable(GL_VERTEX_PROGRAM_POINT_SIZE);
        params.mTextureMode &= 1;
        if (GpCShaderCtrl)
            GpCShaderCtrl->BeginStreamlineBasic(&params);
        const std::vector<GLsizei> vOne(o.mVSingle.size(), 1);
        glMultiDrawArrays(GL_POINTS, o.mVSingle.data(), vOne.data(), static_cast<GLsizei>(vOne.size()));
        if (GpCShaderCtrl)
            GpCShaderCtrl->EndShader();
    }
    if (bImage)
        GLDrawKinds_cls::UnbindMaterialTexture(1);
    glBindTexture(GL_TEXTURE_1D, 0);
    glPopClientAttrib();
    glPopAttrib();
    GLCheckError_cls::CheckGLError("StreamlineDraw::GLDraw");
}
