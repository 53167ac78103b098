// The entry of the benchmarks that need nothing but the toolkit's base: the workers are toolkit
// threads and the readers log through the toolkit, so it is up for the whole run. The per-pass
// log lines are off: they would swamp the figures.
#include <benchmark/benchmark.h>
#include <wx/init.h>
#include <wx/log.h>

int main(int argc, char** argv) {
    wxInitializer initializer;
    if (!initializer.IsOk())
        return 1;
    wxLog::EnableLogging(false);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
