// Marching cubes over a cube of 8-bit voxels (X fastest, then Y, then Z): the triangles of the
// surface where the voxels cross an iso value, as a triangle list of positions and normals in
// voxel units (voxel (i, j, k) at (i, j, k)). A vertex lies on a cell edge where the linear
// interpolation of the two corner values meets the value; its normal is the voxel gradient
// (central differences, one-sided at the border) interpolated along the edge, negated and made
// unit length, so it points towards the lower values.
//
// The pass is cut into slabs of cell layers along Z, one worker thread per slab as the
// thread-count table says; each worker fills its own list and the lists are joined in slab order,
// so the result is the same triangles in the same order as one thread makes.
#pragma once

#include "ThreadCommon_cls.h"

#include <vector>

class MarchingCubes_cls : public ThreadCommon_cls {
public:
    class Result_cls {
    public:
        std::vector<float> mXYZ;    // 9 per triangle
        std::vector<float> mNormal; // 9 per triangle
        long long GetTriangleCount() const { return static_cast<long long>(mXYZ.size() / 9); }
        void Clear() {
            mXYZ.clear();
            mNormal.clear();
        }
    };

    // Any thread. threadCount 0 takes the count from the table for the number of cells;
    // background as in that table. The result is replaced. Returns the triangle count. An iso value
    // that no voxel pair brackets gives no triangles; when it lies outside the range of the data
    // one log line says so.
    static long long Run(const unsigned char* pData, int sizeX, int sizeY, int sizeZ, float iso,
                         Result_cls& out, int threadCount = 0, bool background = false);

    // The triangles of the cell layers z0 .. z1 - 1 appended to out. Any thread.
    static void RunSlab(const unsigned char* pData, int sizeX, int sizeY, int sizeZ, float iso, int z0,
                        int z1, Result_cls& out);
};
