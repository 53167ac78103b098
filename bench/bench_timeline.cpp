// The redraw of the timeline's rows with 100 objects of 10 animated channels of 1,000 keys each,
// against the bare walk over the same keys. Two views: every object closed (each row sums the
// keys of its object's ten channels) and every object and group open (a row per channel). Draws
// into a memory bitmap of 1200 by 800; needs a display for the toolkit (run under xvfb-run -a).
#include "Attribute_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "ServiceRegistry.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "TimelineParam_cls.h"

#include "GuiBenchMain.h"

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/dcmemory.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/log.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr int kObjects = 100;
constexpr int kChannels = 10;
constexpr int kKeys = 1000;

// The scene, the timeline's rows in a frame that is never shown, and the animated channels.
class Scene_cls {
public:
    Scene_cls() {
        mStrDir = wxFileName::CreateTempFileName("orv_bench_tl_");
        wxRemoveFile(mStrDir);
        wxMkdir(mStrDir);
        RegisterServices<ServiceLayer_enum::Scene>();
        mpMain = std::make_unique<Main_cls>(mStrDir);
        mpMain->CreateSingleton();
        GpCTimeCtrl->ProcSetFrameMax(kKeys);
        for (int i = 0; i < kObjects; ++i) {
            const wxString strName =
                GpCSceneObjCtrl->AppendPrimitiveCommand(0, wxString::Format("Obj%03d", i));
            SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName(strName);
            std::vector<ParamGroup_cls*> vGroup(pObj->mVPCParamGroup.begin(), pObj->mVPCParamGroup.end());
            for (const wxString& strAttr : pObj->GetAstrAttribList())
                if (Attribute_cls* pAttr = pObj->GetPCAttribute(strAttr, 0))
                    vGroup.insert(vGroup.end(), pAttr->mVPCParamGroup.begin(), pAttr->mVPCParamGroup.end());
            for (ParamGroup_cls* pGroup : vGroup)
                for (Parameter_cls& param : pGroup->mVCParam)
                    if (static_cast<int>(mVPCParam.size()) < (i + 1) * kChannels)
                        Fill(param);
        }
        mpFrame = new wxFrame(nullptr, wxID_ANY, "bench", wxDefaultPosition, wxSize(1200, 800));
        mpConf = std::make_unique<TimelineConf_cls>(kKeys);
        mpParam = new TimelineParam_cls(mpFrame, mpConf.get(), nullptr);
        mpParam->SetSize(1200, 800);
    }
    ~Scene_cls() {
        mpFrame->Destroy();
        mpMain.reset();
        wxFileName::Rmdir(mStrDir, wxPATH_RMDIR_RECURSIVE);
    }
    void Fill(Parameter_cls& param) {
        param.mCTimeDepend.SetBodyFromDataBOOL(true);
        param.mVCKey.resize(kKeys);
        for (int k = 0; k < kKeys; ++k) {
            param.mVCKey[k].mX = static_cast<double>(k) / kKeys;
            param.mVCKey[k].mValue = k % 7;
            param.mVCKey[k].mType = k % 3;
        }
        mVPCParam.push_back(&param);
    }

    wxString mStrDir;
    std::unique_ptr<Main_cls> mpMain;
    wxFrame* mpFrame = nullptr; // the toolkit deletes it
    std::unique_ptr<TimelineConf_cls> mpConf;
    TimelineParam_cls* mpParam = nullptr; // a child of the frame
    std::vector<Parameter_cls*> mVPCParam;
};

Scene_cls* GetScene() {
    static Scene_cls* spScene = new Scene_cls; // lives to the end of the process
    return spScene;
}

void Redraw(benchmark::State& state, bool bOpen) {
    if (!gbGui) {
        state.SkipWithError("no display");
        return;
    }
    Scene_cls* pScene = GetScene();
    if (static_cast<int>(pScene->mVPCParam.size()) != kObjects * kChannels) {
        state.SkipWithError("the scene has fewer channels than asked");
        return;
    }
    TLParamLogic_cls& rows = pScene->mpParam->mCRows;
    rows.mSetOpen.clear();
    if (bOpen)
        for (SceneObj_cls* pObj : GpCSceneObjCtrl->mLPCChild) {
            rows.mSetOpen.insert(pObj->GetStrTag());
            for (ParamGroup_cls* pGroup : pObj->mVPCParamGroup)
                rows.mSetOpen.insert(pObj->GetStrTag(pGroup));
        }
    wxBitmap bitmap(1200, 800, 24);
    wxMemoryDC dc(bitmap);
    for (auto _ : state) {
        pScene->mpParam->UpdateDisplay(dc);
        benchmark::DoNotOptimize(rows.mVCRow.data());
    }
    state.counters["rows"] = static_cast<double>(rows.mVCRow.size());
    state.counters["keys/s"] = benchmark::Counter(static_cast<double>(kObjects) * kChannels * kKeys,
                                                  benchmark::Counter::kIsIterationInvariantRate);
}

// The baseline: every key's position read once, as the least any redraw must do.
void BM_WalkAllKeys(benchmark::State& state) {
    if (!gbGui) {
        state.SkipWithError("no display");
        return;
    }
    Scene_cls* pScene = GetScene();
    for (auto _ : state) {
        double sum = 0.0;
        for (Parameter_cls* p : pScene->mVPCParam)
            for (const KeyFrame_cls& key : p->mVCKey)
                sum += key.mX;
        benchmark::DoNotOptimize(sum);
    }
    state.counters["keys/s"] = benchmark::Counter(static_cast<double>(kObjects) * kChannels * kKeys,
                                                  benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_WalkAllKeys)->Unit(benchmark::kMillisecond);

void BM_TimelineRedrawClosed(benchmark::State& state) {
    Redraw(state, false);
}
BENCHMARK(BM_TimelineRedrawClosed)->Unit(benchmark::kMillisecond);

void BM_TimelineRedrawOpen(benchmark::State& state) {
    Redraw(state, true);
}
BENCHMARK(BM_TimelineRedrawOpen)->Unit(benchmark::kMillisecond);

} // namespace
