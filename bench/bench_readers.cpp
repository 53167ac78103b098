// Throughput of the particle readers and of the sort by ID, each against a plain baseline in the
// same run: the binary reader against one fread of the same file, the text reader against a loop
// of strtod over the same bytes, SortDataByID against std::sort of the same keys. The data files
// are generated once into /tmp and reused by later runs.
#include "ParticleFormatClone_cls.h"
#include "ParticleFormat_cls.h"
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "ThreadParticleBinaryRead.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>
#include <wx/log.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

constexpr int kBinaryCount = 20000000; // XYZ, ID, Type, Size: 24 bytes a record, 480 MB
constexpr int kGzipCount = 2000000;
constexpr int kTextCount = 2000000;

long long FileSize(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 ? static_cast<long long>(st.st_size) : -1;
}

// One particle's fields, from its number.
void Fields(int i, float xyz[3], int& id, int& type, float& size) {
    xyz[0] = static_cast<float>(i % 1000) * 0.01f;
    xyz[1] = static_cast<float>((i / 1000) % 1000) * 0.01f;
    xyz[2] = static_cast<float>(i / 1000000) * 0.01f;
    id = static_cast<int>((static_cast<long long>(i) * 7919) % kBinaryCount);
    type = i % 5;
    size = 0.5f + static_cast<float>(i % 7) * 0.1f;
}

// Writes the file unless it exists with the expected size. vertical: column after column.
std::string MakeBinary(const char* name, int count, bool vertical) {
    const std::string path = std::string("/tmp/") + name;
    const long long expected = 4 + 24LL * count;
    if (FileSize(path) == expected)
        return path;
    FILE* fp = fopen(path.c_str(), "wb");
    if (!fp)
        return path;
    fwrite(&count, 4, 1, fp);
    std::vector<char> rec(24);
    if (!vertical) {
        for (int i = 0; i < count; ++i) {
            float xyz[3], size;
            int id, type;
            Fields(i, xyz, id, type, size);
            std::memcpy(&rec[0], xyz, 12);
            std::memcpy(&rec[12], &id, 4);
            std::memcpy(&rec[16], &type, 4);
            std::memcpy(&rec[20], &size, 4);
            fwrite(rec.data(), 1, 24, fp);
        }
    } else {
        for (int column = 0; column < 4; ++column)
            for (int i = 0; i < count; ++i) {
                float xyz[3], size;
                int id, type;
                Fields(i, xyz, id, type, size);
                if (column == 0)
                    fwrite(xyz, 4, 3, fp);
                else if (column == 1)
                    fwrite(&id, 4, 1, fp);
                else if (column == 2)
                    fwrite(&type, 4, 1, fp);
                else
                    fwrite(&size, 4, 1, fp);
            }
    }
    fclose(fp);
    return path;
}

std::string MakeGzip(int count) {
    const std::string path = "/tmp/orv_bench_particles_h.dat.gz";
    if (FileSize(path) > 0)
        return path;
    gzFile gz = gzopen(path.c_str(), "wb1");
    gzwrite(gz, &count, 4);
    std::vector<char> rec(24);
    for (int i = 0; i < count; ++i) {
        float xyz[3], size;
        int id, type;
        Fields(i, xyz, id, type, size);
        std::memcpy(&rec[0], xyz, 12);
        std::memcpy(&rec[12], &id, 4);
        std::memcpy(&rec[16], &type, 4);
        std::memcpy(&rec[20], &size, 4);
        gzwrite(gz, rec.data(), 24);
    }
    gzclose(gz);
    return path;
}

std::string MakeText(int count) {
    const std::string path = "/tmp/orv_bench_particles.txt";
    if (FileSize(path) > 0)
        return path;
    FILE* fp = fopen(path.c_str(), "w");
    fprintf(fp, "%d\n", count);
    for (int i = 0; i < count; ++i) {
        float xyz[3], size;
        int id, type;
        Fields(i, xyz, id, type, size);
        fprintf(fp, "%.6g %.6g %.6g %d %.6g %d\n", xyz[0], xyz[1], xyz[2], type, size, id);
    }
    fclose(fp);
    return path;
}

void MakeClone(ParticleFormatClone_cls& clone, int dataType, int direction, const wxArrayString& body) {
    ParticleFormat_cls format;
    format.mCDataType.SetBodyFromData(static_cast<long long>(dataType));
    format.mCArrayDirection.SetBodyFromData(static_cast<long long>(direction));
    format.mAStrHeader.Clear();
    format.mAStrHeader.Add("ParticleNumber");
    if (dataType == 1)
        format.mAStrBodyBinary = body;
    else
        format.mAStrBodyAscii = body;
    clone.CloneFromFormat(format, false);
}

wxArrayString BinaryBody() {
    wxArrayString a;
    for (const char* s : {"XYZ(float)", "ID(int)", "Type(int)", "Size(float)"})
        a.Add(s);
    return a;
}

// Reads the file with the reader, synchronously, on the benchmark thread. The arrays are
// allocated (and zeroed) once by the header read, outside the timing, as the main thread does
// before a reader starts.
void RunReader(benchmark::State& state, const std::string& path, ParticleFormatClone_cls& clone) {
    wxLogNull noLog;
    ParticleSequence_cls seq;
    ParticleSnap_cls snap(&seq, 0);
    snap.SetStrFile(path);
    if (!snap.ReadHeader(&clone)) {
        state.SkipWithError("header read failed");
        return;
    }
    for (auto _ : state) {
        snap.mReadFile.clear(); // read the same file again
        snap.ReadData(&clone, false);
        benchmark::DoNotOptimize(snap.mXYZ.get());
    }
    state.counters["particles"] = snap.mNumber.load();
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(snap.mNumber.load()));
}

void BM_BinaryHorizontalReader(benchmark::State& state) {
    const std::string path = MakeBinary("orv_bench_particles_h.dat", kBinaryCount, false);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, BinaryBody());
    RunReader(state, path, clone);
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}
BENCHMARK(BM_BinaryHorizontalReader)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);

void BM_BinaryVerticalReader(benchmark::State& state) {
    const std::string path = MakeBinary("orv_bench_particles_v.dat", kBinaryCount, true);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 1, BinaryBody());
    RunReader(state, path, clone);
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}
BENCHMARK(BM_BinaryVerticalReader)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);

// Baseline: one fread of the whole file into a buffer that was touched before.
void FreadFile(benchmark::State& state, const std::string& path) {
    const long long size = FileSize(path);
    std::unique_ptr<char[]> buf(new char[static_cast<size_t>(size)]);
    std::memset(buf.get(), 0, static_cast<size_t>(size));
    for (auto _ : state) {
        FILE* fp = fopen(path.c_str(), "rb");
        size_t got = fread(buf.get(), 1, static_cast<size_t>(size), fp);
        fclose(fp);
        benchmark::DoNotOptimize(got);
    }
    state.SetBytesProcessed(state.iterations() * size);
    state.SetItemsProcessed(state.iterations() * kBinaryCount);
}

void BM_PlainFreadHorizontalFile(benchmark::State& state) {
    FreadFile(state, MakeBinary("orv_bench_particles_h.dat", kBinaryCount, false));
}
BENCHMARK(BM_PlainFreadHorizontalFile)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);

void BM_PlainFreadVerticalFile(benchmark::State& state) {
    FreadFile(state, MakeBinary("orv_bench_particles_v.dat", kBinaryCount, true));
}
BENCHMARK(BM_PlainFreadVerticalFile)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);

void BM_GzipHorizontalReader(benchmark::State& state) {
    const std::string path = MakeGzip(kGzipCount);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, BinaryBody());
    RunReader(state, path, clone);
    state.SetBytesProcessed(state.iterations() * (4 + 24LL * kGzipCount)); // uncompressed bytes
}
BENCHMARK(BM_GzipHorizontalReader)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_TextReader(benchmark::State& state) {
    const std::string path = MakeText(kTextCount);
    ParticleFormatClone_cls clone;
    wxArrayString body;
    for (const char* s : {"XYZ", "Type", "Size", "ID"})
        body.Add(s);
    MakeClone(clone, 0, 0, body);
    RunReader(state, path, clone);
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}
BENCHMARK(BM_TextReader)->Unit(benchmark::kMillisecond)->UseRealTime();

// Baseline: the file already in memory, every number parsed by strtod in turn.
void BM_TextStrtodLoop(benchmark::State& state) {
    const std::string path = MakeText(kTextCount);
    std::string data;
    {
        FILE* fp = fopen(path.c_str(), "rb");
        data.resize(static_cast<size_t>(FileSize(path)));
        size_t got = fread(&data[0], 1, data.size(), fp);
        data.resize(got);
        fclose(fp);
    }
    for (auto _ : state) {
        const char* p = data.c_str();
        const char* end = p + data.size();
        double sum = 0.0;
        while (p < end) {
            char* after = nullptr;
            sum += strtod(p, &after);
            p = after == p ? p + 1 : after;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long long>(data.size()));
}
BENCHMARK(BM_TextStrtodLoop)->Unit(benchmark::kMillisecond)->UseRealTime();

// SortDataByID on 20,000,000 particles with XYZ, ID, Type, Size, shuffled IDs.
struct SortData {
    explicit SortData(int n) : xyz(3 * static_cast<size_t>(n)), id(n), type(n), size(n) {
        for (int i = 0; i < n; ++i)
            id[i] = i;
        std::mt19937 rng(42);
        std::shuffle(id.begin(), id.end(), rng);
        shuffled = id;
    }
    std::vector<float> xyz;
    std::vector<int> id;
    std::vector<unsigned char> type;
    std::vector<float> size;
    std::vector<int> shuffled;
};

void BM_SortDataByID(benchmark::State& state) {
    wxLogNull noLog;
    SortData d(kBinaryCount);
    ThreadParticleBinaryRead reader;
    reader.mNumber = kBinaryCount;
    reader.mXYZ = d.xyz.data();
    reader.mID = d.id.data();
    reader.mType = d.type.data();
    reader.mSize = d.size.data();
    for (auto _ : state) {
        state.PauseTiming();
        d.id = d.shuffled;
        state.ResumeTiming();
        reader.SortDataByID(true, false);
        benchmark::DoNotOptimize(d.id.data());
    }
    state.SetItemsProcessed(state.iterations() * kBinaryCount);
}
BENCHMARK(BM_SortDataByID)->Unit(benchmark::kMillisecond)->UseRealTime();

// Baseline: std::sort of the same (index, ID) keys alone, without rewriting the arrays.
void BM_StdSortOfTheKeys(benchmark::State& state) {
    SortData d(kBinaryCount);
    std::vector<LongLongArrayAndIndex_cls> keys(kBinaryCount);
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < kBinaryCount; ++i)
            keys[i] = {i, d.shuffled[i]};
        state.ResumeTiming();
        std::sort(keys.begin(), keys.end());
        benchmark::DoNotOptimize(keys.data());
    }
    state.SetItemsProcessed(state.iterations() * kBinaryCount);
}
BENCHMARK(BM_StdSortOfTheKeys)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    if (!wxInitialize())
        return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    wxUninitialize();
    return 0;
}
