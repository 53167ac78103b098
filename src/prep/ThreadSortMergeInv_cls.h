// Back half of the merge of two adjacent sorted runs A = ini1 .. fin1 and B = ini2 .. fin2 (fin1 =
// ini2) from source into target: walks both runs from the back and writes exactly the last
// fin2 - ini2 output positions. See ThreadSortMergeOrd_cls for the front half.
#pragma once

#include "ThreadSortMergeBase_cls.h"

class ThreadSortMergeInv_cls : public ThreadSortMergeBase_cls {
public:
    // The merge itself, on the calling thread.
    static void MergeBack(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1, int fin1,
                          int ini2, int fin2, int block);

protected:
    void Work() override;
};
