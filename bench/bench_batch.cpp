// The batch renderer as a farm sees it. From process start to the first PNG of the demo on disk,
// against the bare start of the same program that stops at its argument check (the baseline: the
// loader and the toolkit's start). And one worker rendering the demo's frames against two workers
// sharing them by --shard on the same folder, to see what a second process buys on this machine.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

const std::string kDemo = std::string(ORV_SOURCE_DIR) + "/examples/demo.ovp";

pid_t Spawn(const std::vector<std::string>& vStrArgs) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(ORV_BATCH_EXE));
    for (const std::string& str : vStrArgs)
        argv.push_back(const_cast<char*>(str.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    posix_spawn(&pid, ORV_BATCH_EXE, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

int Wait(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string MakeDir() {
    char tmpl[] = "/tmp/orvbenchbatchXXXXXX";
    return mkdtemp(tmpl);
}

void RemoveDir(const std::string& strDir) {
    const std::string strCommand = "rm -rf '" + strDir + "'";
    if (system(strCommand.c_str()) != 0)
        return;
}

bool Exists(const std::string& strPath) {
    struct stat st;
    return stat(strPath.c_str(), &st) == 0;
}

using Clock = std::chrono::steady_clock;

// Process start to the bare exit after the argument check: the fixed cost of any start.
void BM_ProcessStartBaseline(benchmark::State& state) {
    for (auto _ : state) {
        const auto start = Clock::now();
        Wait(Spawn({"--frames", "bad"}));
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
}
BENCHMARK(BM_ProcessStartBaseline)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// Process start until the first frame's PNG is renamed into place (640x360, buffer 1024).
void BM_StartToFirstPNG(benchmark::State& state) {
    for (auto _ : state) {
        const std::string strDir = MakeDir();
        const std::string strFirst = strDir + "/f0000.png";
        const auto start = Clock::now();
        const pid_t pid = Spawn({kDemo, "--out", strDir + "/f%04d.png", "--frames", "0-0", "--quiet"});
        while (!Exists(strFirst)) {
            int status = 0;
            if (waitpid(pid, &status, WNOHANG) == pid) {
                state.SkipWithError("the batch renderer ended without writing a frame (no GL context?)");
                break;
            }
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        Wait(pid);
        RemoveDir(strDir);
    }
}
BENCHMARK(BM_StartToFirstPNG)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// The demo's frames 0 to 15 (31 files at 640x360) by state.range(0) workers sharing the folder.
void BM_Workers(benchmark::State& state) {
    const int workers = static_cast<int>(state.range(0));
    for (auto _ : state) {
        const std::string strDir = MakeDir();
        const auto start = Clock::now();
        std::vector<pid_t> vPids;
        for (int i = 0; i < workers; ++i)
            vPids.push_back(Spawn({kDemo, "--out", strDir + "/f%04d.png", "--frames", "0-15", "--quiet",
                                   "--shard", std::to_string(i) + "/" + std::to_string(workers)}));
        bool bOk = true;
        for (pid_t pid : vPids)
            bOk = Wait(pid) == 0 && bOk;
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (!bOk)
            state.SkipWithError("a worker failed");
        RemoveDir(strDir);
    }
    state.counters["frames/s"] = benchmark::Counter(31.0 * state.iterations(), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Workers)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
