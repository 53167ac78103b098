// One step of a height field: a grid of heights, mWidth columns (x) by mHeight rows (y), row 0
// at y = 0. Heights from an image are its samples over the largest sample (0 .. 1); from a raw
// grid they are the stored floats.
//
// Files, told apart by their first bytes (plain or gzip):
// - PNG, 8 or 16 bits per sample, grey, grey and alpha, RGB or RGBA. The top image row is the far
//   edge (y = mHeight - 1). Palette images and depths below 8 bits are refused.
// - Raw grid: "HF32", width and height as unsigned 32-bit little-endian, then width * height
//   float32 little-endian, row y = 0 first.
// - Any other picture the stack reader decodes (TIFF, JPEG, BMP), 8 bits, rows as PNG.
// Channel: 0 red (grey), 1 green, 2 blue, 3 alpha (1 where there is none).
#pragma once

#include "FileSnap_cls.h"

#include <vector>

class HeightFieldSnap_cls : public FileSnap_cls {
public:
    // A grid larger than this many samples is refused rather than allocated.
    static constexpr long long msMaxSamples = 1LL << 26;

    HeightFieldSnap_cls(DataSequence_cls* pSequence, int index);
    ~HeightFieldSnap_cls() override;

    // Main thread, before a read: the channel that gives the heights.
    void SetChannel(int channel) { mChannel = channel; }
    float GetHeight(int x, int y) const { return mHeights[static_cast<size_t>(y) * mWidth + x]; }
    bool IsSizeSame(const HeightFieldSnap_cls* p) const {
        return p && p->mWidth == mWidth && p->mHeight == mHeight;
    }
    long long GetUsedMemoryByte() const override {
        return static_cast<long long>(mHeights.capacity() * sizeof(float));
    }
    wxString GetStrInfo() const;

    // Decodes a whole file held in memory into the grid. False, with the reason, when it is no
    // height field.
    static bool DecodeMemory(const unsigned char* pData, size_t size, int channel, int& width, int& height,
                             std::vector<float>& heights, wxString& strWhy);

    int mWidth = 0;
    int mHeight = 0;
    std::vector<float> mHeights;
    int mChannel = 0; // copied by the reader before it starts

protected:
    bool ReadFileInto(const wxString& strFile) override;
    void FreeArrays() override;
};
