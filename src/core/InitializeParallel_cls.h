// Builds the services on a worker while the main thread builds the first window.
#pragma once

#include <wx/thread.h>

#include <atomic>
#include <memory>

class InitializeParallel_cls : public wxThread {
public:
    // Joinable: the toolkit's own bookkeeping runs on the worker after the body, and a detached
    // worker could still be in it while an early exit tears the toolkit down.
    InitializeParallel_cls() : wxThread(wxTHREAD_JOINABLE) {}
    // Not owned: both live in the caller until the flag is set.
    void SetParameters(std::atomic<bool>* pbFinished, int* pnMillis) {
        mpbFinished = pbFinished;
        mpnMillis = pnMillis;
    }
    // The worker body: static members, the services and the default scene, the recent files.
    static void InitializeParallel();
    // Starts the worker over the registered services and gives it to the caller, who hands it
    // to WaitFinished. Should the system refuse a thread, the body runs here on the calling
    // thread, so the flag is set either way, and no worker is given. Main thread only.
    static std::unique_ptr<InitializeParallel_cls> Start(std::atomic<bool>* pbFinished, int* pnMillis);
    // Polls the flag every 3 ms until the worker has finished (no time limit), then joins it:
    // nothing of the worker runs after this returns. Main thread only.
    static void WaitFinished(const std::atomic<bool>& bFinished,
                             std::unique_ptr<InitializeParallel_cls> pThread);

protected:
    ExitCode Entry() override;

private:
    // The body, then the elapsed milliseconds, then the flag.
    static void RunAndSignal(std::atomic<bool>* pbFinished, int* pnMillis);

    std::atomic<bool>* mpbFinished = nullptr;
    int* mpnMillis = nullptr;
};
