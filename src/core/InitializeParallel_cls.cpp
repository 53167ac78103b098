#include "InitializeParallel_cls.h"

#include "Main_cls.h"

#include <wx/stopwatch.h>
#include <wx/utils.h>

void InitializeParallel_cls::InitializeParallel() {
    ClassProvider_cls::InitializeStaticMembers();
    GCClassProvider->CreateSingleton();
    GCClassProvider->OpenRecentFile(GCClassProvider->GetStrRecentPath());
}

void InitializeParallel_cls::RunAndSignal(std::atomic<bool>* pbFinished, int* pnMillis) {
    wxStopWatch watch;
    InitializeParallel();
    // The milliseconds are written before the flag, so the main thread reads them after it.
    *pnMillis = static_cast<int>(watch.Time());
    pbFinished->store(true, std::memory_order_release);
}

wxThread::ExitCode InitializeParallel_cls::Entry() {
    RunAndSignal(mpbFinished, mpnMillis);
    return 0;
}

std::unique_ptr<InitializeParallel_cls> InitializeParallel_cls::Start(std::atomic<bool>* pbFinished,
                                                                      int* pnMillis) {
    auto pThread = std::make_unique<InitializeParallel_cls>();
    pThread->SetParameters(pbFinished, pnMillis);
    if (pThread->Run() == wxTHREAD_NO_ERROR)
        return pThread;
    RunAndSignal(pbFinished, pnMillis);
    return nullptr;
}

void InitializeParallel_cls::WaitFinished(const std::atomic<bool>& bFinished,
                                          std::unique_ptr<InitializeParallel_cls> pThread) {
    while (!bFinished.load(std::memory_order_acquire))
        wxMilliSleep(3);
    if (pThread)
        pThread->Wait();
}
