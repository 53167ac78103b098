#include "TextureProvider_cls.h"

#include "SliceImage_cls.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>

wxString TextureProvider_cls::Key(const wxString& strPath) {
    // The same file named two ways ("a/../t.png", "./t.png") is one texture.
    wxFileName fn(strPath);
    fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE | wxPATH_NORM_TILDE);
    return fn.GetFullPath();
}

GLuint TextureProvider_cls::GetDefaultTexture() {
    if (!mDefaultTexture) {
        mDefaultTexture = GLTexture_cls::Make();
        const unsigned char white[4] = {255, 255, 255, 255};
        glBindTexture(GL_TEXTURE_2D, mDefaultTexture.Get());
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, white);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    return mDefaultTexture.Get();
}

bool TextureProvider_cls::LoadEntry(const wxString& strPath, Entry_cls& entry) {
    SlicePixels_cls pixels;
    pixels.mbColour = true;
    if (!wxFileName::FileExists(strPath)) {
        wxLogWarning("Texture %s: the file does not exist", strPath);
        return false;
    }
    if (!SliceImage_cls::Load(strPath, pixels)) {
        wxLogWarning("Texture %s: %s", strPath, pixels.mStrWhy);
        return false;
    }
    // Decoded rows run from the top; GL's first row is the bottom one, where t = 0.
    const size_t stride = static_cast<size_t>(pixels.mWidth) * 4;
    std::vector<unsigned char> vFlipped(pixels.mRGBA.size());
    for (int y = 0; y < pixels.mHeight; ++y)
        std::copy_n(pixels.RowRGBA(pixels.mHeight - 1 - y), stride, vFlipped.data() + y * stride);
    entry.mTexture = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, entry.mTexture.Get());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, pixels.mWidth, pixels.mHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 vFlipped.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glGenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glBindTexture(GL_TEXTURE_2D, 0);
    // Every level of the mipmap chain down to one texel.
    size_t bytes = 0;
    for (int w = pixels.mWidth, h = pixels.mHeight;; w = std::max(1, w / 2), h = std::max(1, h / 2)) {
        bytes += static_cast<size_t>(w) * h * 4;
        if (w == 1 && h == 1)
            break;
    }
    entry.mBytes = bytes;
    return true;
}

GLuint TextureProvider_cls::Acquire(const wxString& strPath) {
    const wxString strKey = Key(strPath);
    auto it = mMapEntry.find(strKey);
    if (it == mMapEntry.end()) {
        it = mMapEntry.emplace(strKey, Entry_cls()).first;
        if (LoadEntry(strKey, it->second))
            mUsedBytes += it->second.mBytes;
    }
    ++it->second.mReferenceCounter;
    return it->second.mTexture ? it->second.mTexture.Get() : GetDefaultTexture();
}

void TextureProvider_cls::Release(const wxString& strPath) {
    auto it = mMapEntry.find(Key(strPath));
    if (it == mMapEntry.end())
        return;
    if (--it->second.mReferenceCounter > 0)
        return;
    mUsedBytes -= it->second.mBytes;
    mMapEntry.erase(it);
}

GLuint TextureProvider_cls::Find(const wxString& strPath) const {
    auto it = mMapEntry.find(Key(strPath));
    if (it == mMapEntry.end())
        return 0;
    return it->second.mTexture ? it->second.mTexture.Get() : mDefaultTexture.Get();
}

int TextureProvider_cls::GetReferenceCount(const wxString& strPath) const {
    auto it = mMapEntry.find(Key(strPath));
    return it == mMapEntry.end() ? 0 : it->second.mReferenceCounter;
}
