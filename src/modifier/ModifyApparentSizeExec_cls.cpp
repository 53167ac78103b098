#include "ModifyApparentSizeExec_cls.h"

#include "AttributeClone_cls.h"
#include "ModifierBase_cls.h"

#include <cmath>

ModifyApparentSizeExec_cls::ModifyApparentSizeExec_cls(AttributeClone_cls* pClone, double nt, int sortType) {
    mbDepthFromKey = sortType == 1 || sortType == 3 || sortType == 7;
    if (!pClone) {
        mbValid = false;
        return;
    }
    mbValid = ModifierBase_cls::IsCloneValid(*pClone);
    auto getInt = [pClone](const char* key, long long def) {
        ConfItem_cls* p = pClone->GetPCItem(key);
        return p ? p->GetBodyINT() : def;
    };
    mbLimitMin = getInt("LimitApparentMin=", 1) != 0;
    mbAlphaMin = getInt("ModifyAlphaMin=", 1) != 0;
    mPowerMin = static_cast<int>(getInt("PowerAlphaMin=", 2));
    mbLimitMax = getInt("LimitApparentMax=", 0) != 0;
    mbAlphaMax = getInt("ModifyAlphaMax=", 0) != 0;
    mPowerMax = static_cast<int>(getInt("PowerAlphaMax=", 3));
    mTargetType = static_cast<int>(getInt("TargetType=", 0));
    if (ParamGroup_cls* p = pClone->GetPCParamGroup("Parameters")) {
        std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
        if (v.size() >= 2) {
            mMinApparent = v[0];
            mMaxApparent = v[1];
        }
    }
}

void ModifyApparentSizeExec_cls::SetCamera(const float* xyz, const double pos[3], const double dir[3]) {
    mpXYZ = xyz;
    for (int k = 0; k < 3; ++k) {
        mPos[k] = pos[k];
        mDir[k] = dir[k];
    }
}

double ModifyApparentSizeExec_cls::PowerOf(int choice) {
    switch (choice) {
    case 0:
        return 0.5;
    case 1:
        return 1.0;
    case 2:
        return 2.0;
    default:
        return 3.0;
    }
}

void ModifyApparentSizeExec_cls::Execute(float* alpha, const float* factor, int typeCount, float* size,
                                         const unsigned char* type, const ArrayAndIndex_cls* order,
                                         long long n) const {
    if (!mbValid || !alpha || !size || !order)
        return;
    const double pMin = PowerOf(mPowerMin), pMax = PowerOf(mPowerMax);
    for (long long i = 0; i < n; ++i) {
        const long long e = order[i].mIndex;
        if (alpha[e] == 0.0f)
            continue;
        const int t = type ? type[e] : 0;
        if (mTargetType > 0 && t != mTargetType - 1)
            continue;
        double depth = 0.0;
        if (mbDepthFromKey)
            depth = -order[i].mValue;
        else if (mpXYZ) {
            const float* q = mpXYZ + 3 * e;
            depth = (q[0] - mPos[0]) * mDir[0] + (q[1] - mPos[1]) * mDir[1] + (q[2] - mPos[2]) * mDir[2];
        }
        if (depth == 0.0)
            continue;
        const double f = (factor && t < typeCount) ? factor[t] : 1.0;
        const double apparent = f * size[e] / depth;
        if (apparent == 0.0)
            continue;
        if (mbLimitMin) {
            const double ratio = mMinApparent / apparent;
            if (ratio >= 1.0) {
                size[e] = static_cast<float>(size[e] * ratio);
                if (mbAlphaMin)
                    alpha[e] = static_cast<float>(std::pow(ratio, -pMin));
                continue;
            }
        }
        if (mbLimitMax) {
            const double ratio = mMaxApparent / apparent;
            if (ratio < 1.0 && ratio > 0.0) {
                size[e] = static_cast<float>(size[e] * ratio);
                if (mbAlphaMax)
                    alpha[e] = static_cast<float>(std::pow(ratio, pMax));
            }
        }
    }
}
