#include "ThreadCurveDependOnSort_cls.h"

#include "ParticleForRender_cls.h"

#include <algorithm>

void ThreadCurveDependOnSort_cls::SetParameters(ParticleForRender_cls* pOut,
                                                const PrepareSetting_cls* pSetting) {
    mpCOut = pOut;
    mpCSetting = pSetting;
}

void ThreadCurveDependOnSort_cls::Work() {
    const PrepareSetting_cls& s = *mpCSetting;
    const ArrayAndIndex_cls* pOrder = mpCOut->mOrder.get();
    for (int k = mIni; k < mFin; ++k) {
        const int e = pOrder[k].mIndex;
        const int m = std::min<int>(mpCOut->mType[e], PrepareSetting_cls::kMaterialMax - 1);
        if (s.mColorCurveType[m] != 1 || s.mColorCurveDepend[m] != 9)
            continue;
        const double r0 = s.mRange0[m], r1 = s.mRange1[m];
        const double key = pOrder[k].mValue;
        mpCOut->mColorS[e] = static_cast<float>(r1 == r0 ? 1.0 : (-key - r0) / (r1 - r0));
        mpCOut->mColorT[e] = static_cast<float>((m + 0.5) / std::max(1, s.mCurveCount) / 3.0);
    }
}
