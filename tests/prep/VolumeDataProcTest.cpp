// The volume's data processes on the prepared voxels: the Boolean shapes taken in stack order
// clear what they leave out, and downsizing averages blocks into a smaller volume.
#include "VolumeFoRender_cls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using B = VolumeSetting_cls::Boolean_cls;

B Shape(int type, int shape, double lo, double hi) {
    B b;
    b.mType = type;
    b.mShape = shape;
    for (int k = 0; k < 3; ++k) {
        b.mMin[k] = lo;
        b.mMax[k] = hi;
    }
    return b;
}

VolumeFoRender_cls Cube(int n, unsigned char value) {
    VolumeFoRender_cls v;
    v.mWidth = v.mHeight = v.mDepth = n;
    v.mData.assign(static_cast<size_t>(n) * n * n, value);
    return v;
}

} // namespace

TEST(VolumeDataProcTest, BooleanShapesInStackOrderKeepTheVoxelsTheyShould) {
    const struct {
        const char* what;
        std::vector<B> vShape;
        long kept; // of the 4 x 4 x 4 voxels (centres at +-0.125 and +-0.375)
    } cases[] = {
        {"none", {}, 64},
        {"inner box", {Shape(B::TYPE_INTERSECT, B::SHAPE_BOX, -0.25, 0.25)}, 8},
        {"all but the inner box", {Shape(B::TYPE_DIFFERENCE, B::SHAPE_BOX, -0.25, 0.25)}, 56},
        // The inscribed ball of the whole box holds the centres of squared radius up to 0.25.
        {"inscribed ball", {Shape(B::TYPE_INTERSECT, B::SHAPE_SPHERE, -0.5, 0.5)}, 32},
        {"a box outside clears all", {Shape(B::TYPE_INTERSECT, B::SHAPE_BOX, 0.6, 0.9)}, 0},
        {"an addition brings the inner box back",
         {Shape(B::TYPE_INTERSECT, B::SHAPE_BOX, 0.6, 0.9), Shape(B::TYPE_ADD, B::SHAPE_BOX, -0.25, 0.25)},
         8},
        {"order matters: added first, then cut away",
         {Shape(B::TYPE_ADD, B::SHAPE_BOX, -0.25, 0.25), Shape(B::TYPE_INTERSECT, B::SHAPE_BOX, 0.6, 0.9)},
         0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        VolumeFoRender_cls v = Cube(4, 200);
        v.ApplyBoolean(c.vShape);
        long kept = 0;
        for (unsigned char byte : v.mData) {
            EXPECT_TRUE(byte == 0 || byte == 200);
            kept += byte != 0;
        }
        EXPECT_EQ(kept, c.kept);
    }
}

TEST(VolumeDataProcTest, DownsizingAveragesBlocksAndShrinksTheSize) {
    const struct {
        int factor[3];
        int size[3];
    } cases[] = {
        {{1, 1, 1}, {5, 4, 3}}, {{2, 2, 2}, {3, 2, 2}}, {{5, 1, 3}, {1, 4, 1}}, {{0, 9, 1}, {5, 1, 3}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.factor[0] << " " << c.factor[1] << " " << c.factor[2]);
        VolumeFoRender_cls v;
        v.mWidth = 5;
        v.mHeight = 4;
        v.mDepth = 3;
        v.mData.resize(60);
        std::iota(v.mData.begin(), v.mData.end(), 0); // the value is the voxel's index
        v.ApplyDownsize(c.factor);
        EXPECT_EQ(v.mWidth, c.size[0]);
        EXPECT_EQ(v.mHeight, c.size[1]);
        EXPECT_EQ(v.mDepth, c.size[2]);
        ASSERT_EQ(v.mData.size(), static_cast<size_t>(c.size[0] * c.size[1] * c.size[2]));
        // The mean of an index over a block is the index of the block's centre, truncated.
        const int f[3] = {std::max(c.factor[0], 1), std::max(c.factor[1], 1), std::max(c.factor[2], 1)};
        const double cx = (std::min(f[0], 5) - 1) / 2.0, cy = (std::min(f[1], 4) - 1) / 2.0,
                     cz = (std::min(f[2], 3) - 1) / 2.0;
        EXPECT_EQ(v.mData[0], static_cast<unsigned char>(cx + 5 * cy + 20 * cz));
    }
}
