#include "ParticleModifierPipeline_cls.h"

#include "AttributeClone_cls.h"
#include "BooleanBase_cls.h"
#include "ModifierBase_cls.h"
#include "ModifyApparentSizeExec_cls.h"
#include "ModifyParticleSizeExec_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleBooleanExec_cls.h"
#include "ParticleFilteringExec_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleMergeExe_cls.h"
#include "ParticleSnap_cls.h"
#include "Particle_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TensorMath_cls.h"
#include "ViewerClone_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

long long GetCloneINT(const AttributeClone_cls& clone, const wxString& strHead, long long def) {
    ConfItem_cls* p = clone.GetPCItem(strHead);
    return p ? p->GetBodyINT() : def;
}

// The particle of snap A that element e of the set came from; -1 for an empty place, and a place past
// A's count for an element merged in from another object.
inline long long SourceOf(const ParticleForRender_cls& set, long long e) {
    return set.mbSourceIdentity ? e : set.mSource[e];
}

// The IDs of A's particles as 64-bit values, empty without IDs.
std::vector<int64_t> GetIDsOfSnap(const ParticleSnap_cls* pSnap) {
    std::vector<int64_t> v;
    if (!pSnap)
        return v;
    const int n = pSnap->mNumber.load(std::memory_order_relaxed);
    if (pSnap->mID)
        v.assign(pSnap->mID.get(), pSnap->mID.get() + n);
    else if (pSnap->mIDLong)
        v.assign(pSnap->mIDLong.get(), pSnap->mIDLong.get() + n);
    return v;
}

// A per-element copy of a per-particle array of A (0 where an element has no particle of A).
template <class T, class U>
std::vector<T> PerElement(const ParticleForRender_cls& set, const U* pSrc, long long count) {
    std::vector<T> v(static_cast<size_t>(set.mNumber), T());
    if (!pSrc)
        return v;
    for (long long e = 0; e < set.mNumber; ++e) {
        const long long i = SourceOf(set, e);
        if (i >= 0 && i < count)
            v[e] = static_cast<T>(pSrc[i]);
    }
    return v;
}

// Right after the interpolation: the frame of each valid merge target that is a shown particle object
// is appended. Reads the scene, so the main thread only.
void RunMerges(ParticleModifierCall_cls& call) {
    for (const auto& pClone : call.mpCViewer->mVPCAttribute) {
        if (!pClone->IsAttributeSameAs("ParticleMerge_cls") || !ModifierBase_cls::IsCloneValid(*pClone))
            continue;
        ConfItem_cls* pTargetItem = pClone->GetPCItem("Target=");
        if (!pTargetItem || pTargetItem->GetBodySTR() == "None" || !GpCSceneObjCtrl)
            continue;
        // Looking up the target reads the scene: never from a worker.
        wxASSERT_MSG(!call.mbNext, "bNext == FALSE");
        if (call.mbNext)
            continue;
        Particle_cls* pTarget =
            Particle_cls::GetPCParticle(GpCSceneObjCtrl->GetPCFromName(pTargetItem->GetBodySTR()));
        if (!pTarget || pTarget->mpCCurrent.get() == call.mpCSet || pTarget->mpCNext.get() == call.mpCSet ||
            !pTarget->mCVisible.GetBodyBOOL())
            continue;
        ParticleMergeExe_cls(pClone.get(), call.mpCSet, pTarget->mpCCurrent.get()).Execute();
    }
}

// Before the sort: filters and shapes set the filter alpha, in stack order.
void RunRemovals(ParticleModifierCall_cls& call) {
    ParticleForRender_cls& set = *call.mpCSet;
    const long long n = set.mNumber;
    const long long count = call.mpCSnapA ? call.mpCSnapA->mNumber.load(std::memory_order_relaxed) : n;
    for (const auto& pClone : call.mpCViewer->mVPCAttribute) {
        if (pClone->IsAttributeSameAs("ParticleFiltering_cls")) {
            ParticleFilteringExec_cls exec(pClone.get());
            // The list names particles of A by index or ID: each element points at its particle.
            std::vector<ArrayAndIndex_cls> vOrder(static_cast<size_t>(n));
            for (long long e = 0; e < n; ++e) {
                const long long i = SourceOf(set, e);
                vOrder[e].mIndex = static_cast<int>(i < 0 ? count : std::min<long long>(i, INT32_MAX));
            }
            std::vector<int64_t> vID;
            if (GetCloneINT(*pClone, "IndexType=", ParticleFiltering_cls::kIndexTypeIndex) ==
                ParticleFiltering_cls::kIndexTypeID) {
                vID = GetIDsOfSnap(call.mpCSnapA);
                if (!vID.empty())
                    exec.SetIDs(vID.data());
            }
            exec.CheckFiltering(set.mAlpha.get(), vOrder.data(), n, count);
        } else if (pClone->IsAttributeSameAs("ParticleBoolean_cls")) {
            double object[16];
            const double* pObject = nullptr;
            // The object shape reads the scene: the main thread only (the viewer prepares such frames
            // there).
            if (GetCloneINT(*pClone, "BooleanShape=", BooleanBase_cls::kShapeBox) ==
                    BooleanBase_cls::kShapeObject &&
                !call.mbNext && GpCSceneObjCtrl) {
                ConfItem_cls* pItem = pClone->GetPCItem("BooleanObject=");
                SceneObj_cls* pObj = pItem && pItem->GetBodySTR() != "None"
                                         ? GpCSceneObjCtrl->GetPCFromName(pItem->GetBodySTR())
                                         : nullptr;
                double m[16], inverse[16];
                if (pObj && (pObj->IsClassSameAs("MeshObj_cls") || pObj->IsClassSameAs("Primitive_cls"))) {
                    pObj->GetMatrix16(m, call.mTime, nullptr);
                    if (TensorMath_cls::Invert(m, inverse)) {
                        // From the viewer's space into the object's.
                        TensorMath_cls::Multiply(object, inverse, call.mpCViewer->mMatrix);
                        pObject = object;
                    }
                }
            }
            ParticleBooleanExec_cls exec(pClone.get(), call.mTime, pObject);
            exec.CheckBoolean(set.mAlpha.get(), reinterpret_cast<float(*)[3]>(set.mXYZ.get()), n,
                              call.mbNext);
        }
    }
}

// After the keys: the size modifiers, in stack order.
void RunSizeModifiers(ParticleModifierCall_cls& call) {
    ParticleForRender_cls& set = *call.mpCSet;
    const long long n = set.mNumber;
    const ParticleSnap_cls* pA = call.mpCSnapA;
    const long long count = pA ? pA->mNumber.load(std::memory_order_relaxed) : 0;
    for (const auto& pClone : call.mpCViewer->mVPCAttribute) {
        if (pClone->IsAttributeSameAs("ModifyApparentSize_cls")) {
            ModifyApparentSizeExec_cls exec(pClone.get(), call.mTime, call.mSortType);
            // Without a depth in the key the depth is taken along the view direction.
            exec.SetCamera(set.mXYZ.get(), call.mCamera.mPos, call.mCamera.mTgt);
            exec.Execute(set.mAlpha.get(), nullptr, 0, set.mSize.get(), set.mType.get(), set.mOrder.get(), n);
        } else if (pClone->IsAttributeSameAs("ModifyParticleSize_cls")) {
            ModifyParticleSizeExec_cls exec(pClone.get(), call.mpCViewer, call.mTime);
            if (!exec.IsReady())
                continue;
            // The sources per element, gathered from A only for the column the entry reads.
            std::vector<int64_t> vID;
            std::vector<float> vValue;
            ModifySizeSource_cls src;
            const int column = exec.GetValueColumn();
            if (pA && exec.mDependType == ModifyParticleSize_cls::kDependID) {
                const std::vector<int64_t> vIDA = GetIDsOfSnap(pA);
                if (!vIDA.empty()) {
                    vID = PerElement<int64_t>(set, vIDA.data(), count);
                    src.mpID = vID.data();
                }
            } else if (pA && column >= 0 && pA->mValue[column]) {
                vValue = PerElement<float>(set, pA->mValue[column].get(), count);
                src.mpValue[column] = vValue.data();
            }
            exec.Execute(set.mAlpha.get(), set.mSize.get(), set.mType.get(), set.mOrder.get(), n, src);
        }
    }
}

} // namespace

void ParticleModifierPipeline_cls::Run(int stage, ParticleModifierCall_cls& call) {
    if (!call.mpCSet || !call.mpCViewer || call.mpCSet->mNumber <= 0)
        return;
    switch (stage) {
    case ParticleModifierCall_cls::kStageMerge:
        RunMerges(call);
        break;
    case ParticleModifierCall_cls::kStageRemove:
        RunRemovals(call);
        break;
    case ParticleModifierCall_cls::kStageSize:
        RunSizeModifiers(call);
        break;
    default:
        break;
    }
}
