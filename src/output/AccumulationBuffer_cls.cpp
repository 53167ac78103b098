#include "AccumulationBuffer_cls.h"

#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "GetPC_cls.h"
#include "ShaderCtrl_cls.h"
#include "ShaderParams_cls.h"
#include "TimeCtrl_cls.h"

#include <cstdint>
#include <cstring>

namespace {
// 0.4545 exactly as the bits 3EE8B439 give it.
float GetInverseGamma() {
    const uint32_t bits = 0x3EE8B439u;
    float value;
    memcpy(&value, &bits, sizeof value);
    return value;
}

void SetGamma(ExposureParams_cls& params, float gamma) {
    for (float& g : params.mGamma)
        g = gamma;
}

// Draws the texture over the whole buffer that is bound now, with the fixed matrices set to it.
void DrawOver(const FBO_cls* pTexture, const FBO_cls* pTarget, bool bOpaque, int envMode) {
    GLPerspective_cls::Push2DMatrix(pTarget->GetWidth(), pTarget->GetHeight());
    pTexture->DrawOnScreen2D(0, 0, pTarget->GetWidth(), pTarget->GetHeight(), bOpaque, envMode);
    GLPerspective_cls::Pop2DMatrix();
}
} // namespace

void AccumulationBuffer_cls::PrepareBuffer(FBO_cls*& rpBuffer, FBO_cls* pLike) {
    if (!rpBuffer)
        rpBuffer = new FBO_cls(pLike->GetWidth(), pLike->GetHeight(), nullptr);
    rpBuffer->SetGeometryFBO(pLike->GetWidth(), pLike->GetHeight());
    rpBuffer->SetColorDepth(pLike->GetColorDepthBuilt() == 8 ? 8 : 16);
    rpBuffer->MakeFBO(true, false);
}

void AccumulationBuffer_cls::DrawOnBuffer(FBO_cls* pBuffer, FBO_cls* pImage, int samples, int step,
                                          bool bGamma) {
    if (!pBuffer || !pImage || samples < 1)
        return;
    pBuffer->Begin(step == 0, false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    // Colours above 1 survive in the float buffer.
    glClampColor(GL_CLAMP_READ_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    glColor4f(1.f, 1.f, 1.f, 1.f / static_cast<float>(samples));
    glEnable(GL_TEXTURE_2D);
    ExposureParams_cls params;
    if (bGamma)
        SetGamma(params, 2.2f);
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginExposure(&params);
    glEnable(GL_BLEND);
    glDisable(GL_LIGHTING);
    glBlendFunc(GL_ONE, GL_ONE);
    DrawOver(pImage, pBuffer, true, GL_MODULATE);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    glPopAttrib();
    pBuffer->End();
}

void AccumulationBuffer_cls::DrawFromBuffer(FBO_cls* pBuffer, FBO_cls* pTarget, bool bGamma) {
    if (!pBuffer || !pTarget || TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
        return;
    pTarget->Begin(true, false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glColor4f(1.f, 1.f, 1.f, 1.f);
    glEnable(GL_TEXTURE_2D);
    ExposureParams_cls params;
    if (bGamma)
        SetGamma(params, GetInverseGamma());
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginExposure(&params);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ZERO);
    DrawOver(pBuffer, pTarget, true, GL_MODULATE);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    glPopAttrib();
    pTarget->End();
}

void AccumulationBuffer_cls::DeleteBuffer(FBO_cls* pBuffer) {
    delete pBuffer;
}
