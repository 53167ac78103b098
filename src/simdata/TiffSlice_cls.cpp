#include "TiffSlice_cls.h"

#include <tiffio.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

struct TiffCloser {
    void operator()(TIFF* pTif) const { TIFFClose(pTif); }
};

// The first error libtiff reports for this file: the reason given in the log.
struct TiffMessages {
    char strError[200] = "";
};

int OnTiffError(TIFF*, void* pUser, const char* module, const char* fmt, va_list args) {
    auto* pMessages = static_cast<TiffMessages*>(pUser);
    if (pMessages->strError[0] == '\0') {
        char text[160];
        std::vsnprintf(text, sizeof text, fmt, args);
        std::snprintf(pMessages->strError, sizeof pMessages->strError, "%s: %s", module ? module : "TIFF",
                      text);
    }
    return 1; // handled: nothing reaches libtiff's global handler on stderr
}

int OnTiffWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1; // unknown tags and the like do not stop a slice
}

wxString Why(const TiffMessages& messages, const char* strWhat) {
    if (messages.strError[0])
        return wxString::Format("TIFF data cannot be decoded: %s", messages.strError);
    return wxString::Format("TIFF data cannot be decoded: %s", strWhat);
}

// How one sample of the first channel becomes the byte of the slice.
struct SampleMap {
    int bits = 8;
    int stride = 1;                 // samples from one pixel to the next in a decoded buffer
    std::vector<unsigned char> lut; // sample value -> byte

    unsigned char At(const unsigned char* pBuf, size_t pixel) const {
        const size_t i = pixel * stride;
        if (bits == 8)
            return lut[pBuf[i]];
        uint16_t v;
        std::memcpy(&v, pBuf + 2 * i, 2);
        return lut[v];
    }
};

// Grey, RGB and palette pictures of 8 or 16 bits per unsigned sample, in the top-left orientation:
// these are read sample by sample. False for anything else.
bool MakeSampleMap(TIFF* pTif, SampleMap& map) {
    uint16_t bits = 0, samples = 0, format = 0, planar = 0, photometric = 0, orientation = 0;
    TIFFGetFieldDefaulted(pTif, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(pTif, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(pTif, TIFFTAG_SAMPLEFORMAT, &format);
    TIFFGetFieldDefaulted(pTif, TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetFieldDefaulted(pTif, TIFFTAG_ORIENTATION, &orientation);
    if (!TIFFGetField(pTif, TIFFTAG_PHOTOMETRIC, &photometric))
        return false;
    if ((bits != 8 && bits != 16) || samples < 1 || format != SAMPLEFORMAT_UINT ||
        orientation != ORIENTATION_TOPLEFT)
        return false;
    map.bits = bits;
    map.stride = planar == PLANARCONFIG_SEPARATE ? 1 : samples;
    const size_t count = size_t(1) << bits;
    map.lut.resize(count);
    const int shift = bits - 8;
    switch (photometric) {
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_RGB:
        for (size_t v = 0; v < count; ++v)
            map.lut[v] = static_cast<unsigned char>(v >> shift);
        return true;
    case PHOTOMETRIC_MINISWHITE:
        for (size_t v = 0; v < count; ++v)
            map.lut[v] = static_cast<unsigned char>(255 - (v >> shift));
        return true;
    case PHOTOMETRIC_PALETTE: {
        uint16_t *pRed = nullptr, *pGreen = nullptr, *pBlue = nullptr;
        if (!TIFFGetField(pTif, TIFFTAG_COLORMAP, &pRed, &pGreen, &pBlue) || !pRed)
            return false;
        // Some writers put 8-bit values in the 16-bit colour map; libtiff's own test for them.
        bool bEightBit = true;
        for (size_t v = 0; v < count && bEightBit; ++v)
            bEightBit = pRed[v] < 256 && pGreen[v] < 256 && pBlue[v] < 256;
        for (size_t v = 0; v < count; ++v)
            map.lut[v] = static_cast<unsigned char>(bEightBit ? pRed[v] : pRed[v] >> 8);
        return true;
    }
    default:
        return false;
    }
}

bool ReadStrips(TIFF* pTif, const SampleMap& map, SlicePixels_cls& slice, const TiffMessages& messages) {
    const tmsize_t size = TIFFScanlineSize(pTif);
    if (size < static_cast<tmsize_t>(static_cast<size_t>(slice.mWidth) * map.stride * map.bits / 8))
        return slice.Fail(Why(messages, "scan lines shorter than the picture"));
    std::vector<unsigned char> line(static_cast<size_t>(size));
    for (int y = 0; y < slice.mHeight; ++y) {
        // Sample 0 is the plane of red or grey when the samples lie in planes of their own.
        if (TIFFReadScanline(pTif, line.data(), static_cast<uint32_t>(y), 0) < 0)
            return slice.Fail(Why(messages, "a scan line cannot be read"));
        unsigned char* pRow = slice.Row(y);
        for (int x = 0; x < slice.mWidth; ++x)
            pRow[x] = map.At(line.data(), static_cast<size_t>(x));
    }
    return true;
}

bool ReadTiles(TIFF* pTif, const SampleMap& map, SlicePixels_cls& slice, const TiffMessages& messages) {
    uint32_t tileW = 0, tileH = 0;
    TIFFGetField(pTif, TIFFTAG_TILEWIDTH, &tileW);
    TIFFGetField(pTif, TIFFTAG_TILELENGTH, &tileH);
    const tmsize_t size = TIFFTileSize(pTif);
    if (tileW == 0 || tileH == 0 ||
        size < static_cast<tmsize_t>(static_cast<size_t>(tileW) * tileH * map.stride * map.bits / 8))
        return slice.Fail(Why(messages, "tiles smaller than their size says"));
    std::vector<unsigned char> tile(static_cast<size_t>(size));
    const uint32_t w = static_cast<uint32_t>(slice.mWidth), h = static_cast<uint32_t>(slice.mHeight);
    for (uint32_t ty = 0; ty < h; ty += tileH)
        for (uint32_t tx = 0; tx < w; tx += tileW) {
            if (TIFFReadTile(pTif, tile.data(), tx, ty, 0, 0) < 0)
                return slice.Fail(Why(messages, "a tile cannot be read"));
            for (uint32_t r = 0; r < tileH && ty + r < h; ++r) {
                unsigned char* pRow = slice.Row(static_cast<int>(ty + r)) + tx;
                for (uint32_t c = 0; c < tileW && tx + c < w; ++c)
                    pRow[c] = map.At(tile.data(), static_cast<size_t>(r) * tileW + c);
            }
        }
    return true;
}

bool ReadRgba(TIFF* pTif, SlicePixels_cls& slice, const TiffMessages& messages) {
    std::vector<uint32_t> raster(slice.mRed.size());
    if (!TIFFReadRGBAImageOriented(pTif, static_cast<uint32_t>(slice.mWidth),
                                   static_cast<uint32_t>(slice.mHeight), raster.data(), ORIENTATION_TOPLEFT,
                                   0))
        return slice.Fail(Why(messages, "libtiff cannot convert this kind of picture"));
    for (size_t i = 0; i < raster.size(); ++i)
        slice.mRed[i] = static_cast<unsigned char>(TIFFGetR(raster[i]));
    if (slice.mbColour)
        for (size_t i = 0; i < raster.size(); ++i) {
            unsigned char* p = &slice.mRGBA[i * 4];
            p[0] = static_cast<unsigned char>(TIFFGetR(raster[i]));
            p[1] = static_cast<unsigned char>(TIFFGetG(raster[i]));
            p[2] = static_cast<unsigned char>(TIFFGetB(raster[i]));
            p[3] = static_cast<unsigned char>(TIFFGetA(raster[i]));
        }
    return true;
}

} // namespace

bool TiffSlice_cls::Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice) {
    TiffMessages messages;
    TIFFOpenOptions* pOptions = TIFFOpenOptionsAlloc();
    if (!pOptions)
        return slice.Fail("TIFF options cannot be allocated");
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions, OnTiffError, &messages);
    TIFFOpenOptionsSetWarningHandlerExtR(pOptions, OnTiffWarning, nullptr);
    // No single allocation may exceed what the largest slice needs as RGBA.
    TIFFOpenOptionsSetMaxSingleMemAlloc(pOptions, SlicePixels_cls::msMaxPixels * 4);
    std::unique_ptr<TIFF, TiffCloser> pTif(TIFFOpenExt(strPath.fn_str(), "r", pOptions));
    TIFFOpenOptionsFree(pOptions);
    if (!pTif)
        return slice.Fail(Why(messages, "the file cannot be opened"));
    uint32_t width = 0, height = 0;
    if (!TIFFGetField(pTif.get(), TIFFTAG_IMAGEWIDTH, &width) ||
        !TIFFGetField(pTif.get(), TIFFTAG_IMAGELENGTH, &height))
        return slice.Fail(Why(messages, "no picture size"));
    if (!slice.SetSize(width, height, !bSizeOnly))
        return false;
    if (bSizeOnly)
        return true;
    // Colour goes through libtiff's RGBA conversion, which knows every layout.
    SampleMap map;
    if (slice.mbColour || !MakeSampleMap(pTif.get(), map))
        return ReadRgba(pTif.get(), slice, messages);
    if (TIFFIsTiled(pTif.get()))
        return ReadTiles(pTif.get(), map, slice, messages);
    return ReadStrips(pTif.get(), map, slice, messages);
}
