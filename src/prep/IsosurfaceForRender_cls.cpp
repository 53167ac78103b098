#include "IsosurfaceForRender_cls.h"

#include "DataSerial_cls.h"

#include "VolumeSnap_cls.h"

#include <algorithm>

bool IsosurfaceForRender_cls::PrepareData(const VolumeSnap_cls* pSnap, int step, float iso, bool background,
                                          int threadCount) {
    mCSurface.Clear();
    mLastStep = step;
    mLastIso = iso;
    ++mDataCounter;
    mSerial = DataSerial_cls::Next();
    if (!pSnap || !pSnap->mIsAllocated || !pSnap->mData)
        return false;
    const int sx = pSnap->mSizeX, sy = pSnap->mSizeY, sz = pSnap->mSizeZ;
    MarchingCubes_cls::Run(pSnap->mData.get(), sx, sy, sz, iso, mCSurface, threadCount, background);
    const float scale = 1.0f / static_cast<float>(std::max({sx, sy, sz, 2}) - 1);
    const float centre[3] = {0.5f * (sx - 1), 0.5f * (sy - 1), 0.5f * (sz - 1)};
    for (size_t i = 0; i < mCSurface.mXYZ.size(); ++i)
        mCSurface.mXYZ[i] = (mCSurface.mXYZ[i] - centre[i % 3]) * scale;
    return true;
}
