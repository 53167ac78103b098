// The program's log target: every line goes to standard error at once and is kept for the
// console panel. It never opens a message box, so a log line cannot block the program.
// Lines from worker threads are handed over by the toolkit and arrive on the main thread.
#pragma once

#include <wx/log.h>
#include <wx/string.h>

#include <deque>

class wxLogGuiEX : public wxLog {
public:
    // The console shows at most this many of the latest lines.
    static constexpr size_t msMaxLines = 1000;

    const std::deque<wxString>& GetLines() const { return mDStrLines; }

protected:
    void DoLogRecord(wxLogLevel level, const wxString& strMsg, const wxLogRecordInfo& info) override;

private:
    std::deque<wxString> mDStrLines;
};
