#include "SliceImage_cls.h"

#include "BmpSlice_cls.h"
#include "JpegSlice_cls.h"
#include "PngSlice_cls.h"
#include "SliceFile_cls.h"
#include "TiffSlice_cls.h"

#include <cstdio>
#include <cstring>

SliceImage_cls::Type SliceImage_cls::Sniff(const unsigned char* pHead, size_t size) {
    auto starts = [&](const char* magic, size_t length) {
        return size >= length && std::memcmp(pHead, magic, length) == 0;
    };
    if (starts("\x89PNG", 4))
        return Type::Png;
    // Classic and big TIFF, in either byte order.
    if (starts("II*\0", 4) || starts("MM\0*", 4) || starts("II+\0", 4) || starts("MM\0+", 4))
        return Type::Tiff;
    if (starts("\xff\xd8\xff", 3))
        return Type::Jpeg;
    if (starts("BM", 2))
        return Type::Bmp;
    return Type::Unknown;
}

bool SliceImage_cls::ReadSize(const wxString& strPath, SlicePixels_cls& slice) {
    return Read(strPath, true, slice);
}

bool SliceImage_cls::Load(const wxString& strPath, SlicePixels_cls& slice) {
    return Read(strPath, false, slice);
}

bool SliceImage_cls::Read(const wxString& strPath, bool bSizeOnly, SlicePixels_cls& slice) {
    slice.Reset();
    SliceFile_cls file(strPath);
    FILE* fp = file.Get();
    if (!fp)
        return slice.Fail("the file cannot be opened");
    unsigned char head[4] = {0, 0, 0, 0};
    const size_t got = fread(head, 1, sizeof head, fp);
    rewind(fp);
    switch (Sniff(head, got)) {
    case Type::Png:
        return PngSlice_cls::Read(fp, bSizeOnly, slice);
    case Type::Tiff:
        // libtiff opens the file by its name, so that it can map it into memory.
        return TiffSlice_cls::Read(strPath, bSizeOnly, slice);
    case Type::Jpeg:
        return JpegSlice_cls::Read(fp, bSizeOnly, slice);
    case Type::Bmp:
        if (slice.mbColour)
            return slice.Fail("BMP pictures are read as grey slices only");
        return BmpSlice_cls::Read(fp, bSizeOnly, slice);
    case Type::Unknown:
        break;
    }
    return slice.Fail("not a PNG, TIFF, JPEG or BMP picture");
}
