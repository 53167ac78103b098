#include "ReadPNG_cls.h"

#include <png.h>

#include <csetjmp>

namespace {
// Rows as libpng returns them after the transforms: RGB or RGBA, 1 or 2 bytes per sample.
std::vector<std::vector<png_byte>> ReadRows(png_structp png, png_infop info) {
    const int height = static_cast<int>(png_get_image_height(png, info));
    const size_t rowBytes = png_get_rowbytes(png, info);
    std::vector<std::vector<png_byte>> vRows(height, std::vector<png_byte>(rowBytes));
    std::vector<png_bytep> vPointers(height);
    for (int y = 0; y < height; ++y)
        vPointers[y] = vRows[y].data();
    png_read_image(png, vPointers.data());
    return vRows;
}
} // namespace

bool ReadPNG_cls::ReadPNGMain8bit(void* pPng, void* pInfo, PNGImage_cls& image) {
    png_structp png = static_cast<png_structp>(pPng);
    png_infop info = static_cast<png_infop>(pInfo);
    const std::vector<std::vector<png_byte>> vRows = ReadRows(png, info);
    const int channels = image.mbAlpha ? 4 : 3;
    image.mVRGB8.resize(static_cast<size_t>(image.mWidth) * image.mHeight * 3);
    if (image.mbAlpha)
        image.mVAlpha8.resize(static_cast<size_t>(image.mWidth) * image.mHeight);
    for (int y = 0; y < image.mHeight; ++y) {
        for (int x = 0; x < image.mWidth; ++x) {
            const png_byte* p = vRows[y].data() + static_cast<size_t>(x) * channels;
            const size_t i = static_cast<size_t>(y) * image.mWidth + x;
            for (int c = 0; c < 3; ++c)
                image.mVRGB8[i * 3 + c] = p[c];
            if (image.mbAlpha)
                image.mVAlpha8[i] = p[3];
        }
    }
    return true;
}

bool ReadPNG_cls::ReadPNGMain16bit(void* pPng, void* pInfo, PNGImage_cls& image) {
    png_structp png = static_cast<png_structp>(pPng);
    png_infop info = static_cast<png_infop>(pInfo);
    const std::vector<std::vector<png_byte>> vRows = ReadRows(png, info);
    const int channels = image.mbAlpha ? 4 : 3;
    image.mVRGB16.resize(static_cast<size_t>(image.mWidth) * image.mHeight * 3);
    if (image.mbAlpha)
        image.mVAlpha16.resize(static_cast<size_t>(image.mWidth) * image.mHeight);
    // The file holds big-endian samples.
    auto sample = [](const png_byte* p) { return static_cast<uint16_t>((p[0] << 8) | p[1]); };
    for (int y = 0; y < image.mHeight; ++y) {
        for (int x = 0; x < image.mWidth; ++x) {
            const png_byte* p = vRows[y].data() + static_cast<size_t>(x) * channels * 2;
            const size_t i = static_cast<size_t>(y) * image.mWidth + x;
            for (int c = 0; c < 3; ++c)
                image.mVRGB16[i * 3 + c] = sample(p + c * 2);
            if (image.mbAlpha)
                image.mVAlpha16[i] = sample(p + 6);
        }
    }
    return true;
}

bool ReadPNG_cls::ReadPNG(FILE*& rpFile, const wxString& strPath, PNGImage_cls& image) {
    image = PNGImage_cls();
    rpFile = fopen(strPath.fn_str(), "rb");
    if (!rpFile)
        return false;
    png_byte header[8];
    if (fread(header, 1, 8, rpFile) != 8 || png_sig_cmp(header, 0, 8) != 0) {
        fclose(rpFile);
        rpFile = nullptr;
        return false;
    }
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    // Volatile: it must keep its value across the long jump of a libpng error.
    volatile bool bOk = false;
    if (png && info && !setjmp(png_jmpbuf(png))) {
        png_init_io(png, rpFile);
        png_set_sig_bytes(png, 8);
        png_read_info(png, info);
        const int colorType = png_get_color_type(png, info);
        const int bitDepth = png_get_bit_depth(png, info);
        // Everything becomes RGB or RGBA at 8 or 16 bits.
        if (colorType == PNG_COLOR_TYPE_PALETTE)
            png_set_palette_to_rgb(png);
        if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA)
            png_set_gray_to_rgb(png);
        if (bitDepth < 8)
            png_set_expand(png);
        const bool bTRNS = png_get_valid(png, info, PNG_INFO_tRNS) != 0;
        if (bTRNS)
            png_set_tRNS_to_alpha(png);
        png_read_update_info(png, info);
        image.mWidth = static_cast<int>(png_get_image_width(png, info));
        image.mHeight = static_cast<int>(png_get_image_height(png, info));
        image.mBitDepth = png_get_bit_depth(png, info) == 16 ? 16 : 8;
        image.mbAlpha = (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0;
        bOk = image.mBitDepth == 16 ? ReadPNGMain16bit(png, info, image) : ReadPNGMain8bit(png, info, image);
        png_read_end(png, nullptr);
    } else {
        image = PNGImage_cls();
    }
    png_destroy_read_struct(&png, &info, nullptr);
    fclose(rpFile);
    rpFile = nullptr;
    return bOk;
}
