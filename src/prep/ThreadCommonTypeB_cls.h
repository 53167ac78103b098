// Producer side of a job list with a status word per job: a new job is started only while fewer than
// mThreadNumber jobs are running, and the end waits for every job to finish.
#pragma once

#include <atomic>

class ThreadCommonTypeB_cls {
public:
    // Job status values.
    static constexpr int kStatusWaiting = 0;
    static constexpr int kStatusRunning = 1;
    static constexpr int kStatusFinished = 2;
    static constexpr int kMaxStatusNumber = 512;

    // A new list of count job slots, all waiting; count must be 1 to 512, else null.
    std::atomic<int>* GetNewPStatusList(int count);
    // How many jobs may run at a time; below 1 is refused with a log line and taken as 1, since
    // no job could ever start.
    void SetThreadNumber(int number);
    // Returns when fewer than mThreadNumber jobs of the list are running; call before each new job.
    void WaitForThread(std::atomic<int>* status);
    // Waits until every job of the list has finished, then frees the list. A count other than -1
    // replaces mStatusNumber first.
    void WaitFinishAndDeleteFlag(std::atomic<int>* status, int count);

    int mStatusNumber = 0; // length of the status list
    int mThreadNumber = 1; // how many jobs may run at a time
};
