// Evaluation rate of a four-member group with 100 Hermite keys per member: one channel with and
// without the slope cache, the whole group without and with an expression, against a plain
// binary-search linear interpolation of the same keys as the baseline.
#include "ParamGroup_cls.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int KEYS = 100;

ParamGroup_cls MakeGroup() {
    wxArrayString astrNames;
    for (const char* p : {"R", "G", "B", "A"})
        astrNames.Add(p);
    ParamGroup_cls group("RGBA", astrNames);
    for (size_t m = 0; m < group.mVCParam.size(); ++m) {
        Parameter_cls& param = group.mVCParam[m];
        param.mCTimeDepend.SetBodyFromData(wxString("1"));
        param.mCExtrapolate.SetBodyFromData(wxString("1"));
        param.mVCKey.clear();
        for (int k = 0; k < KEYS; ++k) {
            KeyFrame_cls key;
            key.mX = k / double(KEYS - 1);
            key.mValue = std::sin(0.37 * k + m);
            key.mType = KeyFrame_cls::TYPE_HERMITE;
            key.mEaseFactor = 0.5 + 0.5 * ((k + m) % 2);
            param.mVCKey.push_back(key);
        }
    }
    return group;
}

// Times spread over the whole range and a little beyond, so every segment is visited.
double NextTime(double& t) {
    t += 0.0123456;
    if (t > 1.05)
        t -= 1.1;
    return t;
}

void BM_ChannelGetValue(benchmark::State& state) {
    ParamGroup_cls group = MakeGroup();
    Parameter_cls& param = group.mVCParam[0];
    const bool bPrecalc = state.range(0) != 0;
    if (bPrecalc)
        param.PrecalcBegin();
    double t = 0.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(param.GetValue(NextTime(t)));
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(bPrecalc ? "precalculated" : "slopes per call");
}
BENCHMARK(BM_ChannelGetValue)->Arg(0)->Arg(1);

void BM_GroupInterpolated(benchmark::State& state) {
    ParamGroup_cls group = MakeGroup();
    group.PrecalcBegin();
    double t = 0.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(group.GetVInterpolatedValue(NextTime(t), true, nullptr, false));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GroupInterpolated);

void BM_GroupInterpolatedWithExpression(benchmark::State& state) {
    ParamGroup_cls group = MakeGroup();
    group.mCUseExpr.SetBodyFromData(wxString("1"));
    group.mCExpression.SetBodyFromData(wxString("return R * 0.5 + 0.5, G, B + math.sin(nt), A"));
    group.PrecalcBegin();
    double t = 0.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(group.GetVInterpolatedValue(NextTime(t), true, nullptr, false));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GroupInterpolatedWithExpression);

// Baseline: four plain arrays, std::upper_bound and a straight line.
void BM_BaselineLinearLookup(benchmark::State& state) {
    ParamGroup_cls group = MakeGroup();
    std::vector<double> vX;
    std::vector<std::vector<double>> vY(4);
    for (const KeyFrame_cls& key : group.mVCParam[0].mVCKey)
        vX.push_back(key.mX);
    for (int m = 0; m < 4; ++m)
        for (const KeyFrame_cls& key : group.mVCParam[m].mVCKey)
            vY[m].push_back(key.mValue);
    double t = 0.0;
    double out[4];
    for (auto _ : state) {
        const double x = std::clamp(NextTime(t), 0.0, 1.0);
        size_t i = std::upper_bound(vX.begin(), vX.end(), x) - vX.begin();
        i = std::clamp<size_t>(i, 1, vX.size() - 1);
        const double u = (x - vX[i - 1]) / (vX[i] - vX[i - 1]);
        for (int m = 0; m < 4; ++m)
            out[m] = (1 - u) * vY[m][i - 1] + u * vY[m][i];
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BaselineLinearLookup);

} // namespace
