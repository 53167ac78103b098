// The stopwatch of a rendering run: the time passed so far and the expected whole duration,
// as words for the status bar. Main thread only.
#pragma once

#include <wx/stopwatch.h>
#include <wx/string.h>

class ExpectTime_cls : public wxStopWatch {
public:
    // Starts counting from 0 unless a run is already being timed.
    void StartSWIfNotYet();
    // Clears the running flag only: the watch itself goes on counting.
    void StopSW() { mbRunning = false; }
    bool IsRunning() const { return mbRunning; }

    // The elapsed time as "[<d> day ]<h> hour <m> min <s> sec".
    wxString GetStrCurrentLapseTime();
    // The expected whole duration of the run (not the time that remains) at percent done;
    // "estimating..." while percent is below 0.2.
    wxString GetStrExpectedFinishTime(double percent);
    // The words of a duration in milliseconds, split as GetStrCurrentLapseTime does.
    static wxString GetStrDuration(long long millis);

    bool mbRunning = false;
};
