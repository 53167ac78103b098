// The prepared surface of one isosurface frame, the arrays a drawer uploads: a triangle list
// (mXYZ, mNormal, 9 floats per triangle) in the object's space, where the volume fills a box
// centred on the origin whose longest side is 1 (voxel i of n at (i / (longest - 1)) - the
// centre). The surface is made on step A alone: surfaces of two steps do not blend.
#pragma once

#include "MarchingCubes_cls.h"

class VolumeSnap_cls;

class IsosurfaceSetting_cls {
public:
    float mIso = 128.0f;
    bool operator==(const IsosurfaceSetting_cls& o) const { return mIso == o.mIso; }
};

class IsosurfaceForRender_cls {
public:
    // Any one thread per set. The snap must be read. background picks the column of the thread
    // table. False when there is no voxel data; an iso value outside the data gives an empty set
    // (and the log line of the pass).
    bool PrepareData(const VolumeSnap_cls* pSnap, int step, float iso, bool background, int threadCount = 0);
    // The frame road's form: step A alone, the work split by the background column on the
    // background path.
    bool PrepareFrame(const VolumeSnap_cls* pA, const VolumeSnap_cls*, double, int step,
                      const IsosurfaceSetting_cls& setting, bool bNext) {
        return PrepareData(pA, step, setting.mIso, bNext);
    }
    long long GetTriangleCount() const { return mCSurface.GetTriangleCount(); }

    MarchingCubes_cls::Result_cls mCSurface;
    int mLastStep = -1;
    float mLastIso = 0.0f;
    int mDataCounter = 0;
    long long mSerial = 0; // DataSerial_cls: new with each preparation
};
