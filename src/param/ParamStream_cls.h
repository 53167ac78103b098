// Line reading for the block readers of this layer. A reader that meets a line that belongs to
// somebody else (a truncated block followed by the next one) gives it back to the stream, so
// the outer loop still sees it.
#pragma once

#include <wx/string.h>

#include <istream>

class ParamStream_cls {
public:
    // Reads one line; remembers where it started. False at the end of the stream.
    bool GetLine(std::wistream& stream, wxString& strLine);
    // Returns the last line read to the stream. False when the stream cannot seek back; the
    // line is then lost to the outer loop.
    bool PutBack(std::wistream& stream);
    // Splits off the head of a line at the first "::".
    static wxString PopHead(wxString& strLine);
    // head + "::" + rest, or head alone when rest is empty: the line as it stood.
    static wxString Join(const wxString& strHead, const wxString& strRest);

private:
    std::wistream::pos_type mPos = -1;
};
