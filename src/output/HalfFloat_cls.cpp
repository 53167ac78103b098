#include "HalfFloat_cls.h"

#include <cstring>

uint16_t HalfFloat_cls::SingleToHalf(float value) {
    uint32_t bits;
    memcpy(&bits, &value, sizeof bits);
    const uint32_t sign = (bits >> 16) & 0x8000u;
    const uint32_t exponent = (bits >> 23) & 0xffu;
    uint32_t mantissa = bits & 0x7fffffu;
    if (exponent == 0xffu) // infinity stays infinity, a NaN stays a (quiet) NaN
        return static_cast<uint16_t>(sign | 0x7c00u | (mantissa ? 0x200u | (mantissa >> 13) : 0u));
    const int halfExponent = static_cast<int>(exponent) - 127 + 15;
    if (halfExponent >= 0x1f) // too large: infinity
        return static_cast<uint16_t>(sign | 0x7c00u);
    if (halfExponent <= 0) {
        // A subnormal half, or zero: shift the mantissa with its hidden bit into place and round.
        if (halfExponent < -10)
            return static_cast<uint16_t>(sign);
        mantissa |= 0x800000u;
        const int shift = 14 - halfExponent;
        uint32_t half = mantissa >> shift;
        const uint32_t rest = mantissa & ((1u << shift) - 1u);
        const uint32_t halfway = 1u << (shift - 1);
        if (rest > halfway || (rest == halfway && (half & 1u)))
            ++half;
        return static_cast<uint16_t>(sign | half);
    }
    uint32_t half = (static_cast<uint32_t>(halfExponent) << 10) | (mantissa >> 13);
    const uint32_t rest = mantissa & 0x1fffu;
    // A carry out of the mantissa steps the exponent, up to infinity: the arithmetic is right.
    if (rest > 0x1000u || (rest == 0x1000u && (half & 1u)))
        ++half;
    return static_cast<uint16_t>(sign | half);
}

float HalfFloat_cls::HalfToSingle(uint16_t half) {
    const uint32_t sign = static_cast<uint32_t>(half & 0x8000u) << 16;
    const uint32_t exponent = (half >> 10) & 0x1fu;
    uint32_t mantissa = half & 0x3ffu;
    uint32_t bits;
    if (exponent == 0x1fu) {
        bits = sign | 0x7f800000u | (mantissa << 13);
    } else if (exponent != 0) {
        bits = sign | ((exponent - 15 + 127) << 23) | (mantissa << 13);
    } else if (mantissa == 0) {
        bits = sign;
    } else {
        // Subnormal: normalise it.
        int e = -1;
        do {
            ++e;
            mantissa <<= 1;
        } while (!(mantissa & 0x400u));
        bits = sign | (static_cast<uint32_t>(127 - 15 - e) << 23) | ((mantissa & 0x3ffu) << 13);
    }
    float value;
    memcpy(&value, &bits, sizeof value);
    return value;
}

void HalfFloat_cls::Singles2Half(void* pDst, void* pSrc, int count) {
    uint16_t* pOut = static_cast<uint16_t*>(pDst);
    const float* pIn = static_cast<const float*>(pSrc);
    for (int i = 0; i < count; ++i)
        pOut[i] = SingleToHalf(pIn[i]);
}

void HalfFloat_cls::Half2Singles(void* pDst, void* pSrc, int count) {
    float* pOut = static_cast<float*>(pDst);
    const uint16_t* pIn = static_cast<const uint16_t*>(pSrc);
    for (int i = 0; i < count; ++i)
        pOut[i] = HalfToSingle(pIn[i]);
}
