// One job of a type B list: a detached thread whose status word reads running from its creation and
// finished as its last act; it then deletes itself.
#pragma once

#include <wx/thread.h>

#include <atomic>

class ThreadInstanceTypeB_cls : public wxThread {
public:
    ThreadInstanceTypeB_cls() : wxThread(wxTHREAD_DETACHED) {}

    // Stores the slot and creates the thread (suspended until Run()). The slot reads running from here
    // on, so the producer's next WaitForThread already counts this job. When the system refuses a
    // thread the slot reads finished, the result is false and the object belongs to the caller.
    bool CreateThread(std::atomic<int>* status);

    // Does the job on the calling thread and marks it finished, for a job whose thread was refused.
    void RunOnThisThread();

    std::atomic<int>* mpStatus = nullptr; // not owned: the job's slot in the status list

protected:
    virtual void Work() = 0; // runs on the job's thread

private:
    // Work, then the finished status with release order; the object is not touched after it.
    ExitCode Entry() final;
};
