#include "InitializeParallel_cls.h"

#include "Main_cls.h"

#include <wx/stopwatch.h>

void InitializeParallel_cls::InitializeParallel() {
    ClassProvider_cls::InitializeStaticMembers();
    GCClassProvider->CreateSingleton();
    GCClassProvider->OpenRecentFile(GCClassProvider->GetStrRecentPath());
}

wxThread::ExitCode InitializeParallel_cls::Entry() {
    wxStopWatch watch;
    InitializeParallel();
    // The milliseconds are written before the flag, so the main thread reads them after it.
    *mpnMillis = static_cast<int>(watch.Time());
    mpbFinished->store(true, std::memory_order_release);
    return 0;
}
