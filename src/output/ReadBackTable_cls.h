// The driver's own conversion of half-float samples to the 8- and 16-bit samples of a file, as a
// table of every half value. The record buffers are read back raw (a copy, no conversion on the
// GL thread) and the writer converts them through the table, which gives the very bytes that the
// driver's converting read-back gives, since that conversion depends on each sample alone.
#pragma once

#include "ImageFile_cls.h"

#include <cstdint>
#include <memory>
#include <vector>

class ReadBackTable_cls {
public:
    // Asks the driver: a texture of every half value read back as unsigned bytes and shorts.
    // Null when the driver's answer is not one value per sample (the caller then lets the
    // driver convert). GL thread only.
    static std::shared_ptr<const ReadBackTable_cls> MakeFromDriver();

    // pixels RGBA half samples into out, which gives its channels (3 drops alpha) and its type
    // (UInt8 or UInt16). Any thread.
    void Convert(const uint16_t* pRGBA, size_t pixels, ImageFile_cls& out) const;

    std::vector<uint8_t> mV8;
    std::vector<uint16_t> mV16;
};
