#include "SliceImage_cls.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

struct FileCloser {
    void operator()(FILE* fp) const {
        if (fp)
            fclose(fp);
    }
};

void OnPngError(png_structp png, png_const_charp) {
    longjmp(png_jmpbuf(png), 1);
}

void OnPngWarning(png_structp, png_const_charp) {}

// The libpng part, kept free of C++ objects with destructors because an error leaves through
// longjmp. rows is filled with row pointers into pixels once the size is known; pixels is
// allocated by the caller's callback.
struct PngRead {
    png_structp png = nullptr;
    png_infop info = nullptr;
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int channels = 0;
};

bool ReadInfo(FILE* fp, PngRead& r) {
    unsigned char sig[8];
    if (fread(sig, 1, 8, fp) != 8 || png_sig_cmp(sig, 0, 8) != 0)
        return false;
    r.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    if (!r.png)
        return false;
    r.info = png_create_info_struct(r.png);
    if (!r.info)
        return false;
    if (setjmp(png_jmpbuf(r.png)))
        return false;
    png_init_io(r.png, fp);
    png_set_sig_bytes(r.png, 8);
    png_set_user_limits(r.png, 1u << 20, 1u << 20);
    png_read_info(r.png, r.info);
    int bitDepth = png_get_bit_depth(r.png, r.info);
    int colorType = png_get_color_type(r.png, r.info);
    if (bitDepth == 16)
        png_set_strip_16(r.png);
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_palette_to_rgb(r.png);
    if (colorType == PNG_COLOR_TYPE_GRAY && bitDepth < 8)
        png_set_expand_gray_1_2_4_to_8(r.png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA)
        png_set_gray_to_rgb(r.png);
    if (bitDepth < 8 && colorType != PNG_COLOR_TYPE_GRAY)
        png_set_packing(r.png);
    png_read_update_info(r.png, r.info);
    r.width = png_get_image_width(r.png, r.info);
    r.height = png_get_image_height(r.png, r.info);
    r.channels = png_get_channels(r.png, r.info);
    return true;
}

bool ReadRows(PngRead& r, png_bytep* rows) {
    if (setjmp(png_jmpbuf(r.png)))
        return false;
    png_read_image(r.png, rows);
    png_read_end(r.png, nullptr);
    return true;
}

} // namespace

bool SliceImage_cls::ReadSize(const wxString& strPath, int& width, int& height) {
    std::unique_ptr<FILE, FileCloser> fp(fopen(strPath.fn_str(), "rb"));
    if (!fp)
        return false;
    PngRead r;
    bool bOk = ReadInfo(fp.get(), r);
    if (bOk) {
        width = static_cast<int>(r.width);
        height = static_cast<int>(r.height);
    }
    if (r.png)
        png_destroy_read_struct(&r.png, r.info ? &r.info : nullptr, nullptr);
    return bOk;
}

bool SliceImage_cls::LoadRed(const wxString& strPath, std::vector<unsigned char>& red, int& width,
                             int& height) {
    red.clear();
    std::unique_ptr<FILE, FileCloser> fp(fopen(strPath.fn_str(), "rb"));
    if (!fp)
        return false;
    PngRead r;
    bool bOk = ReadInfo(fp.get(), r);
    const long long pixels = static_cast<long long>(r.width) * r.height;
    if (bOk && (pixels <= 0 || pixels > msMaxPixels || r.channels < 1))
        bOk = false;
    if (bOk) {
        const size_t stride = static_cast<size_t>(r.width) * r.channels;
        std::vector<unsigned char> pixelData;
        std::vector<png_bytep> rows;
        pixelData.resize(stride * r.height);
        rows.resize(r.height);
        for (png_uint_32 y = 0; y < r.height; ++y)
            rows[y] = pixelData.data() + y * stride;
        bOk = ReadRows(r, rows.data());
        if (bOk) {
            red.resize(static_cast<size_t>(pixels));
            for (size_t i = 0; i < static_cast<size_t>(pixels); ++i)
                red[i] = pixelData[i * r.channels];
            width = static_cast<int>(r.width);
            height = static_cast<int>(r.height);
        }
    }
    if (r.png)
        png_destroy_read_struct(&r.png, r.info ? &r.info : nullptr, nullptr);
    return bOk;
}
