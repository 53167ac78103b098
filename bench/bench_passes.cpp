// The frame passes against the plainest drawing of the same scene: 1,000 boxes with their
// materials through the same object program, drawn at 1024 squared. The passes add the scene
// walk (instances, matrices from the parameter groups, the sort), the sub-pass set-up, the empty
// filter chain's copy and the fitted draw to the target; the direct draw renders the same boxes
// with matrices made once into one buffer and copies it to the target once. The ratio of the
// two, measured in the same run, is the passes' overhead. An empty scene gives the fixed cost.
#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "GLBenchProcess_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLPassesStage_cls.h"
#include "GLPerspective_cls.h"
#include "Main_cls.h"
#include "Material_cls.h"
#include "ParamGroup_cls.h"
#include "Primitive_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ServiceRegistry.h"
#include "ShaderCtrl_cls.h"
#include "ShaderItem_cls.h"
#include "VBOBaseObject_cls.h"
#include "View3D_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>
#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>

#include <chrono>
#include <memory>
#include <vector>

namespace {

constexpr int kSize = 1024;
constexpr int kSide = 10; // kSide cubed boxes

// The process up to the renderer, a context, a view looking at the boxes, a target and the
// buffer of the direct draw.
class Stage_cls : public GLPassesStage_cls {
public:
    Stage_cls() : GLPassesStage_cls(kSize) {
        if (!mbValid)
            return;
        mpDirect = std::make_unique<FBO_cls>(kSize, kSize, nullptr);
        mpDirect->MakeFBO(true, false);
    }
    ~Stage_cls() { mpDirect.reset(); }

    // The boxes, each with a material of its own colour; the default box goes.
    void MakeBoxes() {
        GpCSceneObjCtrl->GetPCFromName("Box")->mCVisible.SetBodyFromDataBOOL(false);
        for (int i = 0; i < kSide * kSide * kSide; ++i) {
            auto* p = new Primitive_cls(GpCSceneObjCtrl, "Box");
            p->Initialize(wxString::Format("B%d", i));
            GpCSceneObjCtrl->InsertSceneObjNative(p, -1);
            const double x = i % kSide - 4.5, y = (i / kSide) % kSide - 4.5, z = i / (kSide * kSide) - 4.5;
            p->GetPCParamGroup(wxString(), "Position")->SetInitValue(x, y, z);
            p->GetPCParamGroup(wxString(), "Scale")->SetInitValue(0.3, 0.3, 0.3);
            p->GetPCMaterial()->GetPCParamGroup("Diffuse")->SetInitValue((i % 7) / 7.0, (i % 5) / 5.0, 0.5);
            double m[16];
            p->GetMatrix16(m, 0.0, nullptr);
            mVMatrix.insert(mVMatrix.end(), m, m + 16);
            mVPBox.push_back(p);
        }
        PositionAndDirection_cls pose;
        pose.mPos[2] = 25.0;
        mView.SetPosDir(pose);
    }
    void RemoveBoxes() {
        GpCSceneObjCtrl->Clear();
        mVPBox.clear();
        mVMatrix.clear();
    }

    // The same boxes with the same program and materials into one buffer, copied once.
    void PaintDirect() {
        mpDirect->Begin(true, false);
        glClearColor(0.22f, 0.22f, 0.24f, 1.f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        mpDirect->SetProjection();
        mpDirect->SetFrustum(45.0, 0.01, 1000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslated(0, 0, -25.0);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        ObjectPhongParam_cls params;
        params.mLightNumber = 1;
        for (size_t i = 0; i < mVPBox.size(); ++i) {
            glPushMatrix();
            glMultMatrixd(&mVMatrix[i * 16]);
            params.mbFlat = GLDrawKinds_cls::SetMaterial(mVPBox[i]->GetPCMaterial(), 0.0);
            GpCShaderCtrl->BeginObjectPhong(&params);
            GpCVBOCube->Draw();
            glPopMatrix();
        }
        GpCShaderCtrl->EndShader();
        mpDirect->End();
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mpTarget->GetFramebuffer());
        mpDirect->DrawOnScreen2DFit(kSize, kSize, 0, true, 0);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
        glFinish();
    }

    std::unique_ptr<FBO_cls> mpDirect;
    std::vector<Primitive_cls*> mVPBox;
    std::vector<double> mVMatrix;
};

Stage_cls* GpStage = nullptr;

bool Ready(benchmark::State& state) {
    return IsStageReady(state, GpStage);
}

double Millis(void (Stage_cls::*pFunc)()) {
    const auto start = std::chrono::steady_clock::now();
    (GpStage->*pFunc)();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void BM_FramePasses1000Boxes(benchmark::State& state) {
    if (!Ready(state))
        return;
    for (auto _ : state)
        GpStage->PaintPasses();
    state.SetItemsProcessed(state.iterations() * kSide * kSide * kSide);
}
BENCHMARK(BM_FramePasses1000Boxes)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DirectDraw1000Boxes(benchmark::State& state) {
    if (!Ready(state))
        return;
    for (auto _ : state)
        GpStage->PaintDirect();
    state.SetItemsProcessed(state.iterations() * kSide * kSide * kSide);
}
BENCHMARK(BM_DirectDraw1000Boxes)->Unit(benchmark::kMillisecond)->UseRealTime();

// Both in turn in each iteration, so a noisy machine weighs on both alike.
void BM_PassesOverDirectRatio(benchmark::State& state) {
    if (!Ready(state))
        return;
    double passes = 0.0, direct = 0.0;
    for (auto _ : state) {
        passes += Millis(&Stage_cls::PaintPasses);
        direct += Millis(&Stage_cls::PaintDirect);
    }
    state.counters["passes_ms"] = passes / state.iterations();
    state.counters["direct_ms"] = direct / state.iterations();
    state.counters["ratio"] = passes / direct;
}
BENCHMARK(BM_PassesOverDirectRatio)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

// The fixed cost of a frame: no object is drawn.
void BM_FramePassesEmptyScene(benchmark::State& state) {
    if (!Ready(state))
        return;
    GpStage->RemoveBoxes();
    for (auto _ : state)
        GpStage->PaintPasses();
}
BENCHMARK(BM_FramePassesEmptyScene)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, [](Stage_cls& stage) { stage.MakeBoxes(); });
}
