// One job of a type B list: a detached thread whose status word reads running from its creation and
// finished as its very last act, after the job has deleted itself.
#pragma once

#include <atomic>

class ThreadInstanceTypeB_cls {
public:
    ThreadInstanceTypeB_cls() = default;
    virtual ~ThreadInstanceTypeB_cls() = default;
    ThreadInstanceTypeB_cls(const ThreadInstanceTypeB_cls&) = delete;
    ThreadInstanceTypeB_cls& operator=(const ThreadInstanceTypeB_cls&) = delete;

    // Stores the slot and marks it running, so that the producer's next WaitForThread already counts
    // this job. Returns true: the thread itself is made by Run().
    bool CreateThread(std::atomic<int>* status);

    // Starts the detached thread, which from then on owns the object. When the system refuses a thread
    // the result is false, the slot reads finished and the object stays with the caller.
    bool Run();

    // Does the job on the calling thread and marks it finished; the object stays with the caller.
    void RunOnThisThread();

    std::atomic<int>* mpStatus = nullptr; // not owned: the job's slot in the status list

protected:
    virtual void Work() = 0; // runs on the job's thread

private:
    // Work, delete, then the finished status with release order.
    void Entry();
};
