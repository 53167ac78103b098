#include "HeightFieldSV_cls.h"

#include "GetPC_cls.h"
#include "HeightFieldForRender_cls.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <cstdint>
#include <vector>

void HeightFieldSV_cls::Draw(const HeightFieldForRender_cls& set) {
    if (set.mIndex.empty() || set.mXYZ.empty() || !GpCShadowVolumeCtrl)
        return;
    const bool bSame = &set == mpCStampSet && set.mDataCounter == mStampData && set.mLastStep == mStampStep &&
                       set.mLastInterp == mStampInterp && set.mXYZ.size() == mStampSize;
    if (!bSame) {
        static_assert(sizeof(unsigned int) == sizeof(uint32_t), "the grid's indices are 32 bits");
        const std::vector<uint32_t> vAdjacency = ShadowAdjacency_cls::GetVAdjacencyIndexed(
            set.mXYZ.data(), 3, reinterpret_cast<const uint32_t*>(set.mIndex.data()),
            static_cast<int>(set.mIndex.size()));
        mPosition = GLBuffer_cls::Make();
        glBindBuffer(GL_ARRAY_BUFFER, mPosition.Get());
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(set.mXYZ.size() * sizeof(float)),
                     set.mXYZ.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        mAdjacency = GLBuffer_cls::Make();
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mAdjacency.Get());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                     vAdjacency.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
        mAdjacencyCount = static_cast<int>(vAdjacency.size());
        mpCStampSet = &set;
        mStampData = set.mDataCounter;
        mStampStep = set.mLastStep;
        mStampInterp = set.mLastInterp;
        mStampSize = set.mXYZ.size();
    }
    if (mAdjacencyCount == 0 || !GpCShadowVolumeCtrl->BeginShader())
        return;
    ShadowVolumeCtrl_cls::DrawAdjacency(mPosition.Get(), 3 * sizeof(float), mAdjacency.Get(),
                                        mAdjacencyCount);
    GpCShadowVolumeCtrl->EndShader();
}
