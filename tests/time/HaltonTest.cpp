#include "Halton_cls.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(HaltonTest, RadicalInverseMirrorsTheDigits) {
    struct Case_cls {
        int i, base;
        double expected;
    };
    const Case_cls cases[] = {
        {1, 2, 0.5},      {2, 2, 0.25},     {3, 2, 0.75},     {1, 3, 1.0 / 3}, {4, 3, 4.0 / 9},
        {7, 7, 1.0 / 49}, {8, 7, 8.0 / 49}, {6, 5, 6.0 / 25}, {0, 7, 0.0},     {12, 5, 2.0 / 5 + 2.0 / 25}};
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << c.i << " in base " << c.base);
        EXPECT_NEAR(Halton_cls::RadicalInverse(c.i, c.base), c.expected, 1e-12);
    }
}

TEST(HaltonTest, TablesHoldThePointsInsideTheUnitBall) {
    const Halton_cls halton;
    // The first points of the bases 7, 3, 5, mapped to -1 .. 1, all inside the ball; every entry is
    // inside it.
    const double first[3][3] = {
        {-5.0 / 7, -1.0 / 3, -3.0 / 5}, {-3.0 / 7, 1.0 / 3, -1.0 / 5}, {-1.0 / 7, -7.0 / 9, 1.0 / 5}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_FLOAT_EQ(halton.GetX(i), static_cast<float>(first[i][0]));
        EXPECT_FLOAT_EQ(halton.GetY(i), static_cast<float>(first[i][1]));
        EXPECT_FLOAT_EQ(halton.GetZ(i), static_cast<float>(first[i][2]));
    }
    for (int i = 0; i < Halton_cls::msTableSize; ++i) {
        const double r2 = halton.GetX(i) * halton.GetX(i) + halton.GetY(i) * halton.GetY(i) +
                          halton.GetZ(i) * halton.GetZ(i);
        ASSERT_LE(r2, 1.0 + 1e-6) << i;
    }
    // Indices wrap modulo 256, negative ones too.
    EXPECT_EQ(halton.GetX(256 + 5), halton.GetX(5));
    EXPECT_EQ(halton.GetY(-1), halton.GetY(255));
    EXPECT_EQ(halton.GetZ(512), halton.GetZ(0));
}
