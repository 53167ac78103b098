// Front half of the merge of two adjacent sorted runs A = ini1 .. fin1 and B = ini2 .. fin2 (fin1 =
// ini2) from source into target: walks both runs from the front and writes exactly the first
// fin1 - ini1 output positions, starting at ini1. ThreadSortMergeInv_cls writes the rest from the back
// at the same time; both give equal keys of B first, which is why the halves meet without a seam.
#pragma once

#include "ThreadSortMergeBase_cls.h"

class ThreadSortMergeOrd_cls : public ThreadSortMergeBase_cls {
public:
    // The merge itself, on the calling thread.
    static void MergeFront(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1, int fin1,
                           int ini2, int fin2, int block);

protected:
    void Work() override;
};
