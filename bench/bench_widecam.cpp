// The wide-angle camera types against the perspective frame of the same scene, in the same run:
// a wide frame renders its faces (up to six) at the first-pass size and gathers them through
// their meshes, so faces times the perspective frame is its floor. 343 boxes around the eye, so
// every face has something to draw; buffers and faces of 512. The ratio to the perspective frame
// is a counter, and so is the ratio per face (1 would be the gather for free).
#include "ParamGroup_cls.h"
#include "PassesBenchStage_cls.h"
#include "Primitive_cls.h"
#include "SceneObjCtrl_cls.h"
#include "WideCamera_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <chrono>
#include <memory>

namespace {

constexpr int kSize = 512;
constexpr int kSide = 7; // kSide cubed boxes

class Stage_cls : public PassesBenchStage_cls {
public:
    Stage_cls() : PassesBenchStage_cls(kSize, "1") {
        mView.mC1stBufSizeIdx.SetBodyFromData(wxString("1"));
        mView.mCViewAngleL.SetBodyFromData(wxString("90"));
    }
    // Boxes on a lattice with the eye in its middle.
    void MakeBoxes() {
        for (int i = 0; i < kSide * kSide * kSide; ++i) {
            auto* p = new Primitive_cls(GpCSceneObjCtrl, "Box");
            p->Initialize(wxString::Format("B%d", i));
            GpCSceneObjCtrl->InsertSceneObjNative(p, -1);
            const double x = i % kSide - 3.0, y = (i / kSide) % kSide - 3.0, z = i / (kSide * kSide) - 3.0;
            p->GetPCParamGroup(wxString(), "Position")->SetInitValue(x * 2.0, y * 2.0, z * 2.0 + 1.0);
            p->GetPCParamGroup(wxString(), "Scale")->SetInitValue(0.3, 0.3, 0.3);
        }
    }
    void Paint(int type) {
        mView.mCWideCameraType.SetBodyFromData(wxString::Format("%d", type));
        PaintPasses();
    }
    double Millis(int type) {
        const auto start = std::chrono::steady_clock::now();
        Paint(type);
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
};

Stage_cls* GpStage = nullptr;

// One perspective frame and one frame of the type in each iteration, so a noisy machine weighs
// on both alike. The first frame of a type makes its faces and meshes and is not counted.
void BM_WideOverPerspective(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    const int type = static_cast<int>(state.range(0));
    GpStage->Paint(type);
    double wide = 0.0, plain = 0.0;
    for (auto _ : state) {
        plain += GpStage->Millis(0);
        wide += GpStage->Millis(type);
    }
    const double faces = WideCamera_cls::GetFBONum(type);
    state.counters["faces"] = faces;
    state.counters["perspective_ms"] = plain / state.iterations();
    state.counters["wide_ms"] = wide / state.iterations();
    state.counters["ratio"] = wide / plain;
    state.counters["ratio_per_face"] = wide / plain / faces;
}
BENCHMARK(BM_WideOverPerspective)
    ->ArgName("type")
    ->DenseRange(2, 6)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(10);

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, [](Stage_cls& stage) { stage.MakeBoxes(); });
}
