#include "TextDraw_cls.h"

#include "FontTable_cls.h"
#include "GlyphAtlas_cls.h"
#include "Material_cls.h"
#include "ParamGroup_cls.h"
#include "TextObj_cls.h"
#include "TextProp_cls.h"

#include <wx/log.h>
#include <wx/tokenzr.h>

#include <epoxy/gl.h>

#include <cmath>
#include <vector>

TextDraw_cls::TextDraw_cls() = default;
TextDraw_cls::~TextDraw_cls() = default;

GlyphAtlas_cls* TextDraw_cls::GetAtlas(const wxString& strFont) {
    const wxString strAsked = strFont == "None" ? wxString() : strFont;
    auto itFile = mMapFontFile.find(strAsked);
    if (itFile == mMapFontFile.end()) {
        wxString strFile = FontTable_cls::GetStrFontFile(strAsked);
        if (strFile.empty() && !strAsked.empty()) {
            wxLogWarning("Text: font %s not found; the default font is used", strAsked);
            strFile = FontTable_cls::GetStrFontFile();
        }
        if (!strFile.empty() && !mMapAtlas.count(strFile)) {
            auto pAtlas = std::make_unique<GlyphAtlas_cls>(strFile);
            if (!pAtlas->IsValid()) {
                wxLogWarning("Text: font %s: %s; the default font is used", strFile, pAtlas->GetStrError());
                const wxString strDefault = FontTable_cls::GetStrFontFile();
                strFile = strDefault == strFile ? wxString() : strDefault;
                if (!strFile.empty() && !mMapAtlas.count(strFile))
                    mMapAtlas[strFile] = std::make_unique<GlyphAtlas_cls>(strFile);
            } else {
                mMapAtlas[strFile] = std::move(pAtlas);
            }
        }
        // Remembered either way, so a bad font is reported once and not looked for every frame.
        itFile = mMapFontFile.emplace(strAsked, strFile).first;
    }
    auto it = mMapAtlas.find(itFile->second);
    return it != mMapAtlas.end() && it->second->IsValid() ? it->second.get() : nullptr;
}

double TextDraw_cls::GetLineWidth(const wxString& strLine, double size, const wxString& strFont) {
    GlyphAtlas_cls* pAtlas = GetAtlas(strFont);
    if (!pAtlas)
        return 0.0;
    double width = 0.0;
    unsigned int previous = 0;
    for (wxUniChar ch : strLine) {
        const unsigned int code = ch.GetValue();
        if (previous != 0)
            width += pAtlas->GetKerning(previous, code);
        if (const GlyphAtlas_cls::Glyph_cls* pGlyph = pAtlas->GetGlyph(code))
            width += pGlyph->mAdvance;
        previous = code;
    }
    return width * size / GlyphAtlas_cls::msPixelSize;
}

double TextDraw_cls::GetAscender(double size, const wxString& strFont) {
    GlyphAtlas_cls* pAtlas = GetAtlas(strFont);
    return pAtlas ? pAtlas->GetAscender() * size / GlyphAtlas_cls::msPixelSize : 0.0;
}

double TextDraw_cls::GetDescender(double size, const wxString& strFont) {
    GlyphAtlas_cls* pAtlas = GetAtlas(strFont);
    return pAtlas ? pAtlas->GetDescender() * size / GlyphAtlas_cls::msPixelSize : 0.0;
}

void TextDraw_cls::Draw(const wxString& strText, double x, double y, double size, const float* pRGBA,
                        int align, double lineSpacing, const wxString& strFont) {
    GlyphAtlas_cls* pAtlas = GetAtlas(strFont);
    if (!pAtlas || strText.empty() || !(size > 0.0))
        return;
    const double scale = size / GlyphAtlas_cls::msPixelSize;
    // Glyphs are rendered before drawing starts: rendering binds the atlas and changes pixel
    // storage, which must not happen between glBegin and glEnd.
    const wxArrayString astrLine = wxSplit(strText, '\n', '\0');
    std::vector<double> vWidth;
    for (const wxString& strLine : astrLine)
        vWidth.push_back(GetLineWidth(strLine, size, strFont));

    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    if (program != 0)
        glUseProgram(0); // the fixed pipeline draws text; the caller's program is put back below
    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_TEXTURE_BIT);
    glActiveTexture(GL_TEXTURE0);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, pAtlas->GetTexture());
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    if (pRGBA)
        glColor4fv(pRGBA);
    else
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glNormal3f(0.0f, 0.0f, 1.0f);
    glBegin(GL_QUADS);
    for (size_t line = 0; line < astrLine.size(); ++line) {
        double penX = x;
        if (align == 1)
            penX -= vWidth[line] * 0.5;
        else if (align == 2)
            penX -= vWidth[line];
        const double baseY = y - static_cast<double>(line) * size * lineSpacing;
        unsigned int previous = 0;
        for (wxUniChar ch : astrLine[line]) {
            const unsigned int code = ch.GetValue();
            if (previous != 0)
                penX += pAtlas->GetKerning(previous, code) * scale;
            previous = code;
            const GlyphAtlas_cls::Glyph_cls* pGlyph = pAtlas->GetGlyph(code);
            if (!pGlyph)
                continue;
            if (pGlyph->mWidth > 0) {
                const double x0 = penX + pGlyph->mLeft * scale, x1 = x0 + pGlyph->mWidth * scale;
                const double y1 = baseY + pGlyph->mTop * scale, y0 = y1 - pGlyph->mHeight * scale;
                glTexCoord2f(pGlyph->mU0, pGlyph->mV1);
                glVertex2d(x0, y0);
                glTexCoord2f(pGlyph->mU1, pGlyph->mV1);
                glVertex2d(x1, y0);
                glTexCoord2f(pGlyph->mU1, pGlyph->mV0);
                glVertex2d(x1, y1);
                glTexCoord2f(pGlyph->mU0, pGlyph->mV0);
                glVertex2d(x0, y1);
            }
            penX += pGlyph->mAdvance * scale;
        }
    }
    glEnd();
    glBindTexture(GL_TEXTURE_2D, 0);
    glPopAttrib();
    if (program != 0)
        glUseProgram(static_cast<GLuint>(program));
}

void TextDraw_cls::DrawTextObj(TextObj_cls& obj, const double* pMatrix16, double t) {
    if (!obj.mCValid.GetBodyBOOL())
        return;
    TextProp_cls* pProp = obj.GetPCTextProp();
    if (!pProp)
        return;
    auto value = [&](const char* strGroup, double fallback) {
        ParamGroup_cls* pGroup = pProp->GetPCParamGroup(strGroup);
        const std::vector<double> v =
            pGroup ? pGroup->GetVInterpolatedValue(t, true, nullptr, false) : std::vector<double>();
        return v.empty() || !std::isfinite(v[0]) ? fallback : v[0];
    };
    float rgba[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    if (Material_cls* pMaterial = obj.GetPCMaterial()) {
        const std::vector<double> v = pMaterial->GetColor("Diffuse", t);
        for (size_t k = 0; k < 4 && k < v.size(); ++k)
            rgba[k] = static_cast<float>(v[k]);
    }
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    if (pMatrix16)
        glMultMatrixd(pMatrix16);
    if (pProp->mCBillboard.GetBodyBOOL()) {
        // Keep each axis's length, drop its direction: the text lies in the screen plane.
        double m[16];
        glGetDoublev(GL_MODELVIEW_MATRIX, m);
        for (int c = 0; c < 3; ++c) {
            const double length =
                std::sqrt(m[c * 4] * m[c * 4] + m[c * 4 + 1] * m[c * 4 + 1] + m[c * 4 + 2] * m[c * 4 + 2]);
            for (int r = 0; r < 3; ++r)
                m[c * 4 + r] = r == c ? length : 0.0;
        }
        glLoadMatrixd(m);
    }
    Draw(pProp->GetStrText(), 0.0, 0.0, value("FontSize", 1.0), rgba,
         static_cast<int>(pProp->mCAlign.GetBodyINT()), value("LineSpacing", 1.2),
         pProp->mCFont.GetBodySTR());
    glPopMatrix();
}
