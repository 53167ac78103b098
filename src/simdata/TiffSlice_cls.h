// The TIFF decoder of image-stack slices, through libtiff; the first picture of the file is the
// slice. Grey, RGB and palette pictures of 8 or 16 bits per sample, in strips or tiles, with the
// samples side by side or in planes, are read sample by sample, so that 16-bit samples keep their
// high byte as in PNG; every other kind (fewer bits, YCbCr, CMYK, a turned orientation) goes
// through libtiff's RGBA conversion. Only red counts, as in PNG.
#pragma once

#include "SlicePixels_cls.h"

#include <wx/string.h>

class TiffSlice_cls {
public:
    // Any thread: libtiff's messages go to a handler of this one open file, not to the global one.
    // False, with the reason in slice.mStrWhy, when the file cannot be decoded.
    static bool Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice);
};
