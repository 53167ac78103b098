// One picture in memory as the writers take it, and the writers of the file formats chosen by
// the extension of the path: ".png" (8 or 16 bits per channel, with a zlib level), ".exr" (half
// floats, where the build has OpenEXR), and the 8-bit formats that the toolkit's image handlers
// write (JPEG, TIFF, BMP, TGA, PNM, PCX; alpha only where the format holds it). Rows run top to
// bottom. Any thread, once the handlers are registered.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum class SampleType_enum { UInt8, UInt16, Float };

class ImageFile_cls {
public:
    int mWidth = 0;
    int mHeight = 0;
    int mChannels = 3; // 3: RGB, 4: RGBA
    SampleType_enum mType = SampleType_enum::UInt8;
    // Exactly one of these holds the samples, by mType.
    std::vector<uint8_t> mV8;
    std::vector<uint16_t> mV16;
    std::vector<float> mVFloat;

    // The format the path's extension asks for, or UInt8 for PNG at 8 bits. False for an
    // extension that no writer of this build handles.
    static bool GetSampleTypeForPath(const std::string& strPath, int pngBitDepth, SampleType_enum& type);
    static bool IsOpenEXRBuiltIn();
    // Registers the toolkit's image handlers of the formats above (and PNG, for reading), each
    // once. Main thread only, before any writer starts: the writers only look the list up.
    static void RegisterImageHandlers();
    // The extensions written, for messages: "png, exr, jpg, ...".
    static std::string GetStrExtensions();
    // Flips the rows: GL gives them bottom to top.
    void Mirror();
    // Writes the file; false with the reason in strError.
    bool Write(const std::string& strPath, int pngCompression, std::string& strError) const;

private:
    bool WritePNG(const std::string& strPath, int pngCompression, std::string& strError) const;
    bool WriteEXR(const std::string& strPath, std::string& strError) const;
    bool WriteToolkit(const std::string& strPath, std::string& strError) const;
};
