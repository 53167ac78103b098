// Reads any data file whole, gzip-compressed or plain, and writes gzip files.
// Every reader may be called from any thread: it keeps no state.
#pragma once

#include <wx/string.h>

#include <string>

class UseGZ_cls {
public:
    // Stores the major, minor and revision digit of the run-time zlib.
    static void VersionCheck();
    // The whole file into a new array (delete[] by the caller) with a zero byte behind the
    // data; size is the byte count plus 1. A path with the extension "gz" is decompressed.
    // Only regular files are read; on failure the outputs are left as they were.
    static bool CopyToMemory(unsigned char** ppOut, const wxString& strPath, long long& size);
    static bool CopyToMemoryGZ(unsigned char** ppOut, const wxString& strPath, long long& size);
    // The same into a string.
    static bool CopyToString(std::string* pOut, const wxString& strPath);
    static bool CopyToStringGZ(std::string* pOut, const wxString& strPath);
    // Number of newline bytes in the file; -1 when it cannot be read.
    static long long GetLineNumber(const wxString& strPath);
    static long long GetLineNumberGZ(const wxString& strPath);
    // Writes data through zlib. False when the file cannot be opened or written.
    static bool SaveMemoryToGZ(const wxString& strPath, const char* pData, long long size);

    static inline int msZlibMajor = 0;
    static inline int msZlibMinor = 0;
    static inline int msZlibRevision = 0;

    // True when the extension of the file name is "gz".
    static bool IsGZPath(const wxString& strPath);
};
