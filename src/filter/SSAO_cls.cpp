#include "SSAO_cls.h"

#include "ShaderCtrl_cls.h"

SSAO_cls::SSAO_cls(const wxString& strName) : FilterBase_cls("SSAO_cls", strName) {
    Add(&mCQuality, "Quality=", "3", "PROPERTY_SCENE");
    Add(&mCFactor, "Factor=", "0.5", "PROPERTY_SCENE");
    Add(&mCRadius, "Radius=", "1", "PROPERTY_SCENE");
    Add(&mCType, "Type=", "0", "PROPERTY_SCENE");
    InitializeAndPushParam(GetPCNewParamGroup("BaseColor", "R", "G", "B"), 1.0, 1.0, 1.0);
}

void SSAO_cls::Begin(FBO_cls*, double t) {
    SSAOParam_cls params;
    params.mQuality = static_cast<int>(mCQuality.GetBodyINT());
    params.mFactor = static_cast<float>(mCFactor.GetBodyDOUBLE());
    params.mRadius = static_cast<float>(mCRadius.GetBodyDOUBLE());
    params.mType = static_cast<int>(mCType.GetBodyINT());
    for (size_t i = 0; i < 3; ++i)
        params.mBaseColor[i] = static_cast<float>(GetValue("BaseColor", t, 1.0, i));
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginSSAO(&params);
    CheckProgram("SSAO");
}

void SSAO_cls::BeginPass(const FilterPass_cls& pass, int) {
    Begin(pass.mpCRunning, pass.mTime);
}
