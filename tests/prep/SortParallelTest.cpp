// The four-section parallel sort and its two-ended merge.
#include "SortParallel_cls.h"
#include "ThreadSortMergeInv_cls.h"
#include "ThreadSortMergeOrd_cls.h"

#include <gtest/gtest.h>
#include <wx/string.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

std::vector<ArrayAndIndex_cls> MakeKeys(int count, int distinct, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> dist(0, distinct - 1);
    std::vector<ArrayAndIndex_cls> v(count);
    for (int i = 0; i < count; ++i)
        v[i] = ArrayAndIndex_cls{i, static_cast<float>(dist(rng)) * 0.5f - 3.0f};
    return v;
}

// Sorted, and each original element exactly once with its own key.
void ExpectSortedPermutation(const std::vector<ArrayAndIndex_cls>& sorted,
                             const std::vector<ArrayAndIndex_cls>& original) {
    ASSERT_EQ(sorted.size(), original.size());
    std::vector<int> seen(original.size(), 0);
    for (size_t k = 0; k < sorted.size(); ++k) {
        const ArrayAndIndex_cls& e = sorted[k];
        ASSERT_GE(e.mIndex, 0);
        ASSERT_LT(e.mIndex, static_cast<int>(original.size()));
        ++seen[e.mIndex];
        EXPECT_EQ(e.mValue, original[e.mIndex].mValue) << "at " << k;
        if (k > 0) {
            ASSERT_FALSE(e.mValue < sorted[k - 1].mValue) << "out of order at " << k;
        }
    }
    for (size_t i = 0; i < seen.size(); ++i)
        ASSERT_EQ(seen[i], 1) << "element " << i << " appears " << seen[i] << " times";
}

TEST(SortParallelTest, AnyInputBecomesASortedPermutationOfItself) {
    std::vector<std::pair<wxString, std::vector<ArrayAndIndex_cls>>> inputs;
    for (int count : {0, 1, 2, 3, 4, 5, 6, 7, 9, 13, 101, 1002, 65537})
        for (int distinct : {1, 3, 1000000})
            inputs.emplace_back(wxString::Format("%d elements, %d distinct keys", count, distinct),
                                MakeKeys(count, distinct, count * 31u + distinct));
    inputs.emplace_back("large", MakeKeys(1000003, 5000, 7));
    for (bool reversed : {false, true}) {
        std::vector<ArrayAndIndex_cls> v(10007);
        for (int i = 0; i < 10007; ++i)
            v[i] = ArrayAndIndex_cls{i, static_cast<float>(reversed ? -i : i)};
        inputs.emplace_back(reversed ? "reversed" : "already sorted", v);
    }
    SortParallel_cls sorter;
    for (const auto& [strName, original] : inputs) {
        SCOPED_TRACE(strName.ToStdString());
        std::vector<ArrayAndIndex_cls> data = original;
        sorter.SortParallel(data.data(), static_cast<int>(data.size()));
        ExpectSortedPermutation(data, original);
    }
}

// Both halves of one merge into a fresh target.
std::vector<ArrayAndIndex_cls> MergeBothEnds(const std::vector<ArrayAndIndex_cls>& source, int split,
                                             int block) {
    const int count = static_cast<int>(source.size());
    std::vector<ArrayAndIndex_cls> target(count, ArrayAndIndex_cls{-1, -99.0f});
    ThreadSortMergeOrd_cls::MergeFront(target.data(), source.data(), 0, split, split, count, block);
    ThreadSortMergeInv_cls::MergeBack(target.data(), source.data(), 0, split, split, count, block);
    return target;
}

std::vector<int> Indices(const std::vector<ArrayAndIndex_cls>& v) {
    std::vector<int> out;
    for (const ArrayAndIndex_cls& e : v)
        out.push_back(e.mIndex);
    return out;
}

TEST(SortMergeTest, HalvesMeetWithoutASeam) {
    std::mt19937 rng(99);
    for (int trial = 0; trial < 300; ++trial) {
        const int lenA = static_cast<int>(rng() % 40);
        const int lenB = static_cast<int>(rng() % 40);
        const int distinct = 1 + static_cast<int>(rng() % 6);
        std::vector<ArrayAndIndex_cls> source;
        for (int i = 0; i < lenA + lenB; ++i)
            source.push_back(ArrayAndIndex_cls{i, static_cast<float>(rng() % distinct)});
        std::stable_sort(source.begin(), source.begin() + lenA);
        std::stable_sort(source.begin() + lenA, source.end());

        // std::merge prefers its first range on ties: give it B first.
        std::vector<ArrayAndIndex_cls> expected(lenA + lenB);
        std::merge(source.begin() + lenA, source.end(), source.begin(), source.begin() + lenA,
                   expected.begin());
        for (int block : {1, 2, 5}) {
            SCOPED_TRACE(testing::Message() << "A " << lenA << ", B " << lenB << ", block " << block);
            ASSERT_EQ(Indices(MergeBothEnds(source, lenA, block)), Indices(expected));
            // The front half writes only the first lenA places, the back half the rest.
            std::vector<ArrayAndIndex_cls> front(lenA + lenB, ArrayAndIndex_cls{-1, 0.0f});
            ThreadSortMergeOrd_cls::MergeFront(front.data(), source.data(), 0, lenA, lenA, lenA + lenB,
                                               block);
            for (int k = 0; k < lenA + lenB; ++k)
                ASSERT_EQ(front[k].mIndex == -1, k >= lenA) << k;
        }
    }
    EXPECT_TRUE(MergeBothEnds({}, 0, 1).empty());
}

TEST(SortMergeTest, MergeWorkersOnThreads) {
    // Runs at an offset inside a larger array, merged by the two worker classes on their threads.
    std::vector<ArrayAndIndex_cls> source(20, ArrayAndIndex_cls{-1, 0.0f});
    for (int i = 0; i < 6; ++i)
        source[4 + i] = ArrayAndIndex_cls{i, static_cast<float>(i * 2)}; // A at 4 .. 10
    for (int i = 0; i < 5; ++i)
        source[10 + i] = ArrayAndIndex_cls{100 + i, static_cast<float>(i * 3)}; // B at 10 .. 15
    std::vector<ArrayAndIndex_cls> target(20, ArrayAndIndex_cls{-7, 0.0f});

    std::atomic<bool> flags[2] = {};
    auto* pOrd = new ThreadSortMergeOrd_cls;
    pOrd->SetParameters(target.data(), source.data(), 4, 10, 10, 15, 1);
    ThreadCommon_cls::StartWorker(pOrd, &flags[0], 4, 10);
    auto* pInv = new ThreadSortMergeInv_cls;
    pInv->SetParameters(target.data(), source.data(), 4, 10, 10, 15, 1);
    ThreadCommon_cls::StartWorker(pInv, &flags[1], 10, 15);
    ThreadCommon_cls::WaitThreadsNOTDeleteFlag(flags, 2, 1);

    // Keys A: 0 2 4 6 8 10, B: 0 3 6 9 12.
    const std::vector<int> merged = {100, 0, 1, 101, 2, 102, 3, 4, 103, 5, 104};
    for (int k = 0; k < 20; ++k) {
        SCOPED_TRACE(k);
        if (k >= 4 && k < 15)
            EXPECT_EQ(target[k].mIndex, merged[k - 4]);
        else
            EXPECT_EQ(target[k].mIndex, -7); // outside the runs nothing is written
    }
}

} // namespace
