#include "WavefrontLoader_cls.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

wxString DataPath(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/obj/" + pName;
}

} // namespace

TEST(WavefrontLoader, CubeWithMaterials) {
    LogCapture_cls log;
    WavefrontLoader_cls mesh;
    ASSERT_TRUE(mesh.Load(DataPath("cube.obj")));
    EXPECT_EQ(mesh.GetNumTriangle(), 12);
    EXPECT_EQ(mesh.mVNormal.size(), mesh.mVPosition.size());
    EXPECT_EQ(mesh.mVTexCoord.size(), 12u * 3u * 2u);
    EXPECT_EQ(mesh.mNumBadFace, 0);
    EXPECT_EQ(mesh.mNumSkippedLine, 0);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FLOAT_EQ(mesh.mMin[i], -0.5f);
        EXPECT_FLOAT_EQ(mesh.mMax[i], 0.5f);
    }
    // Two runs of six triangles, one per usemtl.
    ASSERT_EQ(mesh.mVGroup.size(), 2u);
    EXPECT_EQ(mesh.mVGroup[0].mStrMaterial, "Red");
    EXPECT_EQ(mesh.mVGroup[0].mFirstTriangle, 0);
    EXPECT_EQ(mesh.mVGroup[0].mNumTriangle, 6);
    EXPECT_EQ(mesh.mVGroup[1].mStrMaterial, "Blue");
    EXPECT_EQ(mesh.mVGroup[1].mFirstTriangle, 6);
    EXPECT_EQ(mesh.mVGroup[1].mNumTriangle, 6);
    // The first face: a quad fanned from its first corner, normals from the file.
    const float expected[9] = {-0.5f, 0.5f, -0.5f, 0.5f, 0.5f, -0.5f, 0.5f, -0.5f, -0.5f};
    for (int i = 0; i < 9; ++i)
        EXPECT_FLOAT_EQ(mesh.mVPosition[static_cast<size_t>(i)], expected[i]) << i;
    EXPECT_FLOAT_EQ(mesh.mVNormal[2], -1.0f);
    EXPECT_FLOAT_EQ(mesh.mVTexCoord[0], 0.0f);
    EXPECT_FLOAT_EQ(mesh.mVTexCoord[1], 1.0f);

    ASSERT_EQ(mesh.mVMaterial.size(), 2u);
    const int red = mesh.GetMaterialIndex("Red");
    const int blue = mesh.GetMaterialIndex("Blue");
    ASSERT_GE(red, 0);
    ASSERT_GE(blue, 0);
    EXPECT_FLOAT_EQ(mesh.mVMaterial[red].mDiffuse[0], 0.8f);
    EXPECT_FLOAT_EQ(mesh.mVMaterial[red].mShininess, 64.0f);
    EXPECT_FLOAT_EQ(mesh.mVMaterial[blue].mAlpha, 0.75f);
    EXPECT_EQ(mesh.mVMaterial[blue].mStrTexture, "textures/blue.png");
    EXPECT_EQ(mesh.GetMaterialIndex("Green"), -1);
}

TEST(WavefrontLoader, RelativeIndicesPolygonsAndBadFaces) {
    WavefrontLoader_cls mesh;
    ASSERT_TRUE(mesh.Load(DataPath("relative.obj")));
    // The pentagon gives three triangles; "f -1 1 2" one more; three faces are dropped.
    EXPECT_EQ(mesh.GetNumTriangle(), 4);
    EXPECT_EQ(mesh.mNumBadFace, 3);
    EXPECT_EQ(mesh.mNumSkippedLine, 0);
    // The last triangle starts at the vertex defined after the pentagon.
    const size_t last = 3 * 9;
    EXPECT_FLOAT_EQ(mesh.mVPosition[last + 2], 1.0f);
    // A face without normals takes its own: the pentagon lies in z = 0, counter-clockwise.
    EXPECT_FLOAT_EQ(mesh.mVNormal[2], 1.0f);
}

TEST(WavefrontLoader, MissingAndEmptyInput) {
    LogCapture_cls log;
    WavefrontLoader_cls mesh;
    EXPECT_FALSE(mesh.Load(DataPath("no-such-file.obj")));
    EXPECT_TRUE(log.Contains("cannot read"));
    EXPECT_EQ(mesh.GetNumTriangle(), 0);
    EXPECT_FALSE(mesh.LoadFromText("", 0, wxString()));
    EXPECT_FALSE(mesh.LoadFromText(nullptr, 10, wxString()));
    const std::string noFaces = "v 1 2 3\nv 4 5 6\n";
    EXPECT_FALSE(mesh.LoadFromText(noFaces.data(), noFaces.size(), wxString()));
    // A library that is not there is reported, and the mesh still loads.
    TempDir_cls dir;
    ASSERT_TRUE(WriteBytes(dir.Path("a.obj"), "mtllib gone.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"));
    EXPECT_TRUE(mesh.Load(dir.Path("a.obj")));
    EXPECT_EQ(mesh.GetNumTriangle(), 1);
    EXPECT_TRUE(log.Contains("gone.mtl"));
}

TEST(WavefrontLoader, NumbersThatAreNotNumbers) {
    WavefrontLoader_cls mesh;
    const std::string text = "v 0 0 0\n"
                             "v 1 0 nan\n"     // not finite: skipped
                             "v 1 0 1e400\n"   // overflows float: skipped
                             "v 1 0\n"         // too few: skipped
                             "v 1 0 0 extra\n" // a fourth field (w) is allowed
                             "v 0 1 0\n"
                             "vt\n" // skipped
                             "f 1 2 3\n"
                             "f 1 2 3 0\n"   // index 0 does not exist
                             "f 1/2/3 2 3\n" // texture index out of range
                             "f 99999999999999999999999 1 2\n"
                             "xyz what\n"; // unknown keyword: skipped
    ASSERT_TRUE(mesh.LoadFromText(text.data(), text.size(), wxString()));
    EXPECT_EQ(mesh.GetNumTriangle(), 1);
    EXPECT_EQ(mesh.mNumSkippedLine, 5);
    EXPECT_EQ(mesh.mNumBadFace, 3);
}

// Every prefix of a good file and many random mutations load what they can and never crash;
// no prefix yields more triangles than the whole file.
TEST(WavefrontLoader, TruncatedAndMutatedFilesLoadWhatTheyCan) {
    const std::string full = ReadBytes(DataPath("cube.obj"));
    ASSERT_FALSE(full.empty());
    WavefrontLoader_cls whole;
    ASSERT_TRUE(whole.LoadFromText(full.data(), full.size(), wxString()));
    long long previous = 0;
    for (size_t n = 0; n <= full.size(); ++n) {
        WavefrontLoader_cls mesh;
        mesh.LoadFromText(full.data(), n, wxString());
        ASSERT_LE(mesh.GetNumTriangle(), whole.GetNumTriangle()) << n;
        // Longer prefixes never lose triangles: each face line either is complete or is not
        // read at all.
        ASSERT_GE(mesh.GetNumTriangle() + 2, previous) << n;
        previous = mesh.GetNumTriangle();
        ASSERT_EQ(mesh.mVPosition.size(), static_cast<size_t>(mesh.GetNumTriangle()) * 9) << n;
    }
    std::mt19937 rng(20261122);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = MutateText(full, rng);
        WavefrontLoader_cls mesh;
        mesh.LoadFromText(text.data(), text.size(), wxString());
        ASSERT_EQ(mesh.mVNormal.size(), mesh.mVPosition.size()) << round;
        ASSERT_EQ(mesh.mVTexCoord.size() * 3, mesh.mVPosition.size() * 2) << round;
        long long inGroups = 0;
        for (const WavefrontGroup_cls& g : mesh.mVGroup)
            inGroups += g.mNumTriangle;
        ASSERT_EQ(inGroups, mesh.GetNumTriangle()) << round;
        // Mutated material libraries too.
        mesh.LoadMtlFromText(text.data(), text.size());
    }
}
