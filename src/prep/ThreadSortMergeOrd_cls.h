// Front half of the merge of two adjacent sorted runs A = ini1 .. fin1 and B = ini2 .. fin2 (fin1 =
// ini2) from source into target: walks both runs from the front and writes exactly the first
// fin1 - ini1 output positions, starting at ini1. ThreadSortMergeInv_cls writes the rest from the back
// at the same time; both give equal keys of B first, which is why the halves meet without a seam.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadInstance_cls.h"

class ThreadSortMergeOrd_cls : public ThreadInstance_cls {
public:
    // block above 1 copies runs of block elements after one comparison of the block ends; the output
    // is the same as with 1.
    void SetParameters(ArrayAndIndex_cls* target, ArrayAndIndex_cls* source, int ini1, int fin1, int ini2,
                       int fin2, int block);

    // The merge itself, on the calling thread.
    static void MergeFront(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1, int fin1,
                           int ini2, int fin2, int block);

protected:
    void Work() override;

private:
    ArrayAndIndex_cls* mpTarget = nullptr;       // not owned
    const ArrayAndIndex_cls* mpSource = nullptr; // not owned
    int mIni1 = 0, mFin1 = 0, mIni2 = 0, mFin2 = 0, mBlock = 1;
};
