// A frame with shadow volumes against the same frame without them: 125 boxes over a floor under
// one parallel light that casts, through the frame passes at 1024 squared. With shadows a step
// draws the scene three times (lit, the volumes into the stencil, the shadowed area); a soft
// light does so once per sample and adds the steps up. The ratio, measured in the same run with
// both frames in turn, is what shadows cost.
#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "GLBenchProcess_cls.h"
#include "LightSource_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "PassesBenchStage_cls.h"
#include "Primitive_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "View3D_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <chrono>
#include <memory>

namespace {

constexpr int kSize = 1024;
constexpr int kSide = 5; // kSide squared boxes in a layer, kSide layers

class Stage_cls : public PassesBenchStage_cls {
public:
    Stage_cls() : PassesBenchStage_cls(kSize, "2") { mView.mCDispGrid.SetBodyFromData(wxString("0")); }

    void MakeScene() {
        SceneObjCtrl_cls* pScene = GpCSceneObjCtrl;
        auto add = [&](const wxString& strName, const wxString& strKind) {
            auto* p = new Primitive_cls(pScene, strKind);
            p->Initialize(strName);
            pScene->InsertSceneObjNative(p, -1);
            return p;
        };
        pScene->GetPCFromName("Box")->mCVisible.SetBodyFromDataBOOL(false);
        Primitive_cls* pFloor = add("Floor", "Plane");
        pFloor->GetPCParamGroup(wxString(), "Scale")->SetInitValue(8, 1, 8);
        for (int i = 0; i < kSide * kSide * kSide; ++i) {
            Primitive_cls* p = add(wxString::Format("B%d", i), i % 2 ? "Sphere" : "Box");
            const double x = i % kSide - 2.0, z = (i / kSide) % kSide - 2.0, y = 1.0 + i / (kSide * kSide);
            p->GetPCParamGroup(wxString(), "Position")->SetInitValue(x, y, z);
            p->GetPCParamGroup(wxString(), "Scale")->SetInitValue(0.3, 0.3, 0.3);
        }
        mpLight = static_cast<LightSource_cls*>(pScene->GetPCFromName("Initial Light"));
        mpLight->mCLightType.SetBodyFromData(wxString("0"));
        mpLight->mCCastShadow.SetBodyFromData(wxString("1"));
        mpLight->GetPCParamGroup(wxString(), "RotationEuler")->SetInitValue(-70, -30, 0);
        PositionAndDirection_cls pose;
        pose.mPos[1] = 8.0;
        pose.mPos[2] = 14.0;
        pose.mTgt[1] = -0.5;
        pose.mTgt[2] = -1.0;
        pose.Normalize();
        mView.SetPosDir(pose);
    }

    void SetShadow(bool bOn, bool bSoft) {
        GpCShadowVolumeCtrl->mCUseShadowVolume.SetBodyFromData(wxString(bOn ? "1" : "0"));
        mpLight->mCSoftShadow.SetBodyFromData(wxString(bSoft ? "1" : "0"));
    }
    void Paint() { PaintPasses(); }
    double PaintMillis(bool bOn, bool bSoft) {
        SetShadow(bOn, bSoft);
        const auto start = std::chrono::steady_clock::now();
        Paint();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }

    LightSource_cls* mpLight = nullptr;
};

Stage_cls* GpStage = nullptr;

void BM_FrameWithoutShadows(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    GpStage->SetShadow(false, false);
    for (auto _ : state)
        GpStage->Paint();
}
BENCHMARK(BM_FrameWithoutShadows)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FrameWithShadows(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    GpStage->SetShadow(true, false);
    for (auto _ : state)
        GpStage->Paint();
}
BENCHMARK(BM_FrameWithShadows)->Unit(benchmark::kMillisecond)->UseRealTime();

// Both frames in turn in each iteration, so a noisy machine weighs on both alike; the soft
// light's samples ("SoftShadowSampleNum=", 8 by default) as a second ratio.
void BM_ShadowsOverPlainRatio(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    const bool bSoft = state.range(0) != 0;
    double plain = 0.0, shadow = 0.0;
    for (auto _ : state) {
        plain += GpStage->PaintMillis(false, false);
        shadow += GpStage->PaintMillis(true, bSoft);
    }
    state.counters["plain_ms"] = plain / state.iterations();
    state.counters["shadow_ms"] = shadow / state.iterations();
    state.counters["ratio"] = shadow / plain;
}
BENCHMARK(BM_ShadowsOverPlainRatio)
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5);

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, [](Stage_cls& stage) { stage.MakeScene(); });
}
