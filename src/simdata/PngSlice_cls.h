// The PNG decoder of image-stack slices, through libpng: 8 or 16 bits, grey, palette or colour,
// with or without alpha; only the red channel is kept, 16-bit samples by their high byte.
#pragma once

#include "SlicePixels_cls.h"

#include <cstdio>

class PngSlice_cls {
public:
    // Any thread. fp is open at the start of the file and stays the caller's. False, with the
    // reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice);
};
