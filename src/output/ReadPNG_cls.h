// A reader of PNG files for textures and overlays, through libpng: 8-bit and 16-bit files of
// any colour type come out as RGB plus alpha, keeping 16 bits where the file has them.
// Stateless; any thread.
#pragma once

#include <wx/string.h>

#include <cstdint>
#include <cstdio>
#include <vector>

class PNGImage_cls {
public:
    int mWidth = 0;
    int mHeight = 0;
    int mBitDepth = 8; // 8 or 16
    bool mbAlpha = false;
    // Rows top to bottom; 8-bit files fill mVRGB8/mVAlpha8, 16-bit files mVRGB16/mVAlpha16.
    std::vector<uint8_t> mVRGB8;
    std::vector<uint8_t> mVAlpha8;
    std::vector<uint16_t> mVRGB16;
    std::vector<uint16_t> mVAlpha16;
};

class ReadPNG_cls {
public:
    // Opens the path into rpFile (closed again before returning) and reads it. False for a file
    // that is missing, is no PNG or is cut short; the image is then empty.
    static bool ReadPNG(FILE*& rpFile, const wxString& strPath, PNGImage_cls& image);
    static bool ReadPNG(const wxString& strPath, PNGImage_cls& image) {
        FILE* pFile = nullptr;
        return ReadPNG(pFile, strPath, image);
    }

private:
    // pRows: the row buffers, owned by ReadPNG.
    static bool ReadPNGMain8bit(void* pPng, void* pInfo, void* pRows, PNGImage_cls& image);
    static bool ReadPNGMain16bit(void* pPng, void* pInfo, void* pRows, PNGImage_cls& image);
};
