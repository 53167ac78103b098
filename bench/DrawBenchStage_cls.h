// The stage of a benchmark that draws one kind against its floor: the process up to the renderer
// in a context with no display, a clock of one frame, a square target that stands in for the
// window, and the floor's minimal program. A benchmark derives its stage from it, makes its object
// and sets mbValid; SetCamera places the view of each frame. The stage's own GL objects go in its
// destructor, before these, and these before the context.
#pragma once

#include "FBO_cls.h"
#include "GLBenchProcess_cls.h"
#include "ShaderCtrl_cls.h"
#include "TimeCtrl_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <memory>
#include <utility>

class DrawBenchStage_cls {
public:
    // side: of the target; strFloorVert, strFloorFrag: the sources of the floor's program.
    DrawBenchStage_cls(int side, const char* strFloorVert, const char* strFloorFrag) {
        if (!mCProcess.IsValid())
            return;
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
        mpTarget = std::make_unique<FBO_cls>(side, side, nullptr);
        mpTarget->MakeFBO(true, false);
        mFloorProgram = MakeBenchProgram(strFloorVert, strFloorFrag);
    }
    virtual ~DrawBenchStage_cls() {
        mFloorProgram.Reset();
        mpTarget.reset();
    }
    DrawBenchStage_cls(const DrawBenchStage_cls&) = delete;
    DrawBenchStage_cls& operator=(const DrawBenchStage_cls&) = delete;

    bool IsProcessValid() const { return mCProcess.IsValid(); }

    // A frame into the target: cleared, the projection of its size, SetCamera, depth test on.
    void Begin() {
        mpTarget->Begin(true, false);
        glClearColor(0.f, 0.f, 0.f, 0.f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        mpTarget->SetProjection();
        SetCamera();
        glEnable(GL_DEPTH_TEST);
    }
    // The frame finished.
    void End() {
        mpTarget->End();
        glFinish();
    }
    // A floor frame finished: its vertex array, buffer and program unbound first.
    void EndFloor() {
        glDisableClientState(GL_VERTEX_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glUseProgram(0);
        if (GpCShaderCtrl)
            GpCShaderCtrl->EndShader();
        End();
    }

    GLBenchProcess_cls<> mCProcess; // first: it goes last
    bool mbValid = false;
    std::unique_ptr<FBO_cls> mpTarget;
    GLProgram_cls mFloorProgram;

protected:
    // The projection on top of the target's (the projection matrix is current), then the model-view.
    virtual void SetCamera() = 0;
};

// The draw and the floor in turn in each iteration, so a noisy machine weighs on both: the total
// milliseconds of each.
template <class Draw, class Floor>
std::pair<double, double> TimeAgainstFloor(benchmark::State& state, Draw draw, Floor floor) {
    double drawMs = 0.0, floorMs = 0.0;
    for (auto _ : state) {
        drawMs += MillisOf(draw);
        floorMs += MillisOf(floor);
    }
    return {drawMs, floorMs};
}
