// What the two texture providers share: the bytes their textures hold on the GPU, which the
// window shows as texture memory and the memory limit sums. GL thread only.
#pragma once

#include <cstddef>

class TextureProviderBase_cls {
public:
    TextureProviderBase_cls() = default;
    virtual ~TextureProviderBase_cls() = default;
    TextureProviderBase_cls(const TextureProviderBase_cls&) = delete;
    TextureProviderBase_cls& operator=(const TextureProviderBase_cls&) = delete;

    // Megabytes (2^20 bytes) of texture memory held by this provider.
    double GetUsedMemoryMB() const { return static_cast<double>(mUsedBytes) / (1024.0 * 1024.0); }
    size_t GetUsedMemoryBytes() const { return mUsedBytes; }

protected:
    size_t mUsedBytes = 0;
};
