#include "HeightFieldSnap_cls.h"

#include "SliceImage_cls.h"
#include "UseGZ_cls.h"

#include <wx/log.h>

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

// The PNG decoder of height fields reads from memory (so gzip files serve as well) and keeps 16
// bits, which the slice reader of stacks reduces to 8.
struct PngMemory {
    const unsigned char* p = nullptr;
    size_t left = 0;
    char strError[160] = {0};
};

void OnRead(png_structp png, png_bytep out, png_size_t n) {
    auto* pMem = static_cast<PngMemory*>(png_get_io_ptr(png));
    if (n > pMem->left)
        png_error(png, "the file ends early");
    memcpy(out, pMem->p, n);
    pMem->p += n;
    pMem->left -= n;
}

void OnError(png_structp png, png_const_charp message) {
    auto* pMem = static_cast<PngMemory*>(png_get_error_ptr(png));
    snprintf(pMem->strError, sizeof(pMem->strError), "%s", message);
    longjmp(png_jmpbuf(png), 1);
}

void OnWarning(png_structp, png_const_charp) {}

// Index of the wanted channel within a pixel of the given channel count; -1 for "none" (alpha
// of a picture without one).
int ChannelIndex(int channel, int channels) {
    const bool bAlpha = channels == 2 || channels == 4;
    if (channel == 3)
        return bAlpha ? channels - 1 : -1;
    if (channels <= 2)
        return 0;
    return channel < 0 || channel > 2 ? 0 : channel;
}

bool DecodePng(const unsigned char* pData, size_t size, int channel, int& width, int& height,
               std::vector<float>& heights, wxString& strWhy) {
    PngMemory mem;
    mem.p = pData;
    mem.left = size;
    // Everything that lives across the jump is made before it.
    std::vector<unsigned char> pixels;
    std::vector<png_bytep> rows;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &mem, OnError, OnWarning);
    if (!png) {
        strWhy = "the PNG decoder could not start";
        return false;
    }
    png_infop info = png_create_info_struct(png);
    volatile bool bOK = false; // survives the jump
    if (setjmp(png_jmpbuf(png))) {
        strWhy = wxString::Format("broken PNG (%s)", mem.strError);
        png_destroy_read_struct(&png, &info, nullptr);
        return false;
    }
    png_set_read_fn(png, &mem, OnRead);
    png_set_user_limits(png, 1u << 20, 1u << 20);
    png_read_info(png, info);
    const int depth = png_get_bit_depth(png, info);
    const int colorType = png_get_color_type(png, info);
    const long long w = png_get_image_width(png, info);
    const long long h = png_get_image_height(png, info);
    if ((depth != 8 && depth != 16) || colorType == PNG_COLOR_TYPE_PALETTE) {
        strWhy = wxString::Format("a PNG of %d bits per sample%s: heights need 8 or 16 bits", depth,
                                  colorType == PNG_COLOR_TYPE_PALETTE ? " with a palette" : "");
    } else if (w * h > HeightFieldSnap_cls::msMaxSamples) {
        strWhy = wxString::Format("a PNG of %lld x %lld is too large", w, h);
    } else {
        const int channels = png_get_channels(png, info);
        const size_t rowBytes = png_get_rowbytes(png, info);
        pixels.resize(rowBytes * static_cast<size_t>(h));
        rows.resize(static_cast<size_t>(h));
        for (long long y = 0; y < h; ++y)
            rows[static_cast<size_t>(y)] = pixels.data() + static_cast<size_t>(y) * rowBytes;
        png_read_image(png, rows.data());
        width = static_cast<int>(w);
        height = static_cast<int>(h);
        heights.assign(static_cast<size_t>(w * h), 1.0f);
        const int c = ChannelIndex(channel, channels);
        const float scale = depth == 16 ? 1.0f / 65535.0f : 1.0f / 255.0f;
        const int bytes = depth / 8;
        for (int y = 0; c >= 0 && y < height; ++y) {
            const unsigned char* pRow = rows[static_cast<size_t>(y)];
            float* pOut = heights.data() + static_cast<size_t>(height - 1 - y) * width;
            for (int x = 0; x < width; ++x) {
                const unsigned char* s = pRow + (static_cast<size_t>(x) * channels + c) * bytes;
                const unsigned v = bytes == 2 ? (static_cast<unsigned>(s[0]) << 8 | s[1]) : s[0];
                pOut[x] = static_cast<float>(v) * scale;
            }
        }
        bOK = true;
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return bOK;
}

uint32_t ReadLE32(const unsigned char* p) {
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
           static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}

bool DecodeRaw(const unsigned char* pData, size_t size, int& width, int& height, std::vector<float>& heights,
               wxString& strWhy) {
    if (size < 12) {
        strWhy = "the raw grid header is cut short";
        return false;
    }
    const long long w = ReadLE32(pData + 4);
    const long long h = ReadLE32(pData + 8);
    if (w < 1 || h < 1 || w * h > HeightFieldSnap_cls::msMaxSamples) {
        strWhy = wxString::Format("a raw grid of %lld x %lld cannot be a height field", w, h);
        return false;
    }
    const size_t need = static_cast<size_t>(w * h) * 4;
    if (size - 12 < need) {
        strWhy = wxString::Format("the raw grid is short: %zu of %zu bytes of heights", size - 12, need);
        return false;
    }
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    heights.resize(static_cast<size_t>(w * h));
    for (size_t i = 0; i < heights.size(); ++i) {
        const uint32_t bits = ReadLE32(pData + 12 + 4 * i);
        memcpy(&heights[i], &bits, 4);
    }
    return true;
}

} // namespace

HeightFieldSnap_cls::HeightFieldSnap_cls(DataSequence_cls* pSequence, int index)
    : FileSnap_cls(pSequence, 2, index) {}

HeightFieldSnap_cls::~HeightFieldSnap_cls() {
    // The reader writes into the arrays of this class: it must end before they go.
    WaitReadingThread(3);
}

wxString HeightFieldSnap_cls::GetStrInfo() const {
    return wxString::Format("Height field %d: %s\nSize: %d x %d", mIndex, mReadFile, mWidth, mHeight);
}

void HeightFieldSnap_cls::FreeArrays() {
    std::vector<float>().swap(mHeights);
    mWidth = mHeight = 0;
}

bool HeightFieldSnap_cls::DecodeMemory(const unsigned char* pData, size_t size, int channel, int& width,
                                       int& height, std::vector<float>& heights, wxString& strWhy) {
    width = height = 0;
    heights.clear();
    bool bOK = false;
    if (size >= 8 && png_sig_cmp(pData, 0, 8) == 0)
        bOK = DecodePng(pData, size, channel, width, height, heights, strWhy);
    else if (size >= 4 && memcmp(pData, "HF32", 4) == 0)
        bOK = DecodeRaw(pData, size, width, height, heights, strWhy);
    else
        strWhy = "neither a PNG nor a raw grid";
    if (!bOK) {
        width = height = 0;
        heights.clear();
    }
    return bOK;
}

bool HeightFieldSnap_cls::ReadFileInto(const wxString& strFile) {
    std::string bytes;
    if (!UseGZ_cls::CopyToString(&bytes, strFile)) {
        wxLogMessage("Height field %s cannot be read: no heights", strFile);
        return false;
    }
    const auto* pData = reinterpret_cast<const unsigned char*>(bytes.data());
    wxString strWhy;
    if (DecodeMemory(pData, bytes.size(), mChannel, mWidth, mHeight, mHeights, strWhy))
        return true;
    // Other pictures go through the stack reader, 8 bits.
    const SliceImage_cls::Type type = SliceImage_cls::Sniff(pData, bytes.size());
    if (type != SliceImage_cls::Type::Unknown && type != SliceImage_cls::Type::Png) {
        SlicePixels_cls slice;
        slice.mbColour = true;
        if (SliceImage_cls::Load(strFile, slice)) {
            mWidth = slice.mWidth;
            mHeight = slice.mHeight;
            mHeights.assign(static_cast<size_t>(mWidth) * mHeight, 1.0f);
            const bool bRGBA = !slice.mRGBA.empty();
            for (int y = 0; y < mHeight; ++y)
                for (int x = 0; x < mWidth; ++x) {
                    const size_t src = static_cast<size_t>(y) * mWidth + x;
                    float& out = mHeights[static_cast<size_t>(mHeight - 1 - y) * mWidth + x];
                    if (bRGBA)
                        out = slice.mRGBA[src * 4 + (mChannel < 0 || mChannel > 3 ? 0 : mChannel)] / 255.0f;
                    else if (mChannel != 3)
                        out = slice.mRed[src] / 255.0f;
                }
            return true;
        }
        strWhy = slice.mStrWhy;
    }
    wxLogMessage("Height field %s gives no heights: %s", strFile, strWhy);
    return false;
}
