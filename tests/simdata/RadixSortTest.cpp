// The radix sort's skipped passes and float keys, and the sort by ID of a read on every thread count:
// IDs ascending, every array following its particle, duplicates dropped on both sides, and IDs so
// wide that key and position no longer share one word.
#include "RadixSort_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "ThreadParticleBinaryRead.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

namespace {

struct Item {
    uint64_t key;
    int order;
};

TEST(RadixSortTest, SkippedPassesStillEndInTheData) {
    // Keys that differ only in the highest digit: every pass but the last is skipped, so an odd
    // number of passes moves the data.
    for (int digits : {1, 2, 3}) {
        SCOPED_TRACE(digits);
        const int keyBits = digits * RadixSort_cls::kMaxDigitBits;
        std::vector<Item> data, scratch(100);
        for (int i = 0; i < 100; ++i)
            data.push_back({static_cast<uint64_t>(99 - i) << (keyBits - 7), i});
        RadixSort_cls::Sort(
            data.data(), scratch.data(), data.size(), keyBits, [](const Item& e) { return e.key; }, 2);
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(data[i].order, 99 - i);
    }
}

TEST(RadixSortTest, FloatKeysKeepTheOrderOfTheFloats) {
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<float> ascending = {-inf,   -3e38f, -1.5f, -1e-30f, -1e-45f, 0.0f,
                                          1e-45f, 1e-30f, 1.0f,  1.5f,    3e38f,   inf};
    for (size_t i = 1; i < ascending.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_LT(RadixSort_cls::FloatKey(ascending[i - 1]), RadixSort_cls::FloatKey(ascending[i]));
    }
    // The two zeros compare equal as floats; the key puts -0 just below +0.
    EXPECT_EQ(RadixSort_cls::FloatKey(-0.0f) + 1, RadixSort_cls::FloatKey(0.0f));
    EXPECT_EQ(RadixSort_cls::BitWidth(0), 0);
    EXPECT_EQ(RadixSort_cls::BitWidth(1), 1);
    EXPECT_EQ(RadixSort_cls::BitWidth(255), 8);
    EXPECT_EQ(RadixSort_cls::BitWidth(~uint64_t(0)), 64);
}

// A reader over arrays of its own, as the read leaves them before the sort: position, type and
// size tell the particle's original place, so the test can follow every particle.
class SortFixture_cls {
public:
    explicit SortFixture_cls(const std::vector<long long>& ids, bool bLong, bool bBoth = false) {
        const size_t n = ids.size();
        xyz.resize(3 * n);
        size.resize(n);
        type.resize(n);
        for (size_t i = 0; i < n; ++i) {
            xyz[3 * i] = static_cast<float>(i);
            xyz[3 * i + 1] = static_cast<float>(i) + 0.25f;
            xyz[3 * i + 2] = -static_cast<float>(i);
            size[i] = static_cast<float>(i) * 0.5f;
            type[i] = static_cast<unsigned char>(i * 7);
        }
        reader.mNumber = static_cast<int>(n);
        reader.mXYZ = xyz.data();
        reader.mSize = size.data();
        reader.mType = type.data();
        if (!bLong || bBoth) {
            id.assign(ids.begin(), ids.end());
            reader.mID = id.data();
        }
        if (bLong || bBoth) {
            idLong = ids;
            reader.mIDLong = idLong.data();
        }
    }
    // The original place of the particle now at j, checked against every array.
    size_t Origin(size_t j) const {
        const size_t i = static_cast<size_t>(xyz[3 * j]);
        EXPECT_EQ(xyz[3 * j + 1], static_cast<float>(i) + 0.25f) << j;
        EXPECT_EQ(xyz[3 * j + 2], -static_cast<float>(i)) << j;
        EXPECT_EQ(size[j], static_cast<float>(i) * 0.5f) << j;
        EXPECT_EQ(type[j], static_cast<unsigned char>(i * 7)) << j;
        return i;
    }
    long long Id(size_t j) const { return reader.mID ? id[j] : idLong[j]; }

    ThreadParticleBinaryRead reader;
    std::vector<float> xyz, size;
    std::vector<unsigned char> type;
    std::vector<int> id;
    std::vector<long long> idLong;
};

// What the sort must give: the multiset of kept IDs, ascending, each with its own particle.
void ExpectSortedByID(const SortFixture_cls& f, const std::vector<long long>& ids, bool bRemove) {
    std::map<long long, int> counts;
    for (long long v : ids)
        ++counts[v];
    std::vector<long long> kept;
    for (const auto& [v, c] : counts)
        if (!bRemove || c == 1)
            kept.insert(kept.end(), c, v);
    ASSERT_EQ(f.reader.mNumber, static_cast<int>(kept.size()));
    std::vector<int> seen(ids.size(), 0);
    for (size_t j = 0; j < kept.size(); ++j) {
        ASSERT_EQ(f.Id(j), kept[j]) << j;
        const size_t i = f.Origin(j);
        ASSERT_LT(i, ids.size());
        ASSERT_EQ(ids[i], kept[j]) << "particle " << i << " carried to " << j;
        ASSERT_EQ(++seen[i], 1) << "particle " << i << " twice";
        if (f.reader.mID && f.reader.mIDLong) {
            ASSERT_EQ(f.idLong[j], ids[i]) << "the second ID array follows too";
        }
    }
}

TEST(SortDataByIDTest, ShuffledIDsOnEveryThreadCount) {
    LogCapture_cls log;
    std::mt19937_64 rng(11);
    struct Case {
        const char* name;
        long long lowest;
        long long span; // IDs drawn from lowest .. lowest + span
        bool bLong;
        bool bBoth;
    } cases[] = {
        {"int IDs, key and position in one word", 0, 1000000, false, false},
        {"negative int IDs", -50000, 60000, false, false},
        {"int IDs with a long column that follows", 5, 1000, false, true},
        {"long IDs beyond 32 bits", 1LL << 40, 1LL << 36, true, false},
        {"long IDs over the whole range: pairs", LLONG_MIN, -1, true, false},
    };
    for (const Case& c : cases) {
        for (int threads : {1, 2, 3}) {
            for (bool bRemove : {false, true}) {
                SCOPED_TRACE(testing::Message() << c.name << ", " << threads << " threads, "
                                                << (bRemove ? "removing duplicates" : "keeping duplicates"));
                FixedThreads_cls fixed(threads);
                const size_t n = 30011;
                std::vector<long long> ids(n);
                for (size_t i = 0; i < n; ++i) {
                    const uint64_t r = c.span < 0 ? rng() : rng() % static_cast<uint64_t>(c.span);
                    ids[i] = static_cast<long long>(static_cast<uint64_t>(c.lowest) + r);
                }
                // Some duplicates, a pair and a triple, wherever they fall.
                ids[17] = ids[29000];
                ids[100] = ids[200] = ids[300];
                SortFixture_cls f(ids, c.bLong, c.bBoth);
                f.reader.SortDataByID(true, bRemove);
                ExpectSortedByID(f, ids, bRemove);
            }
        }
    }
}

} // namespace
