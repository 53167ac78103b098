// The stage of a benchmark of the frame passes: the process up to the renderer in a context with
// no display, one view (no guides of lights and cameras), its passes and a square target of the
// given side that stands in for the window.
#pragma once

#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "GLBenchProcess_cls.h"
#include "View3D_cls.h"

#include <epoxy/gl.h>

#include <memory>

class PassesBenchStage_cls {
public:
    // bufSizeIdx: "BufSizeIdx=" of the view (the side of the frame's buffers).
    PassesBenchStage_cls(int targetSide, const char* pBufSizeIdx) : mTargetSide(targetSide) {
        if (!mCProcess.IsValid())
            return;
        mView.mCBufSizeIdx.SetBodyFromData(wxString(pBufSizeIdx));
        mView.mCDispLightCam.SetBodyFromData(wxString("0"));
        mpPasses = std::make_unique<FramePasses_cls>(&mView);
        mpTarget = std::make_unique<FBO_cls>(targetSide, targetSide, nullptr);
        mpTarget->MakeFBO(true, false);
        FramePasses_cls::InitializeGLCommonIfNot();
        mbValid = true;
    }
    ~PassesBenchStage_cls() {
        if (!mbValid)
            return;
        mpPasses.reset();
        mpTarget.reset();
        FramePasses_cls::DeleteGLCommon();
    }
    PassesBenchStage_cls(const PassesBenchStage_cls&) = delete;
    PassesBenchStage_cls& operator=(const PassesBenchStage_cls&) = delete;

    // One frame that draws the scene, finished.
    void PaintPasses() {
        mpPasses->RefreshEX();
        mpPasses->PaintDirectly(mTargetSide, mTargetSide, mTargetSide, mTargetSide,
                                mpTarget->GetFramebuffer());
        glFinish();
    }

    GLBenchProcess_cls<> mCProcess; // first: it goes last
    bool mbValid = false;
    int mTargetSide;
    View3D_cls mView;
    std::unique_ptr<FramePasses_cls> mpPasses;
    std::unique_ptr<FBO_cls> mpTarget;
};
