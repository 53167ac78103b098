#include "VolumeFoRender_cls.h"

#include "VolumeSnap_cls.h"

#include <algorithm>
#include <cstring>

void VolumeFoRender_cls::CopyDataFromSnap_EqualSize(unsigned char* out, const unsigned char* a,
                                                    const unsigned char* b, double f, size_t size) {
    if (f == 0.0 || !b) {
        std::memcpy(out, a, size);
        return;
    }
    const double g = 1.0 - f;
    for (size_t i = 0; i < size; ++i)
        out[i] = static_cast<unsigned char>(a[i] * g + b[i] * f);
}

void VolumeFoRender_cls::CopyDataFromSnap_Resized(unsigned char* out, const VolumeSnap_cls* pA,
                                                  const VolumeSnap_cls* pB, double f) {
    const int w = pA->mSizeX, h = pA->mSizeY, d = pA->mSizeZ;
    const int bw = pB->mSizeX, bh = pB->mSizeY, bd = pB->mSizeZ;
    const unsigned char* a = pA->mData.get();
    const unsigned char* b = pB->mData.get();
    const double g = 1.0 - f;
    // The voxel of b whose cell holds the centre of the voxel of a.
    std::vector<size_t> vX(static_cast<size_t>(w));
    for (int x = 0; x < w; ++x)
        vX[x] = static_cast<size_t>(std::min(bw - 1, static_cast<int>((x + 0.5) * bw / w)));
    for (int z = 0; z < d; ++z) {
        const size_t bz = static_cast<size_t>(std::min(bd - 1, static_cast<int>((z + 0.5) * bd / d)));
        for (int y = 0; y < h; ++y) {
            const size_t by = static_cast<size_t>(std::min(bh - 1, static_cast<int>((y + 0.5) * bh / h)));
            const size_t row = (static_cast<size_t>(z) * h + y) * w;
            const unsigned char* pRowB = b + (bz * bh + by) * bw;
            for (int x = 0; x < w; ++x)
                out[row + x] = static_cast<unsigned char>(a[row + x] * g + pRowB[vX[x]] * f);
        }
    }
}

bool VolumeFoRender_cls::PrepareData(const VolumeSnap_cls* pA, const VolumeSnap_cls* pB, int frame,
                                     float factor, const wxString& strProcCounter) {
    if (!pA || !pA->mIsAllocated || !pA->mData)
        return false;
    const size_t size = static_cast<size_t>(pA->mSizeX) * pA->mSizeY * pA->mSizeZ;
    if (size == 0)
        return false;
    mWidth = pA->mSizeX;
    mHeight = pA->mSizeY;
    mDepth = pA->mSizeZ;
    mData.resize(size);
    const bool bSecond = factor != 0.f && pB && pB != pA && pB->mIsAllocated && pB->mData && pB->mSizeX > 0 &&
                         pB->mSizeY > 0 && pB->mSizeZ > 0;
    if (!bSecond)
        CopyDataFromSnap_EqualSize(mData.data(), pA->mData.get(), nullptr, 0.0, size);
    else if (pA->IsSizeSame(pB))
        CopyDataFromSnap_EqualSize(mData.data(), pA->mData.get(), pB->mData.get(), factor, size);
    else
        CopyDataFromSnap_Resized(mData.data(), pA, pB, factor);
    mFrame = frame;
    mFactor = factor;
    mStrProcCounter = strProcCounter;
    mbTextureUpToDate = false;
    ++mDataCounter;
    return true;
}
