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

// Draws the texture through "Exposure" with the gamma over the whole buffer bound now, with the
// blend function set and the fixed matrices set to that buffer.
void DrawExposed(const FBO_cls* pTexture, const FBO_cls* pTarget, float gamma, GLenum blendDst) {
    ExposureParams_cls params;
    SetGamma(params, gamma);
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginExposure(&params);
    glEnable(GL_BLEND);
    glDisable(GL_LIGHTING);
    glBlendFunc(GL_ONE, blendDst);
    GLPerspective_cls::Push2DMatrix(pTarget->GetWidth(), pTarget->GetHeight());
    pTexture->DrawOnScreen2D(0, 0, pTarget->GetWidth(), pTarget->GetHeight(), true, GL_MODULATE);
    GLPerspective_cls::Pop2DMatrix();
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
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
    // The steps add up.
    DrawExposed(pImage, pBuffer, bGamma ? 2.2f : 1.f, GL_ONE);
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
    // The average replaces the target.
    DrawExposed(pBuffer, pTarget, bGamma ? GetInverseGamma() : 1.f, GL_ZERO);
    glPopAttrib();
    pTarget->End();
}

void AccumulationBuffer_cls::DeleteBuffer(FBO_cls* pBuffer) {
    delete pBuffer;
}
