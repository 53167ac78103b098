#include "PngSlice_cls.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// The libpng part, kept free of C++ objects with destructors because an error leaves through
// longjmp; libpng's message is copied into strError on the way out.
struct PngRead {
    png_structp png = nullptr;
    png_infop info = nullptr;
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int channels = 0;
    bool bColour = false;
    char strError[160] = "";
};

void OnPngError(png_structp png, png_const_charp message) {
    auto* pRead = static_cast<PngRead*>(png_get_error_ptr(png));
    std::snprintf(pRead->strError, sizeof pRead->strError, "%s", message);
    longjmp(png_jmpbuf(png), 1);
}

void OnPngWarning(png_structp, png_const_charp) {}

bool ReadInfo(FILE* fp, PngRead& r) {
    unsigned char sig[8];
    if (fread(sig, 1, 8, fp) != 8 || png_sig_cmp(sig, 0, 8) != 0) {
        std::snprintf(r.strError, sizeof r.strError, "no PNG signature");
        return false;
    }
    r.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &r, OnPngError, OnPngWarning);
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
    // Stripping keeps the high byte of 16-bit samples: what every slice format gives.
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
    // Colour readers get four channels: transparency chunks become alpha, opaque pictures get 255.
    if (r.bColour) {
        if (png_get_valid(r.png, r.info, PNG_INFO_tRNS))
            png_set_tRNS_to_alpha(r.png);
        png_set_filler(r.png, 0xff, PNG_FILLER_AFTER);
    }
    // Adam7 pictures are put together by libpng; png_read_image then gives whole rows.
    png_set_interlace_handling(r.png);
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

bool Decode(FILE* fp, PngRead& r, bool bSizeOnly, SlicePixels_cls& slice) {
    if (!ReadInfo(fp, r))
        return slice.Fail(wxString::Format("PNG data cannot be decoded: %s", r.strError));
    if (!slice.SetSize(r.width, r.height, !bSizeOnly))
        return false;
    if (bSizeOnly)
        return true;
    if (r.channels < 1)
        return slice.Fail("PNG without channels");
    const size_t stride = static_cast<size_t>(r.width) * r.channels;
    std::vector<unsigned char> pixelData(stride * r.height);
    std::vector<png_bytep> rows(r.height);
    for (png_uint_32 y = 0; y < r.height; ++y)
        rows[y] = pixelData.data() + y * stride;
    if (!ReadRows(r, rows.data()))
        return slice.Fail(wxString::Format("PNG data cannot be decoded: %s", r.strError));
    for (size_t i = 0; i < slice.mRed.size(); ++i)
        slice.mRed[i] = pixelData[i * r.channels];
    if (slice.mbColour && r.channels == 4)
        slice.mRGBA = std::move(pixelData);
    return true;
}

} // namespace

bool PngSlice_cls::Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice) {
    PngRead r;
    r.bColour = slice.mbColour;
    const bool bOk = Decode(fp, r, bSizeOnly, slice);
    if (r.png)
        png_destroy_read_struct(&r.png, r.info ? &r.info : nullptr, nullptr);
    return bOk;
}
