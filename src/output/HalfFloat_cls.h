// Converters between 32-bit floats and IEEE 754 half floats with no tables, rounding to the
// nearest half (ties to even). Used for binary data and for half-float image files. Any thread.
#pragma once

#include <cstdint>

class HalfFloat_cls {
public:
    // count floats from pSrc (float) to pDst (uint16_t).
    static void Singles2Half(void* pDst, void* pSrc, int count);
    // count halves from pSrc (uint16_t) to pDst (float).
    static void Half2Singles(void* pDst, void* pSrc, int count);

    static uint16_t SingleToHalf(float value);
    static float HalfToSingle(uint16_t half);
};
