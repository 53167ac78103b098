#include "ThreadSortMergeOrd_cls.h"

#include <algorithm>

void ThreadSortMergeOrd_cls::MergeFront(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1,
                                        int fin1, int ini2, int fin2, int block) {
    int a = ini1;
    int b = ini2;
    int out = ini1;
    const int end = fin1; // exactly fin1 - ini1 positions from ini1
    while (out < end) {
        if (block > 1 && end - out >= block) {
            // The whole block of A comes before B's head.
            if (fin1 - a >= block && (b >= fin2 || source[b].mValue > source[a + block - 1].mValue)) {
                std::copy(source + a, source + a + block, target + out);
                a += block;
                out += block;
                continue;
            }
            // The whole block of B is not above A's head.
            if (fin2 - b >= block && a < fin1 && !(source[b + block - 1].mValue > source[a].mValue)) {
                std::copy(source + b, source + b + block, target + out);
                b += block;
                out += block;
                continue;
            }
        }
        // A only when B's head is greater: of equal keys B's comes first.
        if (a < fin1 && (b >= fin2 || source[b].mValue > source[a].mValue))
            target[out++] = source[a++];
        else if (b < fin2)
            target[out++] = source[b++];
        else
            break; // both runs used up: only with a range that does not fit the runs
    }
}

void ThreadSortMergeOrd_cls::Work() {
    if (mpTarget && mpSource)
        MergeFront(mpTarget, mpSource, mIni1, mFin1, mIni2, mFin2, mBlock);
}
