#include "UseGZ_cls.h"

#include "TextHost_cls.h"

#include <wx/filename.h>

#include <libdeflate.h>
#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace {

const size_t CHUNK = 1 << 20;

// Only regular files are read: a directory opens on Linux and reports a size of 2^63 - 1.
bool IsRegularPath(const wxString& strPath) {
    struct stat st;
    return stat(strPath.fn_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool IsRegularFile(FILE* fp) {
    struct stat st;
    return fstat(fileno(fp), &st) == 0 && S_ISREG(st.st_mode);
}

// Reads a whole gzip (or plain: zlib passes plain data through) file into out. A read error
// ends the data where it happened, as the end of the file does: what was decoded is kept.
bool ReadAllGZ(const wxString& strPath, std::string& out) {
    if (!IsRegularPath(strPath))
        return false;
    gzFile gz = gzopen(strPath.fn_str(), "rb");
    if (!gz)
        return false;
    gzbuffer(gz, 256 * 1024);
    std::string data;
    for (;;) {
        size_t old = data.size();
        data.resize(old + CHUNK);
        int n = gzread(gz, &data[old], static_cast<unsigned>(CHUNK));
        data.resize(old + static_cast<size_t>(std::max(n, 0)));
        if (n <= 0)
            break;
    }
    gzclose(gz);
    out.swap(data);
    return true;
}

bool ReadAllPlain(const wxString& strPath, std::string& out) {
    FILE* fp = fopen(strPath.fn_str(), "rb");
    if (!fp)
        return false;
    if (!IsRegularFile(fp)) {
        fclose(fp);
        return false;
    }
    out.clear();
    if (fseek(fp, 0, SEEK_END) == 0) {
        long len = ftell(fp);
        if (len > 0)
            out.reserve(static_cast<size_t>(len));
        rewind(fp);
    }
    std::vector<char> buf(CHUNK);
    size_t n;
    while ((n = fread(buf.data(), 1, buf.size(), fp)) > 0)
        out.append(buf.data(), n);
    bool bOk = !ferror(fp);
    fclose(fp);
    return bOk;
}

// The whole file as it stands, with one spare byte behind it. False when it is no regular file or
// cannot be read to the end.
bool ReadRaw(const wxString& strPath, std::unique_ptr<unsigned char[]>& data, size_t& size) {
    FILE* fp = fopen(strPath.fn_str(), "rb");
    if (!fp)
        return false;
    struct stat st;
    if (fstat(fileno(fp), &st) != 0 || !S_ISREG(st.st_mode) || st.st_size < 0) {
        fclose(fp);
        return false;
    }
    const size_t bytes = static_cast<size_t>(st.st_size);
    data.reset(new (std::nothrow) unsigned char[bytes + 1]);
    const bool bOk = data && fread(data.get(), 1, bytes, fp) == bytes;
    fclose(fp);
    size = bytes;
    return bOk;
}

bool IsGZMember(const unsigned char* p, size_t left) {
    return left > 1 && p[0] == 0x1f && p[1] == 0x8b;
}

// Decompresses a whole file into one buffer with one spare byte behind the data, as zlib's gzread
// reads it: members one after another, trailing bytes that start no member ignored, a file that is
// no gzip at all passed through as it stands. libdeflate does it in one call per member, several
// times faster than gzread in blocks. The size in the trailer is the first guess of the length; it
// is wrong for several members and beyond 4 GiB, and then the buffer grows. On damaged data this
// gives up (false) so that the caller reads through zlib, which keeps what came before the damage.
bool InflateWhole(const wxString& strPath, std::unique_ptr<unsigned char[]>& out, size_t& size, bool& bRead) {
    std::unique_ptr<unsigned char[]> in;
    size_t inBytes = 0;
    bRead = ReadRaw(strPath, in, inBytes);
    if (!bRead)
        return false;
    if (!IsGZMember(in.get(), inBytes)) {
        out = std::move(in);
        size = inBytes;
        return true;
    }
    size_t capacity = 0;
    if (inBytes >= 18) {
        const unsigned char* t = in.get() + inBytes - 4;
        capacity = static_cast<size_t>(t[0]) | static_cast<size_t>(t[1]) << 8 |
                   static_cast<size_t>(t[2]) << 16 | static_cast<size_t>(t[3]) << 24;
    }
    // A trailer far below the compressed size belongs to a later member or wrapped at 4 GiB.
    if (capacity < inBytes / 2)
        capacity = inBytes * 4;
    std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> pDecompressor(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    std::unique_ptr<unsigned char[]> buf(new (std::nothrow) unsigned char[capacity + 1]);
    if (!pDecompressor || !buf)
        return false;
    size_t inPos = 0, outPos = 0;
    while (IsGZMember(in.get() + inPos, inBytes - inPos)) {
        size_t inUsed = 0, outUsed = 0;
        const libdeflate_result r =
            libdeflate_gzip_decompress_ex(pDecompressor.get(), in.get() + inPos, inBytes - inPos,
                                          buf.get() + outPos, capacity - outPos, &inUsed, &outUsed);
        if (r == LIBDEFLATE_INSUFFICIENT_SPACE) {
            // The member is decoded again into a buffer twice as large.
            const size_t grown = std::max(capacity * 2, outPos + (inBytes - inPos) * 4);
            std::unique_ptr<unsigned char[]> bigger(new (std::nothrow) unsigned char[grown + 1]);
            if (!bigger)
                return false;
            memcpy(bigger.get(), buf.get(), outPos);
            buf = std::move(bigger);
            capacity = grown;
            continue;
        }
        if (r != LIBDEFLATE_SUCCESS)
            return false;
        inPos += inUsed;
        outPos += outUsed;
    }
    out = std::move(buf);
    size = outPos;
    return true;
}

// The whole decompressed file into a new array with a zero byte behind it, through libdeflate
// when the data allows and through zlib otherwise.
bool ReadWholeGZ(const wxString& strPath, std::unique_ptr<unsigned char[]>& out, size_t& size) {
    bool bRead = false;
    if (InflateWhole(strPath, out, size, bRead)) {
        out[size] = 0;
        return true;
    }
    if (!bRead)
        return false;
    std::string data;
    if (!ReadAllGZ(strPath, data))
        return false;
    out.reset(new unsigned char[data.size() + 1]);
    memcpy(out.get(), data.data(), data.size());
    out[data.size()] = 0;
    size = data.size();
    return true;
}

} // namespace

void UseGZ_cls::VersionCheck() {
    const char* ver = zlibVersion();
    size_t len = strlen(ver);
    msZlibMajor = len > 0 ? ver[0] - '0' : 0;
    msZlibMinor = len > 2 ? ver[2] - '0' : 0;
    msZlibRevision = len > 4 ? ver[4] - '0' : 0;
}

bool UseGZ_cls::IsGZPath(const wxString& strPath) {
    // The extension alone decides: "archive.tgz" and "notgz" are read as they stand.
    return wxFileName(strPath).GetExt() == "gz";
}

bool UseGZ_cls::CopyToMemory(unsigned char** ppOut, const wxString& strPath, long long& size) {
    if (IsGZPath(strPath))
        return CopyToMemoryGZ(ppOut, strPath, size);
    FILE* fp = fopen(strPath.fn_str(), "rb");
    if (!fp)
        return false;
    // Read straight into the caller's array: no second copy of large files.
    if (!IsRegularFile(fp) || fseek(fp, 0, SEEK_END) != 0) {
        fclose(fp);
        return false;
    }
    long len = ftell(fp);
    rewind(fp);
    if (len < 0) {
        fclose(fp);
        return false;
    }
    unsigned char* p = new unsigned char[static_cast<size_t>(len) + 1];
    size_t n = fread(p, 1, static_cast<size_t>(len), fp);
    fclose(fp);
    p[n] = 0;
    *ppOut = p;
    size = static_cast<long long>(n) + 1;
    return true;
}

bool UseGZ_cls::CopyToMemoryGZ(unsigned char** ppOut, const wxString& strPath, long long& size) {
    std::unique_ptr<unsigned char[]> data;
    size_t bytes = 0;
    if (!ReadWholeGZ(strPath, data, bytes))
        return false;
    *ppOut = data.release();
    size = static_cast<long long>(bytes) + 1;
    return true;
}

bool UseGZ_cls::CopyToString(std::string* pOut, const wxString& strPath) {
    if (IsGZPath(strPath))
        return CopyToStringGZ(pOut, strPath);
    return ReadAllPlain(strPath, *pOut);
}

bool UseGZ_cls::CopyToStringGZ(std::string* pOut, const wxString& strPath) {
    std::unique_ptr<unsigned char[]> data;
    size_t bytes = 0;
    if (!ReadWholeGZ(strPath, data, bytes))
        return false;
    pOut->assign(reinterpret_cast<const char*>(data.get()), bytes);
    return true;
}

static long long CountNewlines(const char* p, size_t size) {
    long long n = 0;
    for (const char* end = p + size; (p = static_cast<const char*>(memchr(p, '\n', end - p))); ++p)
        ++n;
    return n;
}

long long UseGZ_cls::GetLineNumber(const wxString& strPath) {
    if (IsGZPath(strPath))
        return GetLineNumberGZ(strPath);
    std::string data;
    if (!ReadAllPlain(strPath, data))
        return -1;
    return CountNewlines(data.data(), data.size());
}

long long UseGZ_cls::GetLineNumberGZ(const wxString& strPath) {
    std::unique_ptr<unsigned char[]> data;
    size_t bytes = 0;
    if (!ReadWholeGZ(strPath, data, bytes))
        return -1;
    return CountNewlines(reinterpret_cast<const char*>(data.get()), bytes);
}

bool UseGZ_cls::SaveMemoryToGZ(const wxString& strPath, const char* pData, long long size) {
    TextHost_cls* pHost = TextHost_cls::Get();
    const char* mode = (pHost && pHost->GetGZQuality() == 1) ? "wb1" : "wb9";
    gzFile gz = gzopen(strPath.fn_str(), mode);
    if (!gz)
        return false;
    bool bOk = true;
    long long done = 0;
    while (done < size && bOk) {
        unsigned n = static_cast<unsigned>(std::min<long long>(size - done, 1 << 30));
        bOk = gzwrite(gz, pData + done, n) == static_cast<int>(n);
        done += n;
    }
    return gzclose(gz) == Z_OK && bOk;
}
