// Entry point of every test executable: starts the toolkit without an application object,
// sends the log to stderr and turns a failed toolkit assertion into a test failure.
#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>

#include <thread>

#include "TestSupport.h"

namespace {

void FailOnWxAssert(const wxString& file, int line, const wxString& func, const wxString& cond,
                    const wxString& msg) {
    ADD_FAILURE() << "wx assertion failed at " << file.ToStdString() << ":" << line << " in "
                  << func.ToStdString() << ": " << cond.ToStdString() << " " << msg.ToStdString();
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!wxInitialize()) {
        fprintf(stderr, "wxInitialize failed\n");
        return 1;
    }
    delete wxLog::SetActiveTarget(new wxLogStderr);
    // The toolkit makes the shared list of per-thread log states on a thread's first log: one short
    // thread makes it before any worker starts (ThreadSanitizer cannot see the toolkit's guard of
    // that lazy start and would report two workers logging first at once).
    std::thread([] { wxLog::IsEnabled(); }).join();
    wxSetAssertHandler(FailOnWxAssert);
    int result = RUN_ALL_TESTS();
    wxUninitialize();
    return result;
}
