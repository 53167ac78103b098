// First cut: the items and the interface; the behaviour follows.
#include "TimeCtrl_cls.h"

std::atomic<bool> TimeCtrl_cls::msbForceAbort{false};

const wxString TimeCtrl_cls::msStrUpdateList =
    "TIMELINE::GRAPH::COLOR_CURVE::VIEW3D::PROPERTY_OBJECT::PROPERTY_MATERIAL::PROPERTY_MODIFIER::"
    "PROPERTY_DATAPROC::PROPERTY_SCENE::PROPERTY_INFO";

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

double TimeCtrl_cls::GetNormalizedValue(int frame, int sub, int) const {
    int frameMax = GetFrameMax();
    if (frameMax == 0)
        return 0.0;
    return (static_cast<double>(sub) / GetSubFrameMax() + frame) / frameMax;
}
double TimeCtrl_cls::GetCurrentNT(bool) const {
    return GetNormalizedValue(GetFrameCurrent(), GetSubFrameCurrent(), 0);
}
double TimeCtrl_cls::GetNextNT(bool) const {
    return GetCurrentNT(false);
}
double TimeCtrl_cls::GetDNT() const {
    return 1.0 / GetFrameMax() / GetSubFrameMax();
}
double TimeCtrl_cls::GetDefaultResolution() const {
    return (1.0 / GetFrameMax()) * 0.25;
}
double TimeCtrl_cls::GetFrameFromNT(double, int& frame, int& sub) const {
    frame = 0;
    sub = 0;
    return 0.0;
}
double TimeCtrl_cls::GetQuantized(double nt, int) const {
    return nt;
}
double TimeCtrl_cls::GetQuantizedForColor(double v, int) {
    return v;
}
int TimeCtrl_cls::GetStep(int frame, int sub) const {
    return frame * GetSubFrameMax() + sub;
}
int TimeCtrl_cls::GetCurrentStep() const {
    return GetStep(GetFrameCurrent(), GetSubFrameCurrent());
}
double TimeCtrl_cls::GetNormalizedWAMin() const {
    return 0.0;
}
double TimeCtrl_cls::GetNormalizedWAMax() const {
    return 1.0;
}
double TimeCtrl_cls::GetNormalizedWARegion() const {
    return 0.5;
}
void TimeCtrl_cls::GetNextTimeInfo(int&, int&, int) const {}
void TimeCtrl_cls::CarrySubFrame(int&, int&, int) const {}
int TimeCtrl_cls::GetImageCompositeNum() const {
    return 1;
}
void TimeCtrl_cls::AdjustFrameForComposer(int*, int*, double*, int, bool) const {}
double TimeCtrl_cls::GetOutputPercent() const {
    return 0.0;
}
void TimeCtrl_cls::GetDefaultKeyTypeAndEase(int* type, double* ease) const {
    *type = -1;
    *ease = 1.0;
}
void TimeCtrl_cls::SetCurrentFrameCommand(int) {}
void TimeCtrl_cls::SetCurrentSubFrameCommand(int) {}
void TimeCtrl_cls::SetWAMinCommand(int) {}
void TimeCtrl_cls::SetWAMaxCommand(int) {}
void TimeCtrl_cls::SetFrameMaxCommand(int) {}
void TimeCtrl_cls::SetRepeatCommand(bool) {}
void TimeCtrl_cls::SetWARegionCommand(int, int, int) {}
void TimeCtrl_cls::SetCurrentFrameToEndCommand(int) {}
void TimeCtrl_cls::SetCurrentFrameToNextCommand(int) {}
void TimeCtrl_cls::SetCurrentNTCommand(double) {}
void TimeCtrl_cls::StartPlayCommand(int) {}
void TimeCtrl_cls::StopPlayCommand() {}
void TimeCtrl_cls::AnimCommand(bool) {}
bool TimeCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    return ConfListContainer_cls::ReadStrLine(stream, strHead, strRest);
}
void TimeCtrl_cls::ProcSetWAMin(int) {}
void TimeCtrl_cls::ProcSetWAMax(int) {}
void TimeCtrl_cls::ProcSetFrameMax(int) {}
void TimeCtrl_cls::ProcSetFrameCurrent(int) {}
void TimeCtrl_cls::ProcSetSubFrameCurrent(int) {}
void TimeCtrl_cls::ProcSetRepeat(bool) {}
void TimeCtrl_cls::SendUpdate() {}
bool TimeCtrl_cls::ProcPlay() {
    return false;
}
wxString TimeCtrl_cls::GetStrRecordInfo(double) {
    return wxString();
}
void TimeCtrl_cls::SetPosition(int, int) {}
void TimeCtrl_cls::PushVerbCommand(const wxString&, long long, long long) {}
