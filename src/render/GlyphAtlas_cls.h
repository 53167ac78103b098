// The glyphs of one font file, rendered by FreeType at a fixed pixel size into one texture, so
// that text draws with no display at all (GLUT's bitmap fonts need an X server). Glyphs are
// rendered when first asked for and packed in rows; the texture holds coverage as alpha, so
// drawing it with GL_MODULATE takes the colour from the current colour. GL thread only.
#pragma once

#include "GLObject_cls.h"

#include <wx/string.h>

#include <map>

struct FT_LibraryRec_;
struct FT_FaceRec_;

class GlyphAtlas_cls {
public:
    // Pixels per em that glyphs are rendered at; drawing scales them to the size asked for.
    static constexpr int msPixelSize = 48;
    static constexpr int msAtlasSize = 1024;

    struct Glyph_cls {
        float mAdvance = 0.0f;   // pen movement, pixels
        int mLeft = 0, mTop = 0; // bitmap origin from the pen on the baseline, y up
        int mWidth = 0, mHeight = 0;
        float mU0 = 0, mV0 = 0, mU1 = 0, mV1 = 0; // atlas rectangle, v0 at the glyph's top row
    };

    // Opens the font file; a file FreeType cannot read leaves the atlas invalid, with the
    // reason in GetStrError().
    explicit GlyphAtlas_cls(const wxString& strFontFile);
    ~GlyphAtlas_cls();
    GlyphAtlas_cls(const GlyphAtlas_cls&) = delete;
    GlyphAtlas_cls& operator=(const GlyphAtlas_cls&) = delete;

    bool IsValid() const { return mpFace != nullptr; }
    const wxString& GetStrError() const { return mStrError; }
    // The glyph of a code point, rendered on first use; the font's missing-glyph box for code
    // points it lacks. Null when the atlas is full or the font is not valid.
    const Glyph_cls* GetGlyph(unsigned int codePoint);
    // Extra pen movement between two characters, pixels (0 for fonts without kerning).
    float GetKerning(unsigned int left, unsigned int right) const;
    // Ascender above and descender below the baseline (positive), pixels.
    float GetAscender() const { return mAscender; }
    float GetDescender() const { return mDescender; }
    GLuint GetTexture() const { return mTexture.Get(); }

    // The file of a font: strFont itself when it is a file, otherwise what fontconfig finds
    // for it as a pattern ("DejaVu Sans:bold"); empty or "None" ask for the default sans-serif.
    // Empty when fontconfig finds nothing.
    static wxString FindFontFile(const wxString& strFont);

private:
    FT_LibraryRec_* mpLibrary = nullptr;
    FT_FaceRec_* mpFace = nullptr;
    wxString mStrError;
    GLTexture_cls mTexture;
    float mAscender = 0.0f;
    float mDescender = 0.0f;
    int mPenX = 1, mPenY = 1, mRowHeight = 0; // next free place; one texel of gap around glyphs
    bool mbFull = false;
    std::map<unsigned int, Glyph_cls> mMapGlyph;
};
