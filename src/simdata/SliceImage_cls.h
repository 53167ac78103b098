// Loads one slice of an image stack: a PNG file (8 or 16 bits, grey, palette, colour, with or
// without alpha) decoded through libpng, of which only the red channel is kept. Any thread.
#pragma once

#include <wx/string.h>

#include <vector>

class SliceImage_cls {
public:
    // A slice larger than this many pixels is refused rather than allocated.
    static constexpr long long msMaxPixels = 1LL << 26;

    // Reads only the size from the file's header; false when it is not a readable PNG.
    static bool ReadSize(const wxString& strPath, int& width, int& height);
    // The red channel of every pixel, row after row from the top, 16-bit samples reduced to
    // their high byte. False, with red left empty, when the file cannot be decoded.
    static bool LoadRed(const wxString& strPath, std::vector<unsigned char>& red, int& width, int& height);
};
