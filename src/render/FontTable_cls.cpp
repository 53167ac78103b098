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
    if (!FcInit())
        return wxString();
    wxString strFace;
    FcPattern* pPattern = FcNameParse(reinterpret_cast<const FcChar8*>(msStrFamily.utf8_str().data()));
    if (!pPattern)
        return wxString();
    FcConfigSubstitute(nullptr, pPattern, FcMatchPattern);
    FcDefaultSubstitute(pPattern);
    FcResult result = FcResultNoMatch;
    if (FcPattern* pMatch = FcFontMatch(nullptr, pPattern, &result)) {
        FcChar8* pFamily = nullptr;
        if (FcPatternGetString(pMatch, FC_FAMILY, 0, &pFamily) == FcResultMatch && pFamily)
            strFace = wxString::FromUTF8(reinterpret_cast<const char*>(pFamily));
        FcPatternDestroy(pMatch);
    }
    FcPatternDestroy(pPattern);
    return strFace;
}
