#include "ThreadSortParallel_cls.h"

#include <algorithm>

void ThreadSortParallel_cls::Work() {
    if (mpData && mFin > mIni)
        std::sort(mpData + mIni, mpData + mFin);
}
