// Draws text with FreeType glyphs, with or without a display: frame messages in pixel
// coordinates, text objects in the scene. Fonts are found through fontconfig and each font file
// gets one glyph atlas for the life of this object. A font that cannot be found or read logs one
// line naming it and the default sans-serif font is used instead. One instance per GL context
// (the frame passes own it). GL thread only.
#pragma once

#include <wx/string.h>

#include <map>
#include <memory>

class GlyphAtlas_cls;
class TextObj_cls;

class TextDraw_cls {
public:
    TextDraw_cls();
    ~TextDraw_cls();
    TextDraw_cls(const TextDraw_cls&) = delete;
    TextDraw_cls& operator=(const TextDraw_cls&) = delete;

    // Draws the text in the current matrices, in the plane z = 0: (x, y) is the start of the
    // first line's baseline, size the height of an em in the same units, y up. Lines are split at
    // '\n' and each next one stands size * lineSpacing lower. align 0 puts each line's left end
    // at x, 1 its middle, 2 its right end. pRGBA is the colour (white when null); glyph edges
    // blend over what is drawn. strFont is a font file or a fontconfig pattern, empty or "None"
    // for the family of the shared font table. Attributes, the bound program and texture are restored
    // afterwards.
    void Draw(const wxString& strText, double x, double y, double size, const float* pRGBA, int align,
              double lineSpacing, const wxString& strFont = wxEmptyString);
    // The advance width of one line (no '\n') at the size, in the units of size.
    double GetLineWidth(const wxString& strLine, double size, const wxString& strFont = wxEmptyString);
    // Height above and depth below the baseline that glyphs of the font reach at the size.
    double GetAscender(double size, const wxString& strFont = wxEmptyString);
    double GetDescender(double size, const wxString& strFont = wxEmptyString);

    // Draws a text object at t: its text, font, size, line spacing and alignment from its
    // TextProp, its colour from its material's diffuse and alpha, in the current projection
    // and modelview with pMatrix16 (column major; null for none) multiplied on. A billboard text
    // keeps the position and scale but drops the rotation, so it faces the viewer. Nothing is
    // drawn when the object is not valid.
    void DrawTextObj(TextObj_cls& obj, const double* pMatrix16, double t);

private:
    // The atlas of the font; the default one when the font cannot be had. Null only when even
    // the default is missing.
    GlyphAtlas_cls* GetAtlas(const wxString& strFont);

    std::map<wxString, std::unique_ptr<GlyphAtlas_cls>> mMapAtlas; // by font file
    std::map<wxString, wxString> mMapFontFile;                     // font as asked -> its file
};
