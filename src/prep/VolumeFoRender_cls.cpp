#include "VolumeFoRender_cls.h"

#include "VolumeSnap_cls.h"

#include <algorithm>
#include <cmath>
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

bool VolumeSetting_cls::Boolean_cls::IsInside(const double* q) const {
    if (mShape == SHAPE_OBJECT) {
        const double* m = mObject;
        for (int k = 0; k < 3; ++k)
            if (std::fabs(m[k] * q[0] + m[4 + k] * q[1] + m[8 + k] * q[2] + m[12 + k]) > 1.0)
                return false;
        return true;
    }
    if (mShape == SHAPE_SPHERE) {
        double sum = 0.0;
        for (int k = 0; k < 3; ++k) {
            const double radius = 0.5 * (mMax[k] - mMin[k]);
            if (radius <= 0.0)
                return false;
            const double d = (q[k] - 0.5 * (mMin[k] + mMax[k])) / radius;
            sum += d * d;
        }
        return sum <= 1.0;
    }
    for (int k = 0; k < 3; ++k)
        if (q[k] < mMin[k] || q[k] > mMax[k])
            return false;
    return true;
}

void VolumeFoRender_cls::ApplyBoolean(const std::vector<VolumeSetting_cls::Boolean_cls>& vBoolean) {
    if (vBoolean.empty() || mData.empty())
        return;
    using B = VolumeSetting_cls::Boolean_cls;
    const int size[3] = {mWidth, mHeight, mDepth};
    size_t i = 0;
    for (int z = 0; z < mDepth; ++z)
        for (int y = 0; y < mHeight; ++y)
            for (int x = 0; x < mWidth; ++x, ++i) {
                const int cell[3] = {x, y, z};
                double q[3];
                for (int k = 0; k < 3; ++k)
                    q[k] = (cell[k] + 0.5) / size[k] - 0.5;
                bool bKeep = true;
                for (const B& b : vBoolean) {
                    const bool bInside = b.IsInside(q);
                    bKeep = b.mType == B::TYPE_INTERSECT    ? bKeep && bInside
                            : b.mType == B::TYPE_DIFFERENCE ? bKeep && !bInside
                                                            : bKeep || bInside;
                }
                if (!bKeep)
                    mData[i] = 0;
            }
}

void VolumeFoRender_cls::ApplyDownsize(const int* factor) {
    const int f[3] = {std::max(factor[0], 1), std::max(factor[1], 1), std::max(factor[2], 1)};
    if ((f[0] == 1 && f[1] == 1 && f[2] == 1) || mData.empty())
        return;
    const int w = (mWidth + f[0] - 1) / f[0], h = (mHeight + f[1] - 1) / f[1], d = (mDepth + f[2] - 1) / f[2];
    std::vector<unsigned char> vOut(static_cast<size_t>(w) * h * d);
    size_t o = 0;
    for (int z = 0; z < d; ++z)
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x, ++o) {
                unsigned long sum = 0, count = 0;
                for (int zz = z * f[2]; zz < std::min((z + 1) * f[2], mDepth); ++zz)
                    for (int yy = y * f[1]; yy < std::min((y + 1) * f[1], mHeight); ++yy)
                        for (int xx = x * f[0]; xx < std::min((x + 1) * f[0], mWidth); ++xx, ++count)
                            sum += mData[(static_cast<size_t>(zz) * mHeight + yy) * mWidth + xx];
                vOut[o] = static_cast<unsigned char>(count ? sum / count : 0);
            }
    mData.swap(vOut);
    mWidth = w;
    mHeight = h;
    mDepth = d;
}
