// Marching cubes: the built tables, a closed and consistently turned surface, a sphere's area and
// volume, iso values outside the data, and the split into z-slabs giving the same triangles as one
// thread.
#include "MarchingCubesTable_cls.h"
#include "MarchingCubes_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <vector>

namespace {

// A cube of n^3 voxels with value f(x, y, z), clamped to 0 .. 255 and rounded.
std::vector<unsigned char> Volume(int nx, int ny, int nz,
                                  const std::function<double(double, double, double)>& f) {
    std::vector<unsigned char> v(static_cast<size_t>(nx) * ny * nz);
    for (int z = 0; z < nz; ++z)
        for (int y = 0; y < ny; ++y)
            for (int x = 0; x < nx; ++x)
                v[(static_cast<size_t>(z) * ny + y) * nx + x] =
                    static_cast<unsigned char>(std::lround(std::clamp(f(x, y, z), 0.0, 255.0)));
    return v;
}

double Area(const MarchingCubes_cls::Result_cls& r) {
    double sum = 0.0;
    for (size_t t = 0; t + 9 <= r.mXYZ.size(); t += 9) {
        const float* p = &r.mXYZ[t];
        const double a[3] = {p[3] - p[0], p[4] - p[1], p[5] - p[2]};
        const double b[3] = {p[6] - p[0], p[7] - p[1], p[8] - p[2]};
        const double c[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
        sum += 0.5 * std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]);
    }
    return sum;
}

// Signed volume enclosed by the triangles, positive when they turn counter-clockwise seen from
// outside, taken about centre.
double EnclosedVolume(const MarchingCubes_cls::Result_cls& r, const double* centre) {
    double sum = 0.0;
    for (size_t t = 0; t + 9 <= r.mXYZ.size(); t += 9) {
        double p[3][3];
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 3; ++i)
                p[k][i] = r.mXYZ[t + 3 * k + i] - centre[i];
        sum += (p[0][0] * (p[1][1] * p[2][2] - p[1][2] * p[2][1]) -
                p[0][1] * (p[1][0] * p[2][2] - p[1][2] * p[2][0]) +
                p[0][2] * (p[1][0] * p[2][1] - p[1][1] * p[2][0])) /
               6.0;
    }
    return sum;
}

using Key = std::tuple<long, long, long>;
Key Quantise(const float* p) {
    return Key{std::lround(p[0] * 4096.0), std::lround(p[1] * 4096.0), std::lround(p[2] * 4096.0)};
}

} // namespace

TEST(MarchingCubesTableTest, EveryCaseCrossesExactlyTheEdgesWhoseCornersDiffer) {
    const MarchingCubesTable_cls& t = MarchingCubesTable_cls::Get();
    int maxTriangles = 0;
    for (int cs = 0; cs < 256; ++cs) {
        SCOPED_TRACE(cs);
        int used = 0;
        int k = 0;
        for (; t.mTriangle[cs][k] >= 0; ++k)
            used |= 1 << t.mTriangle[cs][k];
        EXPECT_EQ(k % 3, 0);
        maxTriangles = std::max(maxTriangles, k / 3);
        EXPECT_EQ(used, t.mEdgeMask[cs]) << "every crossed edge carries a vertex, no other edge does";
        int expected = 0;
        for (int e = 0; e < 12; ++e) {
            const int a = MarchingCubesTable_cls::msEdgeCorner[e][0],
                      b = MarchingCubesTable_cls::msEdgeCorner[e][1];
            if ((cs >> a & 1) != (cs >> b & 1))
                expected |= 1 << e;
        }
        EXPECT_EQ(t.mEdgeMask[cs], expected);
    }
    EXPECT_EQ(t.mTriangle[0][0], -1);
    EXPECT_EQ(t.mTriangle[255][0], -1);
    EXPECT_EQ(maxTriangles, 5);
}

TEST(MarchingCubesTest, SurfaceOfANoisyBlobIsClosedAndTurnsOneWay) {
    // A lumpy field whose surface stays away from the border: every edge of the triangle mesh
    // must be used as often in one direction as in the other, which fails on any crack or flipped
    // triangle.
    const int n = 40;
    const auto v = Volume(n, n, n, [](double x, double y, double z) {
        const double dx = x - 19.5, dy = y - 19.5, dz = z - 19.5;
        const double r = std::sqrt(dx * dx + dy * dy + dz * dz);
        return 128.0 + 10.0 * (12.0 - r) + 20.0 * std::sin(x * 0.9) * std::cos(y * 0.7) * std::sin(z * 1.3);
    });
    for (float iso : {100.5f, 128.5f, 150.25f}) {
        SCOPED_TRACE(iso);
        MarchingCubes_cls::Result_cls r;
        ASSERT_GT(MarchingCubes_cls::Run(v.data(), n, n, n, iso, r, 1), 100);
        std::map<std::pair<Key, Key>, int> directed;
        for (size_t t = 0; t + 9 <= r.mXYZ.size(); t += 9) {
            const Key k[3] = {Quantise(&r.mXYZ[t]), Quantise(&r.mXYZ[t + 3]), Quantise(&r.mXYZ[t + 6])};
            if (k[0] == k[1] || k[1] == k[2] || k[0] == k[2])
                continue; // a vertex on a voxel makes a triangle of no area
            for (int e = 0; e < 3; ++e)
                ++directed[{k[e], k[(e + 1) % 3]}];
        }
        // A fan diagonal may lie in a cell face where the neighbour's fan has the same diagonal, so
        // an edge can carry four triangles; it must still be used as often each way.
        int open = 0;
        for (const auto& [edge, count] : directed) {
            const auto back = directed.find({edge.second, edge.first});
            if (back == directed.end() || back->second != count)
                ++open;
        }
        EXPECT_EQ(open, 0);
    }
}

TEST(MarchingCubesTest, SphereAreaAndVolumeWithinOnePercentAt128) {
    const int n = 128;
    const double c = 63.5, radius = 40.0;
    const auto v = Volume(n, n, n, [&](double x, double y, double z) {
        const double r = std::sqrt((x - c) * (x - c) + (y - c) * (y - c) + (z - c) * (z - c));
        return 128.0 + 6.0 * (radius - r); // above the value inside
    });
    MarchingCubes_cls::Result_cls r;
    ASSERT_GT(MarchingCubes_cls::Run(v.data(), n, n, n, 128.0f, r), 0);
    const double pi = std::acos(-1.0);
    const double centre[3] = {c, c, c};
    EXPECT_NEAR(Area(r) / (4.0 * pi * radius * radius), 1.0, 0.01);
    // The triangles face the lower values, outwards: the enclosed volume comes out positive.
    EXPECT_NEAR(EnclosedVolume(r, centre) / (4.0 / 3.0 * pi * radius * radius * radius), 1.0, 0.01);
    // Normals point away from the centre.
    double worst = 1.0;
    for (size_t i = 0; i < r.mXYZ.size(); i += 3) {
        double d[3], len = 0.0;
        for (int k = 0; k < 3; ++k) {
            d[k] = r.mXYZ[i + k] - c;
            len += d[k] * d[k];
        }
        len = std::sqrt(len);
        double dot = 0.0;
        for (int k = 0; k < 3; ++k)
            dot += d[k] / len * r.mNormal[i + k];
        worst = std::min(worst, dot);
    }
    EXPECT_GT(worst, 0.98);
}

TEST(MarchingCubesTest, IsoValueOutsideTheDataGivesNoTrianglesAndOneLogLine) {
    const int n = 8;
    const auto v = Volume(n, n, n, [](double x, double, double) { return 50.0 + 10.0 * x; }); // 50 .. 120
    struct Case {
        float iso;
        bool bLogged;
    };
    for (const Case& c : {Case{20.0f, true}, Case{200.0f, true}, Case{-1.0f, true}, Case{50.0f, false}}) {
        SCOPED_TRACE(c.iso);
        LogCapture_cls log;
        MarchingCubes_cls::Result_cls r;
        r.mXYZ.assign(9, 1.0f); // an earlier result goes
        EXPECT_EQ(MarchingCubes_cls::Run(v.data(), n, n, n, c.iso, r, 2), 0);
        EXPECT_TRUE(r.mXYZ.empty());
        EXPECT_EQ(log.mVStrLines.size(), c.bLogged ? 1u : 0u);
        if (c.bLogged) {
            EXPECT_TRUE(log.Contains("outside the data range 50 .. 120")) << log.mVStrLines[0];
        }
    }
    // No cells at all: nothing, and nothing read.
    MarchingCubes_cls::Result_cls r;
    EXPECT_EQ(MarchingCubes_cls::Run(v.data(), 1, n, n, 80.0f, r), 0);
    EXPECT_EQ(MarchingCubes_cls::Run(nullptr, n, n, n, 80.0f, r), 0);
}

TEST(MarchingCubesTest, SlabsOnThreadsGiveTheTrianglesOfOneThread) {
    const int nx = 33, ny = 27, nz = 31;
    const auto v = Volume(nx, ny, nz, [](double x, double y, double z) {
        return 128.0 + 60.0 * std::sin(x * 0.31) * std::cos(y * 0.27 + z * 0.19);
    });
    MarchingCubes_cls::Result_cls one;
    MarchingCubes_cls::Run(v.data(), nx, ny, nz, 131.0f, one, 1);
    ASSERT_GT(one.GetTriangleCount(), 1000);
    for (int threads : {2, 3, 4, 7, 30, 100}) {
        SCOPED_TRACE(threads);
        MarchingCubes_cls::Result_cls many;
        MarchingCubes_cls::Run(v.data(), nx, ny, nz, 131.0f, many, threads);
        // Slabs are joined in order, so even the order holds; as sets they must be equal anyway.
        EXPECT_EQ(many.mXYZ, one.mXYZ);
        EXPECT_EQ(many.mNormal, one.mNormal);
    }
}
