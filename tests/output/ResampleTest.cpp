#include "HalfFloat_cls.h"
#include "ImageResample_cls.h"
#include "ImgSizeTemplate_cls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {
// A square of side s, one channel, value = 10 * row + column (rows bottom to top).
std::vector<float> Ramp(int side) {
    std::vector<float> v(static_cast<size_t>(side) * side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            v[static_cast<size_t>(y) * side + x] = static_cast<float>(10 * y + x);
    return v;
}
} // namespace

TEST(ResampleTest, SourceRectTakesTheMiddleBandOfTheSquare) {
    struct Case_cls {
        int side, w, h, x, y;
        double x0, y0, x1, y1;
    };
    const Case_cls cases[] = {
        // Wider than tall: full width, rows from (y / w + (1 - h / w) / 2) * S.
        {8, 4, 2, 0, 0, 0.0, 2.0, 2.0, 4.0},
        {8, 4, 2, 3, 1, 6.0, 4.0, 8.0, 6.0},
        // Taller than wide: full height, the middle columns.
        {8, 2, 4, 0, 0, 2.0, 0.0, 4.0, 2.0},
        {8, 2, 4, 1, 3, 4.0, 6.0, 6.0, 8.0},
        // Square to square: cells of S / w.
        {6, 4, 4, 1, 2, 1.5, 3.0, 3.0, 4.5},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.side << " -> " << c.w << "x" << c.h << " at " << c.x << "," << c.y);
        double x0, y0, x1, y1;
        ImageResample_cls::GetSourceRect(c.side, c.w, c.h, c.x, c.y, x0, y0, x1, y1);
        EXPECT_DOUBLE_EQ(x0, c.x0);
        EXPECT_DOUBLE_EQ(y0, c.y0);
        EXPECT_DOUBLE_EQ(x1, c.x1);
        EXPECT_DOUBLE_EQ(y1, c.y1);
    }
}

TEST(ResampleTest, AverageWeighsPartlyCoveredRowsAndColumns) {
    const std::vector<float> v = Ramp(4);
    struct Case_cls {
        double x0, y0, x1, y1, expected;
    };
    const Case_cls cases[] = {
        {0, 0, 1, 1, 0.0},           // one whole pixel
        {1, 2, 2, 3, 21.0},          // another
        {0, 0, 2, 2, 5.5},           // 0, 1, 10, 11
        {0.5, 0, 1.5, 1, 0.5},       // half of column 0 and half of column 1
        {0, 0.75, 1, 1.75, 7.5},     // a quarter of row 0 (0) and three quarters of row 1 (10)
        {0.5, 0.5, 2, 1, 2.0 / 3.0}, // columns 0 and 1 weighted 0.5 and 1, half of row 0
        {3, 3, 4, 4, 33.0},          // the upper bound is clamped to S - 0.001 and stays in the last pixel
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x0 << "," << c.y0 << " - " << c.x1 << "," << c.y1);
        EXPECT_NEAR(ImageResample_cls::GetAverage(v.data(), 4, 1, 0, c.x0, c.y0, c.x1, c.y1), c.expected,
                    1e-9);
    }
}

TEST(ResampleTest, ResizeOfEightBitsRoundsTheExactAverages) {
    // 4x4 RGB, R = 10 * row + column, G = 255 - R, B = 7.
    std::vector<uint8_t> v(4 * 4 * 3);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) {
            uint8_t* p = &v[(y * 4 + x) * 3];
            p[0] = static_cast<uint8_t>(10 * y + x);
            p[1] = static_cast<uint8_t>(255 - p[0]);
            p[2] = 7;
        }
    // 2x1: the middle band is rows 1 and 2; each output pixel covers a 2x2 block.
    std::vector<uint8_t> out(2 * 1 * 3, 0);
    ImageResample_cls::Resize(v.data(), 4, 3, 2, 1, out.data());
    EXPECT_EQ(out[0], 16);           // (10 + 11 + 20 + 21) / 4 = 15.5, rounded
    EXPECT_EQ(out[1], 255 - 16 + 1); // 239.5 rounds to 240
    EXPECT_EQ(out[2], 7);
    // (12 + 13 + 22 + 23) / 4 would be 17.5, but the clamp of the upper bound to S - 0.001 takes a
    // little off the last column (13, 23), so it rounds down.
    EXPECT_EQ(out[3], 17);
    EXPECT_EQ(out[5], 7);
    // Enlarging 4 -> 8 square copies each pixel into 2x2.
    std::vector<uint8_t> big(8 * 8 * 3);
    ImageResample_cls::Resize(v.data(), 4, 3, 8, 8, big.data());
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            ASSERT_EQ(big[(y * 8 + x) * 3], 10 * (y / 2) + x / 2) << x << "," << y;
}

TEST(ResampleTest, ScanlineTakesEvenFileRowsFromTheFirstEye) {
    // Two flat eyes, 4x4 one channel: 100 and 200.
    const std::vector<float> a(16, 100.f), b(16, 200.f);
    std::vector<float> out(4 * 3, -1.f);
    ImageResample_cls::ResizeScanline(a.data(), b.data(), 4, 1, 4, 3, out.data());
    // Stored bottom to top: stored row 2 is file row 0 (first eye), row 1 file row 1, row 0 file row 2.
    for (int x = 0; x < 4; ++x) {
        EXPECT_FLOAT_EQ(out[2 * 4 + x], 100.f);
        EXPECT_FLOAT_EQ(out[1 * 4 + x], 200.f);
        EXPECT_FLOAT_EQ(out[0 * 4 + x], 100.f);
    }
}

TEST(HalfFloatTest, ConvertsAndRoundsToNearestEven) {
    struct Case_cls {
        float single;
        uint16_t half;
    };
    const Case_cls cases[] = {
        {0.f, 0x0000},
        {-0.f, 0x8000},
        {1.f, 0x3c00},
        {-2.f, 0xc000},
        {0.5f, 0x3800},
        {65504.f, 0x7bff},
        {65520.f, 0x7c00}, // rounds up to infinity
        {1e-8f, 0x0000},
        {5.9604645e-8f, 0x0001},  // smallest subnormal
        {6.1035156e-5f, 0x0400},  // smallest normal
        {1.00048828125f, 0x3c00}, // exactly halfway between 1 and the next half: to even
        {1.00146484375f, 0x3c02}, // halfway between 0x3c01 and 0x3c02: to even
        {0.333333f, 0x3555},
        {std::numeric_limits<float>::infinity(), 0x7c00},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << c.single);
        EXPECT_EQ(HalfFloat_cls::SingleToHalf(c.single), c.half);
    }
    // Every finite half survives the way back and forth, through the array entry points too.
    std::vector<uint16_t> vHalf;
    for (uint32_t h = 0; h < 0x10000; ++h)
        if ((h & 0x7c00) != 0x7c00)
            vHalf.push_back(static_cast<uint16_t>(h));
    std::vector<float> vSingle(vHalf.size());
    std::vector<uint16_t> vBack(vHalf.size());
    HalfFloat_cls::Half2Singles(vSingle.data(), vHalf.data(), static_cast<int>(vHalf.size()));
    HalfFloat_cls::Singles2Half(vBack.data(), vSingle.data(), static_cast<int>(vSingle.size()));
    EXPECT_EQ(vBack, vHalf);
    EXPECT_FLOAT_EQ(HalfFloat_cls::HalfToSingle(0x3555), 0.33325195f);
    EXPECT_TRUE(std::isnan(HalfFloat_cls::HalfToSingle(0x7e00)));
}

TEST(ImgSizeTemplateTest, TableAndLabels) {
    struct Case_cls {
        int group, index;
        long long w, h;
        const char* label;
    };
    const Case_cls cases[] = {{0, 1, 1024, 768, "1024x768"},
                              {1, 6, 640, 360, "640x360"},
                              {2, 4, 4096, 4096, "4096x4096"},
                              {3, 3, 4096, 2048, "4096x2048"}};
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << c.group << "/" << c.index);
        long long w = -1, h = -1;
        ImgSizeTemplate_cls::GetGeometryFromIndex(c.group, c.index, w, h);
        EXPECT_EQ(w, c.w);
        EXPECT_EQ(h, c.h);
        EXPECT_EQ(ImgSizeTemplate_cls::GetStrGeom(c.group, c.index), c.label);
    }
    // "Custom" and the outside leave the sizes alone.
    for (auto gi : {std::pair<int, int>{1, 0}, {4, 1}, {0, 7}, {-1, 2}}) {
        long long w = 11, h = 22;
        ImgSizeTemplate_cls::GetGeometryFromIndex(gi.first, gi.second, w, h);
        EXPECT_EQ(w, 11);
        EXPECT_EQ(h, 22);
    }
    EXPECT_EQ(ImgSizeTemplate_cls::GetStrGeom(2, 0), "Custom");
}
