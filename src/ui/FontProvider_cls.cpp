#include "FontProvider_cls.h"

#include "FontTable_cls.h"

#include <wx/settings.h>

#include <algorithm>
#include <array>

const wxFont& FontProvider_cls::GetFont(Font_enum kind) {
    static std::array<wxFont, FONT_COUNT> sFonts;
    static bool sbMade = false;
    if (!sbMade) {
        const wxFont base = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
        sFonts[FONT_ROW] = base;
        sFonts[FONT_SMALL] = base.Smaller();
        // The legend reads at a glance over pictures: a size up and bold, in the face of the
        // legend drawn into the pictures themselves.
        sFonts[FONT_LEGEND] = base.Larger().Bold();
        const wxString strFace = FontTable_cls::GetStrFaceName();
        if (!strFace.empty())
            sFonts[FONT_LEGEND].SetFaceName(strFace);
        sbMade = true;
    }
    return sFonts[std::clamp(static_cast<int>(kind), 0, FONT_COUNT - 1)];
}

int FontProvider_cls::GetHeight(int fontSize) {
    return FontTable_cls::GetHeight(fontSize);
}

int FontProvider_cls::GetPointSize(int fontSize) {
    return FontTable_cls::GetPointSize(fontSize);
}

int FontProvider_cls::GetRowHeight() {
    const wxFont& font = GetFont(FONT_ROW);
    const int pixels = font.GetPixelSize().GetHeight();
    return std::max(20, pixels + 10);
}
