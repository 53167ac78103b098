// The one clock of the scene: the frame range, the current frame and subframe, the work area
// and the repeat switch as configuration items (list "TimeCtrl"), every conversion to and from
// normalised time (NT), the time commands and playback from the idle handler.
// Main thread only, except msbForceAbort.
#pragma once

#include "ConfListContainer_cls.h"
#include "ExpectTime_cls.h"
#include "GetPC_cls.h"

#include <wx/string.h>

#include <atomic>
#include <functional>
#include <istream>

class TimeCtrl_cls : public ConfListContainer_cls, public GetPC_cls {
public:
    TimeCtrl_cls();
    ~TimeCtrl_cls() override;

    // The update list of SendUpdate, which is also the per-step update of playback.
    static const wxString msStrUpdateList;

    // ---- items and state ----
    int GetFrameMax() const { return static_cast<int>(mCFrameMax.GetBodyINT()); }
    int GetFrameCurrent() const { return static_cast<int>(mCFrameCurrent.GetBodyINT()); }
    int GetSubFrameCurrent() const { return static_cast<int>(mCSubFrameCurrent.GetBodyINT()); }
    int GetSubFrameMax() const { return static_cast<int>(mCSubFrameMax.GetBodyINT()); }
    int GetSubFrameStepping() const { return static_cast<int>(mCSubFrameStepping.GetBodyINT()); }
    int GetWAMin() const { return static_cast<int>(mCWAMin.GetBodyINT()); }
    int GetWAMax() const { return static_cast<int>(mCWAMax.GetBodyINT()); }
    int GetWASubMin() const { return static_cast<int>(mCWASubMin.GetBodyINT()); }
    int GetWASubMax() const { return static_cast<int>(mCWASubMax.GetBodyINT()); }
    bool GetRepeat() const { return mCRepeat.GetBodyBOOL(); }
    bool IsInterpolateComposite() const { return mCInterpolateComposite.GetBodyBOOL(); }
    int GetDefaultKey() const { return static_cast<int>(mCDefaultKey.GetBodyINT()); }
    // 0 stopped, 1 forward, -1 backward.
    int GetPlayDirection() const { return mPlayDirection; }
    bool IsPlaying() const { return mPlayDirection != 0; }
    bool IsOutputRunning() const { return mbOutputRunning; }
    // Called by the output code once the current frame has been saved.
    void SetFrameWritten(bool bWritten) { mbFrameWritten = bWritten; }

    // ---- conversions ----
    // ((blurStep * BlurLength / BlurQuality + sub) / SubFrameMax + frame) / FrameMax; 0.0 when
    // FrameMax is 0.
    double GetNormalizedValue(int frame, int sub, int blurStep) const;
    // The NT of the current frame, subframe and blur step. With InterpolateComposite on and
    // forComposite true the blur term is dropped.
    double GetCurrentNT(bool forComposite = false) const;
    // GetCurrentNT(false) of the process's clock, 0.0 while there is none (a bare object in a
    // test, a service being torn down). Main thread only.
    static double GetClockNT();
    // The NT of the next sample: the next blur step, or the next playback step.
    double GetNextNT(bool forComposite = false) const;
    // The NT length of one subframe.
    double GetDNT() const;
    // A quarter of a frame in NT: the grid of key comparisons.
    double GetDefaultResolution() const;
    // Splits nt into frame and subframe; returns the fraction of a frame beyond the frame.
    double GetFrameFromNT(double nt, int& frame, int& sub) const;
    double GetFrameFromNT(double nt, int* frame, int* sub) const { return GetFrameFromNT(nt, *frame, *sub); }
    // Snaps nt to a whole frame; mode as Misc_cls::Round.
    double GetQuantized(double nt, int mode) const;
    // Snaps v to the 1/1024 grid of colour-curve keys; mode as Misc_cls::Round.
    static double GetQuantizedForColor(double v, int mode = 0);
    // frame * SubFrameMax + sub: a running count of subframes.
    int GetStep(int frame, int sub) const;
    int GetCurrentStep() const;
    double GetNormalizedWAMin() const;
    // WASubMax counts only while WAMax is below FrameMax, so the end of the range is exactly 1.0.
    double GetNormalizedWAMax() const;
    // The centre of the work area.
    double GetNormalizedWARegion() const;
    // The current position plus SubFrameStepping * direction, carried into the frame.
    void GetNextTimeInfo(int& frame, int& sub, int direction) const;
    // Adds delta subframes to (frame, sub) and carries into the frame.
    void CarrySubFrame(int& frame, int& sub, int delta) const;
    // 2 with InterpolateComposite on, otherwise 1.
    int GetImageCompositeNum() const;
    void AdjustFrameForComposer(int* frameA, int* frameB, double* factor, int index, bool keep) const;
    void StoreInterpFactorForComposit(double factor) { mInterpFactorForComposit = factor; }
    double GetInterpFactorForComposit() const { return mInterpFactorForComposit; }
    // How far the current time stands in the work area of a rendering run, in percent.
    double GetOutputPercent() const;
    // Key type and ease of new keys from DefaultKey=; type -1 is the automatic choice.
    void GetDefaultKeyTypeAndEase(int* type, double* ease) const;

    // ---- commands (each pushes an undo pair and runs it) ----
    void SetCurrentFrameCommand(int frame);
    void SetCurrentSubFrameCommand(int sub);
    void SetWAMinCommand(int frame);
    void SetWAMaxCommand(int frame);
    void SetFrameMaxCommand(int frame);
    void SetRepeatCommand(bool bRepeat);
    void SetWARegionCommand(int centre, int left, int right);
    // 1: to the work area end, -1: to its start, anything else: to (0, 0).
    void SetCurrentFrameToEndCommand(int direction);
    void SetCurrentFrameToNextCommand(int direction);
    void SetCurrentNTCommand(double nt);
    // Pressing the same direction twice stops.
    void StartPlayCommand(int direction);
    void StopPlayCommand();
    // The render-to-file switch: starts a run, or stops the running one.
    void AnimCommand(bool resume);

    // ---- the command language ----
    // The list block first, then the "TimeCtrl::<verb>::<value>" lines.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    // The same verbs from the script side. A frame out of range is taken as it is.
    void ProcSetWAMin(int frame);
    void ProcSetWAMax(int frame);
    void ProcSetFrameMax(int frame);
    void ProcSetFrameCurrent(int frame);
    void ProcSetSubFrameCurrent(int sub);
    void ProcSetRepeat(bool bRepeat);
    void SendUpdate();

    // ---- playback ----
    // Once per idle pass; true while the idle loop must keep running.
    bool ProcPlay();

    // ---- rendering run ----
    ExpectTime_cls& GetExpectTime() { return mCExpectTime; }
    wxString GetStrRecordInfo(double percent);

    ConfItemINT_cls mCFrameMax;
    ConfItemINT_cls mCFrameCurrent;
    ConfItemINT_cls mCWAMin;
    ConfItemINT_cls mCWAMax;
    ConfItemINT_cls mCWASubMin;
    ConfItemINT_cls mCWASubMax;
    ConfItemINT_cls mCSubFrameMax;
    ConfItemINT_cls mCSubFrameStepping;
    ConfItemINT_cls mCSubFrameCurrent;
    ConfItemBOOL_cls mCInterpolateComposite;
    ConfItemINT_cls mCDefaultKey;
    ConfItemBOOL_cls mCRepeat;

    int mPlayDirection = 0;
    bool mbOutputRunning = false;
    bool mbFrameWritten = false;
    bool mbOutputResumed = false;
    // A run for one picture: the output code stops playback once that frame is saved.
    bool mbOneShot = false;
    ExpectTime_cls mCExpectTime;
    double mInterpFactorForComposit = 0.0;
    // Whether a run that is not resumed starts from the work area start ("RenderFromIn=" of
    // the image output). Installed by the output layer; none means no.
    std::function<bool()> mFuncRenderFromIn;

    // The abort flag of every long operation: set by the abort button from the main thread,
    // polled by workers. Any thread.
    static std::atomic<bool> msbForceAbort;

private:
    // The frame, then the sub-frame, in one undo block.
    void SetFrameAndSubCommand(const wxString& strBlock, int frame, int sub);
    // Writes the position directly: playback leaves no undo trail per frame.
    void SetPosition(int frame, int sub);
    // "TimeCtrl::<verb>::<new>" with the undo "TimeCtrl::<verb>::<old>", then run.
    void PushVerbCommand(const wxString& strVerb, long long oldValue, long long newValue);
};
