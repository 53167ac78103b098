#include "Particle_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Main_cls.h"
#include "ParticleFormatClone_cls.h"
#include "ReadEventSink_cls.h"
#include "TimeCtrl_cls.h"
#include "ViewerClone_cls.h"

#include <wx/log.h>

#include <chrono>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace {
const wxString kDraw = "VIEW3D";
const wxString kObject = "VIEW3D::PROPERTY_OBJECT";

// An aborted read left part of the step: asked for again, the step is read again, once the abort
// request is no longer standing (the idle pass clears it).
void ForgetAbortedRead(ParticleSnap_cls* pSnap) {
    if (pSnap->mbReadAborted.load(std::memory_order_acquire) &&
        !TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
        pSnap->mReadFile.clear();
}
} // namespace

Particle_cls::Particle_cls(ParentObj_cls* pParent) : DataViewerBase_cls(pParent, "Particle_cls") {
    mDrawOrder = 1;
    Add(&mCLink, "Link=", "None", kObject);
    Add(&mCDissolve, "Dissolve=", "0", kDraw);
    Add(&mCTwoPass, "TwoPass=", "0", kDraw);
    Add(&mCSortType, "SortType=", "0", kObject);
    Add(&mCSortFrequency, "SortFrequency=", "0.999", kObject);
    Add(&mCSortObject, "SortObject=", "None", kObject);
    Add(&mCClassifyType, "ClassifyType=", "0", kObject);
    Add(&mCClassify, "Classify=", "return 0", kObject);
    Add(&mCDepthMask, "DepthMask=", "1", kDraw);
    Add(&mCInterpType, "InterpType=", "1", kObject);
    Add(&mCInterpolateBy, "InterpolateBy=", "0", kObject);
    Add(&mCVanishSizeType, "VanishSizeType=", "2", kObject);
    Add(&mCExtrapolateType, "ExtrapolateType=", "0", kObject);
    Add(&mCTexturePath0, "TexturePath0=", "None", kObject);
    Add(&mCTexturePath1, "TexturePath1=", "None", kObject);
    Add(&mCTexturePath2, "TexturePath2=", "None", kObject);
    Add(&mCDependDistance, "DependDistance=", "0", kObject);
    Add(&mCPointSizeFactor, "PointSizeFactor=", "10", kObject);
    Add(&mCDistanceBase, "DistanceBase=", "10", kObject);
    Add(&mCSphereDepth, "SphereDepth=", "2", kObject);
    Add(&mCAlphaCrit, "AlphaCrit=", "0.01", kObject);
    Add(&mCTextureNum, "TextureNum=", "1", kObject);
    Add(&mCInfoIndex, "InfoIndex=", "0", "PROPERTY_INFO");
    Add(&mCCastShadow, "CastShadow=", "1", kDraw);
    Add(&mCTwistRandom, "TwistRandom=", "0", kDraw);
    Add(&mCPeriodicBox, "PeriodicBox=", "0", kObject);
    Add(&mCPeriodicBoxLow, "PeriodicBoxLow=", "0 0 0", kObject);
    Add(&mCPeriodicBoxHigh, "PeriodicBoxHigh=", "1 1 1", kObject);
    mpCCurrent = std::make_unique<ParticleForRender_cls>();
    mpCNext = std::make_unique<ParticleForRender_cls>();
    AddOwnAttribute(new MaterialParticle_cls("Material"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

bool Particle_cls::CanAddMaterial(const wxString& strName) {
    if (GetNumMaterial() < MaterialParticle_cls::kMaterialMax)
        return true;
    wxLogWarning("%s: a particle object has at most %d materials; \"%s\" is not added", GetStrName(),
                 MaterialParticle_cls::kMaterialMax, strName);
    return false;
}

MaterialParticle_cls* Particle_cls::GetPNewMaterial(const wxString& strName) {
    return CanAddMaterial(strName) ? new MaterialParticle_cls(strName) : nullptr;
}

MaterialParticle_cls* Particle_cls::GetPCMaterialParticle(int index) {
    return static_cast<MaterialParticle_cls*>(GetPCAttributeFromAttribName("MaterialParticle_cls", index));
}

Particle_cls::~Particle_cls() {
    mCThreadNext.Join();
}

int Particle_cls::CheckFileSequence() {
    mbWarnedIDOrder = false;
    mStrCheckedFormat = mCFormat.SerializeAll();
    return DataViewerBase_cls::CheckFileSequence(mCSequence);
}

bool Particle_cls::CheckIDOrder(const FrameInfo_cls& info) {
    if (mbWarnedIDOrder || !IsInterpolateByID() || mCFormat.IsPreSortByID())
        return false;
    for (int slot = 1; slot <= 2; ++slot) {
        if (!IsIndexNeeded(info, slot))
            continue;
        ParticleSnap_cls* pSnap = mCSequence.GetPCSnap(info.mIndex[slot]);
        if (!pSnap || !pSnap->mAllocated || pSnap->IsReading() || pSnap->AreIDsAscending())
            continue;
        mbWarnedIDOrder = true;
        wxLogWarning("Particle object \"%s\": the IDs in %s are not in ascending order, so the "
                     "interpolation by ID misses particles. Turn on \"Do Sort by ID\" (PreSortByID=) "
                     "in the object's particle format.",
                     GetStrName(), pSnap->mReadFile);
        return true;
    }
    return false;
}

bool Particle_cls::PrefetchData() {
    if (IsDataChanged())
        CheckFileSequence();
    // A fresh clone per call: the user may edit the format while a reader runs.
    auto pClone = std::make_unique<ParticleFormatClone_cls>();
    pClone->CloneFromFormat(mCFormat, IsInterpolateByID());
    return mCSequence.PrefetchData(pClone.get(), GetPCSequenceRemap());
}

bool Particle_cls::StartRead(ParticleSnap_cls* pSnap, int index) {
    ForgetAbortedRead(pSnap);
    ParticleFormatClone_cls clone;
    clone.CloneFromFormat(mCFormat, IsInterpolateByID());
    pSnap->SetStrFile(mCSequence.GetStrFileOfIndex(index));
    pSnap->ReadHeader(&clone);
    // On a reader thread even when the caller waits for it, so that the wait can show the
    // progress and take the abort button.
    return pSnap->ReadData(&clone, true);
}

bool Particle_cls::ReadStepNow(int index) {
    if (IsDataChanged())
        CheckFileSequence();
    if (index < 0 || index >= mCSequence.GetSnapCount())
        return false;
    ParticleSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return false;
    if (pSnap->IsReading())
        WaitForReads({pSnap});
    if (StartRead(pSnap, index))
        WaitForReads({pSnap});
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("PROPERTY_INFO");
    return true;
}

bool Particle_cls::ReleaseMemoryData() {
    // The worker reads the snaps of the next frame: evicting one under it would pull its arrays
    // away. The next idle pass tries again.
    if (mCThreadNext.IsStarted() && !mCThreadNext.IsFinished())
        return false;
    return mCSequence.ReleaseMemoryData(GetPCSequenceRemap());
}

// ---- the two render sets ----------------------------------------------------------------------

bool Particle_cls::GetFrameInfo(double nt, FrameInfo_cls& info) {
    const int count = mCSequence.GetSnapCount();
    if (!GpCTimeCtrl || count < 1)
        return false;
    info.mInterp = GpCTimeCtrl->GetFrameFromNT(nt, info.mFrame, info.mSubFrame);
    // SeqOffset= is the scene frame at which the data's step 0 stands.
    int dataFrame = info.mFrame - static_cast<int>(mCSeqOffset.GetBodyINT());
    ModFrame(dataFrame, count, false);
    int a = mCSequence.GetRemappedIndex(dataFrame, GetPCSequenceRemap(), nt, false);
    if (a < 0)
        a = 0;
    if (a > count - 1)
        a = count - 1;
    const int b = a + 1 < count ? a + 1 : a;
    if (b == a)
        info.mInterp = 0.0; // nothing to move towards after the last step
    info.mIndex[0] = a - 1;
    info.mIndex[1] = a;
    info.mIndex[2] = b;
    info.mIndex[3] = b + 1 < count ? b + 1 : -1;
    return true;
}

void Particle_cls::AdjustFrameForComposer(FrameInfo_cls& info, int composite) {
    if (GpCTimeCtrl)
        GpCTimeCtrl->AdjustFrameForComposer(&info.mIndex[1], &info.mIndex[2], &info.mInterp, composite,
                                            false);
}

bool Particle_cls::IsIndexNeeded(const FrameInfo_cls& info, int slot) const {
    if (info.mIndex[slot] < 0)
        return false;
    if (slot == 1)
        return true;
    if (slot == 2)
        return info.mInterp != 0.0;
    // The cubic types look one step further on each side.
    const int type = GetInterpType();
    return info.mInterp != 0.0 && (type == 3 || type == 4);
}

void Particle_cls::GetSnaps(const FrameInfo_cls& info, ParticleSnap_cls* snaps[4]) {
    // PrepareData takes A, B, the one before A, the one after B; B falls back to A.
    const int order[4] = {1, 2, 0, 3};
    for (int k = 0; k < 4; ++k) {
        const int slot = order[k];
        snaps[k] = IsIndexNeeded(info, slot) ? mCSequence.GetPCSnap(info.mIndex[slot]) : nullptr;
    }
    if (!snaps[1])
        snaps[1] = snaps[0];
}

bool Particle_cls::LoadSnapsNow(const FrameInfo_cls& info, bool& bRead, bool bWait) {
    bRead = false;
    std::vector<ParticleSnap_cls*> vReading;
    for (int slot = 0; slot < 4; ++slot) {
        if (!IsIndexNeeded(info, slot))
            continue;
        const int index = info.mIndex[slot];
        ParticleSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
        if (!pSnap)
            return false;
        // A read ahead may have this step already: it is waited for, never started twice.
        if (!pSnap->IsReading() && StartRead(pSnap, index))
            bRead = true;
        if (pSnap->IsReading())
            vReading.push_back(pSnap);
    }
    if (!vReading.empty() && !bWait)
        return false;
    WaitForReads(vReading);
    return mCSequence.GetPCSnap(info.mIndex[1]) != nullptr;
}

void Particle_cls::WaitForReads(const std::vector<ParticleSnap_cls*>& vReading) {
    if (vReading.empty())
        return;
    for (;;) {
        bool bAny = false;
        int percent = 0;
        for (ParticleSnap_cls* pSnap : vReading) {
            bAny = bAny || pSnap->IsReading();
            percent += pSnap->GetReadPercent();
        }
        if (!bAny)
            break;
        ReadEventSink_cls::ShowProgress(percent / static_cast<int>(vReading.size()), false);
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    ReadEventSink_cls::ShowProgress(100, true);
    for (ParticleSnap_cls* pSnap : vReading)
        if (pSnap->mbReadAborted.load(std::memory_order_acquire))
            wxLogMessage("Read aborted at %d%%: %s", pSnap->GetReadPercent(), pSnap->mReadFile);
}

bool Particle_cls::AreSnapsReady(const FrameInfo_cls& info) {
    for (int slot = 0; slot < 4; ++slot) {
        if (!IsIndexNeeded(info, slot))
            continue;
        ParticleSnap_cls* pSnap = mCSequence.GetPCSnap(info.mIndex[slot]);
        if (!pSnap || !pSnap->mReadStarted || !pSnap->mReadFinished.load(std::memory_order_acquire) ||
            !pSnap->mAllocated)
            return false;
    }
    return true;
}

bool Particle_cls::WaitPrepareNext() {
    // Joining twice is harmless: the result of the last job stays until the next one starts.
    const bool bOK = mCThreadNext.Join();
    return mbNextStarted && bOK;
}

void Particle_cls::StartReadsAt(double nt) {
    if (IsDataChanged())
        CheckFileSequence();
    FrameInfo_cls info;
    if (!GetFrameInfo(nt, info))
        return;
    AdjustFrameForComposer(info, 0);
    bool bRead = false;
    LoadSnapsNow(info, bRead, false);
}

bool Particle_cls::PrepareDraw(int step, int composite) {
    if (step == 0 && IsDataChanged())
        CheckFileSequence();
    if (!GpCTimeCtrl)
        return false;
    const double nt = GpCTimeCtrl->GetCurrentNT(false);
    FrameInfo_cls info;
    if (!GetFrameInfo(nt, info))
        return false;
    AdjustFrameForComposer(info, composite);
    if (step != 0)
        return mpCCurrent->mNumber > 0;
    // While playing, a frame whose data are still being read is skipped (the last one stays on
    // screen): the window never waits for a file. Recording and still frames wait.
    const bool bWait = !GpCTimeCtrl->IsPlaying() || GpCTimeCtrl->IsOutputRunning();
    bool bRead = false;
    if (!LoadSnapsNow(info, bRead, bWait))
        return !bWait && mpCCurrent->mNumber > 0;
    if (bRead && GCClassProvider)
        GCClassProvider->UpdatePanels("PROPERTY_INFO");
    CheckIDOrder(info);
    PrefetchData();

    // The hand-over: the spare set is the worker's until it is joined here.
    const bool bNextDone = mbNextStarted && WaitPrepareNext();
    mbNextStarted = false;
    const bool bPlaying = GpCTimeCtrl->IsPlaying();
    auto pViewer = std::make_unique<ViewerClone_cls>();
    Clone(*pViewer, nt);
    const wxString strStamp = mpCNext->GetStrProcCounterClone(pViewer.get(), nt) + "|";
    if (bPlaying && bNextDone && mpCNext->mLastStep == info.mIndex[1] &&
        mpCNext->mLastInterp == static_cast<float>(info.mInterp) &&
        mpCNext->mLastProcCounter.StartsWith(strStamp)) {
        std::swap(mpCCurrent, mpCNext);
        std::swap(mCurrentTime, mNextTime);
        wxLogMessage("Swap Render Snap");
        wxLogMessage("mpCCurrent at %g", mCurrentTime);
        wxLogMessage("mpCNext at %g", mNextTime);
    } else {
        wxLogMessage("Not Swap");
        wxLogMessage("Now is %d", info.mFrame);
        ParticleSnap_cls* snaps[4];
        GetSnaps(info, snaps);
        if (!mpCCurrent->PrepareData(snaps[0], snaps[1], snaps[2], snaps[3], info.mIndex[1], info.mFrame,
                                     info.mSubFrame, info.mInterp, pViewer.release(), nullptr, nt,
                                     mCCameraNow, false))
            return false;
        mCurrentTime = nt;
    }
    if (bPlaying && mbPrefetchNext) {
        // The image drawn next: the composer's second one of this time, else the next time's first.
        const bool bSecond = composite + 1 < GpCTimeCtrl->GetImageCompositeNum();
        const double ntNext = bSecond ? nt : GpCTimeCtrl->GetNextNT(false);
        auto pNext = std::make_unique<ViewerClone_cls>();
        Clone(*pNext, ntNext);
        if (!IsPreparedOnMainThreadOnly(*pNext))
            PrepareDataNext(pNext.release(), nullptr, bSecond ? composite + 1 : 0, ntNext,
                            bSecond ? mCCameraNow : mCCameraNext);
    }
    return true;
}

bool Particle_cls::IsPreparedOnMainThreadOnly(ViewerClone_cls& clone) {
    // A merge takes another object's frame, and a shape given by an object reads that object's pose:
    // both read the scene, which only the main thread may.
    if (ParticleForRender_cls::HasActiveMerge(&clone))
        return true;
    for (const auto& pAttr : clone.mVPCAttribute) {
        const ConfItem_cls* pValid = pAttr->GetPCItem("Validity=");
        if (pValid && pValid->GetBodyINT() == 0)
            continue;
        const ConfItem_cls* pShape = pAttr->GetPCItem("BooleanShape=");
        if (pAttr->IsAttributeSameAs("ParticleBoolean_cls") && pShape && pShape->GetBodyINT() == 2)
            return true;
    }
    return false;
}

bool Particle_cls::PrepareDataNext(ViewerClone_cls* pViewer, ViewerClone_cls* pMaterial, int composite,
                                   double time, PositionAndDirection_cls camera) {
    std::unique_ptr<ViewerClone_cls> pOwnViewer(pViewer);
    std::unique_ptr<ViewerClone_cls> pOwnMaterial(pMaterial);
    WaitPrepareNext();
    mbNextStarted = false;
    FrameInfo_cls info;
    if (!GetFrameInfo(time, info))
        return false;
    AdjustFrameForComposer(info, composite);
    if (!AreSnapsReady(info))
        return false;
    ParticleSnap_cls* snaps[4];
    GetSnaps(info, snaps);
    ParticleForRender_cls* pSet = mpCNext.get();
    ViewerClone_cls* pV = pOwnViewer.release();
    ViewerClone_cls* pM = pOwnMaterial.release();
    mNextTime = time;
    mbNextStarted = true;
    mCThreadNext.Start(
        [pSet, s0 = snaps[0], s1 = snaps[1], s2 = snaps[2], s3 = snaps[3], info, pV, pM, time, camera]() {
            return pSet->PrepareData(s0, s1, s2, s3, info.mIndex[1], info.mFrame, info.mSubFrame,
                                     info.mInterp, pV, pM, time, camera, true);
        });
    return true;
}

void Particle_cls::SyncFormatTag() {
    mCFormat.SetTag("SceneObj::" + GetStrName() + "::ParticleFormat");
}

void Particle_cls::SerializeFormat(wxString& strOut) {
    SyncFormatTag();
    mCFormat.Serialize(strOut);
}

bool Particle_cls::ReadStrLineFormat(std::wistream& stream, const wxString& strHead,
                                     const wxString& strRest) {
    SyncFormatTag();
    if (!mCFormat.ReadStrLine(stream, strHead, strRest))
        return false;
    mCFormat.UpdateRowsFromStrings();
    return true;
}

Particle_cls* Particle_cls::GetPCParticle(SceneObj_cls* p) {
    return p && p->IsClassSameAs("Particle_cls") ? static_cast<Particle_cls*>(p) : nullptr;
}
