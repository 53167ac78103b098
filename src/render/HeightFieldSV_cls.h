// The shadow volume of a height field: a flat grid (x, y of the prepared vertices, z 0, and each
// vertex's texel) with its triangles' neighbours, made again only when the grid's shape changes,
// and a float texture of the lifted heights, uploaded when the set or its data change. In the
// volume phase of a shadow step "SVTriangleMeshHF" lifts the grid by that texture on the GPU, so a
// new frame of the same grid costs one texture upload and no new adjacency. The grid is an open
// sheet: its rim is always a silhouette.
// The height field's draw entry calls Draw from its volume slot of the kind table, with the
// object's matrix on the model-view. One per object per GL context (the frame passes own it).
// GL thread only.
#pragma once

#include "GLObject_cls.h"

#include <cstddef>

class HeightFieldForRender_cls;

class HeightFieldSV_cls {
public:
    // Uploads what changed, binds the volume program, draws, unbinds.
    void Draw(const HeightFieldForRender_cls& set);
    int GetAdjacencyCount() const { return mAdjacencyCount; }
    // How often the grid and its neighbours were built, and the heights uploaded.
    int GetGridBuildCount() const { return mGridBuildCount; }
    int GetHeightUploadCount() const { return mHeightUploadCount; }

private:
    void BuildGrid(const HeightFieldForRender_cls& set, int w, int h);
    void UploadHeights(const HeightFieldForRender_cls& set, int w, int h);

    // The shape of the flat grid: its size in vertices, its corners, its index count.
    int mGridW = 0, mGridH = 0;
    float mGridCorner[4] = {};
    size_t mGridIndexCount = 0;
    // The heights: the set they came from (not owned: only compared) and its counters.
    const HeightFieldForRender_cls* mpCStampSet = nullptr;
    long long mStampSerial = -1;
    int mStampData = -1;
    int mStampStep = -1;
    float mStampInterp = -2.f;
    size_t mStampSize = 0;

    GLBuffer_cls mGrid; // x, y, 0, texel column, texel row
    GLBuffer_cls mAdjacency;
    GLTexture_cls mHeight; // the lifted z of each vertex, red
    int mAdjacencyCount = 0;
    int mGridBuildCount = 0;
    int mHeightUploadCount = 0;
};
