#include "Glare_cls.h"

#include "ShaderCtrl_cls.h"

Glare_cls::Glare_cls(const wxString& strName) : FilterBase_cls("Glare_cls", strName) {
    Add(&mCType, "Type=", "0", "PROPERTY_SCENE");
    Add(&mCQuality, "Quality=", "3", "PROPERTY_SCENE");
    Add(&mCNumber, "Number=", "3", "PROPERTY_SCENE");
    AddParam("Width", "Width", 16.0);
    AddParam("Offset", "Angle", 0.0);
    AddParam("Critical", "Value", 0.9);
    InitializeAndPushParam(GetPCNewParamGroup("Enh./Fade", "Enhance", "Fade"), 1.0, 0.5);
}

void Glare_cls::Begin(double t) {
    GlareParams_cls params;
    params.mType = static_cast<int>(mCType.GetBodyINT());
    params.mQuality = static_cast<int>(mCQuality.GetBodyINT());
    params.mRayNum = static_cast<int>(mCNumber.GetBodyINT());
    params.mWidth = static_cast<float>(GetValue("Width", t, 16.0));
    params.mOffset = static_cast<float>(GetValue("Offset", t, 0.0));
    params.mCrit = static_cast<float>(GetValue("Critical", t, 0.9));
    params.mEnhance = static_cast<float>(GetValue("Enh./Fade", t, 1.0, 0));
    params.mFade = static_cast<float>(GetValue("Enh./Fade", t, 0.5, 1));
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginGlare(&params);
    CheckProgram("Glare");
}

void Glare_cls::BeginPass(const FilterPass_cls& pass, int) {
    Begin(pass.mTime);
}
