// Builds the services on a worker while the main thread builds the first window.
#pragma once

#include <wx/thread.h>

#include <atomic>

class InitializeParallel_cls : public wxThread {
public:
    InitializeParallel_cls() : wxThread(wxTHREAD_DETACHED) {}
    // Not owned: both live in the caller until the flag is set.
    void SetParameters(std::atomic<bool>* pbFinished, int* pnMillis) {
        mpbFinished = pbFinished;
        mpnMillis = pnMillis;
    }
    // The worker body: static members, the services and the default scene, the recent files.
    static void InitializeParallel();
    // Starts the worker over the registered services. Should the system refuse a thread, the body
    // runs here on the calling thread, so the flag is set either way. Main thread only.
    static void Start(std::atomic<bool>* pbFinished, int* pnMillis);
    // Polls the flag every 3 ms until the worker has finished; no time limit.
    static void WaitFinished(const std::atomic<bool>& bFinished);

protected:
    ExitCode Entry() override;

private:
    // The body, then the elapsed milliseconds, then the flag.
    static void RunAndSignal(std::atomic<bool>* pbFinished, int* pnMillis);

    std::atomic<bool>* mpbFinished = nullptr;
    int* mpnMillis = nullptr;
};
