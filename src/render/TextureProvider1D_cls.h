// The 1D textures of tables: colour curves (1025 RGBA entries) and the like, one texture per
// owner. The owner uploads its table whenever it changes and releases the texture when it goes.
// Tables are kept as 32-bit floats, so a curve keeps its values above 1 and its fine steps.
// GL thread only.
#pragma once

#include "GLObject_cls.h"
#include "TextureProviderBase_cls.h"

#include <map>

class TextureProvider1D_cls : public TextureProviderBase_cls {
public:
    TextureProvider1D_cls() = default;
    ~TextureProvider1D_cls() override = default;

    // Makes or refreshes the owner's texture from count RGBA quadruples and returns it; 0 when the
    // table is empty or null (the owner's texture, if any, is left as it was). The texture
    // clamps at both ends and filters linearly between entries.
    GLuint Upload(const void* pOwner, const float* pRGBA, int count);
    // The owner's texture, 0 if it has none.
    GLuint Find(const void* pOwner) const;
    int GetNumEntry(const void* pOwner) const;
    // Deletes the owner's texture.
    void Release(const void* pOwner);
    size_t GetNumTexture() const { return mMapEntry.size(); }

private:
    struct Entry_cls {
        GLTexture_cls mTexture;
        int mCount = 0;
    };
    static size_t Bytes(int count) { return static_cast<size_t>(count) * 4 * sizeof(float); }

    std::map<const void*, Entry_cls> mMapEntry;
};
