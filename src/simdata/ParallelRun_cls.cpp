#include "ParallelRun_cls.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

int ParallelRun_cls::GetThreadCount(size_t work, size_t minPerThread) {
    if (const int fixed = msFixedCount.load(std::memory_order_relaxed); fixed > 0)
        return fixed;
    const unsigned hw = std::max(1u, std::thread::hardware_concurrency());
    const size_t bySize = minPerThread > 0 ? work / minPerThread : work;
    return static_cast<int>(std::max<size_t>(1, std::min<size_t>({hw, kMaxThreads, bySize})));
}

void ParallelRun_cls::Run(int count, const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    threads.reserve(count > 1 ? static_cast<size_t>(count - 1) : 0);
    std::vector<int> refused;
    for (int i = 1; i < count; ++i) {
        try {
            threads.emplace_back(work, i);
        } catch (const std::system_error&) {
            refused.push_back(i);
        }
    }
    if (count > 0)
        work(0);
    for (int i : refused)
        work(i);
    for (std::thread& t : threads)
        t.join();
}

void ParallelRun_cls::GetShare(size_t& ini, size_t& fin, int index, int count, size_t n) {
    const size_t per = count > 0 ? n / static_cast<size_t>(count) : 0;
    ini = per * static_cast<size_t>(index);
    fin = index == count - 1 ? n : ini + per;
}
