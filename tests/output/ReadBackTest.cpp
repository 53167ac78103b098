#include "FBO_cls.h"
#include "ImageIO_cls.h"
#include "ReadPNG_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"

#include <epoxy/gl.h>

#include <vector>

using ReadBackTest = RenderFixture;

// Every half value (NaN, infinities, negatives, values above one included) in each channel of a
// 256 x 256 buffer, saved through the writer ring: each sample of the file must be the one the
// driver's own converting read-back gives, at 8 and 16 bits, with and without alpha, from half-float
// buffers (copied raw, converted by the writer) and from 8-bit buffers (converted by the driver).
TEST_F(ReadBackTest, FilesHoldTheDriversConversionOfEverySample) {
    constexpr int kSide = 256;
    std::vector<uint16_t> vHalf(static_cast<size_t>(kSide) * kSide * 4);
    for (size_t i = 0; i < vHalf.size() / 4; ++i) {
        vHalf[4 * i + 0] = static_cast<uint16_t>(i);
        vHalf[4 * i + 1] = static_cast<uint16_t>(i * 7 + 3);
        vHalf[4 * i + 2] = static_cast<uint16_t>(65535 - i);
        vHalf[4 * i + 3] = static_cast<uint16_t>(i * 13 + 11);
    }
    struct Case_cls {
        int colorDepth;
        int bits;
        bool bAlpha;
    };
    const Case_cls cases[] = {{16, 8, false}, {16, 8, true}, {16, 16, false}, {16, 16, true}, {8, 8, true}};
    TempDir_cls dir;
    ImageIO_cls io;
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << "buffer " << c.colorDepth << " bits, file " << c.bits << " bits"
                                        << (c.bAlpha ? " with alpha" : ""));
        FBO_cls fbo(kSide, kSide, nullptr);
        fbo.SetGeometryFBO(kSide, kSide);
        fbo.SetColorDepth(c.colorDepth);
        fbo.MakeFBO(true, false);
        fbo.Bind();
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, kSide, kSide, GL_RGBA, GL_HALF_FLOAT, vHalf.data());
        const GLenum type = c.bits == 16 ? GL_UNSIGNED_SHORT : GL_UNSIGNED_BYTE;
        std::vector<uint16_t> vExpect(vHalf.size());
        std::vector<uint8_t> vExpect8(vHalf.size());
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, type,
                      c.bits == 16 ? static_cast<void*>(vExpect.data())
                                   : static_cast<void*>(vExpect8.data()));
        if (c.bits == 8)
            vExpect.assign(vExpect8.begin(), vExpect8.end());
        io.mPNGBitDepth = c.bits;
        io.mPNGCompression = 1;
        const wxString strPath = dir.Path("f.png");
        io.SaveImageFromFBO(&fbo, wxSize(kSide, kSide), strPath, c.bAlpha);
        const std::vector<ImageIO_cls::Result_cls> vResults = io.WaitAll();
        ASSERT_EQ(vResults.size(), 1u);
        ASSERT_TRUE(vResults[0].mbOk);
        PNGImage_cls image;
        ASSERT_TRUE(ReadPNG_cls::ReadPNG(strPath, image));
        ASSERT_EQ(image.mBitDepth, c.bits);
        ASSERT_EQ(image.mbAlpha, c.bAlpha);
        int wrong = 0;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                // The file runs top to bottom, GL bottom to top.
                const size_t file = static_cast<size_t>(kSide - 1 - y) * kSide + x;
                const size_t gl = (static_cast<size_t>(y) * kSide + x) * 4;
                for (int ch = 0; ch < (c.bAlpha ? 4 : 3); ++ch) {
                    const int got =
                        ch == 3 ? (c.bits == 16 ? image.mVAlpha16[file] : image.mVAlpha8[file])
                                : (c.bits == 16 ? image.mVRGB16[file * 3 + ch] : image.mVRGB8[file * 3 + ch]);
                    if (got != vExpect[gl + ch] && ++wrong <= 5)
                        ADD_FAILURE() << "pixel " << x << "," << y << " channel " << ch << " half 0x"
                                      << std::hex << vHalf[gl + ch] << std::dec << ": " << got
                                      << " instead of " << vExpect[gl + ch];
                }
            }
        }
        EXPECT_EQ(wrong, 0);
    }
}
