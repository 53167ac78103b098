// What the stream-line, height-field and isosurface objects share: a sequence of snaps, two
// prepared sets (the shown one and a spare one that a background thread fills for the next frame
// while playing), and the frame road from the time to the steps. The kinds say how a snap gets
// its file and is read, what the settings of a frame are (a plain copy made on the main thread,
// which is all the worker reads); the set prepares itself (PrepareFrame) from the two snaps.
//
// Hand-over: the spare set and the settings copy belong to the worker from Start until the main
// thread joins it in PrepareDraw; no lock is needed. Main thread only, except the prepare call.
#pragma once

#include "ClassProvider_cls.h"
#include "DataViewerBase_cls.h"
#include "Main_cls.h"
#include "ThreadParticlePrepareNext_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <memory>
#include <utility>

template <class Seq_T, class Snap_T, class Set_T, class Setting_T>
class TwoSetViewer_cls : public DataViewerBase_cls {
public:
    TwoSetViewer_cls(ParentObj_cls* pParent, const wxString& strClassWord)
        : DataViewerBase_cls(pParent, strClassWord), mpCCurrent(std::make_unique<Set_T>()),
          mpCNext(std::make_unique<Set_T>()) {}
    // The worker works on the spare set and the snaps: it ends first.
    ~TwoSetViewer_cls() override { mCThreadNext.Join(); }

    // Counts the files of Path=; returns the number of steps.
    virtual int CheckFileSequence() { return DataViewerBase_cls::CheckFileSequence(mCSequence); }
    int GetTotalUsedMemoryMB() { return mCSequence.GetTotalUsedMemoryMB(); }
    // Evicts at most one snap; nothing while the worker reads the snaps of the next frame.
    bool ReleaseMemoryData() {
        if (mCThreadNext.IsStarted() && !mCThreadNext.IsFinished())
            return false;
        return mCSequence.ReleaseMemoryData(GetPCSequenceRemap());
    }
    // Starts at most one read ahead of the current frame.
    bool PrefetchData() {
        // A read may free a snap's arrays (a changed file or channel): not under the worker.
        if (mCThreadNext.IsStarted() && !mCThreadNext.IsFinished())
            return false;
        if (IsPathChanged()) {
            mCurrentKey.mbValid = false;
            CheckFileSequence();
        }
        return PrefetchSequence();
    }

    // Steps A and B and the factor between them at normalised time nt; false without steps.
    bool GetSteps(double nt, int& a, int& b, double& t) {
        const int count = mCSequence.GetSnapCount();
        if (!GpCTimeCtrl || count < 1)
            return false;
        int frame = 0, sub = 0;
        t = GpCTimeCtrl->GetFrameFromNT(nt, frame, sub);
        // SeqOffset= is the scene frame at which the data's step 0 stands.
        int dataFrame = frame - static_cast<int>(mCSeqOffset.GetBodyINT());
        ModFrame(dataFrame, count, false);
        a = std::max(
            0, std::min(count - 1, mCSequence.GetRemappedIndex(dataFrame, GetPCSequenceRemap(), nt, false)));
        b = a + 1 < count ? a + 1 : a;
        if (b == a || !IsBlending())
            t = 0.0;
        return true;
    }

    // The steps of the composer's image `composite` at nt: with InterpolateComposite on, image 0
    // shows step A and image 1 step B, each unblended; otherwise those of GetSteps.
    bool GetStepsForComposite(double nt, int composite, int& a, int& b, double& t) {
        if (!GetSteps(nt, a, b, t))
            return false;
        LogSteps(nt, a, b, t, composite, false);
        GpCTimeCtrl->AdjustFrameForComposer(&a, &b, &t, composite, false);
        LogSteps(nt, a, b, t, composite, true);
        return true;
    }

    // Main thread, before drawing the composer's image `composite` (0 without composing): reads
    // the snaps of the time now if needed, then fills mpCCurrent, taking the spare set when the
    // worker made exactly this frame (log "Swap Render Snap"), else preparing now (log "Not
    // Swap"). While playing it then starts the spare set on the image drawn next: the composer's
    // second image of this time, else the next frame. False when the frame has no data.
    bool PrepareDraw(int composite = 0) {
        // The spare set and the snaps are the worker's until it is joined.
        const bool bNextDone = mbNextStarted && mCThreadNext.Join();
        mbNextStarted = false;
        if (IsPathChanged()) {
            mCurrentKey.mbValid = false;
            CheckFileSequence();
        }
        if (!GpCTimeCtrl)
            return false;
        const double nt = GpCTimeCtrl->GetCurrentNT(false);
        int a = 0, b = 0;
        double t = 0.0;
        if (!GetStepsForComposite(nt, composite, a, b, t))
            return false;
        Snap_T* pA = LoadSnapNow(a);
        Snap_T* pB = b != a ? LoadSnapNow(b) : pA;
        if (!pA)
            return false;
        const Setting_T setting = GetSetting(nt);
        const bool bPlaying = GpCTimeCtrl->IsPlaying();
        const FrameKey_cls key{a, t, pA, pB, pA->mReadCount, pB ? pB->mReadCount : 0, setting, true};
        if (bPlaying && bNextDone && mNextStep == a && mNextInterp == t && mNextSetting == setting) {
            std::swap(mpCCurrent, mpCNext);
            wxLogMessage("Swap Render Snap");
        } else if (!(mCurrentKey == key)) {
            // A frame drawn again (a second sub-pass, a repaint) keeps its prepared set: the
            // surface of an isosurface is not made twice for one frame.
            wxLogMessage("Not Swap");
            mCurrentKey.mbValid = false;
            if (!mpCCurrent->PrepareFrame(pA, pB, t, a, setting, false))
                return false;
        }
        mCurrentKey = key;
        if (bPlaying) {
            const bool bSecond = composite + 1 < GpCTimeCtrl->GetImageCompositeNum();
            PrepareDataNext(bSecond ? nt : GpCTimeCtrl->GetNextNT(false), bSecond ? composite + 1 : 0);
        }
        return true;
    }

    // Starts the preparation of the composer's image `composite` of the frame at nt on the spare
    // set when its snaps are read; false otherwise (the frame is then prepared when it is due).
    bool PrepareDataNext(double nt, int composite = 0) {
        int a = 0, b = 0;
        double t = 0.0;
        if (!GetStepsForComposite(nt, composite, a, b, t))
            return false;
        Snap_T* pA = mCSequence.GetPCSnap(a);
        Snap_T* pB = mCSequence.GetPCSnap(b);
        if (!IsReady(pA) || !IsReady(pB))
            return false;
        mCThreadNext.Join();
        mNextStep = a;
        mNextInterp = t;
        mNextSetting = GetSetting(nt);
        Set_T* pSet = mpCNext.get();
        const Setting_T* pSetting = &mNextSetting;
        // The job touches only the spare set, the snaps and the settings copy, never the object,
        // whose derived part may already be gone when the base destructor joins it.
        mCThreadNext.Start(
            [pSet, pA, pB, t, a, pSetting]() { return pSet->PrepareFrame(pA, pB, t, a, *pSetting, true); });
        mbNextStarted = true;
        return true;
    }
    // Drops both prepared sets (the data or their scale changed): the next draw prepares anew.
    void DropPrepared() {
        mCThreadNext.Join();
        mbNextStarted = false;
        mCurrentKey.mbValid = false;
        mNextStep = -1;
        mpCCurrent = std::make_unique<Set_T>();
        mpCNext = std::make_unique<Set_T>();
    }
    // Joins the worker; true when it prepared a frame.
    bool WaitPrepareNext() {
        const bool bOK = mCThreadNext.Join();
        return mbNextStarted && bOK;
    }

    Seq_T mCSequence;
    std::unique_ptr<Set_T> mpCCurrent; // the shown set; main thread
    std::unique_ptr<Set_T> mpCNext;    // the spare set; the worker's while it runs
    ThreadParticlePrepareNext_cls mCThreadNext;

protected:
    // Whether the kind blends two steps (false: the factor is always 0).
    virtual bool IsBlending() const = 0;
    // The settings of the frame at nt, copied for the worker.
    virtual Setting_T GetSetting(double nt) = 0;
    // Main thread: the snap of index read now (waiting for a running read); null without one.
    virtual Snap_T* LoadSnapNow(int index) = 0;
    virtual bool PrefetchSequence() = 0;
    // The steps of a draw before (bAdjusted false) and after the composer's correction; the kinds
    // that trace their frame road in the log write them here.
    virtual void LogSteps(double /*nt*/, int /*a*/, int /*b*/, double /*t*/, int /*composite*/,
                          bool /*bAdjusted*/) {}
    // Main thread: the snap exists and its read has ended.
    static bool IsReady(Snap_T* p) { return p && p->mReadStarted && !p->IsReading(); }

private:
    // What the shown set was prepared from; the same key again needs no preparation.
    class FrameKey_cls {
    public:
        int mStep = -1;
        double mInterp = -1.0;
        const Snap_T* mpA = nullptr;
        const Snap_T* mpB = nullptr;
        int mReadA = 0;
        int mReadB = 0;
        Setting_T mSetting;
        bool mbValid = false;
        bool operator==(const FrameKey_cls& o) const {
            return mbValid && o.mbValid && mStep == o.mStep && mInterp == o.mInterp && mpA == o.mpA &&
                   mpB == o.mpB && mReadA == o.mReadA && mReadB == o.mReadB && mSetting == o.mSetting;
        }
    };
    FrameKey_cls mCurrentKey;
    bool mbNextStarted = false;
    int mNextStep = -1;
    double mNextInterp = -1.0;
    Setting_T mNextSetting;
};
