// The fonts of the panels: the row font and row height of the property pages and lists, and the
// legend font of the colour-curve and timeline labels. Built from the system's GUI font at its
// first use, so it needs the toolkit running. Main thread only.
#pragma once

#include <wx/font.h>

class FontProvider_cls {
public:
    enum Font_enum { FONT_ROW, FONT_SMALL, FONT_LEGEND, FONT_COUNT };

    static const wxFont& GetFont(Font_enum kind);
    // The height of one row of a page: the row font's character height and a margin for the
    // control's frame, at least 20 pixels.
    static int GetRowHeight();
};
