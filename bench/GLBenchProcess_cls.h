// The process up to a GL layer (the renderer unless asked) in a context with no display, as the
// GL benchmarks need it: the context, the services of every layer up to it, and a core working in a
// temporary folder that goes with it. A benchmark's stage holds one as its first member, so the
// GL objects of the stage go while the context still stands.
#pragma once

#include "EGLContext_cls.h"
#include "GLObject_cls.h"
#include "Main_cls.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"

#include <benchmark/benchmark.h>
#include <wx/filename.h>
#include <wx/init.h>
#include <wx/log.h>

#include <chrono>
#include <memory>
#include <utility>

template <ServiceLayer_enum Top = ServiceLayer_enum::Render> class GLBenchProcess_cls {
public:
    GLBenchProcess_cls() {
        if (!mContext.Create())
            return;
        ShaderItem_cls::msStrResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
        RegisterServices<Top>();
        mStrDir = wxFileName::CreateTempFileName("orvbench");
        wxRemoveFile(mStrDir);
        wxFileName::Mkdir(mStrDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
        mpMain = std::make_unique<Main_cls>(mStrDir);
        mpMain->CreateSingleton();
        mbValid = true;
    }
    ~GLBenchProcess_cls() {
        if (!mbValid)
            return;
        mpMain.reset();
        wxFileName::Rmdir(mStrDir, wxPATH_RMDIR_RECURSIVE);
    }
    GLBenchProcess_cls(const GLBenchProcess_cls&) = delete;
    GLBenchProcess_cls& operator=(const GLBenchProcess_cls&) = delete;

    bool IsValid() const { return mbValid; }

    EGLContext_cls mContext;
    wxString mStrDir;
    std::unique_ptr<Main_cls> mpMain;

private:
    bool mbValid = false;
};

// A program of the two sources, for the floors the benchmarks compare against. GL thread.
inline GLProgram_cls MakeBenchProgram(const char* strVert, const char* strFrag) {
    GLProgram_cls program = GLProgram_cls::Make();
    for (const auto& [stage, strText] : {std::pair<GLenum, const char*>{GL_VERTEX_SHADER, strVert},
                                         std::pair<GLenum, const char*>{GL_FRAGMENT_SHADER, strFrag}}) {
        GLShader_cls shader = GLShader_cls::Make(stage);
        glShaderSource(shader.Get(), 1, &strText, nullptr);
        glCompileShader(shader.Get());
        glAttachShader(program.Get(), shader.Get());
    }
    glLinkProgram(program.Get());
    return program;
}

// Whether the run's stage stands; otherwise the benchmark is marked skipped with the reason.
template <class Stage> bool IsStageReady(benchmark::State& state, const Stage* pStage) {
    if (pStage && pStage->mbValid)
        return true;
    state.SkipWithError("no GL context");
    return false;
}

// The entry of a GL benchmark: the toolkit with its log quiet (per-frame lines would swamp the
// figures), one Stage for the whole run reachable through rpStage, and prepare run on it first
// when it is valid.
template <class Stage> int RunGLBenchmarks(int argc, char** argv, Stage*& rpStage, void (*prepare)(Stage&)) {
    wxInitializer init;
    wxLog::EnableLogging(false);
    benchmark::Initialize(&argc, argv);
    {
        Stage stage;
        if (stage.mbValid && prepare)
            prepare(stage);
        rpStage = &stage;
        benchmark::RunSpecifiedBenchmarks();
        rpStage = nullptr;
    }
    benchmark::Shutdown();
    return 0;
}

// Wall-clock milliseconds of one call.
template <class Func> double MillisOf(Func func) {
    const auto start = std::chrono::steady_clock::now();
    func();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}
