// Reads the range text of file sequences: blocks delimited by "," and ranges a-b-c.
#pragma once

#include <wx/string.h>

class ParserNumeric_cls {
public:
    // Pops the text before the first ","; with no comma returns the whole and empties str.
    static wxString GetStringBlock(wxString* str);
    // First number of a range; a leading "-" belongs to the number.
    static wxString GetStrIni(wxString str);
    // Second number, "-" when there is none.
    static wxString GetStrFin(wxString str);
    // Third number (the increment), "1" when there is none.
    static wxString GetStrInc(wxString str);

private:
    // Splits a range into up to three numbers; a "-" at the start of a number is its sign.
    static int SplitRange(const wxString& str, wxString vStr[3]);
};
