// Sorts one section mIni .. mFin of the array by key: a radix sort through the same section of a
// scratch array, or std::sort for a section too small to pay for the buckets.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadInstance_cls.h"

class ThreadSortParallel_cls : public ThreadInstance_cls {
public:
    // scratch is as long as data; the worker uses only its own section of it. Not owned, either.
    void SetParameters(ArrayAndIndex_cls* data, ArrayAndIndex_cls* scratch) {
        mpData = data;
        mpScratch = scratch;
    }

    // Below this many elements a section goes to std::sort.
    static constexpr int kRadixMin = 2048;

protected:
    void Work() override;

private:
    ArrayAndIndex_cls* mpData = nullptr;    // not owned
    ArrayAndIndex_cls* mpScratch = nullptr; // not owned
};
