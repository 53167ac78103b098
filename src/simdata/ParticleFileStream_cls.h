// Opens a particle file for reading as a std::istream: a plain file directly, a file with the
// extension "gz" decompressed into memory in full first. Used by one thread at a time.
#pragma once

#include "MemoryStreamBuf_cls.h"

#include <wx/string.h>

#include <fstream>
#include <istream>
#include <memory>
#include <string>

class ParticleFileStream_cls {
public:
    // False when the file cannot be opened or decompressed.
    bool Open(const wxString& strPath);
    std::istream& GetStream() { return *mpStream; }
    // Size in bytes (uncompressed); -1 when unknown.
    long long GetSize() const { return mSize; }

private:
    std::ifstream mFile;
    std::string mData;
    std::unique_ptr<MemoryStreamBuf_cls> mpBuf;
    std::unique_ptr<std::istream> mpMemStream;
    std::istream* mpStream = nullptr;
    long long mSize = -1;
};
