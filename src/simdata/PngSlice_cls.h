// The PNG decoder of image-stack slices, through libpng: 8 or 16 bits, grey, palette or colour,
// with or without alpha; only the red channel is kept, 16-bit samples by their high byte.
#pragma once

#include "SlicePixels_cls.h"

#include <wx/string.h>

class PngSlice_cls {
public:
    // Any thread. False, with the reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice);
};
