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

TEST(HaltonTest, TablesHoldTheFirstPointsInsideTheUnitBall) {
    const Halton_cls halton;
    // Recompute the kept points in order, and compare entry by entry.
    int kept = 0;
    for (int i = 1; kept < Halton_cls::msTableSize; ++i) {
        const double x = Halton_cls::RadicalInverse(i, 7) * 2 - 1;
        const double y = Halton_cls::RadicalInverse(i, 3) * 2 - 1;
        const double z = Halton_cls::RadicalInverse(i, 5) * 2 - 1;
        if (x * x + y * y + z * z > 1.0)
            continue;
        SCOPED_TRACE(kept);
        ASSERT_FLOAT_EQ(halton.GetX(kept), static_cast<float>(x));
        ASSERT_FLOAT_EQ(halton.GetY(kept), static_cast<float>(y));
        ASSERT_FLOAT_EQ(halton.GetZ(kept), static_cast<float>(z));
        ++kept;
    }
    // Point 1 is (1/7, 1/3, 1/5) * 2 - 1, inside; every entry is inside the ball.
    EXPECT_FLOAT_EQ(halton.GetX(0), static_cast<float>(2.0 / 7 - 1));
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
