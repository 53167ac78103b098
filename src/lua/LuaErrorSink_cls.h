// Where Lua error texts go. The main window installs a sink that posts a menu event of id 6163
// to frame 0, so the text reaches the log on the main thread whichever thread raised it. Until
// a sink is installed the texts go to the toolkit log.
#pragma once

#include <wx/string.h>

#include <atomic>

class LuaErrorSink_cls {
public:
    // The menu event id that carries Lua texts to the log.
    static constexpr int msEventId = 6163;

    virtual ~LuaErrorSink_cls() = default;
    // Any thread. Must not block and must not touch windows directly: post, do not show.
    virtual void PostLuaError(const wxString& strText) = 0;

    // Main thread, before any worker may report. Not owned; nullptr goes back to the log.
    static void Install(LuaErrorSink_cls* pSink) { mspSink.store(pSink, std::memory_order_release); }
    static LuaErrorSink_cls* Get() { return mspSink.load(std::memory_order_acquire); }
    // Any thread: hands the text to the installed sink, or logs it as an error.
    static void Post(const wxString& strText);

private:
    static inline std::atomic<LuaErrorSink_cls*> mspSink{nullptr};
};
