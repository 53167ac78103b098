// One worker of a pass: a detached thread over the half-open range mIni .. mFin that sets its finish
// flag as its last act and then deletes itself.
#pragma once

#include <wx/thread.h>

#include <atomic>

class ThreadInstance_cls : public wxThread {
public:
    ThreadInstance_cls() : wxThread(wxTHREAD_DETACHED) {}

    // Stores the flag and the range and creates the thread (suspended until Run()). Returns false when
    // the system refuses a thread; the object is then not self-deleting and belongs to the caller.
    bool CreateThread(std::atomic<bool>* finish, int ini, int fin);

    // Does the work on the calling thread and sets the flag, for a worker whose thread was never
    // created or started. Used when a pass is not worth a thread.
    void RunOnThisThread();

    std::atomic<bool>* mpbFinish = nullptr; // not owned: the worker's slot in the finish list
    int mIni = 0;
    int mFin = 0;

protected:
    // The work of the range; the concrete worker classes implement it. Runs on the worker thread.
    virtual void Work() = 0;

private:
    // Work, then the flag, with release order so that the waiter sees every write of the range.
    // Nothing touches the object after the flag: the thread deletes it once Entry returns.
    ExitCode Entry() final;
};
