// Throughput of the particle readers, of gzip reading and of the sort by ID. Each benchmark times
// its baseline in the same iterations and reports the ratio as a counter, so one run under one load
// of the machine gives the comparison: the binary readers against one fread of the same file, the
// text reader against a strtod loop and a memchr line count over the same bytes, gzip reading
// against one zlib inflate of the same file from memory, SortDataByID against std::sort of the
// bare keys and a memcpy of the arrays. The data files are generated once into /tmp and reused.
#include "LongLongArrayAndIndex_cls.h"
#include "ParticleFormatClone_cls.h"
#include "ParticleFormat_cls.h"
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "ThreadParticleBinaryRead.h"
#include "UseGZ_cls.h"

#include <benchmark/benchmark.h>
#include <wx/init.h>
#include <wx/log.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace {

constexpr int kBinaryCount = 20000000; // XYZ, ID, Type, Size: 24 bytes a record, 480 MB
constexpr int kGzipCount = 2000000;
constexpr int kTextCount = 2000000;
constexpr int kDumpCount = 256000; // atoms of the LAMMPS dump

template <typename F> double Seconds(F&& f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string ReadWhole(const std::string& path) {
    std::string data;
    FILE* fp = fopen(path.c_str(), "rb");
    if (!fp)
        return data;
    struct stat st;
    if (fstat(fileno(fp), &st) == 0)
        data.resize(static_cast<size_t>(st.st_size));
    data.resize(fread(&data[0], 1, data.size(), fp));
    fclose(fp);
    return data;
}

// Baselines over bytes in memory: every number through strtod, and the lines counted with memchr.
double StrtodLoop(const std::string& data) {
    const char* p = data.c_str();
    const char* end = p + data.size();
    double sum = 0.0;
    while (p < end) {
        char* after = nullptr;
        sum += strtod(p, &after);
        p = after == p ? p + 1 : after;
    }
    return sum;
}

long long MemchrLines(const std::string& data) {
    long long n = 0;
    const char* end = data.data() + data.size();
    for (const char* p = data.data(); (p = static_cast<const char*>(memchr(p, '\n', end - p))); ++p)
        ++n;
    return n;
}

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

void MakeClone(ParticleFormatClone_cls& clone, int dataType, int direction, const wxArrayString& body,
               const std::vector<const char*>& header = {"ParticleNumber"}, bool bSort = false) {
    ParticleFormat_cls format;
    format.mCDataType.SetBodyFromData(static_cast<long long>(dataType));
    format.mCArrayDirection.SetBodyFromData(static_cast<long long>(direction));
    format.mCPreSortByID.SetBodyFromDataBOOL(bSort);
    format.mAStrHeader.Clear();
    for (const char* item : header)
        format.mAStrHeader.Add(item);
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

// One baseline of a benchmark: its name in the counter "ratio_vs_<name>" and the work it times.
using Baselines = std::vector<std::pair<std::string, std::function<void()>>>;

// Reads the file with the reader, synchronously, on the benchmark thread; each iteration times
// the header and body read (or the body alone), then each baseline, and the ratio of the sums goes
// to the counters. The arrays are allocated (and zeroed) once by the first header read, as the
// main thread does before a reader starts.
void RunReader(benchmark::State& state, const std::string& path, ParticleFormatClone_cls& clone, bool bHeader,
               const Baselines& baselines) {
    wxLogNull noLog;
    ParticleSequence_cls seq;
    ParticleSnap_cls snap(&seq, 0);
    snap.SetStrFile(path);
    if (!snap.ReadHeader(&clone)) {
        state.SkipWithError("header read failed");
        return;
    }
    double ours = 0.0;
    std::vector<double> base(baselines.size(), 0.0);
    for (auto _ : state) {
        const double t = Seconds([&] {
            if (bHeader) {
                snap.mHeaderFile.clear(); // read the same header again
                snap.ReadHeader(&clone);
            }
            snap.mReadFile.clear(); // and the same body
            snap.ReadData(&clone, false);
        });
        benchmark::DoNotOptimize(snap.mXYZ.get());
        ours += t;
        state.SetIterationTime(t);
        for (size_t b = 0; b < baselines.size(); ++b)
            base[b] += Seconds(baselines[b].second);
    }
    state.counters["particles"] = snap.mNumber.load();
    for (size_t b = 0; b < baselines.size(); ++b) {
        state.counters["ratio_vs_" + baselines[b].first] = ours / base[b];
        state.counters[baselines[b].first + "_ms"] =
            1000.0 * base[b] / static_cast<double>(state.iterations());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(snap.mNumber.load()));
}

// One fread of the whole file into a buffer that was touched before.
struct FreadBaseline_cls {
    explicit FreadBaseline_cls(const std::string& path) : mPath(path), mSize(FileSize(path)) {
        mBuf.reset(new char[static_cast<size_t>(mSize)]);
        std::memset(mBuf.get(), 0, static_cast<size_t>(mSize));
    }
    void operator()() {
        FILE* fp = fopen(mPath.c_str(), "rb");
        size_t got = fread(mBuf.get(), 1, static_cast<size_t>(mSize), fp);
        fclose(fp);
        benchmark::DoNotOptimize(got);
    }
    std::string mPath;
    long long mSize;
    std::shared_ptr<char[]> mBuf;
};

void BM_BinaryHorizontalReader(benchmark::State& state) {
    const std::string path = MakeBinary("orv_bench_particles_h.dat", kBinaryCount, false);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, BinaryBody());
    RunReader(state, path, clone, false, {{"fread", FreadBaseline_cls(path)}});
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}
BENCHMARK(BM_BinaryHorizontalReader)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

void BM_BinaryVerticalReader(benchmark::State& state) {
    const std::string path = MakeBinary("orv_bench_particles_v.dat", kBinaryCount, true);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 1, BinaryBody());
    RunReader(state, path, clone, false, {{"fread", FreadBaseline_cls(path)}});
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}
BENCHMARK(BM_BinaryVerticalReader)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

// One call of zlib's inflate over the whole compressed file in memory, into a buffer of the right
// size that was touched before: what gzip reading costs at best with zlib.
struct InflateBaseline_cls {
    explicit InflateBaseline_cls(const std::string& path) : mIn(ReadWhole(path)) {
        unsigned char* p = nullptr;
        long long size = 0;
        UseGZ_cls::CopyToMemory(&p, path, size);
        delete[] p;
        mOut.assign(static_cast<size_t>(size), 1);
    }
    void operator()() {
        z_stream zs{};
        inflateInit2(&zs, 15 + 16);
        zs.next_in = reinterpret_cast<Bytef*>(&mIn[0]);
        zs.avail_in = static_cast<uInt>(mIn.size());
        zs.next_out = reinterpret_cast<Bytef*>(&mOut[0]);
        zs.avail_out = static_cast<uInt>(mOut.size());
        benchmark::DoNotOptimize(inflate(&zs, Z_FINISH));
        inflateEnd(&zs);
    }
    std::string mIn;
    std::string mOut;
};

// UseGZ_cls::CopyToMemory of the gzip file: open, read, decompress, against the one-call inflate.
void BM_GzipCopyToMemory(benchmark::State& state) {
    const std::string path = MakeGzip(kGzipCount);
    InflateBaseline_cls baseline(path);
    double ours = 0.0, base = 0.0;
    for (auto _ : state) {
        const double t = Seconds([&] {
            unsigned char* p = nullptr;
            long long size = 0;
            UseGZ_cls::CopyToMemory(&p, path, size);
            benchmark::DoNotOptimize(p);
            delete[] p;
        });
        ours += t;
        state.SetIterationTime(t);
        base += Seconds(baseline);
    }
    state.counters["ratio_vs_zlib_inflate"] = ours / base;
    state.SetBytesProcessed(state.iterations() * static_cast<long long>(baseline.mOut.size()));
}
BENCHMARK(BM_GzipCopyToMemory)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);

// Header and body of the gzip file, which is decompressed once for both.
void BM_GzipHorizontalReader(benchmark::State& state) {
    const std::string path = MakeGzip(kGzipCount);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, BinaryBody());
    RunReader(state, path, clone, true, {{"zlib_inflate", InflateBaseline_cls(path)}});
    state.SetBytesProcessed(state.iterations() * (4 + 24LL * kGzipCount)); // uncompressed bytes
}
BENCHMARK(BM_GzipHorizontalReader)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);

// A text file read against the strtod loop and the memchr line count over its bytes.
void RunTextReader(benchmark::State& state, const std::string& path, ParticleFormatClone_cls& clone,
                   bool bHeader) {
    const std::string data = ReadWhole(path);
    RunReader(state, path, clone, bHeader,
              {{"strtod_loop", [&] { benchmark::DoNotOptimize(StrtodLoop(data)); }},
               {"memchr_lines", [&] { benchmark::DoNotOptimize(MemchrLines(data)); }}});
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

void BM_TextReader(benchmark::State& state) {
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, wxSplit("XYZ Type Size ID", ' '));
    RunTextReader(state, MakeText(kTextCount), clone, false);
}
BENCHMARK(BM_TextReader)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

// A LAMMPS dump of 256,000 atoms, "id type x y z", as LAMMPS writes it from several processes:
// the nine header lines, then the atoms with their IDs out of order.
std::string MakeLammpsDump() {
    const std::string path = "/tmp/orv_bench_lammps_256000.dump";
    if (FileSize(path) > 0)
        return path;
    FILE* fp = fopen(path.c_str(), "w");
    fprintf(fp, "ITEM: TIMESTEP\n100\nITEM: NUMBER OF ATOMS\n%d\nITEM: BOX BOUNDS pp pp pp\n", kDumpCount);
    for (int k = 0; k < 3; ++k)
        fprintf(fp, "0.0000000000000000e+00 6.7183847655300290e+01\n");
    fprintf(fp, "ITEM: ATOMS id type x y z\n");
    std::vector<int> ids(kDumpCount);
    for (int i = 0; i < kDumpCount; ++i)
        ids[i] = i + 1;
    std::mt19937 rng(3);
    std::shuffle(ids.begin(), ids.end(), rng);
    std::uniform_real_distribution<double> pos(0.0, 67.18);
    for (int i = 0; i < kDumpCount; ++i)
        fprintf(fp, "%d %d %g %g %g\n", ids[i], 1 + ids[i] % 2, pos(rng), pos(rng), pos(rng));
    fclose(fp);
    return path;
}

// Header and body with the sort by ID, against a strtod loop and a memchr line count over the same
// bytes.
void BM_TextLammpsDump(benchmark::State& state) {
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, wxSplit("ID Type XYZ", ' '), {"Dummyx3", "Dummyx3", "Dummyx3"}, true);
    RunTextReader(state, MakeLammpsDump(), clone, true);
}
BENCHMARK(BM_TextLammpsDump)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);

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

// Timed: SortDataByID. Beside it in every iteration: std::sort of the bare (position, ID) keys,
// which does not even rewrite the arrays, and a memcpy of the four arrays, the least any rewrite
// costs. ascending: the IDs stand in order already, as LAMMPS writes them with "dump_modify sort id".
void SortDataByID(benchmark::State& state, bool bAscending) {
    wxLogNull noLog;
    SortData d(kBinaryCount);
    if (bAscending)
        std::sort(d.shuffled.begin(), d.shuffled.end());
    ThreadParticleBinaryRead reader;
    reader.mNumber = kBinaryCount;
    reader.mXYZ = d.xyz.data();
    reader.mID = d.id.data();
    reader.mType = d.type.data();
    reader.mSize = d.size.data();
    std::vector<LongLongArrayAndIndex_cls> keys(kBinaryCount);
    SortData copy(1);
    copy.xyz.assign(d.xyz.size(), 1.0f);
    copy.id.assign(d.id.size(), 1);
    copy.type.assign(d.type.size(), 1);
    copy.size.assign(d.size.size(), 1.0f);
    double ours = 0.0, stdSort = 0.0, memcpys = 0.0;
    for (auto _ : state) {
        d.id = d.shuffled;
        const double t = Seconds([&] { reader.SortDataByID(true, false); });
        benchmark::DoNotOptimize(d.id.data());
        ours += t;
        state.SetIterationTime(t);
        for (int i = 0; i < kBinaryCount; ++i)
            keys[i] = {i, d.shuffled[i]};
        stdSort += Seconds([&] { std::sort(keys.begin(), keys.end()); });
        benchmark::DoNotOptimize(keys.data());
        memcpys += Seconds([&] {
            std::memcpy(copy.xyz.data(), d.xyz.data(), d.xyz.size() * sizeof(float));
            std::memcpy(copy.id.data(), d.id.data(), d.id.size() * sizeof(int));
            std::memcpy(copy.type.data(), d.type.data(), d.type.size());
            std::memcpy(copy.size.data(), d.size.data(), d.size.size() * sizeof(float));
        });
        benchmark::DoNotOptimize(copy.xyz.data());
    }
    if (!std::is_sorted(d.id.begin(), d.id.end()))
        state.SkipWithError("SortDataByID left the IDs unsorted");
    state.SetItemsProcessed(state.iterations() * kBinaryCount);
    state.counters["ratio_vs_std_sort_of_keys"] = ours / stdSort;
    state.counters["ratio_vs_memcpy_of_arrays"] = ours / memcpys;
    state.counters["std_sort_ms"] = 1000.0 * stdSort / static_cast<double>(state.iterations());
    state.counters["memcpy_ms"] = 1000.0 * memcpys / static_cast<double>(state.iterations());
}

void BM_SortDataByID(benchmark::State& state) {
    SortDataByID(state, false);
}
BENCHMARK(BM_SortDataByID)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(2);

void BM_SortDataByIDAscending(benchmark::State& state) {
    SortDataByID(state, true);
}
BENCHMARK(BM_SortDataByIDAscending)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(2);

} // namespace
