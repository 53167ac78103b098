// One worker of a pass: a detached thread over the half-open range mIni .. mFin. It deletes itself
// when its work is done and sets its finish flag as its very last act, so that nothing of it is left
// to touch once the flag is seen.
#pragma once

#include <atomic>

class ThreadInstance_cls {
public:
    ThreadInstance_cls() = default;
    virtual ~ThreadInstance_cls() = default;
    ThreadInstance_cls(const ThreadInstance_cls&) = delete;
    ThreadInstance_cls& operator=(const ThreadInstance_cls&) = delete;

    // Stores the flag and the range. Returns true: the thread itself is made by Run().
    bool CreateThread(std::atomic<bool>* finish, int ini, int fin);

    // Starts the detached thread, which from then on owns the object. Returns false, leaving the
    // object with the caller, when the system refuses a thread.
    bool Run();

    // Does the work on the calling thread and sets the flag, for a worker that gets no thread (a pass
    // not worth one, or a refused thread). The object stays with the caller.
    void RunOnThisThread();

    std::atomic<bool>* mpbFinish = nullptr; // not owned: the worker's slot in the finish list
    int mIni = 0;
    int mFin = 0;

protected:
    // The work of the range; the concrete worker classes implement it. Runs on the worker thread.
    virtual void Work() = 0;

private:
    // Work, delete, then the flag with release order so that the waiter sees every write of the range.
    void Entry();
};
