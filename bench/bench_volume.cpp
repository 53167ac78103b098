// A volume of 256 cubed voxels drawn into a buffer of 1024 squared through the volume program,
// against the same slices drawn as textured polygons with a trivial program (one texture read,
// no curve, no samples between slices) in the same run: slices per second, and their ratio.
#include "ColorCurve_cls.h"
#include "DrawBenchStage_cls.h"
#include "GLDrawStatus_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShaderCtrl_cls.h"
#include "TextureProvider1D_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeDraw_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <vector>

namespace {

constexpr int kSize = 1024;
constexpr int kVoxels = 256;

const char* const kFloorVert = "#version 120\n"
                               "varying vec3 vTex;\n"
                               "void main() { vTex = gl_MultiTexCoord0.xyz; gl_Position = ftransform(); }\n";
const char* const kFloorFrag =
    "#version 120\n"
    "uniform sampler3D volume;\n"
    "varying vec3 vTex;\n"
    "void main() { float v = texture3D(volume, vTex).r; gl_FragColor = vec4(v, v, v, v); }\n";

// The process up to the renderer, a buffer of 1024 squared, one volume object over a df3 file of
// a soft ball, seen along a slant so the slices are cut as hexagons.
class Stage_cls : public DrawBenchStage_cls {
public:
    Stage_cls() : DrawBenchStage_cls(kSize, kFloorVert, kFloorFrag) {
        if (!IsProcessValid())
            return;
        mpDraw = std::make_unique<VolumeDraw_cls>(GpCTextureProvider1D);
        MakeVolume();
        mbValid = mpVolume != nullptr;
    }
    ~Stage_cls() override { mpDraw.reset(); }

    void MakeVolume() {
        const wxString strPath = mCProcess.mStrDir + "/ball.df3";
        std::ofstream out(strPath.ToStdString(), std::ios::binary);
        const char header[6] = {1, 0, 1, 0, 1, 0}; // 256 big-endian, three times
        out.write(header, 6);
        std::vector<char> row(kVoxels);
        const double c = (kVoxels - 1) * 0.5;
        for (int z = 0; z < kVoxels; ++z)
            for (int y = 0; y < kVoxels; ++y) {
                for (int x = 0; x < kVoxels; ++x) {
                    const double r = std::sqrt((x - c) * (x - c) + (y - c) * (y - c) + (z - c) * (z - c)) / c;
                    row[static_cast<size_t>(x)] = static_cast<char>(r < 1.0 ? 255 * (1.0 - r) : 0);
                }
                out.write(row.data(), kVoxels);
            }
        out.close();
        mpVolume = dynamic_cast<VolumeBox_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("VolumeBox", "Ball")));
        if (mpVolume) {
            mpVolume->mCPath.SetBodyFromData(strPath);
            mpVolume->mCUseSequence.SetBodyFromDataBOOL(false);
        }
    }
    void SetCamera() override {
        glOrtho(-1.0, 1.0, -1.0, 1.0, -10.0, 10.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glRotated(30.0, 1.0, 0.0, 0.0);
        glRotated(40.0, 0.0, 1.0, 0.0);
        glScaled(1.2, 1.2, 1.2);
    }
    void PaintVolume() {
        Begin();
        GLDrawStatus_cls status;
        mpDraw->GLDraw(*mpVolume, status);
        End();
    }
    // The floor: the slices of the last draw as textured polygons, blended, with the trivial program.
    void PaintFloor() {
        const DrawVolumeBox_cls* pSlices = mpDraw->GetPCSlices(mpVolume);
        Begin();
        glDepthMask(GL_FALSE);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glUseProgram(mFloorProgram.Get());
        glUniform1i(glGetUniformLocation(mFloorProgram.Get(), "volume"), 0);
        glBindTexture(GL_TEXTURE_3D, mpDraw->PrepareTexture(*mpVolume->mpCCurrent));
        DrawVolumeBox_cls copy = *pSlices;
        copy.DrawAllSlice(0, 1.f);
        glUseProgram(0);
        if (GpCShaderCtrl)
            GpCShaderCtrl->EndShader();
        glBindTexture(GL_TEXTURE_3D, 0);
        glDisable(GL_BLEND);
        glDepthMask(GL_TRUE);
        End();
    }

    std::unique_ptr<VolumeDraw_cls> mpDraw;
    VolumeBox_cls* mpVolume = nullptr;
};

Stage_cls* GpStage = nullptr;

// One shader against the floor.
void DrawAgainstFloor(benchmark::State& state, int shader) {
    if (!IsStageReady(state, GpStage))
        return;
    GpStage->mpVolume->mCShader.SetBodyFromData(wxString::Format("%d", shader));
    GpStage->PaintVolume(); // read, mixed, uploaded and compiled once
    GpStage->PaintFloor();
    const double slices = GpStage->mpDraw->GetNumSlices(GpStage->mpVolume);
    const auto [draw, floor] = TimeAgainstFloor(
        state, [] { GpStage->PaintVolume(); }, [] { GpStage->PaintFloor(); });
    const double n = static_cast<double>(state.iterations());
    state.counters["slices"] = slices;
    state.counters["slices_per_s"] = slices * n / (draw / 1000.0);
    state.counters["floor_slices_per_s"] = slices * n / (floor / 1000.0);
    state.counters["ratio"] = draw / floor;
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(slices));
}

void BM_VolumeBasic(benchmark::State& state) {
    DrawAgainstFloor(state, 1);
}
void BM_VolumePhong(benchmark::State& state) {
    DrawAgainstFloor(state, 2);
}
BENCHMARK(BM_VolumeBasic)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(BM_VolumePhong)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

// A redraw of an unchanged frame uploads nothing: the camera may move freely.
void BM_RedrawUploads(benchmark::State& state) {
    if (!IsStageReady(state, GpStage))
        return;
    GpStage->PaintVolume();
    const int before = GpStage->mpDraw->mUploadCount;
    for (auto _ : state)
        GpStage->PaintVolume();
    state.counters["uploads_per_frame"] =
        static_cast<double>(GpStage->mpDraw->mUploadCount - before) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_RedrawUploads)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, nullptr);
}
