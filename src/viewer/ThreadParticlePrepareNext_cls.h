// The background preparation of the next frame of one particle object: one thread that runs one
// job (ParticleForRender_cls::PrepareData on the spare render set with bNext true) and raises a
// finished flag. The owner joins it before it touches the spare set again, so no lock guards the
// set. Start and Join from the main thread only.
#pragma once
#include <atomic>
#include <functional>
#include <thread>

class ThreadParticlePrepareNext_cls {
public:
    ThreadParticlePrepareNext_cls() = default;
    ~ThreadParticlePrepareNext_cls() { Join(); }
    ThreadParticlePrepareNext_cls(const ThreadParticlePrepareNext_cls&) = delete;
    ThreadParticlePrepareNext_cls& operator=(const ThreadParticlePrepareNext_cls&) = delete;

    // Runs job on a new thread; a previous job is joined first. job returns whether it
    // prepared anything.
    void Start(std::function<bool()> job);
    // Waits for the running job, if any. True when the last job finished with success.
    bool Join();
    // The job was started and has not been joined yet.
    bool IsStarted() const { return mThread.joinable(); }
    // Any thread: the job has returned.
    bool IsFinished() const { return mbFinished.load(std::memory_order_acquire); }

private:
    std::thread mThread;
    std::atomic<bool> mbFinished{false};
    std::atomic<bool> mbSuccess{false};
};
