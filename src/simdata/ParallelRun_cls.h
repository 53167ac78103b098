// Runs one pass of the readers and of the sort by ID over a few threads that are joined before the
// pass returns. The data layer sits below the frame workers, so it has its own small runner: the
// join orders every write of a worker before whatever the caller does next.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

class ParallelRun_cls {
public:
    // Threads for a pass over work units: one per processor, at most kMaxThreads, and none that
    // would get fewer than minPerThread units. Always at least 1.
    static int GetThreadCount(size_t work, size_t minPerThread);
    // Calls work(0) .. work(count - 1), all but the first on new threads, the first on the calling
    // thread, and returns when all have ended. A thread the system refuses is run here instead.
    static void Run(int count, const std::function<void(int)>& work);
    // The half-open share [ini, fin) of part index of count parts of n: equal shares, the last
    // takes the remainder.
    static void GetShare(size_t& ini, size_t& fin, int index, int count, size_t n);

    // A count that GetThreadCount gives whatever the work, or 0 to decide by work and processors.
    // Lets a test see every split on any machine.
    static void SetFixedThreadCount(int count) { msFixedCount.store(count, std::memory_order_relaxed); }

    static constexpr int kMaxThreads = 8;

private:
    static inline std::atomic<int> msFixedCount{0};
};
