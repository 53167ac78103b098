#include "FontTable_cls.h"

#include "GlyphAtlas_cls.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>

wxString FontTable_cls::msStrFamily = "sans-serif";

namespace {

// Row heights and font sizes of the seven steps.
const int kHeight[FontTable_cls::msSizeMax + 1] = {13, 16, 19, 22, 25, 29, 34};
const int kPointSize[FontTable_cls::msSizeMax + 1] = {7, 8, 10, 11, 13, 15, 18};

} // namespace

int FontTable_cls::GetHeight(int size) {
    return kHeight[std::clamp(size, 0, msSizeMax)];
}

int FontTable_cls::GetPointSize(int size) {
    return kPointSize[std::clamp(size, 0, msSizeMax)];
}

const wxString& FontTable_cls::GetStrFamily() {
    return msStrFamily;
}

void FontTable_cls::SetStrFamily(const wxString& strFamily) {
    msStrFamily = strFamily.empty() || strFamily == "None" ? wxString("sans-serif") : strFamily;
}

wxString FontTable_cls::GetStrFontFile(const wxString& strFont) {
    return GlyphAtlas_cls::FindFontFile(strFont.empty() || strFont == "None" ? msStrFamily : strFont);
}

wxString FontTable_cls::GetStrFaceName() {
    return MatchFont(msStrFamily, FC_FAMILY);
}

wxString FontTable_cls::MatchFont(const wxString& strPattern, const char* pProperty) {
    if (!FcInit())
        return wxString();
    FcPattern* pPattern = FcNameParse(reinterpret_cast<const FcChar8*>(strPattern.utf8_str().data()));
    if (!pPattern)
        return wxString();
    FcConfigSubstitute(nullptr, pPattern, FcMatchPattern);
    FcDefaultSubstitute(pPattern);
    wxString strValue;
    FcResult result = FcResultNoMatch;
    if (FcPattern* pMatch = FcFontMatch(nullptr, pPattern, &result)) {
        FcChar8* pText = nullptr;
        if (FcPatternGetString(pMatch, pProperty, 0, &pText) == FcResultMatch && pText)
            strValue = wxString::FromUTF8(reinterpret_cast<const char*>(pText));
        FcPatternDestroy(pMatch);
    }
    FcPatternDestroy(pPattern);
    return strValue;
}
