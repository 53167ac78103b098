#include "ExpectTime_cls.h"

void ExpectTime_cls::StartSWIfNotYet() {
    if (mbRunning)
        return;
    Start(0);
    mbRunning = true;
}
wxString ExpectTime_cls::GetStrCurrentLapseTime() {
    return GetStrDuration(Time());
}
wxString ExpectTime_cls::GetStrExpectedFinishTime(double) {
    return "estimating...";
}
wxString ExpectTime_cls::GetStrDuration(long long) {
    return wxString();
}
