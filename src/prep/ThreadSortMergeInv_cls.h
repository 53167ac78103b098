// Back half of the merge of two adjacent sorted runs A = ini1 .. fin1 and B = ini2 .. fin2 (fin1 =
// ini2) from source into target: walks both runs from the back and writes exactly the last
// fin2 - ini2 output positions. See ThreadSortMergeOrd_cls for the front half.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadInstance_cls.h"

class ThreadSortMergeInv_cls : public ThreadInstance_cls {
public:
    void SetParameters(ArrayAndIndex_cls* target, ArrayAndIndex_cls* source, int ini1, int fin1, int ini2,
                       int fin2, int block);

    // The merge itself, on the calling thread.
    static void MergeBack(ArrayAndIndex_cls* target, const ArrayAndIndex_cls* source, int ini1, int fin1,
                          int ini2, int fin2, int block);

protected:
    void Work() override;

private:
    ArrayAndIndex_cls* mpTarget = nullptr;       // not owned
    const ArrayAndIndex_cls* mpSource = nullptr; // not owned
    int mIni1 = 0, mFin1 = 0, mIni2 = 0, mFin2 = 0, mBlock = 1;
};
