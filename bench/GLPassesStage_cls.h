// The stage of a benchmark of whole frames: the process up to the renderer in a context with no
// display, a view without grid and guides at a buffer of 1024, its frame passes and a square
// target of the size. A benchmark's stage derives from it; its own GL objects go in its
// destructor, before these.
#pragma once

#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "GLBenchProcess_cls.h"
#include "View3D_cls.h"

#include <epoxy/gl.h>

#include <memory>

class GLPassesStage_cls {
public:
    explicit GLPassesStage_cls(int size) : mSize(size) {
        if (!mCProcess.IsValid())
            return;
        mView.mCBufSizeIdx.SetBodyFromData(wxString("2"));
        mView.mCDispLightCam.SetBodyFromData(wxString("0"));
        mView.mCDispGrid.SetBodyFromData(wxString("0"));
        mpPasses = std::make_unique<FramePasses_cls>(&mView);
        mpTarget = std::make_unique<FBO_cls>(size, size, nullptr);
        mpTarget->MakeFBO(true, false);
        FramePasses_cls::InitializeGLCommonIfNot();
        mbValid = true;
    }
    ~GLPassesStage_cls() {
        if (!mbValid)
            return;
        mpPasses.reset();
        mpTarget.reset();
        FramePasses_cls::DeleteGLCommon();
    }
    GLPassesStage_cls(const GLPassesStage_cls&) = delete;
    GLPassesStage_cls& operator=(const GLPassesStage_cls&) = delete;

    // One frame that draws the scene, finished.
    void PaintPasses() {
        mpPasses->RefreshEX();
        mpPasses->PaintDirectly(mSize, mSize, mSize, mSize, mpTarget->GetFramebuffer());
        glFinish();
    }

    GLBenchProcess_cls<> mCProcess; // first: it goes last
    bool mbValid = false;
    int mSize;
    View3D_cls mView;
    std::unique_ptr<FramePasses_cls> mpPasses;
    std::unique_ptr<FBO_cls> mpTarget;
};
