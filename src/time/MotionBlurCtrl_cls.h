// The settings and the current step of motion blur: one frame drawn at several times spread
// over the shutter and averaged. The GL side (PrepareBuffer, DrawOnBuffer, DrawFromBuffer)
// belongs to the renderer, which keeps its buffer here. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"

#include <functional>

class FBO_cls;

class MotionBlurCtrl_cls : public ConfListContainer_cls, public GetPC_cls {
public:
    MotionBlurCtrl_cls();
    ~MotionBlurCtrl_cls() override;

    bool IsUseMotionBlur() const { return mCUseMotionBlur.GetBodyBOOL(); }
    bool IsUseGamma() const { return mCUseGammaForBlur.GetBodyBOOL(); }
    double GetBlurLength() const { return mCBlurLength.GetBodyDOUBLE(); }
    int GetBlurQuality() const { return static_cast<int>(mCBlurQuality.GetBodyINT()); }
    // 1 with the feature off, else BlurQuality=.
    int GetBlurSampleNum() const { return IsUseMotionBlur() ? GetBlurQuality() : 1; }

    void SetBlurStep(int step) { mBlurStep = step; }
    int GetBlurStep() const { return mBlurStep; }

    // Frees the accumulation buffer through the renderer's deleter.
    void ClearFBOBuffer();

    ConfItemBOOL_cls mCUseMotionBlur;
    ConfItemBOOL_cls mCUseGammaForBlur;
    ConfItemFLOAT_cls mCBlurLength;
    ConfItemINT_cls mCBlurQuality;

    int mBlurStep = 0;
    // Owned: made on demand by the renderer, freed by ClearFBOBuffer with mFuncDeleteFBO.
    FBO_cls* mpCFBOBuffer = nullptr;
    std::function<void(FBO_cls*)> mFuncDeleteFBO; // installed by the renderer
};
