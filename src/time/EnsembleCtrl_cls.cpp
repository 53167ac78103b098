#include "EnsembleCtrl_cls.h"

EnsembleCtrl_cls::EnsembleCtrl_cls() {
    SetTag("EnsembleCtrl");
    Add(&mCUseEnsemble, "UseEnsemble=", "0");
    Add(&mCEnsembleSampleNum, "EnsembleSampleNum=", "4");
    Add(&mCUseGammaForEnsemble, "UseGammaForEnsemble=", "1");
}

EnsembleCtrl_cls::~EnsembleCtrl_cls() {
    ClearFBOBuffer();
}

void EnsembleCtrl_cls::ClearFBOBuffer() {
    if (mpCFBOBuffer && mFuncDeleteFBO)
        mFuncDeleteFBO(mpCFBOBuffer);
    mpCFBOBuffer = nullptr;
}
