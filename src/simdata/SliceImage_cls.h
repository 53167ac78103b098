// Loads one slice of an image stack, whatever its extension says: the type is found from the
// first bytes of the file (PNG, TIFF, JPEG or BMP) and the file goes to that format's decoder.
// Every format gives the same thing: the red channel, 8 bits, 16-bit samples reduced to their
// high byte, as PNG slices always gave. Any thread; nothing is shared between calls.
#pragma once

#include "SlicePixels_cls.h"

#include <wx/string.h>

#include <cstddef>

class SliceImage_cls {
public:
    enum class Type { Unknown, Png, Tiff, Jpeg, Bmp };

    // The type that the first bytes of a file announce.
    static Type Sniff(const unsigned char* pHead, size_t size);
    // Reads only the size from the file's header; false, with the reason in slice.mStrWhy, when
    // the file is not a slice that can be read.
    static bool ReadSize(const wxString& strPath, SlicePixels_cls& slice);
    // Decodes the whole slice; false, with the reason, when it cannot.
    static bool Load(const wxString& strPath, SlicePixels_cls& slice);

private:
    static bool Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice);
};
