// One decoded slice of an image stack as the stack reader needs it: one byte per pixel, the red
// channel (the grey value of a grey picture), rows from the top. Each format's decoder fills it;
// when one fails, the reason is left in mStrWhy for the reader's log line. A caller that wants the
// whole colour (the textures of meshes) sets mbColour first, and the PNG, JPEG and TIFF decoders
// then also fill mRGBA, four bytes per pixel, 8 bits per channel.
#pragma once

#include <wx/string.h>

#include <vector>

class SlicePixels_cls {
public:
    // A slice larger than this many pixels is refused rather than allocated.
    static constexpr long long msMaxPixels = 1LL << 26;

    // Takes the size from a header. An empty or oversized picture is refused (false, with the
    // reason) before anything is allocated; bAllocate sizes mRed for the pixels.
    bool SetSize(long long width, long long height, bool bAllocate) {
        if (width <= 0 || height <= 0 || width * height > msMaxPixels)
            return Fail(wxString::Format("picture of size %lld x %lld cannot be a slice", width, height));
        mWidth = static_cast<int>(width);
        mHeight = static_cast<int>(height);
        if (bAllocate)
            mRed.assign(static_cast<size_t>(width * height), 0);
        if (bAllocate && mbColour)
            mRGBA.assign(static_cast<size_t>(width * height) * 4, 255);
        return true;
    }
    bool Fail(const wxString& strWhy) {
        mStrWhy = strWhy;
        return false;
    }
    unsigned char* Row(int y) { return mRed.data() + static_cast<size_t>(y) * mWidth; }
    unsigned char* RowRGBA(int y) { return mRGBA.data() + static_cast<size_t>(y) * mWidth * 4; }
    // Keeps the buffer's capacity, so a reader going through a stack does not allocate per slice.
    // The colour request stays.
    void Reset() {
        mWidth = mHeight = 0;
        mRed.clear();
        mRGBA.clear();
        mStrWhy.clear();
    }

    int mWidth = 0;
    int mHeight = 0;
    std::vector<unsigned char> mRed;
    bool mbColour = false;
    std::vector<unsigned char> mRGBA;
    wxString mStrWhy;
};
