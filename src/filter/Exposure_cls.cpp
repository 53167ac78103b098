#include "Exposure_cls.h"

#include "ShaderCtrl_cls.h"

Exposure_cls::Exposure_cls(const wxString& strName) : FilterBase_cls("Exposure_cls", strName) {
    InitializeAndPushParam(GetPCNewParamGroup("Level", "Min", "Max"), 0.0, 1.0);
    AddParam("Gamma", "Gamma", 1.0);
    InitializeAndPushParam(GetPCNewParamGroup("Hue/Saturation", "Hue", "Saturation"), 0.0, 0.0);
}

void Exposure_cls::FillParams(ExposureParams_cls& params, double t) {
    const float levelMin = static_cast<float>(GetValue("Level", t, 0.0, 0));
    const float levelMax = static_cast<float>(GetValue("Level", t, 1.0, 1));
    const float gamma = static_cast<float>(GetValue("Gamma", t, 1.0));
    for (int i = 0; i < 3; ++i) {
        params.mLevelMin[i] = levelMin;
        params.mLevelMax[i] = levelMax;
        params.mGamma[i] = gamma;
    }
    params.mHueOffset = static_cast<int>(GetValue("Hue/Saturation", t, 0.0, 0));
    params.mSaturation = static_cast<int>(GetValue("Hue/Saturation", t, 0.0, 1));
    params.mAlpha = 1.f;
}

void Exposure_cls::Begin(double t) {
    ExposureParams_cls params;
    FillParams(params, t);
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginExposure(&params);
    CheckProgram("Exposure");
}

void Exposure_cls::BeginPass(const FilterPass_cls& pass, int) {
    Begin(pass.mTime);
}
