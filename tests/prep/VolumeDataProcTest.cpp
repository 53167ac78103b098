// The volume's data processes on the prepared voxels: Boolean shapes in stack order, downsizing.
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
    std::fill_n(b.mMin, 3, lo);
    std::fill_n(b.mMax, 3, hi);
    return b;
}
// Another object's box as the shape: own space scaled by 4 (so its box is +-0.25 here), moved by dx
// in the object's space.
B Object(int type, double dx) {
    B b = Shape(type, B::SHAPE_OBJECT, 0.0, 0.0);
    b.mObject[0] = b.mObject[5] = b.mObject[10] = 4.0;
    b.mObject[12] = dx;
    return b;
}
} // namespace

TEST(VolumeDataProcTest, BooleanShapesInStackOrderAndDownsizing) {
    const B inner = Shape(B::TYPE_INTERSECT, B::SHAPE_BOX, -0.25, 0.25),
            away = Shape(B::TYPE_INTERSECT, 0, 0.6, 0.9);
    const B add = Shape(B::TYPE_ADD, B::SHAPE_BOX, -0.25, 0.25);
    // Of 4 x 4 x 4 voxels (centres at +-0.125, +-0.375); the inscribed ball holds those of squared
    // radius up to 0.25.
    const std::pair<std::vector<B>, long> cases[] = {
        {{}, 64},
        {{inner}, 8},
        {{Shape(B::TYPE_DIFFERENCE, 0, -0.25, 0.25)}, 56},
        {{Shape(B::TYPE_INTERSECT, B::SHAPE_SPHERE, -0.5, 0.5)}, 32},
        {{away}, 0},
        {{away, add}, 8},
        {{add, away}, 0},
        {{Object(B::TYPE_INTERSECT, 0.0)}, 8},
        {{Object(B::TYPE_DIFFERENCE, -1.0)}, 56},
        {{inner, Object(B::TYPE_DIFFERENCE, -1.0)}, 4}};
    for (const auto& [vShape, kept] : cases) {
        SCOPED_TRACE(testing::Message() << vShape.size() << " shapes, " << kept);
        VolumeFoRender_cls v;
        v.mWidth = v.mHeight = v.mDepth = 4;
        v.mData.assign(64, 200);
        v.ApplyBoolean(vShape);
        EXPECT_EQ(std::count(v.mData.begin(), v.mData.end(), 200), kept);
        EXPECT_EQ(std::count(v.mData.begin(), v.mData.end(), 0), 64 - kept);
    }
    // Downsizing: the value is the voxel's index, so a block's mean is its centre's index.
    const struct {
        int factor[3], size[3];
        int first;
    } sizes[] = {{{1, 1, 1}, {5, 4, 3}, 0},
                 {{2, 2, 2}, {3, 2, 2}, 13},
                 {{5, 1, 3}, {1, 4, 1}, 22},
                 {{0, 9, 1}, {5, 1, 3}, 7}};
    for (const auto& c : sizes) {
        VolumeFoRender_cls v;
        v.mWidth = 5, v.mHeight = 4, v.mDepth = 3;
        v.mData.resize(60);
        std::iota(v.mData.begin(), v.mData.end(), 0);
        v.ApplyDownsize(c.factor);
        EXPECT_EQ(std::vector<int>({v.mWidth, v.mHeight, v.mDepth}), std::vector<int>(c.size, c.size + 3));
        ASSERT_EQ(v.mData.size(), static_cast<size_t>(c.size[0] * c.size[1] * c.size[2]));
        EXPECT_EQ(v.mData[0], c.first) << c.factor[0] << c.factor[1] << c.factor[2];
    }
}
