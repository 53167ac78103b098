// The normal drawing of a particle object's frame: every array in one GPU buffer, uploaded only
// when the frame's stamps change (ensemble steps, eyes and wide-camera faces of one frame reuse
// them), and spheres drawn as instances of one shared sphere mesh. GL thread only.
#pragma once

#include "DrawParticleBase_cls.h"

class DrawParticle_cls : public DrawParticleBase_cls {
public:
    // Uploads what changed of the frame: nothing when the set, its data and sort counters and
    // the material setting are those of the buffers. The element lists hold the visible
    // particles (non-zero filter alpha, a drawn material) in sorted order; with two-pass,
    // particles whose paramBit has bit 0 set go to the second list. bSphere gathers the
    // per-instance data of the sphere draw instead of the point buffers.
    void SetVBOBuffer(const ParticleForRender_cls* pSet, const ParticleDrawSetting_cls& setting,
                      bool bSphere);
    // Shadow volumes of the spheres of the last SetVBOBuffer, every one as an instance of the
    // sphere mesh of that depth with its neighbours, through "SVTriangleMesh".
    void DrawSphereSV(int depth);
    // Deletes every buffer and forgets the stamps: the next SetVBOBuffer uploads all.
    void ClearVBO();

protected:
    // One interleaved record per instance: each run of consecutive particles sharing a material
    // in sorted order is one draw.
    void GetSphereSource(SphereAttribute_cls* pAttribute, int* pListBase) const override;

private:
    // The material of the first particle when every particle is drawn, in its own order, in the
    // first list by one program and blending (the lists are then 0 to n - 1 in one run); -1
    // otherwise, and the lists are built entry by entry.
    static int GetSequentialMaterial(const ParticleForRender_cls* pSet,
                                     const ParticleDrawSetting_cls& setting);

    const ParticleForRender_cls* mpCStampSet = nullptr; // not owned: only compared
    int mStampData = -1;
    int mStampSort = -1;
    long long mStampNumber = -1;
    wxString mStrStampSetting;
    bool mbStampSphere = false;

    ParticleElementList_cls mCList;
    std::vector<int> mVParamBit;
    std::vector<float> mVTwist;
    std::vector<float> mVInstance; // 8 per instance: x, y, z, size, S, T, alpha, bits
    GLBuffer_cls mInstance;
    size_t mInstanceCapacity = 0;
};
