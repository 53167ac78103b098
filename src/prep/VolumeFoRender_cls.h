// The prepared volume of one frame: the bytes that the GPU sees as one 8-bit 3D texture, mixed
// on the CPU from the two steps around the frame's time, so the drawing never blends textures.
// "FoRender" is the name the rest of the program uses: kept on purpose.
//
// A set belongs to one thread at a time: the main thread for the shown set, the preparation
// worker for the spare set until the owner joins it. The render layer keeps the GL texture of
// each set and uploads when mbTextureUpToDate is false.
#pragma once

#include <wx/string.h>

#include <vector>

class VolumeSnap_cls;

// What changes the prepared bytes besides the steps and the factor: the text of all such
// parameters, made by the object on the main thread and copied for the worker.
class VolumeSetting_cls {
public:
    // A shape that clears voxels, in the box's own space (-0.5 to 0.5 on each axis).
    class Boolean_cls {
    public:
        enum Type_enum { TYPE_INTERSECT, TYPE_DIFFERENCE, TYPE_ADD };
        enum Shape_enum { SHAPE_BOX, SHAPE_SPHERE, SHAPE_OBJECT };
        int mType = TYPE_INTERSECT;
        int mShape = SHAPE_BOX;
        double mMin[3] = {-1.0, -1.0, -1.0};
        double mMax[3] = {1.0, 1.0, 1.0};
        // SHAPE_OBJECT: from the box's own space into the other object's, whose own box (-1 to 1
        // on each axis) is the shape; column-major as the scene's matrices.
        double mObject[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        // Whether the voxel centre q lies in the shape; the sphere is the ellipsoid inscribed in
        // the box of the bounds.
        bool IsInside(const double* q) const;
    };
    // The data processes in stack order; what they are enters mStrProcCounter too.
    std::vector<Boolean_cls> mVBoolean;
    int mDownsize[3] = {1, 1, 1}; // blocks of voxels averaged into one, per axis
    wxString mStrProcCounter;
    bool operator==(const VolumeSetting_cls& o) const { return mStrProcCounter == o.mStrProcCounter; }
};

class VolumeFoRender_cls {
public:
    // Mixes pA and pB at factor into this set, sized as pA. With a factor of 0 or no second
    // step the bytes of pA are copied. Both snaps must be read. False without voxels.
    bool PrepareData(const VolumeSnap_cls* pA, const VolumeSnap_cls* pB, int frame, float factor,
                     const wxString& strProcCounter);
    // The frame road's form (TwoSetViewer_cls): step a at factor t towards pB. A set that holds
    // that step and factor, made with the same parameters, stays as it is.
    bool PrepareFrame(const VolumeSnap_cls* pA, const VolumeSnap_cls* pB, double t, int step,
                      const VolumeSetting_cls& setting, bool) {
        if (!mData.empty() && IsSameStep(step, static_cast<float>(t)) &&
            mStrProcCounter == setting.mStrProcCounter)
            return true;
        if (!PrepareData(pA, pB, step, static_cast<float>(t), setting.mStrProcCounter))
            return false;
        ApplyBoolean(setting.mVBoolean);
        ApplyDownsize(setting.mDownsize);
        return true;
    }
    // Clears the voxels that the shapes, taken in order, leave out: an intersection keeps the
    // voxels inside, a difference those outside, and an addition brings back those inside.
    void ApplyBoolean(const std::vector<VolumeSetting_cls::Boolean_cls>& vBoolean);
    // Each block of factor[0] x factor[1] x factor[2] voxels becomes their mean (blocks at the
    // far edges are smaller); the size shrinks to match, at least 1.
    void ApplyDownsize(const int* factor);
    // Whether the set holds exactly that step and factor.
    bool IsSameStep(int frame, float factor) const { return mFrame == frame && mFactor == factor; }

    // out = trunc(a * (1 - f) + b * f) byte by byte, in double precision; a plain copy for f 0
    // or without b.
    static void CopyDataFromSnap_EqualSize(unsigned char* out, const unsigned char* a, const unsigned char* b,
                                           double f, size_t size);
    // The same with b resampled (nearest voxel) from its own size to the size of a.
    static void CopyDataFromSnap_Resized(unsigned char* out, const VolumeSnap_cls* pA,
                                         const VolumeSnap_cls* pB, double f);

    int mWidth = 0;
    int mHeight = 0;
    int mDepth = 0;
    std::vector<unsigned char> mData; // X fastest, then Y, then Z
    bool mbTextureUpToDate = false;
    int mFrame = -1;
    float mFactor = -1.f;
    wxString mStrProcCounter; // of the parameters the bytes were made with
    int mDataCounter = 0;     // preparations done, for the tests and the uploads
};
