#include "Blur_cls.h"

#include "ShaderCtrl_cls.h"

Blur_cls::Blur_cls(const wxString& strName) : FilterBase_cls("Blur_cls", strName) {
    Add(&mCType, "Type=", "0", "PROPERTY_SCENE");
    Add(&mCKernel, "Kernel=", "1", "PROPERTY_SCENE");
    Add(&mCQuality, "Quality=", "3", "PROPERTY_SCENE");
    Add(&mCUseGamma, "UseGamma=", "1", "PROPERTY_SCENE");
    AddParam("Width", "Width", 2.0);
}

int Blur_cls::GetIterNum() {
    const int blurs = mCType.GetBodyINT() == 2 ? 2 : 1;
    return mCUseGamma.GetBodyBOOL() ? blurs * 2 : blurs;
}

void Blur_cls::BeginExposure() {
    ExposureParams_cls params;
    for (float& g : params.mGamma)
        g = msGammaEncode;
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginExposure(&params);
    CheckProgram("Exposure");
}

void Blur_cls::Begin(int iteration, double t) {
    const bool bGamma = mCUseGamma.GetBodyBOOL();
    // With gamma every odd pass encodes what the blur before it left in linear light.
    if (bGamma && iteration % 2 == 1) {
        BeginExposure();
        return;
    }
    const int blurIndex = bGamma ? iteration / 2 : iteration;
    BlurParams_cls params;
    const long long type = mCType.GetBodyINT();
    params.mType = type == 2 ? blurIndex : static_cast<int>(type);
    params.mKernel = static_cast<int>(mCKernel.GetBodyINT());
    params.mQuality = static_cast<int>(mCQuality.GetBodyINT());
    params.mWidth = static_cast<float>(GetValue("Width", t, 1.0));
    params.mGamma = bGamma ? 2.2f : 1.f;
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginBlur(&params);
    CheckProgram("Blur");
}

void Blur_cls::BeginPass(const FilterPass_cls& pass, int iteration) {
    Begin(iteration, pass.mTime);
}
