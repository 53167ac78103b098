#include "ThreadSetArrayZ_cls.h"

#include "ParticleForRender_cls.h"

#include <cmath>

namespace {

inline float KeyOf(int sortType, const float* p, unsigned char type, const PositionAndDirection_cls& c) {
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

// One loop per sort type, so that the choice is made once per range and not per element; the keys are
// those of GetKey, folded by the compiler for the constant type.
// The filter alpha goes back to 1, or 0 for a place that a thinning by ID left empty (pSource not null).
template <int kSortType>
void FillKeys(ArrayAndIndex_cls* pOrder, float* pAlpha, const int* pSource, const float* pXYZ,
              const unsigned char* pType, int ini, int fin, const PositionAndDirection_cls& camera) {
    const PositionAndDirection_cls c = camera; // a local copy: the stores below cannot touch it
    for (int i = ini; i < fin; ++i) {
        pAlpha[i] = (!pSource || pSource[i] >= 0) ? 1.0f : 0.0f;
        pOrder[i].mIndex = i;
        pOrder[i].mValue =
            KeyOf(kSortType, pXYZ + 3 * static_cast<size_t>(i), kSortType == 5 ? pType[i] : 0, c);
    }
}

} // namespace

void ThreadSetArrayZ_cls::SetParameters(ParticleForRender_cls* pOut, int sortType,
                                        const PositionAndDirection_cls& camera) {
    mpCOut = pOut;
    mSortType = sortType;
    mCamera = camera;
}

float ThreadSetArrayZ_cls::GetKey(int sortType, const float* p, unsigned char type,
                                  const PositionAndDirection_cls& c) {
    return KeyOf(sortType, p, type, c);
}

void ThreadSetArrayZ_cls::Work() {
    ArrayAndIndex_cls* pOrder = mpCOut->mOrder.get();
    const float* pXYZ = mpCOut->mXYZ.get();
    const unsigned char* pType = mpCOut->mType.get();
    float* pAlpha = mpCOut->mAlpha.get();
    const int* pSource = mpCOut->mbSourceIdentity ? nullptr : mpCOut->mSource.get();
    switch (mSortType) {
    case 1:
    case 6:
        FillKeys<1>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    case 2:
        FillKeys<2>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    case 3:
    case 7:
        FillKeys<3>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    case 4:
        FillKeys<4>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    case 5:
        FillKeys<5>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    default:
        // No key: the order of the data, read from nothing.
        for (int i = mIni; i < mFin; ++i) {
            pAlpha[i] = (!pSource || pSource[i] >= 0) ? 1.0f : 0.0f;
            pOrder[i].mIndex = i;
            pOrder[i].mValue = 0.0f;
        }
        break;
    }
}
