// Particle preparation by ID with linear interpolation over 10,000,000 particles, per frame,
// against a plain copy of the same input arrays in the same run. Two numberings: nearly stationary
// (a few particles vanish and appear between the steps) and shuffled (a fifth of the IDs of B are
// new, so the partner of each particle drifts by up to thousands of places). Each runs with the
// index tables kept from the previous frame (the usual case: a pair is searched once) and with the
// search redone every frame.
#include "ConfItem_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleSnap_cls.h"
#include "ViewerClone_cls.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>
#include <wx/log.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kCount = 10000000;

struct Pair {
    std::unique_ptr<ParticleSnap_cls> a, b;
};

std::unique_ptr<ParticleSnap_cls> MakeSnap(const std::vector<int>& ids, double time, std::mt19937& rng) {
    auto pSnap = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    pSnap->mHasID = pSnap->mHasType = pSnap->mHasSize = true;
    const int n = static_cast<int>(ids.size());
    pSnap->AllocateIfNot(n);
    std::uniform_real_distribution<float> u(0.0f, 1.0f);
    for (int i = 0; i < n; ++i) {
        pSnap->mID[i] = ids[i];
        pSnap->mXYZ[3 * i] = u(rng);
        pSnap->mXYZ[3 * i + 1] = u(rng);
        pSnap->mXYZ[3 * i + 2] = u(rng);
        pSnap->mSize[i] = 1.0f;
        pSnap->mType[i] = 0;
    }
    pSnap->mTime = time;
    return pSnap;
}

Pair& GetPair(bool bShuffled) {
    static Pair pairs[2];
    Pair& p = pairs[bShuffled ? 1 : 0];
    if (p.a)
        return p;
    std::mt19937 rng(bShuffled ? 11 : 5);
    std::vector<int> idsA(kCount);
    for (int i = 0; i < kCount; ++i)
        idsA[i] = 2 * i;
    std::vector<int> idsB = idsA;
    std::uniform_int_distribution<int> pick(0, kCount - 1);
    // Stationary: one in ten thousand replaced. Shuffled: one in five.
    const int replaced = bShuffled ? kCount / 5 : kCount / 10000;
    for (int k = 0; k < replaced; ++k)
        idsB[pick(rng)] = 2 * pick(rng) + 1; // odd: not in A
    std::sort(idsB.begin(), idsB.end());
    p.a = MakeSnap(idsA, 0.0, rng);
    p.b = MakeSnap(idsB, 1.0, rng);
    return p;
}

ViewerClone_cls* MakeViewer() {
    auto* pViewer = new ViewerClone_cls;
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpolateBy=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpType=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "SortType=", "0");
    return pViewer;
}

// The baseline: a plain copy of every input array the preparation reads (A's position, size, type and
// index table, B's position and size) into arrays of the same size, so that the copy moves as many
// bytes as the preparation reads and about as many as it writes (position, size, type, two colour
// coordinates, the order and the filter alpha). Both read the same arrays of the same pair.
class PlainCopy_cls {
public:
    explicit PlainCopy_cls(const Pair& p) : mpA(p.a.get()), mpB(p.b.get()) {
        // Touched once, as the preparation's arrays are kept from frame to frame: no page faults timed.
        for (auto* pv : {&mXYZA, &mXYZB})
            pv->assign(3 * kN, 0.0f);
        for (auto* pv : {&mSizeA, &mSizeB})
            pv->assign(kN, 0.0f);
        mType.assign(kN, 0);
        mNext.assign(kN, 0);
    }
    void operator()() {
        std::memcpy(mXYZA.data(), mpA->mXYZ.get(), sizeof(float) * 3 * kN);
        std::memcpy(mXYZB.data(), mpB->mXYZ.get(), sizeof(float) * 3 * kN);
        std::memcpy(mSizeA.data(), mpA->mSize.get(), sizeof(float) * kN);
        std::memcpy(mSizeB.data(), mpB->mSize.get(), sizeof(float) * kN);
        std::memcpy(mType.data(), mpA->mType.get(), kN);
        // The index table as the kept-tables runs read it; before the first pass it is not there.
        if (mpA->mNextIndex)
            std::memcpy(mNext.data(), mpA->mNextIndex.get(), sizeof(int) * kN);
        benchmark::DoNotOptimize(mXYZA.data());
        benchmark::ClobberMemory();
    }
    static constexpr size_t kN = kCount;
    static constexpr int64_t kBytes = 37 * static_cast<int64_t>(kN);

private:
    const ParticleSnap_cls* mpA;
    const ParticleSnap_cls* mpB;
    std::vector<float> mXYZA, mXYZB, mSizeA, mSizeB;
    std::vector<unsigned char> mType;
    std::vector<int> mNext;
};

double ProcessCPUSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + 1e-9 * static_cast<double>(ts.tv_nsec);
}

// The wall time of f, and in cpu the processor time of all threads of the process during it: on a
// shared machine the second tells the work apart from the waits for a processor.
template <typename F> double Seconds(F&& f, double& cpu) {
    const double cpu0 = ProcessCPUSeconds();
    const auto start = std::chrono::steady_clock::now();
    f();
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    cpu += ProcessCPUSeconds() - cpu0;
    return wall;
}

// Each iteration times one frame and then the plain copy, so the ratio of the sums ("ratio_vs_copy")
// compares the two under the same load of the machine; "cpu_ratio_vs_copy" compares the processor
// time of all threads, which a busy machine disturbs less.
void BM_PrepareByIDLinear(benchmark::State& state) {
    const bool bShuffled = state.range(0) != 0;
    const bool bSearchEachFrame = state.range(1) != 0;
    Pair& p = GetPair(bShuffled);
    ParticleForRender_cls out;
    int frame = 0;
    // One frame ahead of the clock, so that kept tables are really kept from a previous frame.
    out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, frame, 0, 0.0, MakeViewer(), nullptr, 0.0,
                    PositionAndDirection_cls(), false);
    PlainCopy_cls copy(p);
    double ours = 0.0, base = 0.0, oursCPU = 0.0, baseCPU = 0.0;
    for (auto _ : state) {
        if (bSearchEachFrame) {
            p.a->CheckAllocateNextIndex(false);
            p.b->CheckAllocateNextIndex(false);
        }
        // A new factor every frame, so the stamp always asks for a pass.
        const double t = (frame++ % 97 + 1) / 100.0;
        const double s = Seconds(
            [&] {
                out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, frame, 0, t, MakeViewer(), nullptr,
                                0.0, PositionAndDirection_cls(), false);
            },
            oursCPU);
        benchmark::DoNotOptimize(out.mXYZ.get());
        state.SetIterationTime(s);
        ours += s;
        base += Seconds(copy, baseCPU);
    }
    state.counters["ratio_vs_copy"] = ours / base;
    state.counters["cpu_ratio_vs_copy"] = oursCPU / baseCPU;
    state.counters["copy_ms"] = 1000.0 * base / static_cast<double>(state.iterations());
    state.SetItemsProcessed(state.iterations() * kCount);
}
BENCHMARK(BM_PrepareByIDLinear)
    ->ArgNames({"shuffled", "search"})
    ->Args({0, 0})
    ->Args({0, 1})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0)
    ->UseManualTime();

// The copy alone, for its throughput.
void BM_PlainCopy(benchmark::State& state) {
    Pair& p = GetPair(false);
    ParticleForRender_cls out;
    out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, 0, 0, 0.0, MakeViewer(), nullptr, 0.0,
                    PositionAndDirection_cls(), false);
    PlainCopy_cls copy(p);
    for (auto _ : state)
        copy();
    state.SetBytesProcessed(state.iterations() * PlainCopy_cls::kBytes);
    state.SetItemsProcessed(state.iterations() * kCount);
}
BENCHMARK(BM_PlainCopy)->Unit(benchmark::kMillisecond)->UseRealTime();

// The earlier, narrower baseline kept for comparison with older figures: A's position, size and type
// only (17 of the 37 bytes per particle that the preparation reads).
void BM_PlainCopyA(benchmark::State& state) {
    Pair& p = GetPair(false);
    std::unique_ptr<float[]> xyz(new float[3 * static_cast<size_t>(kCount)]);
    std::unique_ptr<float[]> size(new float[kCount]);
    std::unique_ptr<unsigned char[]> type(new unsigned char[kCount]);
    std::memset(xyz.get(), 0, sizeof(float) * 3 * static_cast<size_t>(kCount));
    std::memset(size.get(), 0, sizeof(float) * kCount);
    std::memset(type.get(), 0, kCount);
    for (auto _ : state) {
        std::memcpy(xyz.get(), p.a->mXYZ.get(), sizeof(float) * 3 * static_cast<size_t>(kCount));
        std::memcpy(size.get(), p.a->mSize.get(), sizeof(float) * kCount);
        std::memcpy(type.get(), p.a->mType.get(), kCount);
        benchmark::DoNotOptimize(xyz.get());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}
BENCHMARK(BM_PlainCopyA)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
