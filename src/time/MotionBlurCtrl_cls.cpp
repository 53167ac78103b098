#include "MotionBlurCtrl_cls.h"

MotionBlurCtrl_cls::MotionBlurCtrl_cls() {
    SetTag("MotionBlurCtrl");
    Add(&mCUseMotionBlur, "UseMotionBlur=", "0");
    Add(&mCUseGammaForBlur, "UseGammaForBlur=", "1");
    Add(&mCBlurLength, "BlurLength=", "0.5");
    Add(&mCBlurQuality, "BlurQuality=", "4");
}

MotionBlurCtrl_cls::~MotionBlurCtrl_cls() {
    ClearFBOBuffer();
}

void MotionBlurCtrl_cls::ClearFBOBuffer() {
    if (mpCFBOBuffer && mFuncDeleteFBO)
        mFuncDeleteFBO(mpCFBOBuffer);
    mpCFBOBuffer = nullptr;
}
