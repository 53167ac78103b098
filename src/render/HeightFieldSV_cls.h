// The shadow volume of a height field's prepared grid: the grid's triangles with their neighbours
// (an open sheet: its rim is always a silhouette), uploaded when the set or its data change, and
// drawn through "SVTriangleMesh" in the volume phase of a shadow step. The grid carries its
// heights already, so no height texture is read; "SVTriangleMeshHF" (ShadowVolumeCtrl_cls::
// BeginShaderHF) serves a drawer that lifts a flat grid by the height texture instead.
// The height field's draw entry calls Draw from its volume slot of the kind table, with the
// object's matrix on the model-view. One per GL context (the frame passes own it). GL thread only.
#pragma once

#include "GLObject_cls.h"

class HeightFieldForRender_cls;

class HeightFieldSV_cls {
public:
    // Uploads the grid unless these buffers hold it, binds the volume program, draws, unbinds.
    void Draw(const HeightFieldForRender_cls& set);
    int GetAdjacencyCount() const { return mAdjacencyCount; }

private:
    const HeightFieldForRender_cls* mpCStampSet = nullptr; // not owned: only compared
    int mStampData = -1;
    int mStampStep = -1;
    float mStampInterp = -2.f;
    size_t mStampSize = 0;
    GLBuffer_cls mPosition;
    GLBuffer_cls mAdjacency;
    int mAdjacencyCount = 0;
};
