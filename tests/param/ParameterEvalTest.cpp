// Evaluation of one channel: values on, between, within the tolerance of and outside the keys,
// for every key type, with and without extrapolation and with the slope cache.
#include "AllocCounter.h"
#include "ParamFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

Parameter_cls Channel(std::vector<KeyFrame_cls> keys, bool bExtrapolate = false, bool bTimeDepend = true) {
    Parameter_cls param(nullptr, "x", 0);
    param.mVCKey = std::move(keys);
    param.mCTimeDepend.SetBodyFromData(wxString(bTimeDepend ? "1" : "0"));
    param.mCExtrapolate.SetBodyFromData(wxString(bExtrapolate ? "1" : "0"));
    return param;
}

// The Hermite cubic written out once more, for expected values.
double Hermite(double y0, double y1, double dx, double m0, double m1, double u) {
    const double a = dx * m0;
    const double b = dx * m1;
    return (2 * y0 + a - 2 * y1 + b) * u * u * u + (-3 * y0 - 2 * a + 3 * y1 - b) * u * u + a * u + y0;
}

constexpr double TOL = 1e-6;

} // namespace

TEST(ParameterEval, OneKeyGivesItsValueEverywhere) {
    for (long type : {0L, 1L, 2L, 5L}) {
        for (bool bExtrapolate : {false, true}) {
            for (bool bTimeDepend : {false, true}) {
                SCOPED_TRACE(testing::Message() << "type " << type << " extrapolate " << bExtrapolate
                                                << " time dependent " << bTimeDepend);
                Parameter_cls param = Channel({Key(0.4, 7.5, type, 0.5)}, bExtrapolate, bTimeDepend);
                for (double t : {-3.0, 0.0, 0.4 - 0.5 * TOL, 0.4, 0.4 + 0.5 * TOL, 0.7, 12.0})
                    EXPECT_EQ(param.GetValue(t), 7.5) << "t " << t;
                param.PrecalcBegin();
                for (double t : {-3.0, 0.4, 12.0})
                    EXPECT_EQ(param.GetValue(t), 7.5) << "precalculated, t " << t;
            }
        }
    }
}

// Values of small channels on, between and outside their keys, directly and with the slope cache.
TEST(ParameterEval, ValuesBetweenAndOutsideTheKeys) {
    struct Case {
        const char* name;
        std::vector<KeyFrame_cls> keys;
        bool bExtrapolate, bTimeDepend;
        std::vector<std::pair<double, double>> values; // t, value
    };
    const Case cases[] = {
        {"constant: the first key",
         {Key(0, 3), Key(1, 9)},
         true,
         false,
         {{-1, 3}, {0, 3}, {0.5, 3}, {1, 3}, {2, 3}}},
        // Within the tolerance before a key the key's value, not an interpolation; outside the
        // range without Extrapolate= the end keys.
        {"linear",
         {Key(0, 0), Key(1, 10), Key(2, 4)},
         false,
         true,
         {{0.25, 2.5}, {1.5, 7}, {1 - 0.5 * TOL, 10}, {-5, 0}, {9, 4}}},
        {"two keys within the tolerance: the later",
         {Key(0, 0), Key(0.5, 1), Key(0.5 + 0.5 * TOL, 2), Key(1, 3)},
         false,
         true,
         {{0.5, 2}}},
        {"step holds until the next key, no extrapolation either side",
         {Key(0, 1, 0), Key(1, 5, 0)},
         true,
         true,
         {{0.3, 1}, {0.999, 1}, {1, 5}, {3, 5}, {-3, 1}}},
        {"linear extrapolation both ways", {Key(0, 0), Key(1, 2)}, true, true, {{2, 4}, {-1, -2}}},
        {"no extrapolation", {Key(0, 0), Key(1, 2)}, false, true, {{2, 2}, {-1, 0}}},
        // Before the first key the forward slope times the first key's ease; after the last the
        // backward slope times the last key's ease.
        {"Hermite extrapolation uses the ease once",
         {Key(0, 0, 2, 0.5), Key(1, 2, 2, 0.25)},
         true,
         true,
         {{-1, -1}, {2, 2.5}}},
        {"unknown types: zero between keys, central slopes outside",
         {Key(0, 1, 5), Key(1, 3, 5), Key(2, 9, 5)},
         true,
         true,
         {{0.5, 0}, {1.5, 0}, {3, 15}, {-1, -1}}},
        {"no keys: zero", {}, true, true, {{0.5, 0}, {-1, 0}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Parameter_cls param = Channel(c.keys, c.bExtrapolate, c.bTimeDepend);
        for (bool bPrecalc : {false, true}) {
            if (bPrecalc)
                param.PrecalcBegin();
            EXPECT_EQ(param.IsPrecalculated(), bPrecalc);
            for (const auto& [t, value] : c.values)
                EXPECT_DOUBLE_EQ(param.GetValue(t), value) << "t " << t << (bPrecalc ? " precalculated" : "");
        }
    }
    Parameter_cls linear = Channel({Key(0, 0), Key(1, 10)});
    EXPECT_NEAR(linear.GetValue(1 - 2 * TOL), 10.0 - 20 * TOL, 1e-9); // just outside the tolerance
    EXPECT_NE(linear.GetValue(1 - 2 * TOL), 10.0);
    Parameter_cls both = Channel({Key(0, 0), Key(1, 2)}, true);
    EXPECT_DOUBLE_EQ(both.GetValueExtrapolate1(2), 4.0);
    EXPECT_DOUBLE_EQ(both.GetValueExtrapolate0(-1), -2.0);
    Parameter_cls empty = Channel({}, true);
    EXPECT_EQ(empty.GetValueExtrapolate0(1), 0.0);
    EXPECT_EQ(empty.GetValueExtrapolate1(1), 0.0);
    EXPECT_EQ(empty.GetControllingKey(0.5), -1);
    EXPECT_EQ(Channel({Key(0, 0), Key(0.5, 1), Key(0.5 + 0.5 * TOL, 2)}).GetControllingKey(0.5), 2);
}

TEST(ParameterEval, OnKeyAndWithinToleranceGiveTheKeyValueForEveryType) {
    for (long type : {0L, 1L, 2L, 5L}) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        Parameter_cls param =
            Channel({Key(0, 1, type, 0.5), Key(0.5, 4, type, 0.5), Key(1, -2, type, 0.5)}, true);
        for (bool bPrecalc : {false, true}) {
            SCOPED_TRACE(bPrecalc ? "precalculated" : "direct");
            if (bPrecalc)
                param.PrecalcBegin();
            for (const KeyFrame_cls& key : param.mVCKey) {
                EXPECT_EQ(param.GetValue(key.mX), key.mValue);
                EXPECT_EQ(param.GetValue(key.mX - 0.9 * TOL), key.mValue);
                EXPECT_EQ(param.GetValue(key.mX + 0.9 * TOL), key.mValue);
            }
            param.PrecalcEnd();
        }
    }
}

TEST(ParameterEval, HermiteSlopesAreOneSidedAndTheEaseEntersTwice) {
    Parameter_cls param = Channel({Key(0, 0, 2, 1.0), Key(1, 1, 2, 1.0), Key(3, 0, 2, 1.0)});
    // Key 0: forward slope 1; key 1: forward slope -0.5 (not the central difference).
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(0), 1.0);
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(1), -0.5);
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(2), 0.0); // last key without Extrapolate=
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(0, 1, 1, 1.0, -0.5, 0.5));
    EXPECT_DOUBLE_EQ(param.GetValue(2.0), Hermite(1, 0, 2, -0.5, 0.0, 0.5));

    // An ease of 0.5 scales the slope by 0.25.
    param.mVCKey[0].mEaseFactor = 0.5;
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(0), 0.5);
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(0, 1, 1, 0.25, -0.5, 0.5));
    // Ease 0 is flat.
    param.mVCKey[0].mEaseFactor = 0.0;
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(0, 1, 1, 0.0, -0.5, 0.5));
    // A step key at the far end gives no slope there.
    param.mVCKey[0].mEaseFactor = 1.0;
    param.mVCKey[1].mType = 0;
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(0, 1, 1, 1.0, 0.0, 0.5));
    // A linear key at the far end: its ease factor counts as 1.
    param.mVCKey[1].mType = 1;
    param.mVCKey[1].mEaseFactor = 0.3;
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(0, 1, 1, 1.0, -0.5, 0.5));
}

TEST(ParameterEval, UnknownTypesUseCentralSlopes) {
    Parameter_cls param = Channel({Key(0, 1, 5), Key(1, 3, 5), Key(2, 9, 5)}, true);
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(0), 2.0);
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(1), 4.0); // central
    EXPECT_DOUBLE_EQ(param.GetKeyVelocityAuto(2), 6.0);
    // As the far end of a Hermite segment its stored ease applies.
    param.mVCKey[0].mType = 2;
    param.mVCKey[1].mEaseFactor = 0.5;
    EXPECT_DOUBLE_EQ(param.GetValue(0.5), Hermite(1, 3, 1, 2.0, 4.0 * 0.5, 0.5));
}

TEST(ParameterEval, PrecalculatedSlopesGiveTheSameValuesAndIgnoreLaterEdits) {
    Parameter_cls param = Channel({Key(0, 0, 2, 1), Key(0.2, 3, 2, 0.5), Key(0.45, -1, 1), Key(0.6, 2, 0),
                                   Key(0.8, 5, 2, 0), Key(1, 1, 5)},
                                  true);
    std::vector<double> direct;
    for (int i = -20; i <= 140; ++i)
        direct.push_back(param.GetValue(i * 0.01));
    param.PrecalcBegin();
    EXPECT_TRUE(param.IsPrecalculated());
    for (int i = -20; i <= 140; ++i)
        EXPECT_EQ(param.GetValue(i * 0.01), direct[i + 20]) << "t " << i * 0.01;
    // An edit between the two is not seen by the slopes: key 2's value enters the segment
    // from key 0 only through the slope of key 1.
    const double before = param.GetValue(0.1);
    param.mVCKey[2].mValue = 7.0;
    EXPECT_EQ(param.GetValue(0.1), before);
    param.PrecalcEnd();
    EXPECT_NE(param.GetValue(0.1), before);
}

TEST(ParameterEval, PrecalculatedSearchMatchesTheScanAtEveryTolerance) {
    // Sorted keys with near duplicates; times on, within, at and beyond the tolerance of each.
    std::vector<KeyFrame_cls> keys;
    unsigned seed = 12345;
    auto next = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 8) / double(1u << 24);
    };
    double x = -0.2;
    for (int i = 0; i < 40; ++i) {
        x += (i % 7 == 3) ? 0.4 * TOL : 0.05 * next();
        keys.push_back(Key(x, next() * 10 - 5, i % 6, next()));
    }
    for (bool bExtrapolate : {false, true}) {
        Parameter_cls scan = Channel(keys, bExtrapolate);
        Parameter_cls search = Channel(keys, bExtrapolate);
        search.PrecalcBegin();
        ASSERT_TRUE(search.mbPrecalcSorted);
        for (const KeyFrame_cls& key : keys) {
            for (double d : {-2.0, -1.0, -0.999, -0.5, 0.0, 0.5, 0.999, 1.0, 2.0}) {
                const double t = key.mX + d * TOL;
                EXPECT_EQ(search.GetValue(t), scan.GetValue(t)) << "t " << t;
            }
        }
        for (double t = -1.0; t < 2.5; t += 0.0173)
            EXPECT_EQ(search.GetValue(t), scan.GetValue(t)) << "t " << t;
    }
    // Keys out of order are scanned even while precalculated.
    std::swap(keys[3], keys[9]);
    Parameter_cls unsorted = Channel(keys, true);
    Parameter_cls reference = Channel(keys, true);
    unsorted.PrecalcBegin();
    EXPECT_FALSE(unsorted.mbPrecalcSorted);
    for (double t = -0.5; t < 2.5; t += 0.0173)
        EXPECT_EQ(unsorted.GetValue(t), reference.GetValue(t)) << "t " << t;
}

TEST(ParameterEval, GetValueDoesNotAllocateWhilePrecalculated) {
    std::vector<KeyFrame_cls> keys;
    for (int i = 0; i < 50; ++i)
        keys.push_back(Key(i * 0.02, std::sin(i), i % 3, 0.7));
    Parameter_cls param = Channel(keys, true);
    param.PrecalcBegin();
    double sum = 0.0;
    const long before = AllocCounter::Count();
    for (int i = -100; i < 1200; ++i)
        sum += param.GetValue(i * 0.001);
    EXPECT_EQ(AllocCounter::Count(), before);
    param.PrecalcEnd();
    EXPECT_TRUE(std::isfinite(sum));
}

TEST(ParameterEval, KeyLookUp) {
    Parameter_cls param = Channel({Key(0.1, 0), Key(0.4, 1), Key(0.7, 2)});
    EXPECT_EQ(param.GetControllingKey(0.05), -1);
    EXPECT_EQ(param.GetControllingKey(0.1 - 0.5 * TOL), 0);
    EXPECT_EQ(param.GetControllingKey(0.39), 0);
    EXPECT_EQ(param.GetControllingKey(0.4 - 0.5 * TOL), 1);
    EXPECT_EQ(param.GetControllingKey(5), 2);
    EXPECT_EQ(param.GetKeyIndex(0.4 + 0.5 * TOL), 1);
    EXPECT_EQ(param.GetKeyIndex(0.4 + 2 * TOL), -1);

    struct Case {
        int direction;
        double t;
        int expected;
    };
    for (const Case& c : {Case{1, 0.0, 0}, Case{-1, 0.0, -1}, Case{1, 0.1, 1}, Case{-1, 0.1, -1},
                          Case{1, 0.25, 1}, Case{-1, 0.25, 0}, Case{1, 0.4, 2}, Case{-1, 0.4, 0},
                          Case{1, 0.7, 3}, Case{1, 0.9, 3}, Case{-1, 0.9, 2}}) {
        SCOPED_TRACE(testing::Message() << "direction " << c.direction << " t " << c.t);
        EXPECT_EQ(param.GetAdjuscentKeyIndex(c.direction, c.t), c.expected);
    }
    EXPECT_EQ(param.GetKeyXNormalizeEX(-1), 0.0);
    EXPECT_EQ(param.GetKeyXNormalizeEX(1), 0.4);
    EXPECT_EQ(param.GetKeyXNormalizeEX(3), 1.0);
}

TEST(ParameterEval, SelectionMarksTheFirstHitActive) {
    Parameter_cls param = Channel({Key(0.1, 0), Key(0.4, 1), Key(0.41, 2)});
    EXPECT_EQ(param.SelectKey(0.405, true, false, 0.01), 1);
    EXPECT_TRUE(param.mVCKey[1].mbSelected);
    EXPECT_TRUE(param.mVCKey[2].mbSelected);
    EXPECT_EQ(param.GetActiveKeyIndex(), 1);
    EXPECT_EQ(param.GetSelectedKeyNum(), 2);
    // The bounds of the tolerance are strict.
    EXPECT_EQ(param.SelectKey(0.2, true, false, 0.1), 0);
    EXPECT_FALSE(param.IsSelectedKeyExist());
    EXPECT_EQ(param.GetActiveKeyIndex(), 1); // a miss leaves the active key
    // Adding keeps the earlier selection.
    param.SelectKeyByIndex(0, true, false, 0.001);
    param.SelectKeyByIndex(2, true, true, 0.001);
    EXPECT_EQ(param.GetSelectedKeyNum(), 2);
    EXPECT_FALSE(param.mVCKey[1].mbSelected);
    EXPECT_EQ(param.GetActiveKeyIndex(), 2);
    param.SelectKeyAll(true);
    EXPECT_EQ(param.GetSelectedKeyNum(), 3);
    param.DeselectKey();
    param.DeactivateKeys();
    EXPECT_EQ(param.GetSelectedKeyNum(), 0);
    EXPECT_EQ(param.GetActiveKeyIndex(), -1);
}

TEST(ParameterEval, FlipMirrorsOnTheUnitInterval) {
    Parameter_cls param = Channel({Key(0, 1), Key(0.25, 2), Key(1, 3)});
    param.Flip();
    ASSERT_EQ(param.GetKeyNum(), 3);
    EXPECT_EQ(param.mVCKey[0].mX, 0.0);
    EXPECT_EQ(param.mVCKey[0].mValue, 3.0);
    EXPECT_EQ(param.mVCKey[1].mX, 0.75);
    EXPECT_EQ(param.mVCKey[2].mValue, 1.0);
}
