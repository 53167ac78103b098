// The four-thread sort of draw-order keys against std::sort of the same keys, both timed in each
// iteration of the same benchmark on 10,000,000 keys (the size of a large particle snap), so the
// ratio counter compares two runs under the same load of the machine.
#include "ArrayAndIndex_cls.h"
#include "SortParallel_cls.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>

#include <algorithm>
#include <chrono>
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

template <typename F> double Seconds(F&& f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Timed: SortParallel. Beside it in every iteration: std::sort of the same keys.
void BM_SortParallel(benchmark::State& state) {
    const std::vector<ArrayAndIndex_cls>& keys = GetKeys();
    std::vector<ArrayAndIndex_cls> work(keys.size());
    SortParallel_cls sorter;
    double parallel = 0.0, baseline = 0.0;
    for (auto _ : state) {
        std::copy(keys.begin(), keys.end(), work.begin());
        baseline += Seconds([&] { std::sort(work.begin(), work.end()); });
        benchmark::DoNotOptimize(work.data());
        std::copy(keys.begin(), keys.end(), work.begin());
        const double t = Seconds([&] { sorter.SortParallel(work.data(), kKeyCount); });
        benchmark::DoNotOptimize(work.data());
        parallel += t;
        state.SetIterationTime(t);
    }
    if (!std::is_sorted(work.begin(), work.end()))
        state.SkipWithError("SortParallel left the keys unsorted");
    state.SetItemsProcessed(state.iterations() * kKeyCount);
    state.counters["std_sort_ms"] = 1000.0 * baseline / static_cast<double>(state.iterations());
    state.counters["speedup_vs_std_sort"] = baseline / parallel;
}
BENCHMARK(BM_SortParallel)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

} // namespace
