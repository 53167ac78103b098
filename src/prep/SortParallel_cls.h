// Sorts an array of keys on four threads: each quarter is sorted, then the quarters are merged in
// pairs and the halves merged, every merge written from both ends at once by two threads.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadCommon_cls.h"

class SortParallel_cls : public ThreadCommon_cls {
public:
    // Sorts data ascending by mValue, in place, before it returns. Always four sections and three
    // stages: the caller decides when this is worth it. Of equal keys met in a merge, the element of the
    // later run comes first. Any thread.
    void SortParallel(ArrayAndIndex_cls* data, int count);

    static constexpr int kSleepMs = 2;
};
