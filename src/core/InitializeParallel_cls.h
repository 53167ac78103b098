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

protected:
    ExitCode Entry() override;

private:
    std::atomic<bool>* mpbFinished = nullptr;
    int* mpnMillis = nullptr;
};
