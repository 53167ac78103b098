#include "LuaErrorSink_cls.h"

#include <wx/log.h>

void LuaErrorSink_cls::Post(const wxString& strText) {
    if (LuaErrorSink_cls* pSink = Get()) {
        pSink->PostLuaError(strText);
        return;
    }
    // The log buffers texts from worker threads and flushes them on the main thread.
    wxLogError("%s", strText);
}
