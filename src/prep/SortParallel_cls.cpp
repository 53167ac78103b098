#include "SortParallel_cls.h"

#include "ThreadSortMergeInv_cls.h"
#include "ThreadSortMergeOrd_cls.h"
#include "ThreadSortParallel_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <memory>
#include <new>

namespace {

constexpr int kSections = 4;

std::atomic<bool>* NewFlagList(int count) {
    std::atomic<bool>* list = new std::atomic<bool>[count];
    for (int i = 0; i < count; ++i)
        list[i].store(false, std::memory_order_relaxed);
    return list;
}

// Both halves of the merge of A = ini1 .. fin1 and B = ini2 .. fin2, on two threads.
void StartMergePair(ArrayAndIndex_cls* target, ArrayAndIndex_cls* source, int ini1, int fin1, int ini2,
                    int fin2, std::atomic<bool>* flags) {
    auto* pOrd = new ThreadSortMergeOrd_cls;
    pOrd->SetParameters(target, source, ini1, fin1, ini2, fin2, 1);
    ThreadCommon_cls::StartWorker(pOrd, &flags[0], ini1, fin1);
    auto* pInv = new ThreadSortMergeInv_cls;
    pInv->SetParameters(target, source, ini1, fin1, ini2, fin2, 1);
    ThreadCommon_cls::StartWorker(pInv, &flags[1], ini2, fin2);
}

} // namespace

void SortParallel_cls::SortParallel(ArrayAndIndex_cls* data, int count) {
    if (count < 0 || (!data && count > 0)) {
        wxLogMessage("SortParallel: nothing to sort (count %d)", count);
        return;
    }
    int ini[kSections], fin[kSections];
    for (int i = 0; i < kSections; ++i)
        GetIniAndFin(ini[i], fin[i], i, kSections, count);

    // The array of stage 2's merge serves stage 1 as the scratch of the section sorts.
    std::unique_ptr<ArrayAndIndex_cls[]> temp(new (std::nothrow) ArrayAndIndex_cls[count > 0 ? count : 1]);
    if (!temp) {
        wxLogMessage("SortParallel: no memory for %d elements, sorting on one thread", count);
        std::sort(data, data + count);
        return;
    }

    // Stage 1: each section on its own.
    std::atomic<bool>* list = NewFlagList(kSections);
    for (int i = 0; i < kSections; ++i) {
        auto* pSort = new ThreadSortParallel_cls;
        pSort->SetParameters(data, temp.get());
        StartWorker(pSort, &list[i], ini[i], fin[i]);
    }
    WaitThreadsAndDeleteFlag(list, kSections, kSleepMs);

    // Stage 2: S0 with S1 and S2 with S3, from data to temp.
    list = NewFlagList(kSections);
    StartMergePair(temp.get(), data, ini[0], fin[0], ini[1], fin[1], &list[0]);
    StartMergePair(temp.get(), data, ini[2], fin[2], ini[3], fin[3], &list[2]);
    WaitThreadsAndDeleteFlag(list, kSections, kSleepMs);

    // Stage 3: the two halves, back from temp to data.
    list = NewFlagList(2);
    StartMergePair(data, temp.get(), ini[0], fin[1], ini[2], fin[3], list);
    WaitThreadsAndDeleteFlag(list, 2, kSleepMs);
}
