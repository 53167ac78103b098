// Marching cubes on a 256^3 volume against a plain pass over the same cells (the sum of the
// voxels), timed in the same iterations so that one run under one load gives the ratio. Counters:
// milliseconds per million cells of each, and their ratio. Run with one thread and with the count
// of the thread table.
#include "Main_cls.h"
#include "MarchingCubes_cls.h"
#include "ServiceRegistry.h"

#include <benchmark/benchmark.h>
#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int kSide = 256;

const std::vector<unsigned char>& Volume() {
    static const std::vector<unsigned char> v = [] {
        std::vector<unsigned char> d(static_cast<size_t>(kSide) * kSide * kSide);
        for (int z = 0; z < kSide; ++z)
            for (int y = 0; y < kSide; ++y)
                for (int x = 0; x < kSide; ++x) {
                    // Lumps and a ball: a surface through much of the volume, as a density field has.
                    const double r = std::sqrt((x - 128.0) * (x - 128.0) + (y - 128.0) * (y - 128.0) +
                                               (z - 128.0) * (z - 128.0));
                    const double f = 128.0 + 1.5 * (90.0 - r) +
                                     50.0 * std::sin(x * 0.11) * std::sin(y * 0.13) * std::sin(z * 0.09);
                    d[(static_cast<size_t>(z) * kSide + y) * kSide + x] =
                        static_cast<unsigned char>(std::lround(std::fmin(255.0, std::fmax(0.0, f))));
                }
        return d;
    }();
    return v;
}

template <typename F> double Seconds(F&& f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_MarchingCubes(benchmark::State& state) {
    const std::vector<unsigned char>& v = Volume();
    const int threads = static_cast<int>(state.range(0)); // 0: the thread table
    const double cells = std::pow(kSide - 1.0, 3.0);
    MarchingCubes_cls::Result_cls result;
    double ours = 0.0, base = 0.0;
    for (auto _ : state) {
        ours +=
            Seconds([&] { MarchingCubes_cls::Run(v.data(), kSide, kSide, kSide, 128.5f, result, threads); });
        base += Seconds([&] {
            // The plain pass: every voxel once, as the cells read them.
            unsigned long long sum = 0;
            for (unsigned char c : v)
                sum += c;
            benchmark::DoNotOptimize(sum);
        });
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["mc_ms_per_Mcell"] = 1000.0 * ours / n / (cells / 1e6);
    state.counters["sum_ms_per_Mcell"] = 1000.0 * base / n / (cells / 1e6);
    state.counters["ratio_vs_sum"] = ours / base;
    state.counters["triangles"] = static_cast<double>(result.GetTriangleCount());
    state.counters["threads"] =
        threads > 0 ? threads : MarchingCubes_cls::GetThreadCount(static_cast<int>(cells), false);
}
BENCHMARK(BM_MarchingCubes)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    wxInitializer init;
    wxLog::EnableLogging(false);
    RegisterServices<ServiceLayer_enum::Prep>();
    wxString strDir = wxFileName::CreateTempFileName("orvbench");
    wxRemoveFile(strDir);
    wxFileName::Mkdir(strDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    auto pMain = std::make_unique<Main_cls>(strDir);
    pMain->CreateSingleton();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    pMain.reset();
    wxFileName::Rmdir(strDir, wxPATH_RMDIR_RECURSIVE);
    return 0;
}
