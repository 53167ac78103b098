// String operations on tag lines of the form Head::Rest or Key=Value.
#pragma once

#include <wx/string.h>

// Mixin of string operations; holds no data.
class Parser_cls {
public:
    // Returns the text before the first strSep and leaves the text after it in strLine.
    // With no separator the whole line is returned and strLine becomes empty.
    static wxString PopStrItemFromStrLine(wxString& strLine, const wxString& strSep);
    // The same from the right: returns the text after the last separator.
    static wxString PopLastItemFromStrLine(wxString& strLine, const wxString& strSep);
    // Index of the last separator, -1 if none.
    static int FindLast(const wxString& strLine, const wxString& strSep);
    // Text after the last separator, the whole line if there is none.
    static wxString GetLastItem(const wxString& strLine, const wxString& strSep);
};
