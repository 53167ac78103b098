#include "StreamWrite_cls.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

void StreamWrite_cls::Copy(void* dst, const void* src, size_t bytes) {
#if defined(__SSE2__)
    char* d = static_cast<char*>(dst);
    const char* s = static_cast<const char*>(src);
    // Ordinary stores up to the first 16-byte boundary of dst, and for the tail below 16 bytes.
    size_t head = (16 - (reinterpret_cast<uintptr_t>(d) & 15)) & 15;
    if (head > bytes)
        head = bytes;
    std::memcpy(d, s, head);
    d += head;
    s += head;
    bytes -= head;
    for (; bytes >= 64; bytes -= 64, d += 64, s += 64) {
        const __m128i v0 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
        const __m128i v1 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16));
        const __m128i v2 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 32));
        const __m128i v3 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 48));
        _mm_stream_si128(reinterpret_cast<__m128i*>(d), v0);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + 16), v1);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + 32), v2);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + 48), v3);
    }
    for (; bytes >= 16; bytes -= 16, d += 16, s += 16)
        _mm_stream_si128(reinterpret_cast<__m128i*>(d), _mm_loadu_si128(reinterpret_cast<const __m128i*>(s)));
    std::memcpy(d, s, bytes);
#else
    std::memcpy(dst, src, bytes);
#endif
}

void StreamWrite_cls::Fence() {
#if defined(__SSE2__)
    _mm_sfence();
#endif
}
