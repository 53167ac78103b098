// The 2D textures that meshes, points and text name by file (PNG, JPEG or TIFF). Each file is
// read once and its texture shared: users hold a reference from Acquire until Release, and the
// texture is deleted when the last reference goes. A file that cannot be read logs one line
// naming it and its users get the default texture (one white texel, so a textured surface keeps
// its material colour); the failure is remembered, so the frame is not slowed by retries.
// GL thread only: textures are made and deleted in the current context.
#pragma once

#include "GLObject_cls.h"
#include "TextureProviderBase_cls.h"

#include <wx/string.h>

#include <map>

class TextureProvider_cls : public TextureProviderBase_cls {
public:
    TextureProvider_cls() = default;
    ~TextureProvider_cls() override = default;

    // The texture of the file, read on the first reference; the default texture when the file
    // cannot be read. The name stays valid until the matching Release.
    GLuint Acquire(const wxString& strPath);
    // Gives back one reference; the last one deletes the texture. Unknown paths are ignored.
    void Release(const wxString& strPath);
    // The texture of a file already acquired, without taking a reference; 0 when not held.
    GLuint Find(const wxString& strPath) const;
    // One white texel, made on first use and kept for the provider's life.
    GLuint GetDefaultTexture();

    int GetReferenceCount(const wxString& strPath) const;
    size_t GetNumTexture() const { return mMapEntry.size(); }

private:
    struct Entry_cls {
        GLTexture_cls mTexture; // empty when the file failed: users get the default
        int mReferenceCounter = 0;
        size_t mBytes = 0;
    };
    static wxString Key(const wxString& strPath);
    bool LoadEntry(const wxString& strPath, Entry_cls& entry);

    std::map<wxString, Entry_cls> mMapEntry;
    GLTexture_cls mDefaultTexture;
};
