#include "TimeCtrl_cls.h"

#include "Main_cls.h"
#include "Misc_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "Parser_cls.h"
#include "Queue_cls.h"
#include "UndoManager_cls.h"

#include <wx/intl.h>
#include <wx/log.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

std::atomic<bool> TimeCtrl_cls::msbForceAbort{false};

const wxString TimeCtrl_cls::msStrUpdateList =
    "TIMELINE::GRAPH::COLOR_CURVE::VIEW3D::PROPERTY_OBJECT::PROPERTY_MATERIAL::PROPERTY_MODIFIER::"
    "PROPERTY_DATAPROC::PROPERTY_SCENE::PROPERTY_INFO";

namespace {

void UpdatePanels(const wxString& strPanels) {
    if (GCClassProvider)
        GCClassProvider->UpdatePanels(strPanels);
}

int ToInt(long long value) {
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return static_cast<int>(value);
}

} // namespace

TimeCtrl_cls::TimeCtrl_cls() {
    SetTag("TimeCtrl");
    Add(&mCFrameMax, "FrameMax=", "100");
    Add(&mCFrameCurrent, "FrameCurrent=", "0");
    Add(&mCWAMin, "WAMin=", "0");
    Add(&mCWAMax, "WAMax=", "100");
    Add(&mCWASubMin, "WASubMin=", "0");
    Add(&mCWASubMax, "WASubMax=", "0");
    Add(&mCSubFrameMax, "SubFrameMax=", "2", "TIMELINE");
    Add(&mCSubFrameStepping, "SubFrameStepping=", "1", "TIMELINE");
    Add(&mCSubFrameCurrent, "SubFrameCurrent=", "0");
    Add(&mCInterpolateComposite, "InterpolateComposite=", "0", "TIMELINE::VIEW3D");
    Add(&mCDefaultKey, "DefaultKey=", "4", "TIMELINE");
    Add(&mCRepeat, "Repeat=", "0");
}

TimeCtrl_cls::~TimeCtrl_cls() = default;

// ---- conversions ----------------------------------------------------------------------------

double TimeCtrl_cls::GetNormalizedValue(int frame, int sub, int blurStep) const {
    int frameMax = GetFrameMax();
    if (frameMax == 0)
        return 0.0;
    double blur = 0.0;
    if (blurStep != 0 && GpCBlurCtrl && GpCBlurCtrl->GetBlurQuality() != 0)
        blur = static_cast<double>(blurStep) * GpCBlurCtrl->GetBlurLength() / GpCBlurCtrl->GetBlurQuality();
    return ((blur + sub) / static_cast<double>(GetSubFrameMax()) + frame) / frameMax;
}

double TimeCtrl_cls::GetClockNT() {
    return GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT(false) : 0.0;
}

double TimeCtrl_cls::GetCurrentNT(bool forComposite) const {
    int blurStep = GpCBlurCtrl ? GpCBlurCtrl->GetBlurStep() : 0;
    // A composite of two images already spreads the time: the blur term would count twice.
    if (IsInterpolateComposite() && forComposite)
        blurStep = 0;
    return GetNormalizedValue(GetFrameCurrent(), GetSubFrameCurrent(), blurStep);
}

double TimeCtrl_cls::GetNextNT(bool forComposite) const {
    int frame = GetFrameCurrent();
    int sub = GetSubFrameCurrent();
    bool bComposite = IsInterpolateComposite() && forComposite;
    if (GpCBlurCtrl && GpCBlurCtrl->IsUseMotionBlur() && !bComposite) {
        int blurStep = GpCBlurCtrl->GetBlurStep();
        if (blurStep + 1 < GpCBlurCtrl->GetBlurQuality())
            return GetNormalizedValue(frame, sub, blurStep + 1);
    }
    CarrySubFrame(frame, sub, GetSubFrameStepping());
    int frameMax = GetFrameMax();
    if (frameMax == 0)
        return 0.0;
    return (frame + static_cast<double>(sub) / GetSubFrameMax()) / frameMax;
}

double TimeCtrl_cls::GetDNT() const {
    return 1.0 / GetFrameMax() / GetSubFrameMax();
}

double TimeCtrl_cls::GetDefaultResolution() const {
    return (1.0 / GetFrameMax()) * 0.25;
}

double TimeCtrl_cls::GetFrameFromNT(double nt, int& frame, int& sub) const {
    int frameMax = GetFrameMax();
    if (frameMax == 0 || !std::isfinite(nt)) {
        frame = 0;
        sub = 0;
        return 0.0;
    }
    // The 1e-6 lifts an NT that falls just below a whole frame by rounding noise onto it.
    double x = frameMax * nt + 1e-6;
    double floored = std::floor(x);
    if (floored > INT_MAX)
        floored = INT_MAX;
    if (floored < INT_MIN)
        floored = INT_MIN;
    frame = static_cast<int>(floored);
    double rem = (nt - static_cast<double>(frame) / frameMax) * frameMax;
    double subValue = GetSubFrameMax() * rem + 0.5;
    sub = std::isfinite(subValue) && std::fabs(subValue) < INT_MAX ? static_cast<int>(subValue) : 0;
    return rem;
}

double TimeCtrl_cls::GetQuantized(double nt, int mode) const {
    int frameMax = GetFrameMax();
    if (frameMax == 0)
        return 0.0;
    float rounded = static_cast<float>(Misc_cls::Round(nt * frameMax, mode));
    return static_cast<double>(rounded / frameMax);
}

double TimeCtrl_cls::GetQuantizedForColor(double v, int mode) {
    float rounded = static_cast<float>(Misc_cls::Round(v * 1024.0, mode));
    return rounded * 0.0009765625;
}

int TimeCtrl_cls::GetStep(int frame, int sub) const {
    return frame * GetSubFrameMax() + sub;
}

int TimeCtrl_cls::GetCurrentStep() const {
    return GetStep(GetFrameCurrent(), GetSubFrameCurrent());
}

double TimeCtrl_cls::GetNormalizedWAMin() const {
    return GetNormalizedValue(GetWAMin(), GetWASubMin(), 0);
}

double TimeCtrl_cls::GetNormalizedWAMax() const {
    int waMax = GetWAMax();
    return GetNormalizedValue(waMax, waMax == GetFrameMax() ? 0 : GetWASubMax(), 0);
}

double TimeCtrl_cls::GetNormalizedWARegion() const {
    int waMin = GetWAMin();
    int waMax = GetWAMax();
    int s = GetSubFrameMax();
    if (s == 0) {
        printf("WAmin == %d\n", waMin);
        printf("WAmax == %d\n", waMax);
        printf("subFrameMax == %d\n", s);
        fflush(stdout);
        s = 1;
    }
    int frameMax = GetFrameMax();
    if (frameMax == 0)
        return 0.0;
    int waSubMax = waMax == frameMax ? 0 : GetWASubMax();
    int centre = ((waMin + waMax) * s + GetWASubMin() + waSubMax) / 2;
    return (static_cast<double>(centre % s) / s + centre / s) / frameMax;
}

void TimeCtrl_cls::CarrySubFrame(int& frame, int& sub, int delta) const {
    sub += delta;
    int subMax = GetSubFrameMax();
    if (subMax <= 0)
        return; // no subframes to carry: the loops below would never end
    while (sub < 0) {
        --frame;
        sub += subMax;
    }
    while (sub >= subMax) {
        sub -= subMax;
        ++frame;
    }
}

void TimeCtrl_cls::GetNextTimeInfo(int& frame, int& sub, int direction) const {
    frame = GetFrameCurrent();
    sub = GetSubFrameCurrent();
    CarrySubFrame(frame, sub, GetSubFrameStepping() * direction);
}

int TimeCtrl_cls::GetImageCompositeNum() const {
    return IsInterpolateComposite() ? 2 : 1;
}

void TimeCtrl_cls::AdjustFrameForComposer(int* frameA, int* frameB, double* factor, int index,
                                          bool keep) const {
    if (!IsInterpolateComposite())
        return;
    if (!keep && index == 1)
        *frameA = *frameB;
    *factor = 0.0;
}

double TimeCtrl_cls::GetOutputPercent() const {
    double a = GetNormalizedValue(GetWAMin(), 0, 0);
    double b = GetNormalizedValue(GetWAMax(), 0, 0);
    if (a == b)
        return 0.0;
    double c = GetCurrentNT(false);
    return (c - a) / (b - a) * 100.0;
}

void TimeCtrl_cls::GetDefaultKeyTypeAndEase(int* type, double* ease) const {
    // DefaultKey= indexes: linear, hermite automatic, hermite ease, step, automatic.
    switch (GetDefaultKey()) {
    case 0:
        *type = 1;
        *ease = 1.0;
        break;
    case 1:
        *type = 2;
        *ease = 1.0;
        break;
    case 2:
        *type = 2;
        *ease = 0.0;
        break;
    case 3:
        *type = 0;
        *ease = 1.0;
        break;
    default:
        *type = -1;
        *ease = 1.0;
        break;
    }
}

// ---- commands -------------------------------------------------------------------------------

void TimeCtrl_cls::PushVerbCommand(const wxString& strVerb, long long oldValue, long long newValue) {
    wxString strUndo = wxString::Format("TimeCtrl::%s::%lld", strVerb, oldValue);
    wxString strDo = wxString::Format("TimeCtrl::%s::%lld", strVerb, newValue);
    if (!GpCUndo) {
        // No history (a bare clock): the edit still takes effect.
        std::wistringstream stream;
        wxString strRest = strDo;
        wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
        ReadStrLine(stream, strHead, strRest);
        return;
    }
    GpCUndo->PushCommandPairAndDo(strUndo, strDo);
}

void TimeCtrl_cls::SetCurrentFrameCommand(int frame) {
    PushVerbCommand("SetFrameCurrent", GetFrameCurrent(), frame);
}

void TimeCtrl_cls::SetCurrentSubFrameCommand(int sub) {
    PushVerbCommand("SetSubFrameCurrent", GetSubFrameCurrent(), sub);
}

void TimeCtrl_cls::SetWAMinCommand(int frame) {
    PushVerbCommand("SetWAMin", GetWAMin(), frame);
}

void TimeCtrl_cls::SetWAMaxCommand(int frame) {
    PushVerbCommand("SetWAMax", GetWAMax(), frame);
}

void TimeCtrl_cls::SetFrameMaxCommand(int frame) {
    PushVerbCommand("SetFrameMax", GetFrameMax(), frame);
}

void TimeCtrl_cls::SetRepeatCommand(bool bRepeat) {
    PushVerbCommand("SetRepeat", GetRepeat() ? 1 : 0, bRepeat ? 1 : 0);
}

static void OpenBlock(const wxString& strName) {
    if (GpCUndo)
        GpCUndo->OpenBlock(strName);
}

static void CloseBlock(const wxString& strName) {
    if (GpCUndo)
        GpCUndo->CloseBlock(strName);
}

void TimeCtrl_cls::SetFrameAndSubCommand(const wxString& strBlock, int frame, int sub) {
    OpenBlock(strBlock);
    SetCurrentFrameCommand(frame);
    SetCurrentSubFrameCommand(sub);
    CloseBlock(strBlock);
}

void TimeCtrl_cls::SetWARegionCommand(int centre, int left, int right) {
    OpenBlock("TimeWARegion");
    SetWAMinCommand(centre - left);
    SetWAMaxCommand(centre + right);
    CloseBlock("TimeWARegion");
}

void TimeCtrl_cls::SetCurrentFrameToEndCommand(int direction) {
    int frame = 0;
    int sub = 0;
    if (direction == 1) {
        frame = GetWAMax();
        sub = GetWASubMax();
    } else if (direction == -1) {
        frame = GetWAMin();
        sub = GetWASubMin();
    }
    SetFrameAndSubCommand("ToEnd", frame, sub);
}

void TimeCtrl_cls::SetCurrentFrameToNextCommand(int direction) {
    int frame = 0;
    int sub = 0;
    GetNextTimeInfo(frame, sub, direction);
    if (frame < 0) {
        frame = 0;
        sub = 0;
    } else if (frame >= GetFrameMax()) {
        frame = GetFrameMax();
        sub = 0;
    }
    SetFrameAndSubCommand("ToNext", frame, sub);
}

void TimeCtrl_cls::SetCurrentNTCommand(double nt) {
    int frame = 0;
    int sub = 0;
    GetFrameFromNT(nt, frame, sub);
    bool bFrame = frame != GetFrameCurrent();
    bool bSub = sub != GetSubFrameCurrent();
    if (bFrame && bSub) {
        SetFrameAndSubCommand(wxString(), frame, sub);
    } else if (bFrame) {
        SetCurrentFrameCommand(frame);
    } else if (bSub) {
        SetCurrentSubFrameCommand(sub);
    }
}

void TimeCtrl_cls::StartPlayCommand(int direction) {
    if (direction == mPlayDirection) {
        StopPlayCommand(); // pressing the play button twice stops
        return;
    }
    if (GpCUndo) {
        // Undo returns to where playback started. "SetFrameSubCurrent" is deliberately not a
        // verb of the reader: the subframe is not restored.
        GpCUndo->OpenBlock("StartPlay");
        GpCUndo->PushCommandPairAndDo(wxString::Format("TimeCtrl::SetFrameCurrent::%d", GetFrameCurrent()),
                                      "StartPlay(dummy)");
        GpCUndo->PushCommandPairAndDo(
            wxString::Format("TimeCtrl::SetFrameSubCurrent::%d", GetSubFrameCurrent()), "StartPlay(dummy)");
        GpCUndo->CloseBlock("StartPlay");
    }
    mPlayDirection = direction;
    SendUpdate();
}

void TimeCtrl_cls::StopPlayCommand() {
    if (GpCUndo) {
        // Recorded, not run: playback already stands here. Redo goes back to this position.
        GpCUndo->OpenBlock("StopPlay");
        GpCUndo->PushCommandPair("StopPlay(dummy)",
                                 wxString::Format("TimeCtrl::SetFrameCurrent::%d", GetFrameCurrent()));
        GpCUndo->Skip();
        GpCUndo->PushCommandPair("StopPlay(dummy)",
                                 wxString::Format("TimeCtrl::SetFrameSubCurrent::%d", GetSubFrameCurrent()));
        GpCUndo->Skip();
        GpCUndo->CloseBlock("StopPlay");
    }
    mPlayDirection = 0;
    mbOutputResumed = false;
    if (mbOutputRunning) {
        mbOutputRunning = false;
        mbFrameWritten = false;
        UpdatePanels("PROPERTY_RENDER");
    }
    mCExpectTime.StopSW();
}

void TimeCtrl_cls::AnimCommand(bool resume) {
    if (mbOutputRunning) {
        StopPlayCommand();
        return;
    }
    if (!resume && mFuncRenderFromIn && mFuncRenderFromIn())
        SetCurrentFrameToEndCommand(-1);
    StartPlayCommand(1);
    mbOutputResumed = resume;
    mbOutputRunning = true;
    mbFrameWritten = false;
    mCExpectTime.Start(0);
    mCExpectTime.mbRunning = true;
    UpdatePanels("PROPERTY_RENDER::VIEW3D");
}

// ---- the command language -------------------------------------------------------------------

bool TimeCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    if (ConfListContainer_cls::ReadStrLine(stream, strHead, strRest))
        return true;
    if (strHead != "TimeCtrl")
        return false;
    wxString strLine = strRest;
    wxString strVerb = Parser_cls::PopStrItemFromStrLine(strLine, "::");
    wxString strValue = Parser_cls::PopStrItemFromStrLine(strLine, "::");
    // An unparsable number reads as 0, like every item.
    wxScopedCharBuffer buf = strValue.utf8_str();
    int value = ToInt(strtoll(buf.data(), nullptr, 10));
    if (strVerb == "SetWAMin")
        ProcSetWAMin(value);
    else if (strVerb == "SetWAMax")
        ProcSetWAMax(value);
    else if (strVerb == "SetFrameMax")
        ProcSetFrameMax(value);
    else if (strVerb == "SetFrameCurrent")
        ProcSetFrameCurrent(value);
    else if (strVerb == "SetSubFrameCurrent")
        ProcSetSubFrameCurrent(value);
    else if (strVerb == "SetRepeat")
        ProcSetRepeat(value != 0);
    else
        return false;
    return true;
}

void TimeCtrl_cls::ProcSetWAMin(int frame) {
    mCWAMin.SetBodyFromData(static_cast<long long>(frame));
    SendUpdate();
}

void TimeCtrl_cls::ProcSetWAMax(int frame) {
    mCWAMax.SetBodyFromData(static_cast<long long>(frame));
    SendUpdate();
}

void TimeCtrl_cls::ProcSetFrameMax(int frame) {
    // The timeline needs the old range to decide whether its view follows the new one.
    if (GpCQueue)
        GpCQueue->SetFrameMaxChanged(GetFrameMax());
    mCFrameMax.SetBodyFromData(static_cast<long long>(frame));
    SendUpdate();
}

void TimeCtrl_cls::ProcSetFrameCurrent(int frame) {
    if (GpCQueue)
        GpCQueue->SetTimeChanged();
    mCFrameCurrent.SetBodyFromData(static_cast<long long>(frame));
    SendUpdate();
}

void TimeCtrl_cls::ProcSetSubFrameCurrent(int sub) {
    if (GpCQueue)
        GpCQueue->SetTimeChanged();
    mCSubFrameCurrent.SetBodyFromData(static_cast<long long>(sub));
    SendUpdate();
}

void TimeCtrl_cls::ProcSetRepeat(bool bRepeat) {
    mCRepeat.SetBodyFromDataBOOL(bRepeat);
    SendUpdate();
}

void TimeCtrl_cls::SendUpdate() {
    UpdatePanels(msStrUpdateList);
}

// ---- playback -------------------------------------------------------------------------------

void TimeCtrl_cls::SetPosition(int frame, int sub) {
    mCFrameCurrent.SetBodyFromData(static_cast<long long>(frame));
    mCSubFrameCurrent.SetBodyFromData(static_cast<long long>(sub));
}

bool TimeCtrl_cls::ProcPlay() {
    if (mPlayDirection == 0)
        return false;
    if (mbOutputRunning && !mbFrameWritten)
        return false; // the clock waits for the file writer
    if (msbForceAbort.exchange(false)) {
        StopPlayCommand();
        return true;
    }
    mCExpectTime.StartSWIfNotYet();
    if (GpCQueue)
        GpCQueue->SetTimeChanged();

    int frame = GetFrameCurrent();
    int sub = GetSubFrameCurrent();
    int waMin = GetWAMin();
    int waMax = GetWAMax();
    bool bRepeat = GetRepeat();
    bool bOutput = mbOutputRunning;
    CarrySubFrame(frame, sub, GetSubFrameStepping() * mPlayDirection);

    bool bLow = frame < 1;
    bool bZero = sub < 1;
    // Deliberately blind to the direction: forward play that starts before the work area ends
    // at once (or wraps with repeat), and backward play wraps to WAMax.
    bool bStart = bZero && frame <= waMin;

    if (bLow && bZero) {
        SetPosition(0, 0);
        StopPlayCommand();
        return true;
    }
    if (!bOutput && !bLow && bStart && !bRepeat) {
        SetPosition(waMin, 0);
        StopPlayCommand();
        return true;
    }
    if (!bOutput && !bLow && bStart && bRepeat) {
        SetPosition(waMax, 0);
        SendUpdate();
        return bRepeat;
    }
    if (!bOutput && frame >= waMax && bRepeat) {
        SetPosition(waMin, 0);
        UpdatePanels(msStrUpdateList);
        return bRepeat;
    }
    if (bOutput && !bLow && bStart) {
        SetPosition(waMin, 0);
        StopPlayCommand();
        return true;
    }
    if (!bOutput && frame >= waMax && !bRepeat) {
        SetPosition(waMax, 0);
        StopPlayCommand();
        return true;
    }
    if (bOutput && frame >= waMax) {
        SetPosition(waMax, 0);
        StopPlayCommand();
        return true;
    }
    SetPosition(frame, sub);
    // A recorded frame holds the clock until the output has taken it: without this the clock
    // could step twice between two paints and a file would be missing from the run.
    if (bOutput)
        mbFrameWritten = false;
    UpdatePanels(msStrUpdateList);
    return true;
}

// ---- rendering run --------------------------------------------------------------------------

wxString TimeCtrl_cls::GetStrRecordInfo(double percent) {
    return mCExpectTime.GetStrCurrentLapseTime() + " " + wxGetTranslation("passed") + " " +
           wxString::Format("%.1f%% ", percent) + wxGetTranslation("Expected Time") + " " +
           mCExpectTime.GetStrExpectedFinishTime(percent);
}
