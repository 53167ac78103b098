#include "RenderFixture.h"
#include "TestSupport.h"
#include "TextureProvider1D_cls.h"
#include "TextureProvider_cls.h"

#include <epoxy/gl.h>

#include <iterator>

namespace {

wxString Data(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/" + pName;
}

// The image-stack pictures are 7 x 5: pixel (x, y from the top) has red v = 20 + 28 x + 4 y,
// green 255 - v and blue 128 in colour, v in grey.
float Value(int x, int y) {
    return static_cast<float>(20 + 28 * x + 4 * y) / 255.0f;
}

} // namespace

class TextureProviderTest : public RenderFixture {};

TEST_F(TextureProviderTest, PicturesArriveInColourWithTheirFirstRowAtTheTop) {
    const struct {
        const char* pFile;
        bool bGrey;
        float tol;
    } cases[] = {
        {"png/rgb8_000.png", false, 0.002f},      {"png/grey8_000.png", true, 0.002f},
        {"png/interlaced_000.png", true, 0.002f}, {"tiff/rgb8_000.tif", false, 0.002f},
        {"tiff/rgb16_000.tif", false, 0.005f},    {"tiff/planar_000.tif", false, 0.002f},
        {"tiff/grey16_000.tif", true, 0.005f},    {"jpeg/rgb_000.jpg", false, 0.03f},
        {"jpeg/grey_000.jpg", true, 0.03f},
    };
    TextureProvider_cls provider;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pFile);
        LogCapture_cls log;
        const GLuint texture = provider.Acquire(Data(c.pFile));
        EXPECT_TRUE(log.mVStrLines.empty()) << log.mVStrLines.front();
        ASSERT_NE(texture, provider.GetDefaultTexture());
        GLint width = 0, height = 0;
        glBindTexture(GL_TEXTURE_2D, texture);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
        ASSERT_EQ(width, 7);
        ASSERT_EQ(height, 5);
        ReadTexture(texture, 7, 5);
        const int corners[][2] = {{0, 0}, {6, 0}, {0, 4}, {3, 2}, {6, 4}};
        for (const auto& xy : corners) {
            SCOPED_TRACE(testing::Message() << "x " << xy[0] << " y " << xy[1]);
            const float v = Value(xy[0], xy[1]);
            // GL's row 0 is the bottom of the picture.
            const Pixel_cls px = At(xy[0], 4 - xy[1]);
            if (c.bGrey)
                EXPECT_TRUE(PixelNear(px, v, v, v, 1.0f, c.tol));
            else
                EXPECT_TRUE(PixelNear(px, v, 1.0f - v, 128.0f / 255.0f, 1.0f, c.tol));
        }
    }
    // 7 x 5, 3 x 2 and 1 x 1 levels of four bytes per texel, for each picture.
    EXPECT_EQ(provider.GetUsedMemoryBytes(), std::size(cases) * (35 + 6 + 1) * 4);
}

TEST_F(TextureProviderTest, AFileIsReadOnceSharedAndFreedWithItsLastUser) {
    TextureProvider_cls provider;
    const wxString strPath = Data("png/rgb8_000.png");
    const wxString strOther = Data("png/../png/./rgb8_000.png"); // the same file, spelt otherwise
    const GLuint first = provider.Acquire(strPath);
    const GLuint second = provider.Acquire(strOther);
    EXPECT_EQ(first, second);
    EXPECT_EQ(provider.GetNumTexture(), 1u);
    EXPECT_EQ(provider.GetReferenceCount(strPath), 2);
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 168u);
    EXPECT_NEAR(provider.GetUsedMemoryMB(), 168.0 / 1048576.0, 1e-12);
    const GLuint another = provider.Acquire(Data("png/rgb8_001.png"));
    EXPECT_NE(another, first);
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 2 * 168u);

    provider.Release(strOther);
    EXPECT_EQ(provider.Find(strPath), first) << "one user is left";
    EXPECT_TRUE(glIsTexture(first));
    provider.Release(strPath);
    EXPECT_EQ(provider.Find(strPath), 0u);
    EXPECT_FALSE(glIsTexture(first)) << "the last user deletes the texture";
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 168u);
    provider.Release(strPath); // once more: nothing is held, nothing happens
    provider.Release(Data("png/rgb8_001.png"));
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 0u);
    EXPECT_EQ(provider.GetNumTexture(), 0u);
}

TEST_F(TextureProviderTest, TablesBecomeOneDimensionalTexturesPerOwner) {
    const int count = 1025; // a colour curve's table
    std::vector<float> vTable(static_cast<size_t>(count) * 4);
    for (int i = 0; i < count; ++i) {
        const float s = static_cast<float>(i) / (count - 1);
        const float entry[4] = {s, 1.0f - s, 2.0f * s, 0.5f}; // values above 1 are kept
        std::copy_n(entry, 4, &vTable[static_cast<size_t>(i) * 4]);
    }
    auto read = [](GLuint texture, int n) {
        std::vector<float> v(static_cast<size_t>(n) * 4, -1.0f);
        glBindTexture(GL_TEXTURE_1D, texture);
        glGetTexImage(GL_TEXTURE_1D, 0, GL_RGBA, GL_FLOAT, v.data());
        glBindTexture(GL_TEXTURE_1D, 0);
        return v;
    };
    TextureProvider1D_cls provider;
    int ownerA = 0, ownerB = 0;
    const GLuint a = provider.Upload(&ownerA, vTable.data(), count);
    ASSERT_NE(a, 0u);
    EXPECT_EQ(read(a, count), vTable);
    EXPECT_EQ(provider.GetUsedMemoryBytes(), static_cast<size_t>(count) * 16);

    // An edit of the same size keeps the texture and changes its values.
    vTable[4 * 512] = 0.25f;
    EXPECT_EQ(provider.Upload(&ownerA, vTable.data(), count), a);
    EXPECT_EQ(read(a, count)[4 * 512], 0.25f);
    // Another size re-makes the storage; memory follows.
    EXPECT_EQ(provider.Upload(&ownerA, vTable.data(), 256), a);
    EXPECT_EQ(provider.GetNumEntry(&ownerA), 256);
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 256u * 16);

    const GLuint b = provider.Upload(&ownerB, vTable.data(), 2);
    EXPECT_NE(b, a);
    EXPECT_EQ(provider.Upload(&ownerB, nullptr, 2), 0u);
    EXPECT_EQ(provider.Upload(&ownerB, vTable.data(), 0), 0u);
    EXPECT_EQ(provider.Find(&ownerB), b) << "an empty table leaves the owner's texture alone";
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 258u * 16);
    provider.Release(&ownerA);
    EXPECT_FALSE(glIsTexture(a));
    EXPECT_EQ(provider.Find(&ownerA), 0u);
    provider.Release(&ownerA);
    EXPECT_EQ(provider.GetUsedMemoryBytes(), 2u * 16);
    EXPECT_EQ(provider.GetNumTexture(), 1u);
}
