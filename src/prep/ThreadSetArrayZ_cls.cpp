#include "ThreadSetArrayZ_cls.h"

#include "ParticleForRender_cls.h"

#include <cmath>

void ThreadSetArrayZ_cls::SetParameters(ParticleForRender_cls* pOut, int sortType,
                                        const PositionAndDirection_cls& camera) {
    mpCOut = pOut;
    mSortType = sortType;
    mCamera = camera;
}

float ThreadSetArrayZ_cls::GetKey(int sortType, const float* p, unsigned char type,
                                  const PositionAndDirection_cls& c) {
    const double dx = p[0] - c.mPos[0], dy = p[1] - c.mPos[1], dz = p[2] - c.mPos[2];
    switch (sortType) {
    case 1:
    case 6:
        return static_cast<float>(-(dx * c.mTgt[0] + dy * c.mTgt[1] + dz * c.mTgt[2]));
    case 2:
        return static_cast<float>(dx * c.mTgt[0] + dy * c.mTgt[1] + dz * c.mTgt[2]);
    case 3:
    case 7:
        return static_cast<float>(-std::sqrt(dx * dx + dy * dy + dz * dz));
    case 4:
        return static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
    case 5:
        return -static_cast<float>(type); // higher types first
    default:
        return 0.0f;
    }
}

void ThreadSetArrayZ_cls::Work() {
    ArrayAndIndex_cls* pOrder = mpCOut->mOrder.get();
    const float* pXYZ = mpCOut->mXYZ.get();
    const unsigned char* pType = mpCOut->mType.get();
    for (int i = mIni; i < mFin; ++i) {
        pOrder[i].mIndex = i;
        pOrder[i].mValue = GetKey(mSortType, pXYZ + 3 * static_cast<size_t>(i), pType[i], mCamera);
    }
}
