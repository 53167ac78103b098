#include "FocalBlur_cls.h"

#include "Camera_cls.h"
#include "FocalBlurProp_cls.h"
#include "ShaderCtrl_cls.h"

#include <algorithm>

FocalBlur_cls::FocalBlur_cls(const wxString& strName) : FilterBase_cls("FocalBlur_cls", strName) {
    Add(&mCQuality, "Quality=", "3", "PROPERTY_SCENE");
    Add(&mCType, "Type=", "1", "PROPERTY_SCENE");
    Add(&mCUseGamma, "UseGamma=", "1", "PROPERTY_SCENE");
    AddParam("WidthBase", "Width", 2.0);
    AddParam("FocalDistance", "Distance", 10.0);
}

void FocalBlur_cls::Begin(FBO_cls*, const PositionAndDirection_cls*, Camera_cls* pCamera, double tanHalf,
                          double t) {
    FocalBlurParamsB_cls params;
    params.mQuality = static_cast<int>(mCQuality.GetBodyINT());
    params.mGamma = mCUseGamma.GetBodyBOOL() ? 2.2f : 1.f;
    double focal = GetValue("FocalDistance", t, 10.0);
    if (pCamera && pCamera->GetPCFocalBlurProp())
        focal = pCamera->GetPCFocalBlurProp()->GetFocalDistance(t);
    params.mFocalDistance = static_cast<float>(focal);
    params.mWidthBase = static_cast<float>(GetValue("WidthBase", t, 2.0) / std::max(tanHalf, 1e-6));
    if (!GpCShaderCtrl)
        return;
    if (mCType.GetBodyINT() == 1) {
        GpCShaderCtrl->BeginFocalBlurB(&params);
        CheckProgram("FocalBlurB");
    } else {
        GpCShaderCtrl->BeginFocalBlur(&params);
        CheckProgram("FocalBlur");
    }
}

void FocalBlur_cls::BeginPass(const FilterPass_cls& pass, int) {
    const double tanHalf =
        pass.mpVPasspartout && !pass.mpVPasspartout->empty() ? pass.mpVPasspartout->back() : 1.0;
    Begin(pass.mpCRunning, pass.mpPose, pass.mpCCamera, tanHalf, pass.mTime);
}
