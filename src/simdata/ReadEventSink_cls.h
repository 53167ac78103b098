// How a finished read wakes the main loop. The main window installs a sink that posts the menu
// event 6043 to frame 0, so the loop redraws with the new data; this layer includes no GUI
// header. Until a sink is installed a finished read simply wakes nobody.
#pragma once

#include <atomic>

class ReadEventSink_cls {
public:
    // The menu event id that tells the main frame that a read has finished.
    static constexpr int msEventId = 6043;

    virtual ~ReadEventSink_cls() = default;
    // Any thread (reader threads call it as their last act). Must not block and must not touch
    // windows directly: post, do not draw.
    virtual void PostReadFinished() = 0;
    // Main thread, while it waits for a read it needs now: shows how far the read came (bDone:
    // it has ended, show it at once) and lets the user ask to abort it. Nothing by default.
    virtual void ShowReadProgress(int percent, bool bDone) {
        (void)percent;
        (void)bDone;
    }

    // Main thread, before any reader runs. Not owned; nullptr removes the sink.
    static void Install(ReadEventSink_cls* pSink) { mspSink.store(pSink, std::memory_order_release); }
    static ReadEventSink_cls* Get() { return mspSink.load(std::memory_order_acquire); }
    // Any thread: hands the event to the installed sink, if any.
    static void Post() {
        if (ReadEventSink_cls* pSink = Get())
            pSink->PostReadFinished();
    }

    // Main thread: hands the progress to the installed sink, if any.
    static void ShowProgress(int percent, bool bDone) {
        if (ReadEventSink_cls* pSink = Get())
            pSink->ShowReadProgress(percent, bDone);
    }

private:
    static inline std::atomic<ReadEventSink_cls*> mspSink{nullptr};
};
