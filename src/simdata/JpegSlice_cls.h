// The JPEG decoder of image-stack slices, through libjpeg: grey pictures give their grey value,
// colour pictures are converted to RGB by libjpeg and give their red, as in PNG. A file that ends
// before its picture does is refused, although libjpeg would fill the rest with grey.
#pragma once

#include "SlicePixels_cls.h"

#include <wx/string.h>

class JpegSlice_cls {
public:
    // Any thread. False, with the reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice);
};
