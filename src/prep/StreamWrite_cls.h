// Writes of the per-frame arrays that bypass the cache. A frame of millions of particles is far larger
// than the cache and is not read again by the pass that writes it, so an ordinary store would first
// fetch every line it fills and then push out data that is still wanted. Workers gather a block of
// elements in a small local buffer and hand it over here.
#pragma once

#include <cstddef>

class StreamWrite_cls {
public:
    // Elements a worker gathers before it writes them out. Blocks begin at multiples of this in the
    // output, so that every block but a range's first starts on a 16-byte boundary of the arrays.
    static constexpr int kBlock = 512;

    // Copies bytes from src to dst; the aligned 16-byte pieces of dst go around the cache. dst and src
    // must not overlap. Any thread; what it wrote is seen by others only after Fence().
    static void Copy(void* dst, const void* src, size_t bytes);
    template <class T> static void CopyElements(T* dst, const T* src, size_t count) {
        Copy(dst, src, count * sizeof(T));
    }
    // Orders the writes of Copy before every later store of this thread, the finish flag included:
    // they are not ordered by the flag's release on their own.
    static void Fence();
};
