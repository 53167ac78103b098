// The batch renderer as a farm sees it. From process start to the first PNG of the demo on disk,
// against the bare start of the same program that stops at its argument check (the baseline: the
// loader and the toolkit's start). One worker rendering the demo's frames against two workers
// sharing them by --shard on the same folder, to see what a second process buys on this machine.
// And frames per minute of LAMMPS text series of a quarter and a whole million atoms as ray-cast
// spheres at 1024x1024, reading included, against a plain read of the same files.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <numeric>
#include <random>
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

// The exit code; the CPU time of the child (all its threads) into pCPUSeconds.
int Wait(pid_t pid, double* pCPUSeconds = nullptr) {
    int status = 0;
    struct rusage usage = {};
    wait4(pid, &status, 0, &usage);
    if (pCPUSeconds)
        *pCPUSeconds = usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
                       1e-6 * (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
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
    double wall = 0, cpu = 0;
    for (auto _ : state) {
        const std::string strDir = MakeDir();
        const auto start = Clock::now();
        std::vector<pid_t> vPids;
        for (int i = 0; i < workers; ++i)
            vPids.push_back(Spawn({kDemo, "--out", strDir + "/f%04d.png", "--frames", "0-15", "--quiet",
                                   "--shard", std::to_string(i) + "/" + std::to_string(workers)}));
        bool bOk = true;
        for (pid_t pid : vPids) {
            double cpuSeconds = 0;
            bOk = Wait(pid, &cpuSeconds) == 0 && bOk;
            cpu += cpuSeconds;
        }
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        wall += seconds;
        if (!bOk)
            state.SkipWithError("a worker failed");
        RemoveDir(strDir);
    }
    state.counters["frames/s"] = benchmark::Counter(31.0 * state.iterations(), benchmark::Counter::kIsRate);
    // CPU time of all workers over the wall clock: how many cores the run kept busy. One worker
    // near the machine's core count leaves a second nothing to gain.
    state.counters["cores_used"] = cpu / wall;
}
BENCHMARK(BM_Workers)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// ---- LAMMPS series ------------------------------------------------------------------------------

constexpr int kSeriesFrames = 3;

// A few dumps of `dump custom id type x y z` of n atoms at the melt's density, the atoms in a
// different order in each file as LAMMPS writes them, drifting a little from frame to frame; and a
// project that shows them as "PseudoSphere" points, with the view on the whole box.
class LammpsSeries_cls {
public:
    explicit LammpsSeries_cls(int atoms) : mStrDir(MakeDir()) {
        const double box = std::cbrt(atoms / 0.8442);
        std::mt19937 rng(static_cast<unsigned>(atoms));
        std::uniform_real_distribution<double> uniform(-box / 2, box / 2);
        std::vector<float> vPos(static_cast<size_t>(atoms) * 3);
        for (float& v : vPos)
            v = static_cast<float>(uniform(rng));
        std::vector<int> vOrder(static_cast<size_t>(atoms));
        std::iota(vOrder.begin(), vOrder.end(), 0);
        for (int frame = 0; frame < kSeriesFrames; ++frame) {
            char name[64];
            snprintf(name, sizeof name, "/dump.big.%04d.txt", frame);
            FILE* fp = fopen((mStrDir + name).c_str(), "w");
            if (!fp)
                return;
            fprintf(fp, "ITEM: TIMESTEP\n%d\nITEM: NUMBER OF ATOMS\n%d\nITEM: BOX BOUNDS pp pp pp\n",
                    frame * 100, atoms);
            for (int k = 0; k < 3; ++k)
                fprintf(fp, "%g %g\n", -box / 2, box / 2);
            fputs("ITEM: ATOMS id type x y z\n", fp);
            std::shuffle(vOrder.begin(), vOrder.end(), rng);
            for (int i : vOrder) {
                const float* p = &vPos[static_cast<size_t>(i) * 3];
                fprintf(fp, "%d %d %.5f %.5f %.5f\n", i + 1, 1 + i % 2, p[0] + 0.2f * frame, p[1], p[2]);
            }
            mBytes += ftell(fp);
            fclose(fp);
        }
        mbOk = true;
        mBox = box;
    }
    ~LammpsSeries_cls() { RemoveDir(mStrDir); }

    // The project, with batches of vboMax thousand particles.
    std::string WriteProject(int vboMax) const {
        const std::string strPath = mStrDir + "/big" + std::to_string(vboMax) + ".ovp";
        FILE* fp = fopen(strPath.c_str(), "w");
        if (!fp)
            return std::string();
        fprintf(fp,
                "ConfItemList::Begin::Preference\nRelativePath=1\nParticleVBOMax=%d\nConfItemList::End\n"
                "ConfItemList::Begin::TimeCtrl\nFrameMax=%d\nSubFrameMax=1\nConfItemList::End\n"
                "SceneObjCtrl::New::Particle_cls::ANY::Atoms\nSceneObjCtrl::ReadProperties::Atoms\n"
                "ConfItemList::Begin::SceneObj::Atoms\nPath=dump.big.%%04d.txt\nInterpolateBy=1\n"
                "ConfItemList::End\n"
                "ConfItemList::Begin::SceneObj::Atoms::ParticleFormat\nDataType=0\nPreSortByID=1\n"
                "ParticleFormatHeader=Dummy::##::Time::##::Dummy::##::ParticleNumber::##::Dummy::##::"
                "BoxBounds::##::Dummy\nParticleFormatBodyAscii=ID::##::Type::##::XYZ\nConfItemList::End\n"
                "ConfItemList::Begin::SceneObj::Atoms::Material\nShaderTypePoint=2\nConfItemList::End\n"
                "SceneObjCtrl::Obj::Atoms::Material::SizeFactor::Point::Key::0::SetValue::0.5\n"
                "ConfItemList::Begin::View3D\nDispGrid=0\nDispGuideObj=0\nDispLightCam=0\nViewPos=0 0 %g\n"
                "ConfItemList::End\n",
                vboMax, kSeriesFrames, 2.0 * mBox);
        fclose(fp);
        return strPath;
    }

    std::string mStrDir;
    bool mbOk = false;
    double mBox = 0;
    long long mBytes = 0;
};

// One series per size for the whole run: writing a million atoms' text takes seconds.
LammpsSeries_cls& GetSeries(int atoms) {
    static std::map<int, std::unique_ptr<LammpsSeries_cls>> map;
    std::unique_ptr<LammpsSeries_cls>& p = map[atoms];
    if (!p)
        p = std::make_unique<LammpsSeries_cls>(atoms);
    return *p;
}

// The series' frames rendered to 1024x1024 PNGs by one batch process: start, reading, preparing,
// drawing and writing. range(0) atoms, range(1) "ParticleVBOMax=" (below the count: in batches).
void BM_LammpsSeriesPseudoSphere(benchmark::State& state) {
    const int atoms = static_cast<int>(state.range(0));
    LammpsSeries_cls& series = GetSeries(atoms);
    const std::string strProject = series.WriteProject(static_cast<int>(state.range(1)));
    if (!series.mbOk || strProject.empty()) {
        state.SkipWithError("the series could not be written");
        return;
    }
    double wall = 0, cpu = 0;
    for (auto _ : state) {
        const std::string strDir = MakeDir();
        const auto start = Clock::now();
        double cpuSeconds = 0;
        const int code =
            Wait(Spawn({strProject, "--out", strDir + "/f%04d.png", "--frames",
                        "0-" + std::to_string(kSeriesFrames - 1), "--size", "1024x1024", "--quiet"}),
                 &cpuSeconds);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        wall += seconds;
        cpu += cpuSeconds;
        const bool bAll = Exists(strDir + "/f0000.png") && Exists(strDir + "/f0002.png");
        RemoveDir(strDir);
        if (code != 0 || !bAll) {
            state.SkipWithError("the batch renderer failed (no GL context?)");
            return;
        }
    }
    // On a shared machine the wall clock counts the other processes too: the CPU time that the
    // renderer itself spent (all its threads) stands beside it.
    const double frames = double(kSeriesFrames) * state.iterations();
    state.counters["frames_per_min"] = 60.0 * frames / wall;
    state.counters["cpu_s_per_frame"] = cpu / frames;
    state.counters["atoms_per_s"] = atoms * frames / wall;
    state.counters["cores_used"] = cpu / wall;
}
BENCHMARK(BM_LammpsSeriesPseudoSphere)
    ->Args({256000, 2000})
    ->Args({1000000, 2000})
    ->Args({1000000, 250})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

// The baseline: a plain fread of the same files, as the reader must at least do.
void BM_LammpsSeriesFread(benchmark::State& state) {
    LammpsSeries_cls& series = GetSeries(static_cast<int>(state.range(0)));
    std::vector<char> buffer(1 << 20);
    for (auto _ : state) {
        size_t total = 0;
        for (int frame = 0; frame < kSeriesFrames; ++frame) {
            char name[64];
            snprintf(name, sizeof name, "/dump.big.%04d.txt", frame);
            FILE* fp = fopen((series.mStrDir + name).c_str(), "r");
            if (!fp)
                break;
            size_t n;
            while ((n = fread(buffer.data(), 1, buffer.size(), fp)) > 0)
                total += n;
            fclose(fp);
        }
        benchmark::DoNotOptimize(total);
    }
    state.SetBytesProcessed(series.mBytes * state.iterations());
}
BENCHMARK(BM_LammpsSeriesFread)->Arg(256000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
