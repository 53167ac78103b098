#include "GlyphAtlas_cls.h"

#include "FontTable_cls.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <vector>

GlyphAtlas_cls::GlyphAtlas_cls(const wxString& strFontFile) {
    if (FT_Init_FreeType(&mpLibrary) != 0) {
        mpLibrary = nullptr;
        mStrError = "FreeType cannot start";
        return;
    }
    if (FT_New_Face(mpLibrary, strFontFile.fn_str(), 0, &mpFace) != 0) {
        mpFace = nullptr;
        mStrError = "not a font FreeType can read";
        return;
    }
    if (FT_Set_Pixel_Sizes(mpFace, 0, msPixelSize) != 0) {
        FT_Done_Face(mpFace);
        mpFace = nullptr;
        mStrError = "the font has no size that can be set";
        return;
    }
    mAscender = static_cast<float>(mpFace->size->metrics.ascender) / 64.0f;
    mDescender = -static_cast<float>(mpFace->size->metrics.descender) / 64.0f;
    mTexture = GLTexture_cls::Make();
    // Zero coverage everywhere, so the gaps around glyphs filter to nothing.
    const std::vector<unsigned char> vZero(static_cast<size_t>(msAtlasSize) * msAtlasSize, 0);
    glBindTexture(GL_TEXTURE_2D, mTexture.Get());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, msAtlasSize, msAtlasSize, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 vZero.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

GlyphAtlas_cls::~GlyphAtlas_cls() {
    if (mpFace)
        FT_Done_Face(mpFace);
    if (mpLibrary)
        FT_Done_FreeType(mpLibrary);
}

const GlyphAtlas_cls::Glyph_cls* GlyphAtlas_cls::GetGlyph(unsigned int codePoint) {
    auto it = mMapGlyph.find(codePoint);
    if (it != mMapGlyph.end())
        return &it->second;
    if (!mpFace || mbFull)
        return nullptr;
    if (FT_Load_Char(mpFace, codePoint, FT_LOAD_RENDER) != 0)
        return nullptr;
    const FT_GlyphSlot pSlot = mpFace->glyph;
    const FT_Bitmap& bitmap = pSlot->bitmap;
    Glyph_cls glyph;
    glyph.mAdvance = static_cast<float>(pSlot->advance.x) / 64.0f;
    glyph.mLeft = pSlot->bitmap_left;
    glyph.mTop = pSlot->bitmap_top;
    glyph.mWidth = static_cast<int>(bitmap.width);
    glyph.mHeight = static_cast<int>(bitmap.rows);
    if (glyph.mWidth > 0 && glyph.mHeight > 0) {
        if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY || bitmap.pitch <= 0)
            return nullptr; // bitmap fonts in other modes are not drawn
        if (mPenX + glyph.mWidth + 1 > msAtlasSize) {
            mPenX = 1;
            mPenY += mRowHeight + 1;
            mRowHeight = 0;
        }
        if (mPenY + glyph.mHeight + 1 > msAtlasSize) {
            mbFull = true;
            wxLogWarning("Text: no room is left for more glyphs of %s", mpFace->family_name);
            return nullptr;
        }
        glBindTexture(GL_TEXTURE_2D, mTexture.Get());
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, bitmap.pitch);
        glTexSubImage2D(GL_TEXTURE_2D, 0, mPenX, mPenY, glyph.mWidth, glyph.mHeight, GL_ALPHA,
                        GL_UNSIGNED_BYTE, bitmap.buffer);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glBindTexture(GL_TEXTURE_2D, 0);
        const float size = static_cast<float>(msAtlasSize);
        glyph.mU0 = static_cast<float>(mPenX) / size;
        glyph.mV0 = static_cast<float>(mPenY) / size;
        glyph.mU1 = static_cast<float>(mPenX + glyph.mWidth) / size;
        glyph.mV1 = static_cast<float>(mPenY + glyph.mHeight) / size;
        mPenX += glyph.mWidth + 1;
        mRowHeight = std::max(mRowHeight, glyph.mHeight);
    }
    return &mMapGlyph.emplace(codePoint, glyph).first->second;
}

float GlyphAtlas_cls::GetKerning(unsigned int left, unsigned int right) const {
    if (!mpFace || !FT_HAS_KERNING(mpFace))
        return 0.0f;
    FT_Vector delta{0, 0};
    if (FT_Get_Kerning(mpFace, FT_Get_Char_Index(mpFace, left), FT_Get_Char_Index(mpFace, right),
                       FT_KERNING_DEFAULT, &delta) != 0)
        return 0.0f;
    return static_cast<float>(delta.x) / 64.0f;
}

wxString GlyphAtlas_cls::FindFontFile(const wxString& strFont) {
    if (!strFont.empty() && strFont != "None" && wxFileName::FileExists(strFont))
        return strFont;
    // A path names one file: fontconfig would match its letters to some other font.
    if (strFont.Contains("/"))
        return wxEmptyString;
    const wxString strPattern = strFont.empty() || strFont == "None" ? wxString("sans-serif") : strFont;
    return FontTable_cls::MatchFont(strPattern, FC_FILE);
}
