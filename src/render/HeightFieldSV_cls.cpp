#include "HeightFieldSV_cls.h"

#include "GetPC_cls.h"
#include "HeightFieldForRender_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {
constexpr int kFloatsPerVertex = 5;
}

void HeightFieldSV_cls::BuildGrid(const HeightFieldForRender_cls& set, int w, int h) {
    const size_t n = static_cast<size_t>(w) * static_cast<size_t>(h);
    std::vector<float> vGrid(n * kFloatsPerVertex);
    for (size_t i = 0; i < n; ++i) {
        float* v = &vGrid[i * kFloatsPerVertex];
        v[0] = set.mXYZ[3 * i];
        v[1] = set.mXYZ[3 * i + 1];
        v[2] = 0.f;
        v[3] = static_cast<float>(i % static_cast<size_t>(w));
        v[4] = static_cast<float>(i / static_cast<size_t>(w));
    }
    // The flat grid's neighbours are those of every lifted one: its points never coincide.
    static_assert(sizeof(unsigned int) == sizeof(uint32_t), "the grid's indices are 32 bits");
    const std::vector<uint32_t> vAdjacency = ShadowAdjacency_cls::GetVAdjacencyIndexed(
        vGrid.data(), kFloatsPerVertex, reinterpret_cast<const uint32_t*>(set.mIndex.data()),
        static_cast<int>(set.mIndex.size()));
    mGrid = GLBuffer_cls::Make();
    glBindBuffer(GL_ARRAY_BUFFER, mGrid.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vGrid.size() * sizeof(float)), vGrid.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    mAdjacency = GLBuffer_cls::Make();
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mAdjacency.Get());
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                 vAdjacency.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    mAdjacencyCount = static_cast<int>(vAdjacency.size());
    mGridW = w;
    mGridH = h;
    const size_t last = 3 * (n - 1);
    const float corner[4] = {set.mXYZ[0], set.mXYZ[1], set.mXYZ[last], set.mXYZ[last + 1]};
    std::copy(corner, corner + 4, mGridCorner);
    mGridIndexCount = set.mIndex.size();
    ++mGridBuildCount;
}

void HeightFieldSV_cls::UploadHeights(const HeightFieldForRender_cls& set, int w, int h) {
    const size_t n = static_cast<size_t>(w) * static_cast<size_t>(h);
    std::vector<float> vZ(n);
    for (size_t i = 0; i < n; ++i)
        vZ[i] = set.mXYZ[3 * i + 2];
    if (!mHeight)
        mHeight = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, mHeight.Get());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, w, h, 0, GL_RED, GL_FLOAT, vZ.data());
    // Read texel by texel: each vertex finds exactly the z it is drawn at.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    mpCStampSet = &set;
    mStampSerial = set.mSerial;
    mStampData = set.mDataCounter;
    mStampStep = set.mLastStep;
    mStampInterp = set.mLastInterp;
    mStampSize = set.mXYZ.size();
    ++mHeightUploadCount;
}

void HeightFieldSV_cls::Draw(const HeightFieldForRender_cls& set) {
    const size_t vertices = set.mXYZ.size() / 3;
    if (set.mIndex.empty() || vertices == 0 || !GpCShadowVolumeCtrl)
        return;
    // A set without its size is one row of vertices.
    int w = set.mWidth, h = set.mHeight;
    if (w <= 0 || h <= 0 || static_cast<size_t>(w) * static_cast<size_t>(h) != vertices) {
        w = static_cast<int>(vertices);
        h = 1;
    }
    const size_t last = 3 * (vertices - 1);
    const bool bSameGrid = mGrid && w == mGridW && h == mGridH && set.mIndex.size() == mGridIndexCount &&
                           set.mXYZ[0] == mGridCorner[0] && set.mXYZ[1] == mGridCorner[1] &&
                           set.mXYZ[last] == mGridCorner[2] && set.mXYZ[last + 1] == mGridCorner[3];
    if (!bSameGrid)
        BuildGrid(set, w, h);
    const bool bSameHeights = mHeight && &set == mpCStampSet && set.mSerial == mStampSerial &&
                              set.mDataCounter == mStampData && set.mLastStep == mStampStep &&
                              set.mLastInterp == mStampInterp && set.mXYZ.size() == mStampSize;
    if (!bSameGrid || !bSameHeights)
        UploadHeights(set, w, h);
    if (mAdjacencyCount == 0 || !GpCShadowVolumeCtrl->BeginShaderHF(0))
        return;
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mHeight.Get());
    ShadowVolumeCtrl_cls::DrawAdjacency(mGrid.Get(), kFloatsPerVertex * sizeof(float), mAdjacency.Get(),
                                        mAdjacencyCount, 3 * sizeof(float));
    glBindTexture(GL_TEXTURE_2D, 0);
    GpCShadowVolumeCtrl->EndShader();
}
