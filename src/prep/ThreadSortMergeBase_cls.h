// What the two halves of a parallel merge share: the two adjacent sorted runs A = ini1 .. fin1 and
// B = ini2 .. fin2 (fin1 = ini2) of source, the target, and the block length of the copies.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadInstance_cls.h"

class ThreadSortMergeBase_cls : public ThreadInstance_cls {
public:
    // block above 1 copies runs of block elements after one comparison of the block ends; the output
    // is the same as with 1.
    void SetParameters(ArrayAndIndex_cls* target, ArrayAndIndex_cls* source, int ini1, int fin1, int ini2,
                       int fin2, int block) {
        mpTarget = target;
        mpSource = source;
        mIni1 = ini1;
        mFin1 = fin1;
        mIni2 = ini2;
        mFin2 = fin2;
        mBlock = block;
    }

protected:
    ArrayAndIndex_cls* mpTarget = nullptr;       // not owned
    const ArrayAndIndex_cls* mpSource = nullptr; // not owned
    int mIni1 = 0, mFin1 = 0, mIni2 = 0, mFin2 = 0, mBlock = 1;
};
