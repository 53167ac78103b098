#include "ThreadSortParallel_cls.h"

#include "RadixSort_cls.h"

#include <algorithm>

void ThreadSortParallel_cls::Work() {
    if (!mpData || mFin <= mIni)
        return;
    ArrayAndIndex_cls* first = mpData + mIni;
    const size_t n = static_cast<size_t>(mFin - mIni);
    if (!mpScratch || mFin - mIni < kRadixMin) {
        std::sort(first, first + n);
        return;
    }
    // One thread per section: the sections themselves are the parallel part.
    RadixSort_cls::Sort(
        first, mpScratch + mIni, n, 32,
        [](const ArrayAndIndex_cls& e) { return RadixSort_cls::FloatKey(e.mValue); }, 1);
}
