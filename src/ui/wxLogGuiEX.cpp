#include "wxLogGuiEX.h"

#include <cstdio>

void wxLogGuiEX::DoLogRecord(wxLogLevel level, const wxString& strMsg, const wxLogRecordInfo&) {
    if (level > wxLOG_Info && level != wxLOG_Status)
        return; // debug and trace lines stay out of the window
    fprintf(stderr, "%s\n", strMsg.utf8_str().data());
    mDLines.push_back({level, strMsg, ++mLastSerial});
    if (mDLines.size() > msMaxLines)
        mDLines.pop_front();
}

std::vector<wxString> wxLogGuiEX::GetLines() const {
    std::vector<wxString> vStr;
    for (const Line_cls& line : mDLines)
        vStr.push_back(line.mStrText);
    return vStr;
}

std::vector<wxLogGuiEX::Line_cls> wxLogGuiEX::GetLinesAfter(int64_t serial) const {
    std::vector<Line_cls> vLines;
    for (const Line_cls& line : mDLines)
        if (line.mSerial > serial)
            vLines.push_back(line);
    return vLines;
}
