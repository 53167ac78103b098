// The batched drawing of a particle object whose frame is larger than one batch
// ("ParticleVBOMax=" thousand particles): the particles go in sorted order, one batch at a time,
// through host arrays of one batch into the GPU buffers. Worker threads compact each stage of a
// batch (positions; alpha; colour coordinates and element lists; size, bits and twist) while the
// GL thread uploads the stage before and draws the batch before, so no array of the whole frame
// ever stands in the GPU. Compacting keeps the visible particles (non-zero filter alpha, NaN
// counting as visible) in their sorted order, each quarter of a batch at the offset the counts of
// the quarters before give it. Spheres take the same road with the arrays of their instances:
// position and size together, S and T together, and runs of consecutive instances in place of
// element lists.
// Prepare... and Finish... from the GL thread, in pairs; SetNextVBO... on the GL thread after the
// matching Finish. The workers read the render set and the setting, which must not change until
// the last Finish.
#pragma once

#include "DrawParticleBase_cls.h"

#include <memory>
#include <thread>

class DrawParticleLargeVBO_cls : public DrawParticleBase_cls {
public:
    DrawParticleLargeVBO_cls() = default;
    ~DrawParticleLargeVBO_cls() override;

    // Host arrays for batch particles (growing only); bSphere fills them for DrawSphere.
    void Allocate(int batch, const ParticleDrawSetting_cls& setting, bool bSphere = false);
    // Counts the visible particles of the four quarters of the batch at sorted position first,
    // then copies their positions; sets mNumInBatch and the quarter offsets.
    void PrepareNextDataPos(const ParticleForRender_cls* pSet, long long first);
    void PrepareNextDataST(const ParticleForRender_cls* pSet, long long first);
    void PrepareNextDataAlpha(const ParticleForRender_cls* pSet, long long first);
    // Size, param bits and twist identifiers.
    void PrepareNextDataOther(const ParticleForRender_cls* pSet, long long first);
    // The element lists of the batch: without two-pass one list, with it the second list takes
    // the particles whose param bits have bit 0 set.
    void PrepareNextDataElement(const ParticleForRender_cls* pSet, long long first);
    void FinishPrepareNextPos() { Join(); }
    void FinishPrepareNextST() { Join(); }
    void FinishPrepareNextAlpha() { Join(); }
    void FinishPrepareNextOther() { Join(); }
    void FinishPrepareNextElement() { JoinElement(); }
    void SetNextVBOPos();
    void SetNextVBOST();
    void SetNextVBOAlpha();
    void SetNextVBOOther();
    // An empty batch leaves both element counts 0.
    void SetNextVBOElement();
    void ClearVBO() { ClearVBOBase(); }
    // Frees the host arrays.
    void ReleaseMemoryData();

    int mBatch = 0;
    int mNumInBatch = 0; // visible particles of the batch being prepared
    int mOffset[3] = {}; // where the second, third and fourth quarter begin in the arrays
    int mNumBatches = 0; // batches uploaded since Allocate
    bool mbAllVisible[4] = {};

protected:
    void GetSphereSource(SphereAttribute_cls* pAttribute, int* pListBase) const override;

private:
    // The four quarters of the batch at first: sorted positions [mFrom[j], mFrom[j + 1]).
    void SetQuarters(const ParticleForRender_cls* pSet, long long first);
    // Runs job(quarter) for the four quarters on four threads; Join waits.
    template <class Job> void RunQuarters(Job job);
    void Join();
    void JoinElement();

    const ParticleDrawSetting_cls* mpCSetting = nullptr; // not owned: the caller's, for the draw
    bool mbSphere = false;
    long long mFrom[5] = {};
    int mStart[4] = {};
    std::thread mThread[4];
    std::thread mElementThread;
    std::unique_ptr<float[]> mpPos;
    std::unique_ptr<float[]> mpS;
    std::unique_ptr<float[]> mpT;
    std::unique_ptr<float[]> mpAlpha;
    std::unique_ptr<float[]> mpSize;
    std::unique_ptr<int[]> mpBits;
    std::unique_ptr<float[]> mpTwist;
    int mHostCapacity = 0;
    ParticleElementList_cls mCList;
};
