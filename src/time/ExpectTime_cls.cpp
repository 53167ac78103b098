#include "ExpectTime_cls.h"

#include <cmath>

void ExpectTime_cls::StartSWIfNotYet() {
    if (mbRunning)
        return;
    Start(0);
    mbRunning = true;
}

wxString ExpectTime_cls::GetStrDuration(long long millis) {
    long long days = millis / 86400000LL;
    int hours = static_cast<int>((millis / 3600000LL) % 24);
    int minutes = static_cast<int>((millis / 60000LL) % 60);
    int seconds = static_cast<int>((millis / 1000LL) % 60);
    wxString str;
    if (days > 0)
        str += wxString::Format("%d day ", static_cast<int>(days));
    str += wxString::Format("%d hour %d min %d sec", hours, minutes, seconds);
    return str;
}

wxString ExpectTime_cls::GetStrCurrentLapseTime() {
    return GetStrDuration(static_cast<long long>(TimeInMicro().GetValue() / 1000));
}

wxString ExpectTime_cls::GetStrExpectedFinishTime(double percent) {
    if (percent < 0.2)
        return "estimating...";
    double millis = static_cast<double>(TimeInMicro().GetValue() / 1000);
    // The whole run as the part done so far predicts it, in whole seconds.
    double whole = std::trunc(millis / percent * 100.0);
    if (!(whole < 9.0e18)) // a percent near 0 from a caller that skipped the guard above
        whole = 9.0e18;
    long long seconds = static_cast<long long>(whole) / 1000;
    return GetStrDuration(seconds * 1000);
}
