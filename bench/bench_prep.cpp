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
#include <cstring>
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

void BM_PrepareByIDLinear(benchmark::State& state) {
    const bool bShuffled = state.range(0) != 0;
    const bool bSearchEachFrame = state.range(1) != 0;
    Pair& p = GetPair(bShuffled);
    ParticleForRender_cls out;
    int frame = 0;
    // One frame ahead of the clock, so that kept tables are really kept from a previous frame.
    out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, frame, 0, 0.0, MakeViewer(), nullptr, 0.0,
                    PositionAndDirection_cls(), false);
    for (auto _ : state) {
        if (bSearchEachFrame) {
            state.PauseTiming();
            p.a->CheckAllocateNextIndex(false);
            p.b->CheckAllocateNextIndex(false);
            state.ResumeTiming();
        }
        // A new factor every frame, so the stamp always asks for a pass.
        const double t = (frame++ % 97 + 1) / 100.0;
        out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, frame, 0, t, MakeViewer(), nullptr, 0.0,
                        PositionAndDirection_cls(), false);
        benchmark::DoNotOptimize(out.mXYZ.get());
    }
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
    ->UseRealTime();

// The baseline: a plain copy of every input array the preparation reads (A's position, size, type and
// index table, B's position and size) into arrays of the same size, so that the copy moves as many
// bytes as the preparation reads and about as many as it writes (position, size, type, two colour
// coordinates and the order). Both runs read the same arrays of the same pair.
void BM_PlainCopy(benchmark::State& state) {
    Pair& p = GetPair(false);
    ParticleForRender_cls out;
    // The index table of A as the kept-tables runs read it.
    out.PrepareData(p.a.get(), p.b.get(), nullptr, nullptr, 0, 0, 0, 0.0, MakeViewer(), nullptr, 0.0,
                    PositionAndDirection_cls(), false);
    const size_t n = kCount;
    std::unique_ptr<float[]> xyzA(new float[3 * n]), xyzB(new float[3 * n]);
    std::unique_ptr<float[]> sizeA(new float[n]), sizeB(new float[n]);
    std::unique_ptr<unsigned char[]> type(new unsigned char[n]);
    std::unique_ptr<int[]> next(new int[n]);
    // Touched once, as the preparation's arrays are kept from frame to frame: no page faults timed.
    std::memset(xyzA.get(), 0, sizeof(float) * 3 * n);
    std::memset(xyzB.get(), 0, sizeof(float) * 3 * n);
    std::memset(sizeA.get(), 0, sizeof(float) * n);
    std::memset(sizeB.get(), 0, sizeof(float) * n);
    std::memset(type.get(), 0, n);
    std::memset(next.get(), 0, sizeof(int) * n);
    for (auto _ : state) {
        std::memcpy(xyzA.get(), p.a->mXYZ.get(), sizeof(float) * 3 * n);
        std::memcpy(xyzB.get(), p.b->mXYZ.get(), sizeof(float) * 3 * n);
        std::memcpy(sizeA.get(), p.a->mSize.get(), sizeof(float) * n);
        std::memcpy(sizeB.get(), p.b->mSize.get(), sizeof(float) * n);
        std::memcpy(type.get(), p.a->mType.get(), n);
        std::memcpy(next.get(), p.a->mNextIndex.get(), sizeof(int) * n);
        benchmark::DoNotOptimize(xyzA.get());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(37 * n));
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

int main(int argc, char** argv) {
    wxInitializer init;
    wxLog::EnableLogging(false); // the per-pass info lines would swamp the figures
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
