// Scanning operations over raw char buffers, so particle tables parse without string objects.
#pragma once

#include <wx/string.h>

// Every scanning call works on a cursor into a buffer. A null cursor after a call means that
// nothing was found before the end of the buffer. No call allocates, except the two file readers.
class AsciiReader_cls {
public:
    // 1 if c occurs in s before the first stop character (or the end of the text), else 0.
    static int IsCharExist(const char* s, char c, char stop);
    // Moves the cursor to the next c before end; null when there is none.
    static void SearchChar(const char** p, char c, const char* end);
    // Compares the word at the cursor (up to the next blank, at most 512 bytes) with tag.
    // Returns 1 on a match; the cursor moves past the word only when advance is set and it matched.
    static int SearchTagStr(const char** p, const char* tag, const char* end, bool advance);
    // Copies up to the next newline into out (NUL-terminated) and moves the cursor to it.
    static void GetStrUptoLineEnd(const char** p, char* out, const char* end);

    // Parse a number at the cursor, then move to the next blank, delim or newline, searched from
    // where the number began (so a doubled blank shifts the columns).
    static float ReadFloat(const char** p, char delim);
    static int ReadInt(const char** p, char delim);
    static long long ReadLongLong(const char** p, char delim);
    static bool ReadBool(const char** p, char delim);

    // Reads a whole file into a new buffer that the caller deletes with delete[]; null on failure.
    // A zero byte is kept behind the data so the scanners can stop on it.
    static char* GetPNewBufferFromFile(const wxString& strPath, long& size);
    // Reads a text file (relative to the application directory) with lines joined by newline.
    static bool GetStrFullFromFile(const wxString& strName, wxString& strOut, bool bReport = false);

private:
    static void SkipToSeparator(const char** p, char delim);
};
