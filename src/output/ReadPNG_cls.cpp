#include "ReadPNG_cls.h"

#include <png.h>

#include <csetjmp>
#include <memory>

namespace {
// The row buffers of one read. They live on the heap, made before libpng's jump point: a file cut
// short jumps back over the reading code, whose own locals would never be freed.
struct Rows_cls {
    std::vector<std::vector<png_byte>> mVRows;
    std::vector<png_bytep> mVPointers;
};

// Rows as libpng returns them after the transforms: RGB or RGBA, 1 or 2 bytes per sample.
void ReadRows(png_structp png, png_infop info, Rows_cls& rows) {
    const int height = static_cast<int>(png_get_image_height(png, info));
    const size_t rowBytes = png_get_rowbytes(png, info);
    rows.mVRows.assign(height, std::vector<png_byte>(rowBytes));
    rows.mVPointers.resize(height);
    for (int y = 0; y < height; ++y)
        rows.mVPointers[y] = rows.mVRows[y].data();
    png_read_image(png, rows.mVPointers.data());
}
} // namespace

namespace {
// Splits the rows into RGB and alpha; sample(p) reads one sample of the file's width.
template <class T, class Sample_T>
void SplitRows(png_structp png, png_infop info, Rows_cls& rows, PNGImage_cls& image, std::vector<T>& vRGB,
               std::vector<T>& vAlpha, Sample_T sample) {
    ReadRows(png, info, rows);
    const std::vector<std::vector<png_byte>>& vRows = rows.mVRows;
    const int channels = image.mbAlpha ? 4 : 3;
    const size_t bytes = sizeof(T);
    vRGB.resize(static_cast<size_t>(image.mWidth) * image.mHeight * 3);
    if (image.mbAlpha)
        vAlpha.resize(static_cast<size_t>(image.mWidth) * image.mHeight);
    for (int y = 0; y < image.mHeight; ++y) {
        for (int x = 0; x < image.mWidth; ++x) {
            const png_byte* p = vRows[y].data() + static_cast<size_t>(x) * channels * bytes;
            const size_t i = static_cast<size_t>(y) * image.mWidth + x;
            for (int c = 0; c < 3; ++c)
                vRGB[i * 3 + c] = sample(p + c * bytes);
            if (image.mbAlpha)
                vAlpha[i] = sample(p + 3 * bytes);
        }
    }
}
} // namespace

bool ReadPNG_cls::ReadPNGMain8bit(void* pPng, void* pInfo, void* pRows, PNGImage_cls& image) {
    SplitRows(static_cast<png_structp>(pPng), static_cast<png_infop>(pInfo), *static_cast<Rows_cls*>(pRows),
              image, image.mVRGB8, image.mVAlpha8,
              [](const png_byte* p) { return static_cast<uint8_t>(p[0]); });
    return true;
}

bool ReadPNG_cls::ReadPNGMain16bit(void* pPng, void* pInfo, void* pRows, PNGImage_cls& image) {
    // The file holds big-endian samples.
    SplitRows(static_cast<png_structp>(pPng), static_cast<png_infop>(pInfo), *static_cast<Rows_cls*>(pRows),
              image, image.mVRGB16, image.mVAlpha16,
              [](const png_byte* p) { return static_cast<uint16_t>((p[0] << 8) | p[1]); });
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
    // Not changed after the jump point, so it is valid after a jump.
    const std::unique_ptr<Rows_cls> pRows = std::make_unique<Rows_cls>();
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
        bOk = image.mBitDepth == 16 ? ReadPNGMain16bit(png, info, pRows.get(), image)
                                    : ReadPNGMain8bit(png, info, pRows.get(), image);
        png_read_end(png, nullptr);
    } else {
        image = PNGImage_cls();
    }
    png_destroy_read_struct(&png, &info, nullptr);
    fclose(rpFile);
    rpFile = nullptr;
    return bOk;
}
