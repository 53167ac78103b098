// The BMP decoder of image-stack slices. No Debian library reads BMP without a display toolkit,
// so it is read here: the Windows headers (40 to 124 bytes) and the old 12-byte one; 1, 4 and
// 8 bits through a palette, also run-length coded (RLE8, RLE4); 16, 24 and 32 bits, plain or with
// bit fields; rows bottom-up or top-down, each padded to 4 bytes. A palette entry, like a pixel,
// gives its red, as in PNG.
#pragma once

#include "SlicePixels_cls.h"

#include <cstdio>

class BmpSlice_cls {
public:
    // Any thread. fp is open at the start of the file and stays the caller's. False, with the
    // reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice);
};
