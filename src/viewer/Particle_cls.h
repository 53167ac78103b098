// The scene object that shows a particle data sequence. It owns the description of its files
// (ParticleFormat_cls, written as a block of its own in the project) and the sequence of snaps.
// Main thread only; readers get a clone of the format.
#pragma once
#include "DataViewerBase_cls.h"
#include "MaterialParticle_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleFormat_cls.h"
#include "ParticleSequence_cls.h"
#include "PositionAndDirection_cls.h"
#include "ThreadParticlePrepareNext_cls.h"

#include <memory>
#include <vector>

class Particle_cls : public DataViewerBase_cls {
public:
    // Starts with one material ("Material") and one colour curve ("ColorCurve", the keys of
    // "Red Yellow"), so that a new object draws; neither is announced in the project.
    explicit Particle_cls(ParentObj_cls* pParent);
    // Waits for the preparation thread: it works on this object's render set and snaps.
    ~Particle_cls() override;

    // Counts the files of Path= into the sequence; returns the number of steps. The snaps go, so
    // they are read again with the format as it is now.
    int CheckFileSequence();
    // Path=, UseSequence=, Script= or the format differ from the last count: the snaps in memory
    // were read by another rule or layout.
    bool IsDataChanged() { return IsPathChanged() || mCFormat.SerializeAll() != mStrCheckedFormat; }
    // Starts at most one read ahead of the current frame, with a fresh clone of the format; the
    // clone is deleted here (the reader works on a copy of its own). True when a read started.
    bool PrefetchData();
    // Reads step index now on the calling thread (waiting for a read of it that runs), with a
    // fresh clone of the format. False when the sequence has no such step.
    bool ReadStepNow(int index);
    // Evicts at most one snap of the sequence. True when one went. Nothing goes while the
    // preparation thread runs, since it reads the snaps of the next frame.
    bool ReleaseMemoryData();
    // The memory of the loaded snaps, in whole MB.
    int GetTotalUsedMemoryMB() { return mCSequence.GetTotalUsedMemoryMB(); }
    int GetInterpType() const { return static_cast<int>(mCInterpType.GetBodyINT()); }
    bool IsInterpolateByID() const { return mCInterpolateBy.GetBodyINT() == 1; }

    // A further material for "New::Material::<name>"; null, with a log line, when the object
    // has ten already. The caller owns it.
    MaterialParticle_cls* GetPNewMaterial(const wxString& strName);
    // False, with a log line naming strName, when the object has its ten materials already.
    bool CanAddMaterial(const wxString& strName);
    // The index-th material, null past the end. Not owned.
    MaterialParticle_cls* GetPCMaterialParticle(int index);
    int GetNumMaterial() { return GetNumAttribute("MaterialParticle_cls"); }

    // The format block in the project: its list tag follows the object's name.
    void SerializeFormat(wxString& strOut);
    bool ReadStrLineFormat(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    void SyncFormatTag();

    // ---- the two render sets ----
    // The steps that a frame needs: [0] the one before A, [1] A (at or before the time), [2] B
    // (after it; A when there is none), [3] the one after B; -1 where there is none.
    class FrameInfo_cls {
    public:
        int mFrame = 0;
        int mSubFrame = 0;
        double mInterp = 0.0;
        int mIndex[4] = {-1, -1, -1, -1};
    };
    // Matching by ID needs ascending IDs. When a read snap of the frame has them out of order while
    // the reader does not sort them, warns once per sequence, naming the object and the setting that
    // helps. Main thread. True when it warned now.
    bool CheckIDOrder(const FrameInfo_cls& info);
    // Frame, steps and interpolation factor at normalised time nt. False without steps.
    bool GetFrameInfo(double nt, FrameInfo_cls& info);
    // The composer's image `composite` of the frame (with InterpolateComposite on) shows one step
    // unblended: step A for image 0, step B for image 1. Unchanged without composing.
    static void AdjustFrameForComposer(FrameInfo_cls& info, int composite);
    // Main thread, before drawing; step 0 is the first draw of a frame, composite the composer's
    // image. Loads the snaps of the frame now if needed, then fills mpCCurrent: the spare set when
    // the background preparation made exactly this frame (log "Swap Render Snap"), otherwise a
    // preparation now (log "Not Swap"). While playing it then starts the preparation of the image
    // drawn next (the composer's second image of this time, or the next frame). False when the
    // frame has no data.
    bool PrepareDraw(int step, int composite);
    // Starts the reads of the steps that the frame at normalised time nt needs and returns
    // without waiting for them. Main thread.
    void StartReadsAt(double nt);
    // Starts the preparation of the frame at time on mpCNext, when all its snaps are read; else
    // frees the clones and returns false. Takes the clones.
    bool PrepareDataNext(ViewerClone_cls* pViewer, ViewerClone_cls* pMaterial, int composite, double time,
                         PositionAndDirection_cls camera);
    // Whether a frame with these entries must be prepared on the main thread: an active merge with a target,
    // or a shape given by a scene object. Such frames are never prepared in the background.
    static bool IsPreparedOnMainThreadOnly(ViewerClone_cls& clone);
    // The object as a particle object when its class word says it is one; null otherwise.
    static Particle_cls* GetPCParticle(SceneObj_cls* p);
    // Joins the preparation thread; true when it prepared a frame.
    bool WaitPrepareNext();
    // The camera poses of this draw and of the next frame, in the scene's space.
    void SetCameraPoses(const PositionAndDirection_cls& now, const PositionAndDirection_cls& next) {
        mCCameraNow = now;
        mCCameraNext = next;
    }

    std::unique_ptr<ParticleForRender_cls> mpCCurrent; // the shown set; main thread
    std::unique_ptr<ParticleForRender_cls> mpCNext;    // the spare set; the worker's while it runs
    ThreadParticlePrepareNext_cls mCThreadNext;
    bool mbPrefetchNext = true; // the next frame may be prepared in the background
    double mCurrentTime = -1.0; // the time each set was prepared for
    double mNextTime = -1.0;

    ParticleFormat_cls mCFormat;
    ParticleSequence_cls mCSequence;

    ConfItemSTR_cls mCLink;
    ConfItemINT_cls mCDissolve;
    ConfItemINT_cls mCTwoPass;
    ConfItemINT_cls mCSortType;
    ConfItemFLOAT_cls mCSortFrequency;
    ConfItemSTR_cls mCSortObject;
    ConfItemINT_cls mCClassifyType;
    ConfItemSTR_cls mCClassify;
    ConfItemBOOL_cls mCDepthMask;
    ConfItemINT_cls mCInterpType;
    ConfItemINT_cls mCInterpolateBy;
    ConfItemINT_cls mCVanishSizeType;
    ConfItemINT_cls mCExtrapolateType;
    // 0 "No periodic box", 1 "Box from the file header", 2 "Box typed in": particles that cross a face
    // of the box move the short way and are drawn wrapped into it.
    ConfItemINT_cls mCPeriodicBox;
    ConfItemSTR_cls mCPeriodicBoxLow;  // "x y z"
    ConfItemSTR_cls mCPeriodicBoxHigh; // "x y z"

    ConfItemSTR_cls mCTexturePath0;
    ConfItemSTR_cls mCTexturePath1;
    ConfItemSTR_cls mCTexturePath2;
    ConfItemINT_cls mCDependDistance;
    ConfItemFLOAT_cls mCPointSizeFactor;
    ConfItemFLOAT_cls mCDistanceBase;
    ConfItemINT_cls mCSphereDepth;
    ConfItemFLOAT_cls mCAlphaCrit;
    ConfItemINT_cls mCTextureNum;
    ConfItemINT_cls mCInfoIndex;
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCTwistRandom;

private:
    // Starts the reads of the snaps of info that are not read; bRead tells whether one started.
    // With bWait it waits for them (and for reads ahead of them), showing the progress; without,
    // it returns false while any is being read. False when A is missing.
    bool LoadSnapsNow(const FrameInfo_cls& info, bool& bRead, bool bWait);
    // Starts the read of step index into its snap with a fresh clone of the format (a step whose
    // read was aborted is read once more); true when a read started or the substitute data were
    // made.
    bool StartRead(ParticleSnap_cls* pSnap, int index);
    // Waits for the reads, showing their progress through the read event sink (whose window
    // takes the abort button); logs each read that was aborted.
    void WaitForReads(const std::vector<ParticleSnap_cls*>& vReading);
    // Every snap that info needs is read and not being read.
    bool AreSnapsReady(const FrameInfo_cls& info);
    // The snaps of info, in the order PrepareData takes them (A, B, before A, after B).
    void GetSnaps(const FrameInfo_cls& info, ParticleSnap_cls* snaps[4]);
    // Which of the four steps the interpolation type needs.
    bool IsIndexNeeded(const FrameInfo_cls& info, int slot) const;

    PositionAndDirection_cls mCCameraNow;
    PositionAndDirection_cls mCCameraNext;
    bool mbNextStarted = false;   // a preparation of mpCNext was started and not yet taken
    bool mbWarnedIDOrder = false; // the IDs-out-of-order warning was given for this sequence
    wxString mStrCheckedFormat;   // the format's item lines at the last count
};
