// The prepared grid of one height-field frame, the arrays a drawer uploads: a vertex per grid
// point (mXYZ, mNormal, 3 floats each; x fastest) and two triangles per cell (mIndex, counter-
// clockwise seen from above), and the height itself (mHeightValue, for the colour). The grid spans mSizeX by
// mSizeY around the origin in x and y; z is the height times the scale. Between two steps of equal size
// heights are blended linearly; steps of different size show step A. Normals come from central differences of
// the blended heights (one-sided at the border).
#pragma once

#include <vector>

class HeightFieldSnap_cls;

class HeightFieldSetting_cls {
public:
    int mInterpType = 1; // 0 step, 1 linear
    float mSizeX = 1.0f;
    float mSizeY = 1.0f;
    float mHeightScale = 0.2f;

    bool operator==(const HeightFieldSetting_cls& o) const {
        return mInterpType == o.mInterpType && mSizeX == o.mSizeX && mSizeY == o.mSizeY &&
               mHeightScale == o.mHeightScale;
    }
};

class HeightFieldForRender_cls {
public:
    // Any one thread per set. The snaps must be read; B may be null or A. False when A has no grid.
    bool PrepareData(const HeightFieldSnap_cls* pSnapA, const HeightFieldSnap_cls* pSnapB, double t, int step,
                     const HeightFieldSetting_cls& setting);
    // The same with the factor as the frame road gives it (bNext: on the background path).
    bool PrepareFrame(const HeightFieldSnap_cls* pA, const HeightFieldSnap_cls* pB, double t, int step,
                      const HeightFieldSetting_cls& setting, bool) {
        return PrepareData(pA, pB, t, step, setting);
    }
    void Clear();

    int mWidth = 0;
    int mHeight = 0;
    std::vector<float> mXYZ;
    std::vector<float> mNormal;
    std::vector<float> mHeightValue;  // the blended height per vertex, before the scale
    std::vector<unsigned int> mIndex; // 6 per cell
    int mLastStep = -1;
    float mLastInterp = -1.0f;
    int mDataCounter = 0;
    long long mSerial = 0; // DataSerial_cls: new with each preparation
};
