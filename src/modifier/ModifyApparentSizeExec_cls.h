// The executor of "ModifyApparentSize_cls": the entry's values at the frame's time, applied to
// plain arrays. Belongs to the thread that prepares the frame.
#pragma once

#include "ArrayAndIndex_cls.h"

class AttributeClone_cls;

class ModifyApparentSizeExec_cls {
public:
    // sortType is the viewer's SortType=: only 1, 3 and 7 give a depth in the sort key.
    ModifyApparentSizeExec_cls(AttributeClone_cls* pClone, double nt, int sortType);

    // For sort types without a depth key: the depth of a particle is its distance along dir from
    // pos, in the object's space, taken from xyz (3 floats per particle). Without it those
    // particles are left alone.
    void SetCamera(const float* xyz, const double pos[3], const double dir[3]);

    // For output element i with particle e = order[i].mIndex that matches TargetType=, with
    // alpha[e] not 0 and a depth not 0: the apparent size is factor[type] * size[e] / depth.
    // Below MinApparent the size grows to the limit (ratio = MinApparent / apparent >= 1) and,
    // with ModifyAlphaMin=, alpha[e] becomes ratio^-p with p 0.5, 1, 2 for PowerAlphaMin= 0, 1, 2.
    // Above MaxApparent the size shrinks to the limit (ratio = MaxApparent / apparent < 1) and,
    // with ModifyAlphaMax=, alpha[e] becomes ratio^p with p 0.5, 1, 2, 3 for PowerAlphaMax=.
    // factor is one size factor per material type (typeCount of them; other types use 1).
    // Returns at once when switched off.
    void Execute(float* alpha, const float* factor, int typeCount, float* size, const unsigned char* type,
                 const ArrayAndIndex_cls* order, long long n) const;

    bool mbValid = true;
    bool mbLimitMin = true, mbAlphaMin = true, mbLimitMax = false, mbAlphaMax = false;
    int mPowerMin = 2, mPowerMax = 3, mTargetType = 0;
    double mMinApparent = 0.002, mMaxApparent = 0.1;
    bool mbDepthFromKey = false;

private:
    const float* mpXYZ = nullptr;
    double mPos[3] = {0, 0, 0};
    double mDir[3] = {0, 0, -1};
    static double PowerOf(int choice);
};
