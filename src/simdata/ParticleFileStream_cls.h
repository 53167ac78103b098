// Opens a particle file for reading as a std::istream: a plain file directly, a file with the
// extension "gz" decompressed into memory in full first. A file in memory also offers its bytes
// directly, and the header read hands such a file on to the body read, so that a gzip file is
// decompressed once per read. Used by one thread at a time.
#pragma once

#include "MemoryStreamBuf_cls.h"

#include <wx/string.h>

#include <fstream>
#include <istream>
#include <memory>

class ParticleFileStream_cls {
public:
    // False when the file cannot be opened or decompressed. bWhole reads a plain file into memory
    // as well.
    bool Open(const wxString& strPath, bool bWhole = false);
    // Back to the first byte, for the next reader of the same file.
    void Rewind();
    std::istream& GetStream() { return *mpStream; }
    // Size in bytes (uncompressed); -1 when unknown.
    long long GetSize() const { return mSize; }
    // The whole file with a zero byte behind it, or null when it is read from the disk.
    const char* GetData() const { return reinterpret_cast<const char*>(mpData.get()); }
    // The path it was opened with.
    const wxString& GetPath() const { return mStrPath; }

private:
    std::ifstream mFile;
    std::unique_ptr<unsigned char[]> mpData;
    std::unique_ptr<MemoryStreamBuf_cls> mpBuf;
    std::unique_ptr<std::istream> mpMemStream;
    std::istream* mpStream = nullptr;
    long long mSize = -1;
    wxString mStrPath;
};
