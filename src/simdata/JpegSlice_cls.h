// The JPEG decoder of image-stack slices, through libjpeg: grey pictures give their grey value,
// colour pictures are converted to RGB by libjpeg and give their red, as in PNG. A file that ends
// before its picture does is refused, although libjpeg would fill the rest with grey.
#pragma once

#include "SlicePixels_cls.h"

#include <cstdio>

class JpegSlice_cls {
public:
    // Any thread. fp is open at the start of the file and stays the caller's. False, with the
    // reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice);
};
