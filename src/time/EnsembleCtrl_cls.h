// The settings and the current step of the ensemble: one frame drawn several times with a
// per-step variation (dissolve, focal blur samples) and averaged. The GL side belongs to the
// renderer, which keeps its buffer here. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"

#include <functional>

class FBO_cls;

class EnsembleCtrl_cls : public ConfListContainer_cls, public GetPC_cls {
public:
    EnsembleCtrl_cls();
    ~EnsembleCtrl_cls() override;

    bool IsUseEnsemble() const { return mCUseEnsemble.GetBodyBOOL(); }
    bool IsUseGamma() const { return mCUseGammaForEnsemble.GetBodyBOOL(); }
    // 1 with the feature off, else EnsembleSampleNum=.
    int GetEnsembleSampleNum() const {
        return IsUseEnsemble() ? static_cast<int>(mCEnsembleSampleNum.GetBodyINT()) : 1;
    }

    void SetEnsembleStep(int step) { mEnsembleStep = step; }
    int GetEnsembleStep() const { return mEnsembleStep; }

    // Frees the accumulation buffer through the renderer's deleter.
    void ClearFBOBuffer();

    ConfItemBOOL_cls mCUseEnsemble;
    ConfItemINT_cls mCEnsembleSampleNum;
    ConfItemBOOL_cls mCUseGammaForEnsemble;

    int mEnsembleStep = 0;
    // Owned: made on demand by the renderer, freed by ClearFBOBuffer with mFuncDeleteFBO.
    FBO_cls* mpCFBOBuffer = nullptr;
    std::function<void(FBO_cls*)> mFuncDeleteFBO; // installed by the renderer
};
