// Stream-line drawing against its floor: 5000 lines of 100 points at 1024 squared, drawn as lines
// and as ribbons by the stream-line drawing (a frame already prepared and uploaded), against a
// bare glMultiDrawArrays of the same line strips from one buffer with a minimal program, both in
// the same iteration. Lines per second, and the ratio to the floor, are the counters.
#include "DrawBenchStage_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLDrawTable_cls.h"
#include "GLKindResources_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShaderCtrl_cls.h"
#include "Streamline_cls.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <vector>

namespace {

constexpr int kSize = 1024;
constexpr int kLines = 5000;
constexpr int kPoints = 100;

const char* const kFloorVert = "#version 130\n"
                               "void main() { gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex; }\n";
const char* const kFloorFrag = "#version 130\n"
                               "void main() { gl_FragColor = vec4(1.0); }\n";

class Stage_cls : public DrawBenchStage_cls {
public:
    Stage_cls() : DrawBenchStage_cls(kSize, kFloorVert, kFloorFrag) {
        if (!IsProcessValid())
            return;
        mpResources = std::make_unique<GLKindResources_cls>();
        MakeLines();
        mbValid = mpLines != nullptr && mpEntry != nullptr;
    }
    ~Stage_cls() override {
        mpResources.reset();
        mFloorBuffer.Reset();
    }

    // Helices around a grid of seeds, with a value along each.
    void MakeLines() {
        const wxString strPath = mCProcess.mStrDir + "/lines_000.txt";
        std::ofstream out(strPath.ToStdString());
        for (int k = 0; k < kLines; ++k) {
            const float cx = static_cast<float>(k % 100) * 0.2f - 10.f;
            const float cy = static_cast<float>(k / 100) * 0.4f - 10.f;
            for (int i = 0; i < kPoints; ++i) {
                const float a = i * 0.2f;
                out << cx + 0.1f * std::cos(a) << " " << cy + 0.1f * std::sin(a) << " " << i * 0.05f - 2.5f
                    << " " << i << "\n";
            }
            out << "\n";
        }
        out.close();
        mpLines = dynamic_cast<Streamline_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Streamline", "Lines")));
        if (mpLines)
            mpLines->mCPath.SetBodyFromData(strPath);
        mpEntry = GLDrawTable_cls::GetPCEntry("Streamline_cls");
    }
    void SetCamera() override {
        mpTarget->SetFrustum(45.0, 0.1, 100.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslated(0, 0, -30.0);
    }
    void PaintLines(int drawType) {
        mpLines->mCDrawType.SetBodyFromData(wxString::Format("%d", drawType));
        Begin();
        GLDrawStatus_cls status;
        status.mpCKindResources = mpResources.get();
        mpEntry->mFuncGLDraw(mpLines, status);
        End();
    }
    // The floor: the same strips from one buffer through a program that only writes white.
    void PaintFloor() {
        const StreamlineForRender_cls& set = *mpLines->mpCCurrent;
        if (!mFloorBuffer) {
            mFloorBuffer = GLBuffer_cls::Make();
            glBindBuffer(GL_ARRAY_BUFFER, mFloorBuffer.Get());
            glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(set.mXYZ.size() * sizeof(float)),
                         set.mXYZ.data(), GL_STATIC_DRAW);
            for (int k = 0; k < set.GetLineCount(); ++k) {
                mVFirst.push_back(set.mOffsets[k]);
                mVCount.push_back(set.mOffsets[k + 1] - set.mOffsets[k]);
            }
        }
        Begin();
        glUseProgram(mFloorProgram.Get());
        glBindBuffer(GL_ARRAY_BUFFER, mFloorBuffer.Get());
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glMultiDrawArrays(GL_LINE_STRIP, mVFirst.data(), mVCount.data(),
                          static_cast<GLsizei>(mVFirst.size()));
        EndFloor();
    }

    std::unique_ptr<GLKindResources_cls> mpResources;
    Streamline_cls* mpLines = nullptr;
    const GLDrawTable_cls::Entry_cls* mpEntry = nullptr; // the kind table's draw entry
    GLBuffer_cls mFloorBuffer;
    std::vector<GLint> mVFirst;
    std::vector<GLsizei> mVCount;
};

Stage_cls* GpStage = nullptr;

void DrawAgainstFloor(benchmark::State& state, int drawType) {
    if (!IsStageReady(state, GpStage))
        return;
    GpStage->PaintLines(drawType); // the frame is read, prepared and uploaded once
    GpStage->PaintFloor();
    const auto [draw, floor] = TimeAgainstFloor(
        state, [drawType] { GpStage->PaintLines(drawType); }, [] { GpStage->PaintFloor(); });
    const double seconds = draw / 1000.0;
    state.counters["draw_ms"] = draw / state.iterations();
    state.counters["floor_ms"] = floor / state.iterations();
    state.counters["ratio"] = draw / floor;
    state.counters["lines_per_s"] = seconds > 0.0 ? kLines * state.iterations() / seconds : 0.0;
    state.SetItemsProcessed(state.iterations() * kLines);
}

void BM_StreamLines(benchmark::State& state) {
    DrawAgainstFloor(state, 0);
}
void BM_StreamRibbons(benchmark::State& state) {
    DrawAgainstFloor(state, 1);
}
BENCHMARK(BM_StreamLines)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK(BM_StreamRibbons)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

} // namespace

int main(int argc, char** argv) {
    return RunGLBenchmarks<Stage_cls>(argc, argv, GpStage, nullptr);
}
