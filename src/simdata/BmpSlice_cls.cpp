#include "BmpSlice_cls.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr uint32_t kPlain = 0;
constexpr uint32_t kRle8 = 1;
constexpr uint32_t kRle4 = 2;
constexpr uint32_t kBitFields = 3;
constexpr uint32_t kAlphaBitFields = 6;
// File header, the largest info header, four masks and a palette of 256 entries.
constexpr size_t kMaxHeadBytes = 14 + 124 + 16 + 4 * 256;

uint32_t U16(const unsigned char* p) {
    return p[0] | p[1] << 8;
}
uint32_t U32(const unsigned char* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
}

// The red field of a 16- or 32-bit pixel, widened or narrowed to 8 bits.
struct RedField {
    uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    void Set(uint32_t m) {
        mask = m;
        shift = bits = 0;
        while (m && !(m & 1)) {
            m >>= 1;
            ++shift;
        }
        while (m & 1) {
            m >>= 1;
            ++bits;
        }
    }
    unsigned char Of(uint32_t pixel) const {
        if (bits == 0)
            return 0;
        const uint32_t v = (pixel & mask) >> shift;
        if (bits >= 8)
            return static_cast<unsigned char>(v >> (bits - 8));
        const uint32_t top = (1u << bits) - 1;
        return static_cast<unsigned char>((v * 255 + top / 2) / top);
    }
};

struct BmpHeader {
    long long width = 0;
    long long height = 0; // always positive; bTopDown says the order of the rows
    bool bTopDown = false;
    int bpp = 0;
    uint32_t compression = kPlain;
    uint32_t offBits = 0;
    RedField red;
    std::vector<unsigned char> paletteRed;

    unsigned char Palette(uint32_t index) const { return index < paletteRed.size() ? paletteRed[index] : 0; }
    size_t Stride() const { return static_cast<size_t>((width * bpp + 31) / 32) * 4; }
};

bool ParseHeader(const std::vector<unsigned char>& head, BmpHeader& h, SlicePixels_cls& slice) {
    if (head.size() < 18)
        return slice.Fail("BMP header ends early");
    h.offBits = U32(&head[10]);
    const uint32_t infoSize = U32(&head[14]);
    const bool bCore = infoSize == 12; // the old OS/2 header: 16-bit sizes, 3-byte palette entries
    if (!bCore && (infoSize < 40 || infoSize > 124))
        return slice.Fail(wxString::Format("BMP header of %u bytes is not read", infoSize));
    if (head.size() < 14 + infoSize)
        return slice.Fail("BMP header ends early");
    size_t paletteAt = 14 + infoSize;
    uint32_t colours = 0;
    if (bCore) {
        h.width = U16(&head[18]);
        h.height = U16(&head[20]);
        h.bpp = static_cast<int>(U16(&head[24]));
    } else {
        h.width = static_cast<int32_t>(U32(&head[18]));
        h.height = static_cast<int32_t>(U32(&head[22]));
        h.bpp = static_cast<int>(U16(&head[28]));
        h.compression = U32(&head[30]);
        colours = U32(&head[46]);
    }
    if (h.height < 0) {
        h.height = -h.height;
        h.bTopDown = true;
    }
    if (h.bpp != 1 && h.bpp != 4 && h.bpp != 8 && h.bpp != 16 && h.bpp != 24 && h.bpp != 32)
        return slice.Fail(wxString::Format("BMP of %d bits per pixel is not read", h.bpp));
    const uint32_t c = h.compression;
    const bool bFields = c == kBitFields || c == kAlphaBitFields;
    if (!(c == kPlain || (c == kRle8 && h.bpp == 8) || (c == kRle4 && h.bpp == 4) ||
          (bFields && (h.bpp == 16 || h.bpp == 32))))
        return slice.Fail(
            wxString::Format("BMP compression %u is not read with %d bits per pixel", c, h.bpp));
    if (bFields) {
        // The masks stand in the larger headers, or right behind the 40-byte one.
        const size_t masksAt = 14 + 40;
        if (infoSize == 40)
            paletteAt += c == kBitFields ? 12 : 16;
        if (head.size() < masksAt + 4)
            return slice.Fail("BMP header ends early");
        h.red.Set(U32(&head[masksAt]));
    } else if (h.bpp == 16) {
        h.red.Set(0x7c00); // 5-5-5
    } else if (h.bpp == 32) {
        h.red.Set(0x00ff0000);
    }
    if (h.bpp <= 8) {
        const uint32_t most = 1u << h.bpp;
        const uint32_t count = colours == 0 || colours > most ? most : colours;
        const size_t entry = bCore ? 3 : 4;
        if (head.size() < paletteAt + count * entry)
            return slice.Fail("BMP palette ends early");
        h.paletteRed.resize(count);
        for (uint32_t i = 0; i < count; ++i)
            h.paletteRed[i] = head[paletteAt + i * entry + 2]; // B, G, R
    }
    return slice.SetSize(h.width, h.height, false);
}

void DecodePlain(const BmpHeader& h, const unsigned char* pData, SlicePixels_cls& slice) {
    const size_t stride = h.Stride();
    const uint32_t indexMask = h.bpp <= 8 ? (1u << h.bpp) - 1 : 0; // used for palette pictures only
    for (int r = 0; r < slice.mHeight; ++r) {
        const unsigned char* p = pData + static_cast<size_t>(r) * stride;
        unsigned char* pRow = slice.Row(h.bTopDown ? r : slice.mHeight - 1 - r);
        for (int x = 0; x < slice.mWidth; ++x) {
            const size_t bit = static_cast<size_t>(x) * h.bpp;
            switch (h.bpp) {
            case 16:
                pRow[x] = h.red.Of(U16(p + 2 * static_cast<size_t>(x)));
                break;
            case 24:
                pRow[x] = p[3 * static_cast<size_t>(x) + 2];
                break;
            case 32:
                pRow[x] = h.red.Of(U32(p + 4 * static_cast<size_t>(x)));
                break;
            default: // 1, 4 or 8 bits, the leftmost pixel in the highest bits
                pRow[x] = h.Palette((p[bit / 8] >> (8 - h.bpp - bit % 8)) & indexMask);
                break;
            }
        }
    }
}

// RLE8 and RLE4: pairs of a count and a palette index (two for RLE4, used in turn), or a zero
// and an escape: 0 ends a row, 1 ends the picture, 2 moves right and up, more are that many
// indices as they stand, padded to an even byte count. Skipped pixels get palette entry 0.
bool DecodeRle(const BmpHeader& h, const std::vector<unsigned char>& data, SlicePixels_cls& slice) {
    const bool bRle8 = h.compression == kRle8;
    const long long w = slice.mWidth, rows = slice.mHeight;
    std::fill(slice.mRed.begin(), slice.mRed.end(), h.Palette(0));
    long long x = 0, row = 0;
    auto put = [&](uint32_t index) {
        if (x < w && row < rows)
            slice.Row(static_cast<int>(h.bTopDown ? row : rows - 1 - row))[x] = h.Palette(index);
        ++x;
    };
    const size_t n = data.size();
    size_t p = 0;
    while (row < rows) {
        if (p + 2 > n)
            return slice.Fail("BMP data ends early");
        const uint32_t count = data[p], code = data[p + 1];
        p += 2;
        if (count > 0) {
            for (uint32_t i = 0; i < count; ++i)
                put(bRle8 ? code : (i % 2 == 0 ? code >> 4 : code & 15));
        } else if (code == 0) {
            x = 0;
            ++row;
        } else if (code == 1) {
            return true;
        } else if (code == 2) {
            if (p + 2 > n)
                return slice.Fail("BMP data ends early");
            x += data[p];
            row += data[p + 1];
            p += 2;
        } else {
            const size_t bytes = bRle8 ? code : (code + 1) / 2;
            if (p + bytes > n)
                return slice.Fail("BMP data ends early");
            for (uint32_t i = 0; i < code; ++i)
                put(bRle8 ? data[p + i] : (i % 2 == 0 ? data[p + i / 2] >> 4 : data[p + i / 2] & 15));
            p += (bytes + 1) & ~size_t(1);
        }
    }
    return true; // every row was given, even if the end mark was left out
}

} // namespace

bool BmpSlice_cls::Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice) {
    std::vector<unsigned char> head(kMaxHeadBytes);
    head.resize(fread(head.data(), 1, head.size(), fp));
    BmpHeader h;
    if (!ParseHeader(head, h, slice))
        return false;
    if (bSizeOnly)
        return true;
    // Only what the picture can need is read: a plain picture's rows, or as much as the worst
    // run-length coding of them takes (one pair per pixel and an end mark per row), and never
    // more than the file holds.
    const bool bRle = h.compression == kRle8 || h.compression == kRle4;
    const size_t need = bRle ? static_cast<size_t>((2 * h.width + 4) * h.height + 2) : h.Stride() * h.height;
    if (fseek(fp, 0, SEEK_END) != 0)
        return slice.Fail("BMP data cannot be read");
    const long fileSize = ftell(fp);
    if (fileSize < 0 || static_cast<unsigned long>(fileSize) <= h.offBits ||
        (!bRle && static_cast<unsigned long>(fileSize) - h.offBits < need))
        return slice.Fail("BMP data ends early");
    std::vector<unsigned char> data(std::min(need, static_cast<size_t>(fileSize) - h.offBits));
    if (fseek(fp, h.offBits, SEEK_SET) != 0 || fread(data.data(), 1, data.size(), fp) != data.size())
        return slice.Fail("BMP data cannot be read");
    slice.SetSize(h.width, h.height, true);
    if (bRle)
        return DecodeRle(h, data, slice);
    DecodePlain(h, data.data(), slice);
    return true;
}
