// Each filter of the chain alone over a frame of 1024 and 4096 squared, against the plainest pass
// there is: a DrawOnScreen2DFit copy of the same buffer into another one, in the same run. The
// ratio (filter time / copy time, both measured in each iteration) is the filter's cost in copies;
// a filter's pass includes the making of its buffer, as in the frame.
#include "FBO_cls.h"
#include "FilterCtrl_cls.h"
#include "GLBenchProcess_cls.h"
#include "GLPerspective_cls.h"
#include "PositionAndDirection_cls.h"
#include "ShaderCtrl_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <chrono>
#include <map>
#include <memory>

namespace {

// The process up to the filter chain, a context, and per size a frame with colour and depth.
class Stage_cls {
public:
    Stage_cls() : mbValid(mCProcess.IsValid()) {}
    ~Stage_cls() { mMapFrame.clear(); }

    struct Frame_cls {
        std::unique_ptr<FBO_cls> mpColor;
        std::unique_ptr<FBO_cls> mpDepth;
        std::unique_ptr<FBO_cls> mpCopy;
    };

    // A slanted plane of colour bands in perspective, drawn into the colour and the depth buffer.
    Frame_cls& GetFrame(int size) {
        Frame_cls& frame = mMapFrame[size];
        if (frame.mpColor)
            return frame;
        frame.mpColor = std::make_unique<FBO_cls>(size, size, nullptr);
        frame.mpColor->MakeFBO(true, false);
        frame.mpDepth = std::make_unique<FBO_cls>(size, size, nullptr);
        frame.mpDepth->SetColorDepth(8);
        frame.mpDepth->MakeFBO(true, true);
        frame.mpCopy = std::make_unique<FBO_cls>(size, size, nullptr);
        frame.mpCopy->MakeFBO(true, false);
        for (FBO_cls* p : {frame.mpColor.get(), frame.mpDepth.get()}) {
            p->Begin(true, false);
            p->SetProjection();
            p->SetFrustum(45.0, 0.1, 100.0);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            glEnable(GL_DEPTH_TEST);
            glBegin(GL_QUADS);
            for (int i = 0; i < 16; ++i) {
                glColor4f((i % 3) / 2.f, (i % 5) / 4.f, 1.f - i / 16.f, 1.f);
                const float z0 = -2.f - i, z1 = -3.f - i;
                glVertex3f(-4.f, -1.f, z0);
                glVertex3f(4.f, -1.f, z0);
                glVertex3f(4.f, 3.f, z1);
                glVertex3f(-4.f, 3.f, z1);
            }
            glEnd();
            GpCShaderCtrl->PrepareViewportInfo();
            p->End();
        }
        return frame;
    }

    void Copy(Frame_cls& frame) {
        frame.mpCopy->Begin(true, false);
        frame.mpColor->DrawOnScreen2DFit(frame.mpColor->GetWidth(), frame.mpColor->GetHeight(), 0, true, 0);
        frame.mpCopy->End();
        glFinish();
    }

    void Filter(Frame_cls& frame) {
        PositionAndDirection_cls pose;
        FBO_cls* p = GpCFilterCtrl->GetNewPCFilterProcessed(frame.mpColor.get(), {-1.f, -1.f, 0.414f}, pose,
                                                            nullptr, frame.mpDepth.get());
        glFinish();
        GpCFilterCtrl->ReleaseProcessed(p);
    }

    GLBenchProcess_cls<ServiceLayer_enum::Filter> mCProcess; // first: it goes last
    bool mbValid = false;
    std::map<int, Frame_cls> mMapFrame;
};

Stage_cls* GpStage = nullptr;

double Millis(const std::function<void()>& func) {
    const auto start = std::chrono::steady_clock::now();
    func();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The copy alone: the baseline of every ratio.
void BM_Copy(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    Stage_cls::Frame_cls& frame = GpStage->GetFrame(static_cast<int>(state.range(0)));
    for (auto _ : state)
        GpStage->Copy(frame);
    state.SetBytesProcessed(state.iterations() * state.range(0) * state.range(0) * 8);
}

// One filter in the chain, with its copy in the same iteration.
void BM_Filter(benchmark::State& state, const wxString& strClass) {
    if (!IsStageReady(state, GpStage))
        return;
    GpCFilterCtrl->Clear();
    GpCFilterCtrl->AddFilterCommand(strClass, "F");
    Stage_cls::Frame_cls& frame = GpStage->GetFrame(static_cast<int>(state.range(0)));
    GpStage->Filter(frame); // programs compile outside the timing
    double filter = 0.0, copy = 0.0;
    for (auto _ : state) {
        filter += Millis([&] { GpStage->Filter(frame); });
        copy += Millis([&] { GpStage->Copy(frame); });
    }
    state.counters["filter_ms"] = filter / state.iterations();
    state.counters["copy_ms"] = copy / state.iterations();
    state.counters["ratio"] = filter / copy;
    state.SetBytesProcessed(state.iterations() * state.range(0) * state.range(0) * 8);
}

void RegisterFilterBenchmarks() {
    for (int size : {1024, 4096})
        benchmark::RegisterBenchmark("BM_Copy", BM_Copy)
            ->Arg(size)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->Iterations(size > 1024 ? 3 : 20);
    for (const wxString& strClass : FilterCtrl_cls::GetVStrFilterClass())
        for (int size : {1024, 4096})
            benchmark::RegisterBenchmark(("BM_Filter/" + strClass).utf8_str().data(), BM_Filter, strClass)
                ->Arg(size)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime()
                ->Iterations(size > 1024 ? 3 : 10);
}

} // namespace

int main(int argc, char** argv) {
    RegisterFilterBenchmarks();
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, nullptr);
}
