// The program's log target: every line goes to standard error at once and is kept, with its
// level, for the window. It never opens a message box itself, so a log line cannot block the
// program: the main window picks up the new lines on its idle pass (status bar, log window, and
// a notice for errors). Lines from worker threads are handed over by the toolkit and arrive on
// the main thread.
#pragma once

#include <wx/log.h>
#include <wx/string.h>

#include <cstdint>
#include <deque>
#include <vector>

class wxLogGuiEX : public wxLog {
public:
    // The window keeps at most this many of the latest lines.
    static constexpr size_t msMaxLines = 1000;

    struct Line_cls {
        wxLogLevel mLevel;
        wxString mStrText;
        int64_t mSerial; // counts every kept line since the start, never reused
    };

    // The texts, oldest first.
    std::vector<wxString> GetLines() const;
    const std::deque<Line_cls>& GetRecords() const { return mDLines; }
    // The lines kept after the given serial (0: all), oldest first.
    std::vector<Line_cls> GetLinesAfter(int64_t serial) const;
    int64_t GetLastSerial() const { return mLastSerial; }

protected:
    void DoLogRecord(wxLogLevel level, const wxString& strMsg, const wxLogRecordInfo& info) override;

private:
    std::deque<Line_cls> mDLines;
    int64_t mLastSerial = 0;
};
