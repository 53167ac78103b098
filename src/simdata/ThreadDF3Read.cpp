#include "ThreadDF3Read.h"

#include "VolumeSnap_cls.h"

#include <wx/log.h>

#include <cmath>
#include <cstdio>

void ThreadDF3Read::ReadDF3() {
    const size_t count = static_cast<size_t>(mSizeX) * mSizeY * mSizeZ;
    if (!mData || count == 0)
        return;
    FILE* fp = fopen(mStrFile.fn_str(), "rb");
    if (!fp) {
        // A test pattern of the same size: the sine rows of the default data.
        for (size_t i = 0; i < count; ++i) {
            const int x = static_cast<int>(i % static_cast<size_t>(mSizeX));
            mData[i] = static_cast<unsigned char>(
                (std::sin(2.0 * (x * 3.14159 / mSizeX) + 1.570795) * 0.5 + 0.5) * 254.0);
        }
        return;
    }
    size_t got = 0;
    if (fseek(fp, 6, SEEK_SET) == 0)
        got = fread(mData, 1, count, fp);
    fclose(fp);
    if (got < count)
        wxLogMessage("df3 file %s is short: %zu of %zu voxels read", mStrFile, got, count);
}
