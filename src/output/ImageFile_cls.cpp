#include "ImageFile_cls.h"

#include "HalfFloat_cls.h"

#include <png.h>
#include <wx/image.h>
#include <zlib.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#ifdef ORV_HAVE_OPENEXR
#include <ImfRgbaFile.h>
#endif

namespace {
std::string GetLowerExtension(const std::string& strPath) {
    const size_t slash = strPath.find_last_of('/');
    const size_t dot = strPath.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return std::string();
    std::string ext = strPath.substr(dot + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

// The toolkit's handlers that write: their type and the extensions they answer to.
struct ToolkitFormat_cls {
    wxBitmapType mType;
    const char* mStrExtensions;
};
const ToolkitFormat_cls kToolkitFormat[] = {
    {wxBITMAP_TYPE_JPEG, "jpg jpeg jpe"}, {wxBITMAP_TYPE_TIFF, "tif tiff"}, {wxBITMAP_TYPE_BMP, "bmp"},
    {wxBITMAP_TYPE_TGA, "tga"},           {wxBITMAP_TYPE_PNM, "pnm ppm"},   {wxBITMAP_TYPE_PCX, "pcx"},
};

// The registered handler that writes the extension, or null.
wxImageHandler* FindToolkitWriter(const std::string& ext) {
    for (const ToolkitFormat_cls& f : kToolkitFormat) {
        const std::string strList = std::string(" ") + f.mStrExtensions + " ";
        if (!ext.empty() && strList.find(" " + ext + " ") != std::string::npos)
            return wxImage::FindHandler(f.mType);
    }
    return nullptr;
}
} // namespace

void ImageFile_cls::RegisterImageHandlers() {
    auto add = [](wxBitmapType type, auto make) {
        if (!wxImage::FindHandler(type))
            wxImage::AddHandler(make());
    };
    add(wxBITMAP_TYPE_PNG, [] { return new wxPNGHandler; });
    add(wxBITMAP_TYPE_JPEG, [] { return new wxJPEGHandler; });
    add(wxBITMAP_TYPE_TIFF, [] { return new wxTIFFHandler; });
    add(wxBITMAP_TYPE_BMP, [] { return new wxBMPHandler; });
    add(wxBITMAP_TYPE_TGA, [] { return new wxTGAHandler; });
    add(wxBITMAP_TYPE_PNM, [] { return new wxPNMHandler; });
    add(wxBITMAP_TYPE_PCX, [] { return new wxPCXHandler; });
}

std::string ImageFile_cls::GetStrExtensions() {
    std::string str = IsOpenEXRBuiltIn() ? "png, exr" : "png";
    for (const ToolkitFormat_cls& f : kToolkitFormat) {
        if (!wxImage::FindHandler(f.mType))
            continue;
        const std::string strList = f.mStrExtensions;
        str += ", " + strList.substr(0, strList.find(' '));
    }
    return str;
}

bool ImageFile_cls::IsOpenEXRBuiltIn() {
#ifdef ORV_HAVE_OPENEXR
    return true;
#else
    return false;
#endif
}

bool ImageFile_cls::GetSampleTypeForPath(const std::string& strPath, int pngBitDepth, SampleType_enum& type) {
    const std::string ext = GetLowerExtension(strPath);
    if (ext == "png") {
        type = pngBitDepth == 16 ? SampleType_enum::UInt16 : SampleType_enum::UInt8;
        return true;
    }
    if (ext == "exr" && IsOpenEXRBuiltIn()) {
        type = SampleType_enum::Float;
        return true;
    }
    if (FindToolkitWriter(ext)) {
        type = SampleType_enum::UInt8;
        return true;
    }
    return false;
}

void ImageFile_cls::Mirror() {
    auto flip = [this](auto& v) {
        const size_t row = static_cast<size_t>(mWidth) * mChannels;
        for (int y = 0; y < mHeight / 2; ++y)
            std::swap_ranges(v.begin() + row * y, v.begin() + row * (y + 1),
                             v.begin() + row * (mHeight - 1 - y));
    };
    if (mType == SampleType_enum::UInt8)
        flip(mV8);
    else if (mType == SampleType_enum::UInt16)
        flip(mV16);
    else
        flip(mVFloat);
}

bool ImageFile_cls::Write(const std::string& strPath, int pngCompression, std::string& strError) const {
    if (mType == SampleType_enum::Float)
        return WriteEXR(strPath, strError);
    if (mType == SampleType_enum::UInt8 && FindToolkitWriter(GetLowerExtension(strPath)))
        return WriteToolkit(strPath, strError);
    return WritePNG(strPath, pngCompression, strError);
}

bool ImageFile_cls::WriteToolkit(const std::string& strPath, std::string& strError) const {
    wxImageHandler* pHandler = FindToolkitWriter(GetLowerExtension(strPath));
    // The picture is the writer's own: the handlers keep no state between files, so writers save
    // side by side.
    wxImage image(mWidth, mHeight, false);
    unsigned char* pRGB = image.GetData();
    const size_t count = static_cast<size_t>(mWidth) * mHeight;
    if (mChannels == 4) {
        image.SetAlpha();
        unsigned char* pAlpha = image.GetAlpha();
        for (size_t i = 0; i < count; ++i) {
            std::copy_n(mV8.data() + 4 * i, 3, pRGB + 3 * i);
            pAlpha[i] = mV8[4 * i + 3];
        }
    } else {
        std::copy_n(mV8.data(), 3 * count, pRGB);
    }
    if (!pHandler || !image.SaveFile(wxString::FromUTF8(strPath), pHandler->GetType())) {
        strError = "the toolkit could not write " + strPath;
        return false;
    }
    return true;
}

bool ImageFile_cls::WritePNG(const std::string& strPath, int pngCompression, std::string& strError) const {
    FILE* fp = fopen(strPath.c_str(), "wb");
    if (!fp) {
        strError = "cannot open " + strPath + ": " + strerror(errno);
        return false;
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!png || !info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        fclose(fp);
        strError = "libpng failed on " + strPath;
        return false;
    }
    png_init_io(png, fp);
    const bool b16 = mType == SampleType_enum::UInt16;
    png_set_IHDR(png, info, mWidth, mHeight, b16 ? 16 : 8,
                 mChannels == 4 ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, pngCompression >= 0 && pngCompression <= 9 ? pngCompression
                                                                              : Z_DEFAULT_COMPRESSION);
    png_write_info(png, info);
    if (b16)
        png_set_swap(png); // PNG stores 16-bit samples big-endian
    const size_t row = static_cast<size_t>(mWidth) * mChannels;
    for (int y = 0; y < mHeight; ++y) {
        png_const_bytep pRow =
            b16 ? reinterpret_cast<png_const_bytep>(mV16.data() + row * y) : mV8.data() + row * y;
        png_write_row(png, pRow);
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    if (fclose(fp) != 0) {
        strError = "cannot finish " + strPath + ": " + strerror(errno);
        return false;
    }
    return true;
}

bool ImageFile_cls::WriteEXR(const std::string& strPath, std::string& strError) const {
#ifdef ORV_HAVE_OPENEXR
    try {
        std::vector<Imf::Rgba> vPixels(static_cast<size_t>(mWidth) * mHeight);
        for (size_t i = 0; i < vPixels.size(); ++i) {
            const float* p = mVFloat.data() + i * mChannels;
            vPixels[i] = Imf::Rgba(p[0], p[1], p[2], mChannels == 4 ? p[3] : 1.f);
        }
        Imf::RgbaOutputFile file(strPath.c_str(), mWidth, mHeight,
                                 mChannels == 4 ? Imf::WRITE_RGBA : Imf::WRITE_RGB);
        file.setFrameBuffer(vPixels.data(), 1, mWidth);
        file.writePixels(mHeight);
        return true;
    } catch (const std::exception& e) {
        strError = std::string("OpenEXR failed on ") + strPath + ": " + e.what();
        return false;
    }
#else
    strError = "OpenEXR output is not built in: " + strPath;
    return false;
#endif
}
