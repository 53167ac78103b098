#include "ThreadSetArrayZ_cls.h"

#include "ParticleForRender_cls.h"
#include "StreamWrite_cls.h"

#include <algorithm>
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
// those of GetKey, folded by the compiler for the constant type (kNoKey: 0 for every element, the order of
// the data). The filter alpha goes back to 1, or 0 for a place that a thinning by ID left empty (pSource
// not null). A block of the range is made in a local buffer and written out past the cache.
constexpr int kNoKey = 0;
template <int kSortType>
void FillKeys(ArrayAndIndex_cls* pOrder, float* pAlpha, const int* pSource, const float* pXYZ,
              const unsigned char* pType, int ini, int fin, const PositionAndDirection_cls& camera) {
    const PositionAndDirection_cls c = camera; // a local copy: the stores below cannot touch it
    constexpr int kBlock = StreamWrite_cls::kBlock;
    ArrayAndIndex_cls order[kBlock];
    float alpha[kBlock];
    for (int start = ini; start < fin;) {
        // Blocks end on multiples of kBlock, so that all but the first begin on a 16-byte boundary.
        const int count = std::min(fin, (start / kBlock + 1) * kBlock) - start;
        for (int k = 0; k < count; ++k) {
            const int i = start + k;
            alpha[k] = (!pSource || pSource[i] >= 0) ? 1.0f : 0.0f;
            order[k].mIndex = i;
            order[k].mValue = kSortType == kNoKey ? 0.0f
                                                  : KeyOf(kSortType, pXYZ + 3 * static_cast<size_t>(i),
                                                          kSortType == 5 ? pType[i] : 0, c);
        }
        StreamWrite_cls::CopyElements(pOrder + start, order, static_cast<size_t>(count));
        StreamWrite_cls::CopyElements(pAlpha + start, alpha, static_cast<size_t>(count));
        start += count;
    }
    StreamWrite_cls::Fence();
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
        FillKeys<kNoKey>(pOrder, pAlpha, pSource, pXYZ, pType, mIni, mFin, mCamera);
        break;
    }
}
