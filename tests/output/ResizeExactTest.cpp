#include "ImageResample_cls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {
// Resize against the definition of each output sample, GetAverage over its source rectangle:
// every sample must be the very same value (bit for bit for floats), since files must not change
// with the speed of the resampling.
template <class T> void ExpectResizeIsTheAverage(int side, int channels, int width, int height) {
    std::mt19937 rng(static_cast<unsigned>(side * 1000 + width * 10 + channels));
    std::vector<T> vSource(static_cast<size_t>(side) * side * channels);
    for (T& v : vSource)
        v = static_cast<T>(std::is_floating_point<T>::value ? (rng() % 100000) / 3.7e4 : rng() % 256);
    std::vector<T> vOut(static_cast<size_t>(width) * height * channels);
    ImageResample_cls::Resize(vSource.data(), side, channels, width, height, vOut.data());
    int wrong = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double x0, y0, x1, y1;
            ImageResample_cls::GetSourceRect(side, width, height, x, y, x0, y0, x1, y1);
            for (int c = 0; c < channels; ++c) {
                const double average =
                    ImageResample_cls::GetAverage(vSource.data(), side, channels, c, x0, y0, x1, y1);
                const T expect = std::is_floating_point<T>::value ? static_cast<T>(average)
                                                                  : static_cast<T>(std::lround(average));
                const T got = vOut[(static_cast<size_t>(y) * width + x) * channels + c];
                if (!(got == expect) && ++wrong <= 3)
                    ADD_FAILURE() << "pixel " << x << "," << y << " channel " << c << ": " << +got
                                  << " instead of " << +expect;
            }
        }
    }
    EXPECT_EQ(wrong, 0);
}
} // namespace

TEST(ResizeExactTest, EverySampleIsTheAverageOfItsRectangle) {
    struct Case_cls {
        int side, channels, width, height;
    };
    // Wider and taller than square, shrinking and enlarging, sizes that do not divide the side.
    const Case_cls cases[] = {{64, 3, 40, 23},   {64, 4, 23, 40}, {64, 3, 64, 64},
                              {32, 4, 77, 45},   {48, 3, 7, 5},   {50, 4, 50, 3},
                              {16, 3, 100, 100}, {64, 4, 63, 63}, {40, 1, 30, 17}};
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.side << " -> " << c.width << "x" << c.height << ", " << c.channels << " channels");
        ExpectResizeIsTheAverage<uint8_t>(c.side, c.channels, c.width, c.height);
        ExpectResizeIsTheAverage<float>(c.side, c.channels, c.width, c.height);
    }
}
