#include "wxLogGuiEX.h"

#include <cstdio>

void wxLogGuiEX::DoLogRecord(wxLogLevel level, const wxString& strMsg, const wxLogRecordInfo&) {
    if (level > wxLOG_Info && level != wxLOG_Status)
        return; // debug and trace lines stay out of the console
    fprintf(stderr, "%s\n", strMsg.utf8_str().data());
    mDStrLines.push_back(strMsg);
    if (mDStrLines.size() > msMaxLines)
        mDStrLines.pop_front();
}
