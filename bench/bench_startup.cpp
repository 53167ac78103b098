// The program's start-up to its first idle pass, two ways: the real program launched as a process
// (toolkit start, core, services, window, start layout, until the first idle reports itself), and
// the same steps in this process as the application object does them (the core, the services on
// the start-up worker while the first window is built, the settings, then the first idle pass,
// which reads the start layout). Needs a display (run under xvfb-run -a).
#include "FrameMain_cls.h"
#include "Main_cls.h"
#include "MyApp.h"
#include "PanelMakers.h"
#include "ServiceRegistry.h"

#include "GuiBenchMain.h"

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/log.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>

namespace {

void BM_StartUpToFirstIdle(benchmark::State& state) {
    if (!gbGui) {
        state.SkipWithError("no display");
        return;
    }
    // The start layout is read relative to the working directory, as the program does.
    wxSetWorkingDirectory(ORV_SOURCE_DIR);
    wxString strAppDir = wxFileName::CreateTempFileName("orv_bench_");
    wxRemoveFile(strAppDir);
    wxMkdir(strAppDir);
    for (auto _ : state) {
        // Every layer, as the program's entry registers them.
        RegisterServices();
        auto* pMain = new Main_cls(strAppDir);
        FrameMain_cls* pFrame = MyApp::StartCore(pMain);
        pFrame->ProcInitIdle();
        benchmark::DoNotOptimize(pFrame->GetPCTopWindow());

        state.PauseTiming();
        delete pFrame;
        delete pMain;
        delete wxLog::SetActiveTarget(new wxLogStderr);
        wxArtProvider::Pop();
        UnregisterPanelMakers();
        state.ResumeTiming();
    }
    wxFileName::Rmdir(strAppDir, wxPATH_RMDIR_RECURSIVE);
}
BENCHMARK(BM_StartUpToFirstIdle)->Unit(benchmark::kMillisecond)->Iterations(5);

#ifdef ORV_GUI_EXE
// Starts the program with the source tree as working folder (its Resource folder is found there)
// and its standard output on a pipe; -1 when it could not be started.
pid_t LaunchProgram(int& fdRead) {
    int vFd[2];
    if (pipe(vFd) != 0)
        return -1;
    pid_t pid = fork();
    if (pid < 0) {
        close(vFd[0]);
        close(vFd[1]);
        return -1;
    }
    if (pid == 0) {
        if (chdir(ORV_SOURCE_DIR) != 0)
            _exit(126);
        dup2(vFd[1], 1);
        int fdNull = open("/dev/null", O_WRONLY);
        if (fdNull >= 0)
            dup2(fdNull, 2);
        close(vFd[0]);
        execl(ORV_GUI_EXE, ORV_GUI_EXE, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(vFd[1]);
    fdRead = vFd[0];
    return pid;
}

// Reads the program's output until the line of its first idle pass; false when the program
// ended or stayed silent for the time given.
bool WaitForFirstIdle(int fd, int timeoutMillis) {
    std::string strOut;
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMillis);
    while (std::chrono::steady_clock::now() < end) {
        pollfd pfd{fd, POLLIN, 0};
        if (poll(&pfd, 1, 50) <= 0)
            continue;
        char buffer[512];
        ssize_t n = read(fd, buffer, sizeof(buffer));
        if (n <= 0)
            return false;
        strOut.append(buffer, static_cast<size_t>(n));
        size_t at = strOut.find("Orvantis4 start-up:");
        if (at != std::string::npos && strOut.find('\n', at) != std::string::npos)
            return true;
    }
    return false;
}

// From the launch of the program to its first idle pass, which has read the start layout and
// shown the window. The program is ended without closing, so it writes no settings.
void BM_LaunchToFirstIdle(benchmark::State& state) {
    const char* pDisplay = std::getenv("DISPLAY");
    if (!pDisplay || !*pDisplay) {
        state.SkipWithError("no display");
        return;
    }
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        int fd = -1;
        pid_t pid = LaunchProgram(fd);
        if (pid < 0) {
            state.SkipWithError("the program could not be started");
            return;
        }
        bool bReached = WaitForFirstIdle(fd, 30000);
        auto stop = std::chrono::steady_clock::now();
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        close(fd);
        if (!bReached) {
            state.SkipWithError("the program did not reach its first idle pass");
            return;
        }
        state.SetIterationTime(std::chrono::duration<double>(stop - start).count());
    }
}
BENCHMARK(BM_LaunchToFirstIdle)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);
#endif

} // namespace
