// Particle drawing against its floor: one million particles at 1024 squared, each draw type of the
// particle drawing against a bare glDrawArrays of the same positions with a minimal program and
// the same point size (the least any drawing of these points can cost), both measured in the
// same iteration. Then the upload of ten million prepared particles against a memcpy of the same
// arrays, and the bytes a frame whose data did not change uploads (none).
#include "DrawBenchStage_cls.h"
#include "DrawParticle_cls.h"
#include "GLDrawStatus_cls.h"
#include "Main_cls.h"
#include "MaterialParticle_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleDraw_cls.h"
#include "ParticleForRender_cls.h"
#include "Particle_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ServiceRegistry.h"
#include "ShaderCtrl_cls.h"
#include "ShaderItem_cls.h"
#include "TextureProvider_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>
#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kSize = 1024;
constexpr int kCount = 1000000;
constexpr long long kUploadCount = 10000000;
// At the camera's distance one unit is about 49 pixels: particles of about two pixels.
constexpr float kPixels = 2.f;
constexpr float kWorldRadius = 0.021f;

const char* const kFloorVert = "#version 130\n"
                               "uniform float pointSize;\n"
                               "void main() {\n"
                               "    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;\n"
                               "    gl_PointSize = pointSize;\n"
                               "}\n";
const char* const kFloorFrag = "#version 130\n"
                               "void main() { gl_FragColor = vec4(1.0); }\n";

// The process up to the renderer, a buffer of 1024 squared and one particle object of a million
// particles read from a binary file.
class Stage_cls : public DrawBenchStage_cls {
public:
    Stage_cls() : DrawBenchStage_cls(kSize, kFloorVert, kFloorFrag) {
        if (!IsProcessValid())
            return;
        mpDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
        MakeParticles();
        mbValid = mpParticle != nullptr;
    }
    ~Stage_cls() override {
        mpDraw.reset();
        mFloorBuffer.Reset();
    }

    // Binary particles in the default layout: count, time; x y z, type, size per particle.
    void MakeParticles() {
        const wxString strPath = mCProcess.mStrDir + "/cloud0000.dat";
        std::ofstream out(strPath.ToStdString(), std::ios::binary);
        const int n = kCount;
        const float time = 0.f;
        out.write(reinterpret_cast<const char*>(&n), 4);
        out.write(reinterpret_cast<const char*>(&time), 4);
        std::mt19937 rng(11);
        std::uniform_real_distribution<float> pos(-5.f, 5.f);
        for (int i = 0; i < n; ++i) {
            const float rec[3] = {pos(rng), pos(rng), pos(rng)};
            const int type = 0;
            const float size = 1.f;
            out.write(reinterpret_cast<const char*>(rec), 12);
            out.write(reinterpret_cast<const char*>(&type), 4);
            out.write(reinterpret_cast<const char*>(&size), 4);
        }
        out.close();
        mpParticle = dynamic_cast<Particle_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", "Cloud")));
        if (!mpParticle)
            return;
        mpParticle->mCPath.SetBodyFromData(strPath);
        mpParticle->mCAlphaCrit.SetBodyFromData(wxString("0"));
        mpParticle->mCPointSizeFactor.SetBodyFromData(wxString::Format("%g", kPixels));
    }
    MaterialParticle_cls* Material() { return mpParticle->GetPCMaterialParticle(0); }
    // base: 0 point, 1 billboard, 2 sphere; shader: the shader key of that base type.
    void SetType(int base, int shader) {
        MaterialParticle_cls* p = Material();
        p->mCBaseType.SetBodyFromData(wxString::Format("%d", base));
        ConfItem_cls* pKey = p->GetPCItem(base == 0   ? "ShaderTypePoint="
                                          : base == 1 ? "ShaderTypeBillboard="
                                                      : "ShaderTypeSphere=");
        pKey->SetBodyFromData(wxString::Format("%d", shader));
        // Points size in pixels by the factor; the others in units by the size factor.
        const bool bPixels = base == 0 && shader < 2;
        p->GetPCParamGroup("SizeFactor")->SetInitValue(bPixels ? 1.0 : kWorldRadius, kWorldRadius);
        mpParticle->mCSphereDepth.SetBodyFromData(wxString("0"));
    }

    void SetCamera() override {
        mpTarget->SetFrustum(45.0, 0.1, 100.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslated(0, 0, -25.0);
    }
    void PaintParticles() {
        Begin();
        GLDrawStatus_cls status;
        mpDraw->GLDraw(*mpParticle, status);
        End();
    }
    // The floor: the same positions, already in a buffer, as points of the same size.
    void PaintFloor() {
        if (!mFloorBuffer) {
            mFloorBuffer = GLBuffer_cls::Make();
            glBindBuffer(GL_ARRAY_BUFFER, mFloorBuffer.Get());
            glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(sizeof(float) * 3 * kCount),
                         mpParticle->mpCCurrent->mXYZ.get(), GL_STATIC_DRAW);
        }
        Begin();
        glEnable(GL_VERTEX_PROGRAM_POINT_SIZE);
        glUseProgram(mFloorProgram.Get());
        glUniform1f(glGetUniformLocation(mFloorProgram.Get(), "pointSize"), kPixels);
        glBindBuffer(GL_ARRAY_BUFFER, mFloorBuffer.Get());
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glDrawArrays(GL_POINTS, 0, kCount);
        EndFloor();
    }

    std::unique_ptr<ParticleDraw_cls> mpDraw;
    Particle_cls* mpParticle = nullptr;
    GLBuffer_cls mFloorBuffer;
};

Stage_cls* GpStage = nullptr;

bool Ready(benchmark::State& state) {
    return IsStageReady(state, GpStage);
}

// One draw type against the floor.
// With batch, the frame goes in batches of that many particles.
void DrawAgainstFloor(benchmark::State& state, int base, int shader, int batch = 0) {
    if (!Ready(state))
        return;
    GpStage->mpDraw->mBatchOverride = batch;
    GpStage->SetType(base, shader);
    GpStage->PaintParticles(); // the frame is read, prepared and uploaded once
    GpStage->PaintFloor();
    const auto [draw, floor] = TimeAgainstFloor(
        state, [] { GpStage->PaintParticles(); }, [] { GpStage->PaintFloor(); });
    state.counters["draw_ms"] = draw / state.iterations();
    state.counters["floor_ms"] = floor / state.iterations();
    state.counters["ratio"] = draw / floor;
    state.SetItemsProcessed(state.iterations() * kCount);
    GpStage->mpDraw->mBatchOverride = 0;
}

void BM_Point(benchmark::State& state) {
    DrawAgainstFloor(state, 0, 0);
}
void BM_Circle(benchmark::State& state) {
    DrawAgainstFloor(state, 0, 1);
}
void BM_Billboard(benchmark::State& state) {
    DrawAgainstFloor(state, 1, 0);
}
void BM_PseudoSphere(benchmark::State& state) {
    DrawAgainstFloor(state, 0, 2);
}
void BM_SphereMeshInstanced(benchmark::State& state) {
    DrawAgainstFloor(state, 2, 1);
}
// The same spheres in four batches: the workers compact each batch while the last one draws.
void BM_PseudoSphereBatched(benchmark::State& state) {
    DrawAgainstFloor(state, 0, 2, kCount / 4);
}
void BM_SphereMeshBatched(benchmark::State& state) {
    DrawAgainstFloor(state, 2, 1, kCount / 4);
}
BENCHMARK(BM_Point)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_Circle)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_Billboard)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_PseudoSphere)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_SphereMeshInstanced)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_PseudoSphereBatched)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_SphereMeshBatched)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// Ten million prepared particles, as the preparation leaves them.
std::unique_ptr<ParticleForRender_cls> MakeSet(long long n) {
    auto pSet = std::make_unique<ParticleForRender_cls>();
    if (!pSet->Allocate(n))
        return nullptr;
    pSet->mNumber = n;
    for (long long i = 0; i < n; ++i) {
        pSet->mXYZ[3 * i] = static_cast<float>(i % 1000);
        pSet->mXYZ[3 * i + 1] = static_cast<float>(i % 977);
        pSet->mXYZ[3 * i + 2] = static_cast<float>(i % 13);
        pSet->mType[i] = static_cast<unsigned char>(i % 3);
        pSet->mSize[i] = 1.f;
        pSet->mColorS[i] = 0.5f;
        pSet->mColorT[i] = 1.f / 6.f;
        pSet->mAlpha[i] = 1.f;
        pSet->mOrder[i].mIndex = static_cast<int>(i);
        pSet->mOrder[i].mValue = 0.f;
    }
    return pSet;
}

// The bytes an upload moves: position, S, T, alpha, size, bits and one element list.
constexpr size_t kBytesPerParticle = 3 * 4 + 5 * 4 + 4;

void BM_Upload10M(benchmark::State& state) {
    if (!Ready(state))
        return;
    std::unique_ptr<ParticleForRender_cls> pSet = MakeSet(kUploadCount);
    if (!pSet) {
        state.SkipWithError("no memory for ten million particles");
        return;
    }
    ParticleDrawSetting_cls setting;
    DrawParticle_cls draw;
    // The buffers stand from the frame before, as while playing (and as the memcpy's destination
    // stands before its copies): the timed frames replace their data.
    draw.SetVBOBuffer(pSet.get(), setting, false);
    glFinish();
    const size_t first = draw.mUploadedBytes;
    for (auto _ : state) {
        ++pSet->mDataCounter; // new data: everything goes up
        draw.SetVBOBuffer(pSet.get(), setting, false);
        glFinish();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kUploadCount * kBytesPerParticle);
    // What a frame really gave to GL: lists that only restate the order and bits that are the
    // same for every particle do not go up.
    state.counters["uploaded_bytes_per_frame"] =
        static_cast<double>(draw.mUploadedBytes - first) / static_cast<double>(state.iterations());
    // The same frame once more: its stamps stand in the buffers.
    const size_t before = draw.mUploadedBytes;
    draw.SetVBOBuffer(pSet.get(), setting, false);
    state.counters["unchanged_frame_bytes"] = static_cast<double>(draw.mUploadedBytes - before);
}
BENCHMARK(BM_Upload10M)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// The baseline: a copy of the same arrays into host memory of the same size.
void BM_Memcpy10M(benchmark::State& state) {
    std::unique_ptr<ParticleForRender_cls> pSet = MakeSet(kUploadCount);
    if (!pSet) {
        state.SkipWithError("no memory for ten million particles");
        return;
    }
    std::vector<char> dst(kUploadCount * kBytesPerParticle);
    for (auto _ : state) {
        char* p = dst.data();
        auto put = [&p](const void* src, size_t bytes) {
            std::memcpy(p, src, bytes);
            p += bytes;
        };
        put(pSet->mXYZ.get(), kUploadCount * 12);
        for (const float* pArray :
             {pSet->mColorS.get(), pSet->mColorT.get(), pSet->mAlpha.get(), pSet->mSize.get()})
            put(pArray, kUploadCount * 4);
        put(pSet->mOrder.get(), kUploadCount * 4); // as many bytes as the bits
        put(pSet->mOrder.get(), kUploadCount * 4); // and the element list
        benchmark::DoNotOptimize(dst.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kUploadCount * kBytesPerParticle);
}
BENCHMARK(BM_Memcpy10M)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// A repeated frame through the whole draw: the bytes its uploads move.
void BM_UnchangedFrameUploads(benchmark::State& state) {
    if (!Ready(state))
        return;
    GpStage->SetType(0, 1);
    GpStage->PaintParticles();
    const size_t before = GpStage->mpDraw->GetUploadedBytes(GpStage->mpParticle);
    for (auto _ : state)
        GpStage->PaintParticles();
    state.counters["bytes_per_frame"] =
        static_cast<double>(GpStage->mpDraw->GetUploadedBytes(GpStage->mpParticle) - before) /
        state.iterations();
}
BENCHMARK(BM_UnchangedFrameUploads)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, nullptr);
}
