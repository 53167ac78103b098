// A stable least-significant-digit radix sort of elements by an unsigned integer key, each pass
// shared by a few threads: the sort by ID at the end of a read, and the sections of the parallel
// sort of draw keys. It needs a scratch array as large as the data and no comparisons at all.
#pragma once

#include "ParallelRun_cls.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

class RadixSort_cls {
public:
    // Bits needed to hold v: 0 for 0.
    static int BitWidth(uint64_t v) {
        int bits = 0;
        for (; v; v >>= 1)
            ++bits;
        return bits;
    }
    // A float as an unsigned key of the same order: negatives reversed below the positives. -0 sorts
    // just below +0, which compares equal to it, and NaNs go to the two ends.
    static uint32_t FloatKey(float f) {
        uint32_t u;
        std::memcpy(&u, &f, sizeof u);
        return (u & 0x80000000u) ? ~u : (u | 0x80000000u);
    }

    // Sorts data[0 .. n) ascending by key(element), an unsigned value below 2^keyBits; elements of
    // equal keys keep their order. scratch holds n elements; its contents are left unspecified.
    // threadCount threads share every pass.
    template <typename T, typename KeyFn>
    static void Sort(T* data, T* scratch, size_t n, int keyBits, KeyFn key, int threadCount);

    // Digits of at most this many bits: 1024 buckets stay in the first two cache levels.
    static constexpr int kMaxDigitBits = 10;
};

template <typename T, typename KeyFn>
void RadixSort_cls::Sort(T* data, T* scratch, size_t n, int keyBits, KeyFn key, int threadCount) {
    if (n < 2 || keyBits <= 0)
        return;
    const int threads = std::max(1, threadCount);
    const int passes = (keyBits + kMaxDigitBits - 1) / kMaxDigitBits;
    const int digitBits = (keyBits + passes - 1) / passes;
    const size_t buckets = size_t(1) << digitBits;
    const uint64_t mask = buckets - 1;
    // Per thread and bucket: first the count, then the next output position.
    std::vector<size_t> slots(static_cast<size_t>(threads) * buckets);
    T* src = data;
    T* dst = scratch;
    for (int pass = 0; pass < passes; ++pass) {
        const int shift = pass * digitBits;
        auto digit = [&](const T& e) {
            return static_cast<size_t>((static_cast<uint64_t>(key(e)) >> shift) & mask);
        };
        std::fill(slots.begin(), slots.end(), 0);
        ParallelRun_cls::Run(threads, [&](int t) {
            size_t ini, fin;
            ParallelRun_cls::GetShare(ini, fin, t, threads, n);
            size_t* count = &slots[static_cast<size_t>(t) * buckets];
            for (size_t i = ini; i < fin; ++i)
                ++count[digit(src[i])];
        });
        // A digit that every element shares moves nothing: the pass is skipped. The first bucket
        // that holds anything tells.
        bool bTrivial = false;
        for (size_t b = 0; b < buckets; ++b) {
            size_t total = 0;
            for (int t = 0; t < threads; ++t)
                total += slots[static_cast<size_t>(t) * buckets + b];
            if (total > 0) {
                bTrivial = total == n;
                break;
            }
        }
        if (bTrivial)
            continue;
        // Bucket by bucket, and within a bucket thread by thread, so the order of equal digits stays.
        size_t sum = 0;
        for (size_t b = 0; b < buckets; ++b)
            for (int t = 0; t < threads; ++t) {
                size_t& slot = slots[static_cast<size_t>(t) * buckets + b];
                const size_t c = slot;
                slot = sum;
                sum += c;
            }
        ParallelRun_cls::Run(threads, [&](int t) {
            size_t ini, fin;
            ParallelRun_cls::GetShare(ini, fin, t, threads, n);
            size_t* next = &slots[static_cast<size_t>(t) * buckets];
            for (size_t i = ini; i < fin; ++i)
                dst[next[digit(src[i])]++] = src[i];
        });
        std::swap(src, dst);
    }
    if (src != data)
        ParallelRun_cls::Run(threads, [&](int t) {
            size_t ini, fin;
            ParallelRun_cls::GetShare(ini, fin, t, threads, n);
            std::copy(src + ini, src + fin, data + ini);
        });
}
