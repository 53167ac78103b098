#include "ThreadParticleAsciiRead.h"

#include "ElementSymbol_cls.h"
#include "ParallelRun_cls.h"

#include <fast_float/fast_float.h>
#include <wx/log.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Where strtod would skip blanks, tabs and even the line end, the slow road is taken on a copy of
// the rest of the line with its appended blank, so the column is read exactly as before.
bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

std::string RestOfLine(const char* p, const char* eol) {
    std::string s(p, eol);
    s.push_back(' ');
    return s;
}

// The end of the line that starts at p: its newline, or end.
const char* LineEnd(const char* p, const char* end) {
    const char* nl = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
    return nl ? nl : end;
}

// Number of newline bytes in [p, end), eight bytes at a time: a byte of a word is a newline when
// it is zero after the xor, and the test below sets the high bit of exactly those bytes.
long long CountNewlines(const char* p, const char* end) {
    long long n = 0;
    for (; p < end && (reinterpret_cast<uintptr_t>(p) & 7); ++p)
        n += *p == '\n';
    constexpr uint64_t kOnes = 0x0101010101010101ull, kLow7 = 0x7f7f7f7f7f7f7f7full;
    for (; end - p >= 8; p += 8) {
        uint64_t w;
        std::memcpy(&w, p, 8);
        const uint64_t x = w ^ (kOnes * '\n');
        // One high bit per newline byte; the multiply sums the bytes into the top one.
        n += static_cast<long long>(((~(((x & kLow7) + kLow7) | x | kLow7) >> 7) * kOnes) >> 56);
    }
    for (; p < end; ++p)
        n += *p == '\n';
    return n;
}

// Bodies below this many bytes a thread are read on one thread.
constexpr size_t kBytesPerThread = 1 << 18;
// Lines between two reports of progress (and two looks at the abort request).
constexpr long long kProgressLines = 1 << 16;

} // namespace

double ThreadParticleAsciiRead::ParseDouble(const char* p, const char* eol) {
    if (p >= eol)
        return 0.0;
    if (IsSpace(*p))
        return strtod(RestOfLine(p, eol).c_str(), nullptr);
    double v = 0.0;
    const fast_float::from_chars_result r = fast_float::from_chars(p, eol, v);
    // strtod also reads hexadecimal numbers and a leading plus: those take its own road.
    if (r.ec == std::errc() && !(r.ptr < eol && (*r.ptr == 'x' || *r.ptr == 'X')))
        return v;
    return strtod(p, nullptr);
}

long ThreadParticleAsciiRead::ParseLong(const char* p, const char* eol) {
    if (p >= eol)
        return 0;
    if (IsSpace(*p))
        return strtol(RestOfLine(p, eol).c_str(), nullptr, 10);
    long v = 0;
    if (std::from_chars(p, eol, v).ec == std::errc())
        return v;
    return strtol(p, nullptr, 10); // a plus sign, an overflow, or no number at all
}

long long ThreadParticleAsciiRead::ParseLongLong(const char* p, const char* eol) {
    if (p >= eol)
        return 0;
    if (IsSpace(*p))
        return strtoll(RestOfLine(p, eol).c_str(), nullptr, 10);
    long long v = 0;
    if (std::from_chars(p, eol, v).ec == std::errc())
        return v;
    return strtoll(p, nullptr, 10);
}

int ThreadParticleAsciiRead::ParseType(const char* p, const char* eol) {
    // A number starts with a digit, a sign, a dot or a blank, never with a letter: the one test
    // keeps numeric files on their road.
    const char c = p < eol ? *p : '\0';
    if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')))
        return static_cast<int>(ParseLong(p, eol));
    const char* q = p;
    while (q < eol && *q != ' ' && *q != '\t' && *q != '\r' && *q != '\0')
        ++q;
    return ElementSymbol_cls::GetAtomicNumber(p, q);
}

int ThreadParticleAsciiRead::ReadColumnType(const char** p, const char* eol) {
    const int v = ParseType(*p, eol);
    StepColumn(p, eol);
    return v;
}

void ThreadParticleAsciiRead::StepColumn(const char** p, const char* eol) {
    // The search for the blank starts at the column's first character, not behind the number:
    // a column that starts with a blank (two blanks in a row) ends right there, which shifts the
    // columns behind it. Kept as it is: columns are separated by exactly one blank. A zero byte
    // inside the line ends it, as it ends the line's text.
    const char* q = *p;
    while (q < eol && *q != ' ' && *q != '\0')
        ++q;
    *p = (q < eol && *q == ' ') ? q + 1 : eol;
}

float ThreadParticleAsciiRead::ReadColumnFloat(const char** p, const char* eol) {
    const float v = static_cast<float>(ParseDouble(*p, eol));
    StepColumn(p, eol);
    return v;
}

int ThreadParticleAsciiRead::ReadColumnInt(const char** p, const char* eol) {
    const int v = static_cast<int>(ParseLong(*p, eol));
    StepColumn(p, eol);
    return v;
}

long long ThreadParticleAsciiRead::ReadColumnLongLong(const char** p, const char* eol) {
    const long long v = ParseLongLong(*p, eol);
    StepColumn(p, eol);
    return v;
}

void ThreadParticleAsciiRead::ReadBodyAscii() {
    ParticleFileStream_cls* pFile = OpenFile(true);
    if (!pFile)
        return;
    const char* p = pFile->GetData();
    const char* end = p + pFile->GetSize();
    // The header lines are skipped as getline would: a last line without its newline counts.
    const int headerLines = mpFormat->GetHeaderLine();
    for (int i = 0; i < headerLines; ++i) {
        if (p >= end)
            return;
        p = LineEnd(p, end);
        if (p < end)
            ++p;
    }
    ReadBodyMemory(p, end);
}

void ThreadParticleAsciiRead::ReadBodyMemory(const char* body, const char* end) {
    const size_t n = mNumber > 0 ? static_cast<size_t>(mNumber) : 0;
    if (n == 0 || body >= end)
        return;
    const bool bVertical = mpFormat->GetArrayDirection() == 1;
    const std::vector<int> items = mpFormat->GetVFormatBody(0);

    // Vertical: each item takes n particles of its lines, item after item. "VXVYVZ", "ID",
    // "ID(long long)", "VX", "VY", "VZ" have no step here and consume no lines, though the line
    // count of the header counts the first three. Kept as it is.
    std::vector<Segment_cls> segments;
    long long bodyLines = static_cast<long long>(n);
    if (bVertical) {
        long long line = 0;
        for (int item : items) {
            int lines = 0;
            switch (item) {
            case PA_XYZ:
            case PA_X:
            case PA_Y:
            case PA_Z:
            case PA_TYPE:
            case PA_SIZE:
            case PA_VALUE0:
            case PA_VALUE1:
            case PA_VALUE2:
            case PA_DUMMY:
                lines = 1;
                break;
            case PA_DUMMYX3:
                lines = 3;
                break;
            case PA_DUMMYX10:
                lines = 10;
                break;
            default:
                break;
            }
            if (lines == 0)
                continue;
            segments.push_back({line, item, lines});
            line += static_cast<long long>(n) * lines;
        }
        bodyLines = line;
    }

    // Each range reads the lines that begin inside it; the first pass counts them, so that every
    // range knows the number of its first line.
    const int threads = ParallelRun_cls::GetThreadCount(static_cast<size_t>(end - body), kBytesPerThread);
    std::vector<const char*> firstLine(threads + 1, end);
    std::vector<long long> lineCount(threads + 1, 0);
    // A line begins at the body's start and behind every newline but one in the last byte; a range
    // owns the lines that begin inside it.
    ParallelRun_cls::Run(threads, [&](int t) {
        size_t ini, fin;
        ParallelRun_cls::GetShare(ini, fin, t, threads, static_cast<size_t>(end - body));
        if (fin <= ini)
            return; // more threads than bytes: an empty range
        const char* q = body + ini;
        const char* limit = body + fin;
        if (ini > 0 && q[-1] != '\n')
            q = std::min(LineEnd(q, limit), limit) + 1;
        firstLine[t] = std::min(q, end);
        lineCount[t] = ini == 0 ? 1 + CountNewlines(body, limit - 1) : CountNewlines(q - 1, limit - 1);
    });
    std::vector<long long> firstIndex(threads, 0);
    for (int t = 1; t < threads; ++t)
        firstIndex[t] = firstIndex[t - 1] + lineCount[t - 1];

    SetProgressTotal(bodyLines);
    ParallelRun_cls::Run(threads, [&](int t) {
        const char* q = firstLine[t];
        long long line = firstIndex[t];
        const long long stop = std::min(bodyLines, line + lineCount[t]);
        size_t s = 0;
        while (s + 1 < segments.size() && segments[s + 1].mFirstLine <= line)
            ++s;
        // Progress and the abort request are looked at every kProgressLines lines only.
        long long reported = line;
        for (; line < stop; ++line) {
            if (line - reported >= kProgressLines) {
                const bool bGoOn = ReportProgress(line - reported);
                reported = line;
                if (!bGoOn)
                    return;
            }
            const char* eol = LineEnd(q, end);
            if (!bVertical) {
                DecodeLineHorizontal(static_cast<size_t>(line), q, eol, items);
            } else {
                while (s + 1 < segments.size() && segments[s + 1].mFirstLine <= line)
                    ++s;
                DecodeLineVertical(segments[s], line, q, eol);
            }
            q = eol + 1;
        }
        ReportProgress(line - reported);
    });
}

void ThreadParticleAsciiRead::DecodeLineHorizontal(size_t i, const char* p, const char* eol,
                                                   const std::vector<int>& items) {
    // Columns are separated by exactly one blank: two blanks in a row, or a tab, shift the
    // columns. X, Y and Z all go to the first component, and VX, VY, VZ likewise; only the
    // vertical reader splits them. Both are kept as they are.
    for (int item : items) {
        switch (item) {
        case PA_XYZ:
            for (int k = 0; k < 3; ++k)
                mXYZ[3 * i + k] = ReadColumnFloat(&p, eol);
            break;
        case PA_VXVYVZ:
            for (int k = 0; k < 3; ++k) {
                float v = ReadColumnFloat(&p, eol);
                if (mVelocity)
                    mVelocity[3 * i + k] = v;
            }
            break;
        case PA_TYPE: {
            int v = ReadColumnType(&p, eol);
            if (mType)
                mType[i] = static_cast<unsigned char>(v & 0xff);
            break;
        }
        case PA_SIZE: {
            float v = ReadColumnFloat(&p, eol);
            if (mSize)
                mSize[i] = v;
            break;
        }
        case PA_ID: {
            int v = ReadColumnInt(&p, eol);
            if (mID)
                mID[i] = v;
            break;
        }
        case PA_ID_LONG: {
            long long v = ReadColumnLongLong(&p, eol);
            if (mIDLong)
                mIDLong[i] = v;
            break;
        }
        case PA_VALUE0:
        case PA_VALUE1:
        case PA_VALUE2: {
            float v = ReadColumnFloat(&p, eol);
            if (float* pv = mValue[item - PA_VALUE0])
                pv[i] = v;
            break;
        }
        case PA_DUMMY:
        case PA_DUMMYX3:
        case PA_DUMMYX10: {
            const int columns = ParticleFormatTable_cls::GetBodyItemColumnAscii(item);
            for (int k = 0; k < columns; ++k)
                StepColumn(&p, eol);
            break;
        }
        case PA_X:
        case PA_Y:
        case PA_Z:
            mXYZ[3 * i] = ReadColumnFloat(&p, eol);
            break;
        case PA_VX:
        case PA_VY:
        case PA_VZ: {
            float v = ReadColumnFloat(&p, eol);
            if (mVelocity)
                mVelocity[3 * i] = v;
            break;
        }
        default:
            break;
        }
    }
}

void ThreadParticleAsciiRead::DecodeLineVertical(const Segment_cls& segment, long long line, const char* p,
                                                 const char* eol) {
    const long long rel = line - segment.mFirstLine;
    // A particle of several lines is read from its last one.
    if (rel % segment.mLinesPerParticle != segment.mLinesPerParticle - 1)
        return;
    const size_t i = static_cast<size_t>(rel / segment.mLinesPerParticle);
    switch (segment.mItem) {
    case PA_XYZ:
        for (int k = 0; k < 3; ++k)
            mXYZ[3 * i + k] = ReadColumnFloat(&p, eol);
        break;
    case PA_X:
    case PA_Y:
    case PA_Z:
        mXYZ[3 * i + (segment.mItem - PA_X)] = static_cast<float>(ParseDouble(p, eol));
        break;
    case PA_TYPE:
        if (mType)
            mType[i] = static_cast<unsigned char>(ParseType(p, eol) & 0xff);
        break;
    case PA_SIZE:
        if (mSize)
            mSize[i] = static_cast<float>(ParseDouble(p, eol));
        break;
    case PA_VALUE0:
    case PA_VALUE1:
    case PA_VALUE2:
        if (float* pv = mValue[segment.mItem - PA_VALUE0])
            pv[i] = static_cast<float>(ParseDouble(p, eol));
        break;
    default:
        break;
    }
}
