#include "FBO_cls.h"
#include "ImageIO_cls.h"
#include "ImageResample_cls.h"
#include "ReadPNG_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"

#include <epoxy/gl.h>

#include <cmath>
#include <random>

using WriterExactTest = RenderFixture;

// Every half value in each channel (NaN, infinities, negatives, above one) of a buffer saved through
// the writers: each sample of the file is the driver's own converting read-back of it, at 8 and
// 16 bits, with and without alpha, from half-float buffers (copied raw) and from 8-bit ones.
TEST_F(WriterExactTest, FilesHoldTheDriversConversionOfEverySample) {
    constexpr int kSide = 256;
    std::vector<uint16_t> vHalf(kSide * kSide * 4), vExpect(vHalf.size());
    for (size_t k = 0; k < vHalf.size(); ++k)
        vHalf[k] = static_cast<uint16_t>((k / 4) * (2 * (k % 4) + 1) + k % 4);
    TempDir_cls dir;
    ImageIO_cls io;
    for (const int c : {16080, 16081, 16160, 16161, 8081}) { // buffer bits, file bits, alpha
        SCOPED_TRACE(c);
        const int bits = c / 10 % 100, channels = c % 10 ? 4 : 3;
        FBO_cls fbo(kSide, kSide, nullptr);
        fbo.SetGeometryFBO(kSide, kSide);
        fbo.SetColorDepth(c / 1000);
        fbo.MakeFBO(true, false);
        fbo.Bind();
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, kSide, kSide, GL_RGBA, GL_HALF_FLOAT, vHalf.data());
        std::vector<uint8_t> v8(vHalf.size());
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, bits == 16 ? GL_UNSIGNED_SHORT : GL_UNSIGNED_BYTE,
                      bits == 16 ? static_cast<void*>(vExpect.data()) : v8.data());
        if (bits == 8)
            vExpect.assign(v8.begin(), v8.end());
        io.mPNGBitDepth = bits;
        io.SaveImageFromFBO(&fbo, wxSize(kSide, kSide), dir.Path("f.png"), channels == 4);
        ASSERT_TRUE(io.WaitAll().at(0).mbOk);
        PNGImage_cls image;
        ASSERT_TRUE(ReadPNG_cls::ReadPNG(dir.Path("f.png"), image));
        for (size_t k = 0; k < vHalf.size(); ++k) {
            const size_t ch = k % 4, file = (kSide - 1 - k / 4 / kSide) * kSide + k / 4 % kSide;
            if (ch == 3 && channels == 3)
                continue;
            ASSERT_EQ(ch == 3 ? (bits == 16 ? image.mVAlpha16[file] : image.mVAlpha8[file])
                              : (bits == 16 ? image.mVRGB16[file * 3 + ch] : image.mVRGB8[file * 3 + ch]),
                      vExpect[k])
                << "half 0x" << std::hex << vHalf[k];
        }
    }
}

// Resampling gives each sample the very average of its source rectangle, bit for bit.
TEST(ResizeExactTest, EverySampleIsTheAverageOfItsRectangle) {
    const int cases[][4] = {
        {64, 3, 40, 23}, {64, 4, 23, 40}, {32, 4, 77, 45}, {48, 3, 7, 5}, {40, 1, 30, 17}};
    std::mt19937 rng(7);
    for (const auto& c : cases) { // side, channels, width, height
        SCOPED_TRACE(testing::Message() << c[0] << " " << c[1] << " " << c[2] << " " << c[3]);
        std::vector<float> vSource(c[0] * c[0] * c[1]), vOut(c[2] * c[3] * c[1]);
        for (float& v : vSource)
            v = rng() % 256 / 255.f;
        ImageResample_cls::Resize(vSource.data(), c[0], c[1], c[2], c[3], vOut.data());
        for (size_t k = 0; k < vOut.size(); ++k) {
            const int px = static_cast<int>(k) / c[1];
            double x0, y0, x1, y1;
            ImageResample_cls::GetSourceRect(c[0], c[2], c[3], px % c[2], px / c[2], x0, y0, x1, y1);
            ASSERT_EQ(vOut[k], static_cast<float>(ImageResample_cls::GetAverage(vSource.data(), c[0], c[1],
                                                                                k % c[1], x0, y0, x1, y1)));
        }
    }
}
