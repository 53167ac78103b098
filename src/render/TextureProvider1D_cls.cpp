#include "TextureProvider1D_cls.h"

GLuint TextureProvider1D_cls::Upload(const void* pOwner, const float* pRGBA, int count) {
    if (!pRGBA || count <= 0)
        return 0;
    Entry_cls& entry = mMapEntry[pOwner];
    const bool bNew = !entry.mTexture || entry.mCount != count;
    if (!entry.mTexture)
        entry.mTexture = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_1D, entry.mTexture.Get());
    if (bNew) {
        // Same size: the storage is kept and only the values change, as when a curve is edited.
        mUsedBytes -= Bytes(entry.mCount);
        glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA32F, count, 0, GL_RGBA, GL_FLOAT, pRGBA);
        glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        entry.mCount = count;
        mUsedBytes += Bytes(count);
    } else {
        glTexSubImage1D(GL_TEXTURE_1D, 0, 0, count, GL_RGBA, GL_FLOAT, pRGBA);
    }
    glBindTexture(GL_TEXTURE_1D, 0);
    return entry.mTexture.Get();
}

GLuint TextureProvider1D_cls::Find(const void* pOwner) const {
    auto it = mMapEntry.find(pOwner);
    return it == mMapEntry.end() ? 0 : it->second.mTexture.Get();
}

int TextureProvider1D_cls::GetNumEntry(const void* pOwner) const {
    auto it = mMapEntry.find(pOwner);
    return it == mMapEntry.end() ? 0 : it->second.mCount;
}

void TextureProvider1D_cls::Release(const void* pOwner) {
    auto it = mMapEntry.find(pOwner);
    if (it == mMapEntry.end())
        return;
    mUsedBytes -= Bytes(it->second.mCount);
    mMapEntry.erase(it);
}
