// The four-thread sort of draw-order keys against std::sort of the same keys, in the same run, on
// 10,000,000 keys (the size of a large particle snap).
#include "ArrayAndIndex_cls.h"
#include "SortParallel_cls.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr int kKeyCount = 10000000;

const std::vector<ArrayAndIndex_cls>& GetKeys() {
    static const std::vector<ArrayAndIndex_cls> keys = [] {
        std::vector<ArrayAndIndex_cls> v(kKeyCount);
        std::mt19937 rng(12345);
        std::uniform_real_distribution<float> dist(-1000.0f, 1000.0f);
        for (int i = 0; i < kKeyCount; ++i)
            v[i] = ArrayAndIndex_cls{i, dist(rng)};
        return v;
    }();
    return keys;
}

void BM_SortParallel(benchmark::State& state) {
    const std::vector<ArrayAndIndex_cls>& keys = GetKeys();
    std::vector<ArrayAndIndex_cls> work(keys.size());
    SortParallel_cls sorter;
    for (auto _ : state) {
        state.PauseTiming();
        std::copy(keys.begin(), keys.end(), work.begin());
        state.ResumeTiming();
        sorter.SortParallel(work.data(), kKeyCount);
        benchmark::DoNotOptimize(work.data());
    }
    if (!std::is_sorted(work.begin(), work.end()))
        state.SkipWithError("SortParallel left the keys unsorted");
    state.SetItemsProcessed(state.iterations() * kKeyCount);
}

void BM_StdSort(benchmark::State& state) {
    const std::vector<ArrayAndIndex_cls>& keys = GetKeys();
    std::vector<ArrayAndIndex_cls> work(keys.size());
    for (auto _ : state) {
        state.PauseTiming();
        std::copy(keys.begin(), keys.end(), work.begin());
        state.ResumeTiming();
        std::sort(work.begin(), work.end());
        benchmark::DoNotOptimize(work.data());
    }
    state.SetItemsProcessed(state.iterations() * kKeyCount);
}

BENCHMARK(BM_StdSort)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SortParallel)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    // The workers are toolkit threads: the toolkit must be up.
    if (!wxInitialize())
        return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    wxUninitialize();
    return 0;
}
