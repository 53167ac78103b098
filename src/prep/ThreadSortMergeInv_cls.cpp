#include "ThreadSortMergeInv_cls.h"

#include <algorithm>

void ThreadSortMergeInv_cls::MergeBack(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1,
                                       int fin1, int ini2, int fin2, int block) {
    int a = fin1 - 1;
    int b = fin2 - 1;
    int out = fin2 - 1;
    const int stop = ini2; // exactly fin2 - ini2 positions, the last of the output
    while (out >= stop) {
        if (block > 1 && out - stop + 1 >= block) {
            // The whole block of A is not below B's tail.
            if (a - block + 1 >= ini1 && (b < ini2 || source[a - block + 1].mValue >= source[b].mValue)) {
                std::copy(source + a - block + 1, source + a + 1, target + out - block + 1);
                a -= block;
                out -= block;
                continue;
            }
            // The whole block of B is above A's tail.
            if (b - block + 1 >= ini2 && a >= ini1 && !(source[a].mValue >= source[b - block + 1].mValue)) {
                std::copy(source + b - block + 1, source + b + 1, target + out - block + 1);
                b -= block;
                out -= block;
                continue;
            }
        }
        // A when its tail is greater or equal: from the back, equal keys of A go last.
        if (a >= ini1 && (b < ini2 || source[a].mValue >= source[b].mValue))
            target[out--] = source[a--];
        else if (b >= ini2)
            target[out--] = source[b--];
        else
            break; // both runs used up: only with a range that does not fit the runs
    }
}

void ThreadSortMergeInv_cls::Work() {
    if (mpTarget && mpSource)
        MergeBack(mpTarget, mpSource, mIni1, mFin1, mIni2, mFin2, mBlock);
}
