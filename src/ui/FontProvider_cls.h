// The fonts of the panels: the row font and row height of the property pages and lists, and the
// legend font of the colour-curve and timeline labels. Built from the system's GUI font at its
// first use, so it needs the toolkit running; the legend font takes its face from the font table
// the GL text draws with, and the rows their heights from its size steps. Main thread only.
#pragma once

#include <wx/font.h>

class FontProvider_cls {
public:
    enum Font_enum { FONT_ROW, FONT_SMALL, FONT_LEGEND, FONT_COUNT };

    // Makes the fonts now rather than at their first use.
    static void InitializeStatic() { GetFont(FONT_ROW); }
    static const wxFont& GetFont(Font_enum kind);
    // The row height and point size of a size step 0 to 6 (the timeline's FontSize=); these need
    // no toolkit.
    static int GetHeight(int fontSize);
    static int GetPointSize(int fontSize);
    // The height of one row of a page: the row font's character height and a margin for the
    // control's frame, at least 20 pixels.
    static int GetRowHeight();
};
