// Renders a project to image files with no window and no display: the services start as in the
// window program, the project is loaded through the command language, and the frames go through
// the same frame passes and record path as recording, in a surfaceless EGL context. Workers that
// share an output folder split the frames by --shard and claim each frame before rendering it.
#include "BatchOptions_cls.h"
#include "BatchRenderer_cls.h"
#include "EGLContext_cls.h"
#include "FramePasses_cls.h"
#include "HeadlessCore.h"
#include "Main_cls.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"
#include "UseGZ_cls.h"

#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/utils.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string AbsolutePath(const std::string& strPath) {
    wxFileName fn(wxString::FromUTF8(strPath));
    fn.MakeAbsolute();
    return fn.GetFullPath().utf8_string();
}

std::string GetExecutablePath(const char* pArgv0) {
    char buf[4096];
    const ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
    if (n > 0)
        return std::string(buf, static_cast<size_t>(n));
    return AbsolutePath(pArgv0);
}

// A program on PATH.
bool HasProgram(const std::string& strName) {
    return system(("command -v " + strName + " >/dev/null 2>&1").c_str()) == 0;
}

int MakeVideo(const BatchRenderer_cls& renderer, const std::string& strVideo) {
    if (renderer.mStrPattern.empty()) {
        fprintf(stderr, "orvantis4-batch: --video needs a numbered file pattern\n");
        return 1;
    }
    const pid_t pid = fork();
    if (pid == 0) {
        const std::string strStart = std::to_string(renderer.mFirstNumber);
        execlp("ffmpeg", "ffmpeg", "-y", "-loglevel", "error", "-framerate", "25", "-start_number",
               strStart.c_str(), "-i", renderer.mStrPattern.c_str(), "-pix_fmt", "yuv420p", "-vf",
               "pad=ceil(iw/2)*2:ceil(ih/2)*2", strVideo.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        fprintf(stderr, "orvantis4-batch: ffmpeg could not make %s\n", strVideo.c_str());
        return 1;
    }
    return 0;
}

} // namespace

// Only read under ThreadSanitizer: Mesa's llvmpipe runs its rasteriser threads inside the
// uninstrumented driver, and wx base keeps its own thread bookkeeping (the data readers are
// wxThreads); TSan reports races on those libraries' own mutexes, with no frame of ours.
extern "C" const char* __tsan_default_suppressions() {
    return "race:swrast_dri.so\nrace:libwx_baseu-3.2.so.0\n";
}

int main(int argc, char** argv) {
    const auto start = std::chrono::steady_clock::now();
    wxInitializer init;
    if (!init.IsOk()) {
        fprintf(stderr, "orvantis4-batch: the toolkit could not start\n");
        return 2;
    }
    delete wxLog::SetActiveTarget(new wxLogStderr);
    BatchOptions_cls options;
    if (!options.Parse(argc, argv)) {
        fprintf(stderr, "orvantis4-batch: %s\n%s", options.mStrError.c_str(), BatchOptions_cls::msStrUsage);
        return 2;
    }
    // The per-pass timings of the frame are debug lines: not for a batch's log.
    wxLog::SetLogLevel(options.mbQuiet ? wxLOG_Warning : wxLOG_Message);
    // Taken before the project is opened, which moves into the project's folder.
    const std::string strProject = AbsolutePath(options.mStrProject);
    const std::string strOut = options.mStrOut.empty() ? std::string() : AbsolutePath(options.mStrOut);
    std::string strProjectText;
    struct stat st;
    if (stat(strProject.c_str(), &st) != 0 || !S_ISREG(st.st_mode) ||
        !UseGZ_cls::CopyToString(&strProjectText, wxString::FromUTF8(strProject))) {
        fprintf(stderr, "orvantis4-batch: cannot read the project %s\n", strProject.c_str());
        return 2;
    }
    if (options.mSlurmTasks > 0) {
        // The same command line with absolute paths, minus the script option itself.
        std::vector<std::string> vStrArgs = {strProject};
        for (int i = 2; i < argc; ++i) {
            const std::string strArg = argv[i];
            if (strArg == "--slurm-script" || strArg == "--shard") {
                ++i;
                continue;
            }
            if (strArg == "--skip-existing")
                continue;
            vStrArgs.push_back(strArg);
            if ((strArg == "--out" || strArg == "--video") && i + 1 < argc)
                vStrArgs.push_back(AbsolutePath(argv[++i]));
        }
        fputs(options.GetSlurmScript(GetExecutablePath(argv[0]), vStrArgs).c_str(), stdout);
        return 0;
    }
    if (!options.mStrVideo.empty() && !HasProgram("ffmpeg")) {
        fprintf(stderr,
                "orvantis4-batch: --video needs ffmpeg, which is not installed (Debian package ffmpeg)\n");
        return 2;
    }

    // The shaders read their sources when the services are made: find the folder first.
    wxString strResourceDir;
    for (const wxString& strRoot :
         Main_cls::GetVStrResourceRoots(wxPathOnly(wxString::FromUTF8(GetExecutablePath(argv[0]))))) {
        if (wxFileName::FileExists(strRoot + "/Resource/GL/Exposure.frag")) {
            wxFileName fn(strRoot + "/Resource");
            fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE);
            strResourceDir = fn.GetFullPath();
            break;
        }
    }
    if (strResourceDir.empty()) {
        fprintf(stderr, "orvantis4-batch: the Resource folder (shaders) was not found\n");
        return 2;
    }
    ShaderItem_cls::msStrResourceDir = strResourceDir;
    RegisterServices<ServiceLayer_enum::Output>();
    Main_cls* pMain = NewHeadlessCore();
    if (!pMain->OpenProject(wxString::FromUTF8(strProject))) {
        fprintf(stderr, "orvantis4-batch: cannot read the project %s\n", strProject.c_str());
        delete pMain;
        return 2;
    }
    BatchRenderer_cls renderer(options, strOut);
    // Made once the project is open, as the window makes its context at the first paint: the
    // first frame's files are read meanwhile.
    std::unique_ptr<EGLContext_cls> pContext;
    int result = renderer.Prepare(strProjectText);
    if (result == 0) {
        renderer.StartReading();
        pContext = std::make_unique<EGLContext_cls>();
        if (pContext->Create()) {
            result = renderer.Run();
        } else {
            fprintf(stderr, "orvantis4-batch: no GL context: %s\n",
                    pContext->GetStrError().utf8_str().data());
            result = 2;
        }
    }
    // GL objects go while the context is current; deleting the core waits for the reads.
    FramePasses_cls::DeleteGLCommon();
    delete pMain;
    pContext.reset();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (result != 2) {
        for (const std::string& strFailed : renderer.mVStrFailed)
            fprintf(stderr, "orvantis4-batch: failed: %s\n", strFailed.c_str());
        fprintf(stderr, "orvantis4-batch: %d written, %d skipped, %zu failed in %.1f s\n", renderer.mWritten,
                renderer.mSkipped, renderer.mVStrFailed.size(), seconds);
    }
    if (result == 0 && !options.mStrVideo.empty())
        result = MakeVideo(renderer, options.mStrVideo);
    return result;
}
