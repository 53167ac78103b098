// The core of a program with no window: the services made in the order of the composition root
// (whose layers the caller registered), on the parallel start-up path the window program uses,
// then the singletons. The caller owns the core.
#pragma once

#include "InitializeParallel_cls.h"
#include "Main_cls.h"

#include <atomic>
#include <utility>

inline Main_cls* NewHeadlessCore() {
    // The pause after a save shows the window's busy state; there is no window here.
    Main_cls::msSaveBusyMillis = 0;
    Main_cls* pMain = new Main_cls();
    std::atomic<bool> bFinished{false};
    auto pWorker = InitializeParallel_cls::Start(&bFinished, &pMain->mMillisParallel);
    InitializeParallel_cls::WaitFinished(bFinished, std::move(pWorker));
    pMain->CreateSingletonSerial();
    return pMain;
}
