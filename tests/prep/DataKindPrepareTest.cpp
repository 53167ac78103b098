// The prepared sets of stream lines and height fields: blending between two steps at known
// factors (with arc-length resampling where point counts differ), lines present in one step only,
// thinning, the clip box, values by data or arc length; grid positions, normals by central
// differences, and blending of grids.
#include "HeightFieldForRender_cls.h"
#include "HeightFieldSnap_cls.h"
#include "StreamlineForRender_cls.h"
#include "StreamlineSnap_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace {

std::unique_ptr<StreamlineSnap_cls> Lines(const std::string& text) {
    auto p = std::make_unique<StreamlineSnap_cls>(nullptr, 0);
    wxString strWhy;
    EXPECT_TRUE(
        StreamlineSnap_cls::ParseText(text.c_str(), text.size(), p->mOffsets, p->mXYZ, p->mValue, strWhy))
        << strWhy;
    return p;
}

std::unique_ptr<HeightFieldSnap_cls> Grid(int w, int h, const std::function<float(int, int)>& f) {
    auto p = std::make_unique<HeightFieldSnap_cls>(nullptr, 0);
    p->mWidth = w;
    p->mHeight = h;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            p->mHeights.push_back(f(x, y));
    return p;
}

void ExpectPoints(const StreamlineForRender_cls& set, int line, const std::vector<float>& xyz) {
    ASSERT_LT(line, set.GetLineCount());
    const int first = set.mOffsets[line];
    ASSERT_EQ(static_cast<size_t>(set.mOffsets[line + 1] - first) * 3, xyz.size());
    for (size_t i = 0; i < xyz.size(); ++i)
        EXPECT_NEAR(set.mXYZ[3 * static_cast<size_t>(first) + i], xyz[i], 1e-5)
            << "line " << line << " float " << i;
}

} // namespace

TEST(StreamlinePrepareTest, BlendByLineIndexAtKnownFactors) {
    // Line 0: same count; line 1: 3 points against 5 (resampled); line 2 only in A.
    const auto a = Lines("0 0 0 1\n1 0 0 1\n2 0 0 1\n\n"
                         "0 0 0 0\n1 0 0 0\n4 0 0 0\n\n"
                         "9 9 9 3\n8 8 8 3\n");
    const auto b = Lines("0 2 0 3\n1 2 0 3\n2 2 0 3\n\n"
                         "0 4 0 8\n1 4 0 8\n2 4 0 8\n3 4 0 8\n4 4 0 8\n");
    StreamlineSetting_cls s;
    for (double t : {0.0, 0.25, 0.5, 1.0}) {
        SCOPED_TRACE(t);
        StreamlineForRender_cls set;
        ASSERT_TRUE(set.PrepareData(a.get(), b.get(), t, 4, s));
        ASSERT_EQ(set.GetLineCount(), 3) << "A's third line stays; B has no line that A lacks";
        const float y0 = static_cast<float>(2 * t);
        ExpectPoints(set, 0, {0, y0, 0, 1, y0, 0, 2, y0, 0});
        EXPECT_NEAR(set.mValue[0], 1 + 2 * t, 1e-6);
        if (t == 0.0) {
            // At the step itself A's line stands as it is, with its own point count.
            ExpectPoints(set, 1, {0, 0, 0, 1, 0, 0, 4, 0, 0});
        } else {
            // A's line (length 4, points at arc 0, 1, 4) resampled to 5 points at arc 0, 1, 2, 3, 4.
            const float y1 = static_cast<float>(4 * t);
            ExpectPoints(set, 1, {0, y1, 0, 1, y1, 0, 2, y1, 0, 3, y1, 0, 4, y1, 0});
            EXPECT_NEAR(set.mValue[set.mOffsets[1]], 8 * t, 1e-6);
        }
        ExpectPoints(set, 2, {9, 9, 9, 8, 8, 8});
        EXPECT_EQ(set.mLastStep, 4);
        EXPECT_FLOAT_EQ(set.mLastInterp, static_cast<float>(t));
    }
    // Step: A whatever the factor.
    s.mInterpType = 0;
    StreamlineForRender_cls set;
    set.PrepareData(a.get(), b.get(), 0.75, 4, s);
    ExpectPoints(set, 0, {0, 0, 0, 1, 0, 0, 2, 0, 0});
    EXPECT_FALSE(set.PrepareData(nullptr, b.get(), 0.5, 4, s));
    EXPECT_EQ(set.GetLineCount(), 0);
}

TEST(StreamlinePrepareTest, ResampleByArcLength) {
    const float xyz[] = {0, 0, 0, 3, 0, 0, 3, 1, 0}; // length 4: 3 along x, 1 along y
    const float value[] = {0, 6, 10};
    std::vector<float> outXYZ, outValue;
    StreamlineForRender_cls::ResampleByArcLength(xyz, value, 3, 5, outXYZ, outValue);
    EXPECT_EQ(outXYZ, (std::vector<float>{0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 3, 1, 0}));
    EXPECT_EQ(outValue, (std::vector<float>{0, 2, 4, 6, 10}));
    const float still[] = {1, 2, 3, 1, 2, 3};
    StreamlineForRender_cls::ResampleByArcLength(still, nullptr, 2, 3, outXYZ, outValue);
    EXPECT_EQ(outXYZ, (std::vector<float>{1, 2, 3, 1, 2, 3, 1, 2, 3})) << "a line of no length";
    EXPECT_TRUE(outValue.empty());
}

TEST(StreamlinePrepareTest, ThinningClipBoxAndValues) {
    const auto a = Lines("0 0 0 1\n1 0 0 2\n\n"
                         "0 1 0 3\n1 1 0 4\n\n"
                         "0 2 0 5\n1 2 0 6\n\n"
                         "0 3 0 7\n1 3 0 8\n\n"
                         "0 4 0 9\n1 4 0 9\n");
    struct Case {
        int thin;
        int lines;
        float firstY[3];
    };
    for (const Case& c : {Case{1, 5, {0, 1, 2}}, Case{2, 3, {0, 2, 4}}, Case{3, 2, {0, 3, 0}},
                          Case{0, 5, {0, 1, 2}}, Case{9, 1, {0, 0, 0}}}) {
        SCOPED_TRACE(c.thin);
        StreamlineSetting_cls s;
        s.mThin = c.thin;
        StreamlineForRender_cls set;
        set.PrepareData(a.get(), nullptr, 0.0, 0, s);
        ASSERT_EQ(set.GetLineCount(), c.lines);
        for (int k = 0; k < std::min(c.lines, 3); ++k)
            EXPECT_FLOAT_EQ(set.mXYZ[3 * set.mOffsets[k] + 1], c.firstY[k]);
    }

    // The clip box cuts a line into its runs inside; a run of one point goes.
    const auto zig = Lines("0 0 0\n1 0 0\n2 0 0\n5 0 0\n3 0 0\n9 0 0\n4 0 0\n3.5 0 0\n");
    StreamlineSetting_cls s;
    s.mbClip = true;
    s.mClipLow[0] = -0.5f;
    s.mClipHigh[0] = 4.5f;
    s.mValueType = 1; // arc length along the whole line, cuts included
    StreamlineForRender_cls set;
    set.PrepareData(zig.get(), nullptr, 0.0, 0, s);
    ASSERT_EQ(set.GetLineCount(), 2);
    ExpectPoints(set, 0, {0, 0, 0, 1, 0, 0, 2, 0, 0});
    ExpectPoints(set, 1, {4, 0, 0, 3.5, 0, 0});
    EXPECT_EQ(set.mValue, (std::vector<float>{0, 1, 2, 18, 18.5}));
    // The file's value; 0 for a file without one.
    s.mbClip = false;
    s.mValueType = 0;
    set.PrepareData(zig.get(), nullptr, 0.0, 0, s);
    EXPECT_EQ(set.mValue, std::vector<float>(8, 0.0f));
}

TEST(StreamlinePrepareTest, DataProcessesFilterMoveAndFadeInStackOrder) {
    // Four lines of two points; line k at y = k, values k and k + 0.5; a line of one point last.
    const auto a = Lines("0 0 0 0\n1 0 0 0.5\n\n0 1 0 1\n1 1 0 1.5\n\n0 2 0 2\n1 2 0 2.5\n\n"
                         "0 3 0 3\n1 3 0 3.5\n\n7 7 7 4\n");
    const double none[3] = {0, 0, 0}, one[3] = {1, 1, 1};
    const double turnZ[3] = {0, 0, 90}, offset[3] = {10, 0, 0}, twice[3] = {2, 2, 2};
    std::vector<int> vFirstTwo, vOdd;
    wxString strWhy;
    ASSERT_TRUE(StreamlineProc_cls::ParseIndexList("0-1", vFirstTwo, strWhy));
    ASSERT_TRUE(StreamlineProc_cls::ParseIndexList(" 1, 3\t", vOdd, strWhy));
    EXPECT_EQ(vOdd, (std::vector<int>{1, 1, 3, 3}));
    struct Case {
        const char* name;
        std::vector<StreamlineProc_cls> vProc;
        std::vector<float> first; // x and y of each kept line's first point
        std::vector<float> alpha; // empty: no opacity
    };
    const std::vector<float> all = {0, 0, 0, 1, 0, 2, 0, 3, 7, 7};
    const Case cases[] = {
        {"none", {}, all, {}},
        {"keep 0-1", {StreamlineProc_cls::MakeFilter(0, vFirstTwo)}, {0, 0, 0, 1}, {}},
        {"drop 1 and 3", {StreamlineProc_cls::MakeFilter(1, vOdd)}, {0, 0, 0, 2, 7, 7}, {}},
        {"both filters",
         {StreamlineProc_cls::MakeFilter(0, vFirstTwo), StreamlineProc_cls::MakeFilter(1, vOdd)},
         {0, 0},
         {}},
        {"an empty list changes nothing", {StreamlineProc_cls::MakeFilter(0, {})}, all, {}},
        // (0, k) scaled by 2, turned a quarter about z to (-2k, 0), then moved by 10 in x.
        {"scale, turn, move",
         {StreamlineProc_cls::MakeTransform(offset, turnZ, 0, twice)},
         {10, 0, 8, 0, 6, 0, 4, 0, -4, 14},
         {}},
        {"moved twice in order",
         {StreamlineProc_cls::MakeTransform(none, none, 0, twice),
          StreamlineProc_cls::MakeTransform(offset, none, 0, one)},
         {10, 0, 10, 2, 10, 4, 10, 6, 24, 14},
         {}},
        {"hide below 1.5",
         {StreamlineProc_cls::MakeFilter(0, vFirstTwo), StreamlineProc_cls::MakeAlpha(0, 1.5f)},
         {0, 0, 0, 1},
         {0, 0, 0, 1}},
        {"hide above 1",
         {StreamlineProc_cls::MakeFilter(0, vFirstTwo), StreamlineProc_cls::MakeAlpha(1, 1.0f)},
         {0, 0, 0, 1},
         {1, 1, 1, 0}},
        {"fade in up to 2",
         {StreamlineProc_cls::MakeFilter(0, vFirstTwo), StreamlineProc_cls::MakeAlpha(2, 2.0f)},
         {0, 0, 0, 1},
         {0, 0.25f, 0.5f, 0.75f}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        StreamlineSetting_cls s;
        s.mVProc = c.vProc;
        StreamlineForRender_cls set;
        ASSERT_TRUE(set.PrepareData(a.get(), nullptr, 0.0, 0, s));
        ASSERT_EQ(set.GetLineCount(), static_cast<int>(c.first.size() / 2));
        for (int k = 0; k < set.GetLineCount(); ++k)
            for (int i = 0; i < 2; ++i)
                EXPECT_NEAR(set.mXYZ[3 * set.mOffsets[k] + i], c.first[2 * k + i], 1e-5) << "line " << k;
        EXPECT_EQ(set.mAlpha, c.alpha);
    }
    // A list that is not one.
    std::vector<int> vBad;
    EXPECT_FALSE(StreamlineProc_cls::ParseIndexList("1 two", vBad, strWhy));
    EXPECT_EQ(strWhy, "\"two\" is no line index or range");
    EXPECT_FALSE(StreamlineProc_cls::ParseIndexList("5-2", vBad, strWhy));
}

TEST(HeightFieldPrepareTest, PositionsNormalsAndTriangles) {
    // A tilted plane h = 0.5 x + 2 y on a 5 x 3 grid: central differences are exact.
    const auto g = Grid(5, 3, [](int x, int y) { return 0.5f * x + 2.0f * y; });
    HeightFieldSetting_cls s;
    s.mSizeX = 4.0f; // one unit per column
    s.mSizeY = 1.0f; // half a unit per row
    s.mHeightScale = 0.25f;
    HeightFieldForRender_cls set;
    ASSERT_TRUE(set.PrepareData(g.get(), nullptr, 0.0, 2, s));
    ASSERT_EQ(set.mWidth, 5);
    ASSERT_EQ(set.mHeight, 3);
    ASSERT_EQ(set.mXYZ.size(), 45u);
    const float* p = &set.mXYZ[3 * (2 * 5 + 4)]; // x 4, y 2
    EXPECT_FLOAT_EQ(p[0], 2.0f);
    EXPECT_FLOAT_EQ(p[1], 0.5f);
    EXPECT_FLOAT_EQ(p[2], (0.5f * 4 + 2.0f * 2) * 0.25f);
    // dz/dx = 0.5 * 0.25 / 1, dz/dy = 2 * 0.25 / 0.5: normal (-0.125, -1, 1) made unit, at every
    // point, the border included.
    const double len = std::sqrt(0.125 * 0.125 + 1.0 + 1.0);
    for (size_t i = 0; i < 15; ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(set.mNormal[3 * i], -0.125 / len, 1e-6);
        EXPECT_NEAR(set.mNormal[3 * i + 1], -1.0 / len, 1e-6);
        EXPECT_NEAR(set.mNormal[3 * i + 2], 1.0 / len, 1e-6);
    }
    ASSERT_EQ(set.mIndex.size(), 4u * 2 * 6);
    // The first cell: counter-clockwise seen from above.
    EXPECT_EQ(std::vector<unsigned>(set.mIndex.begin(), set.mIndex.begin() + 6),
              (std::vector<unsigned>{0, 1, 6, 0, 6, 5}));
}

TEST(HeightFieldPrepareTest, BlendOfTwoStepsAndNormalsOfACurvedField) {
    const auto a = Grid(4, 4, [](int x, int) { return static_cast<float>(x * x); });
    const auto b = Grid(4, 4, [](int x, int) { return static_cast<float>(x * x + 4); });
    const auto other = Grid(3, 4, [](int, int) { return 100.0f; });
    HeightFieldSetting_cls s;
    s.mSizeX = s.mSizeY = 3.0f;
    s.mHeightScale = 1.0f;
    struct Case {
        const HeightFieldSnap_cls* pB;
        int interp;
        double t;
        float add; // expected height over A's
    };
    for (const Case& c : {Case{b.get(), 1, 0.25, 1.0f}, Case{b.get(), 1, 1.0, 4.0f},
                          Case{b.get(), 0, 0.5, 0.0f}, Case{other.get(), 1, 0.5, 0.0f}}) {
        SCOPED_TRACE(c.t);
        s.mInterpType = c.interp;
        HeightFieldForRender_cls set;
        set.PrepareData(a.get(), c.pB, c.t, 0, s);
        for (int x = 0; x < 4; ++x)
            EXPECT_FLOAT_EQ(set.mXYZ[3 * static_cast<size_t>(4 + x) + 2], x * x + c.add);
    }
    // h = x^2: the central difference at x = 1 is (4 - 0) / 2 = 2; one-sided at x = 0: 1.
    HeightFieldForRender_cls set;
    set.PrepareData(a.get(), nullptr, 0.0, 0, s);
    EXPECT_NEAR(set.mNormal[3 * 1], -2.0 / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR(set.mNormal[0], -1.0 / std::sqrt(2.0), 1e-6);
    // No grid: no set.
    HeightFieldSnap_cls empty(nullptr, 0);
    EXPECT_FALSE(set.PrepareData(&empty, nullptr, 0.0, 0, s));
    EXPECT_TRUE(set.mXYZ.empty());
}
