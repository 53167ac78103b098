#include "MemoryStreamBuf_cls.h"

MemoryStreamBuf_cls::MemoryStreamBuf_cls(const char* pData, std::size_t size) {
    // The get area is never written through: the const_cast only satisfies the interface.
    char* p = const_cast<char*>(pData);
    setg(p, p, p + size);
}

MemoryStreamBuf_cls::pos_type MemoryStreamBuf_cls::seekoff(off_type off, std::ios_base::seekdir dir,
                                                           std::ios_base::openmode which) {
    if (!(which & std::ios_base::in))
        return pos_type(off_type(-1));
    off_type base = 0;
    if (dir == std::ios_base::cur)
        base = gptr() - eback();
    else if (dir == std::ios_base::end)
        base = egptr() - eback();
    off_type target = base + off;
    // Like a file, a seek past the end is allowed and then reads nothing.
    if (target < 0)
        return pos_type(off_type(-1));
    if (target > egptr() - eback())
        target = egptr() - eback();
    setg(eback(), eback() + target, egptr());
    return pos_type(target);
}

MemoryStreamBuf_cls::pos_type MemoryStreamBuf_cls::seekpos(pos_type pos, std::ios_base::openmode which) {
    return seekoff(off_type(pos), std::ios_base::beg, which);
}
