// The choice of fonts that the window layer and the GL layers share: the family of the labels
// (a fontconfig pattern, which the GL text resolves to a font file for FreeType and the panels
// to a face name for their fonts) and the seven size steps of the rows, indexed 0 to 6 (the
// timeline's FontSize=). Plain tables and fontconfig look-ups: no GL, no windows. Main thread only.
#pragma once

#include <wx/string.h>

class FontTable_cls {
public:
    static constexpr int msSizeMax = 6;

    // The row height and the point size of a size step; steps outside 0 to 6 take the nearest.
    static int GetHeight(int size);
    static int GetPointSize(int size);

    // The family the labels and the legend draw in when they name none; "sans-serif" at first.
    static const wxString& GetStrFamily();
    static void SetStrFamily(const wxString& strFamily);
    // The file of a font: strFont as a file or fontconfig pattern, the family when it is empty
    // or "None". Empty when fontconfig finds nothing.
    static wxString GetStrFontFile(const wxString& strFont = wxString());
    // The face name fontconfig gives the family ("DejaVu Sans"), for the toolkit's fonts; empty
    // when it finds nothing.
    static wxString GetStrFaceName();
    // One property (FC_FILE, FC_FAMILY) of the font fontconfig matches to the pattern; empty when
    // it finds none.
    static wxString MatchFont(const wxString& strPattern, const char* pProperty);

private:
    static wxString msStrFamily;
};
