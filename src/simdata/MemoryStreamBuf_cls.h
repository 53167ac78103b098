// A read-only stream buffer over bytes already in memory, so a decompressed gzip file is read
// through the same std::istream code as a plain file without a second copy.
#pragma once

#include <cstddef>
#include <streambuf>

class MemoryStreamBuf_cls : public std::streambuf {
public:
    // Not owned: the bytes must outlive the buffer.
    MemoryStreamBuf_cls(const char* pData, std::size_t size);

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;
};
