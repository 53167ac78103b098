#include "UseGZ_cls.h"

#include "TextHost_cls.h"

#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
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

bool ToMemory(const std::string& data, unsigned char** ppOut, long long& size) {
    unsigned char* p = new unsigned char[data.size() + 1];
    memcpy(p, data.data(), data.size());
    p[data.size()] = 0;
    *ppOut = p;
    size = static_cast<long long>(data.size()) + 1;
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
    std::string data;
    if (!ReadAllGZ(strPath, data))
        return false;
    return ToMemory(data, ppOut, size);
}

bool UseGZ_cls::CopyToString(std::string* pOut, const wxString& strPath) {
    if (IsGZPath(strPath))
        return CopyToStringGZ(pOut, strPath);
    return ReadAllPlain(strPath, *pOut);
}

bool UseGZ_cls::CopyToStringGZ(std::string* pOut, const wxString& strPath) {
    return ReadAllGZ(strPath, *pOut);
}

static long long CountNewlines(const std::string& data) {
    long long n = 0;
    for (char c : data)
        if (c == '\n')
            ++n;
    return n;
}

long long UseGZ_cls::GetLineNumber(const wxString& strPath) {
    if (IsGZPath(strPath))
        return GetLineNumberGZ(strPath);
    std::string data;
    if (!ReadAllPlain(strPath, data))
        return -1;
    return CountNewlines(data);
}

long long UseGZ_cls::GetLineNumberGZ(const wxString& strPath) {
    std::string data;
    if (!ReadAllGZ(strPath, data))
        return -1;
    return CountNewlines(data);
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
