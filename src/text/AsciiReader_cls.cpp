#include "AsciiReader_cls.h"

#include <wx/filename.h>
#include <wx/log.h>
#include <wx/stdpaths.h>
#include <wx/textfile.h>

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int AsciiReader_cls::IsCharExist(const char* s, char c, char stop) {
    for (; *s && *s != stop; ++s)
        if (*s == c)
            return 1;
    return 0;
}

void AsciiReader_cls::SearchChar(const char** p, char c, const char* end) {
    const char* q = *p;
    while (q && q < end) {
        if (*q == c) {
            *p = q;
            return;
        }
        ++q;
    }
    *p = nullptr;
}

int AsciiReader_cls::SearchTagStr(const char** p, const char* tag, const char* end, bool advance) {
    const char* q = *p;
    if (!q)
        return 0;
    size_t n = 0;
    while (q + n < end && n < 512 && q[n] != ' ' && q[n] != '\n' && q[n] != '\0')
        ++n;
    if (strlen(tag) != n || strncmp(q, tag, n) != 0)
        return 0;
    if (advance)
        *p = q + n;
    return 1;
}

void AsciiReader_cls::GetStrUptoLineEnd(const char** p, char* out, const char* end) {
    const char* q = *p;
    size_t n = 0;
    while (q < end && *q != '\n' && *q != '\0')
        out[n++] = *q++;
    out[n] = '\0';
    *p = (q < end && *q == '\n') ? q : nullptr;
}

void AsciiReader_cls::SkipToSeparator(const char** p, char delim) {
    const char* q = *p;
    while (*q && *q != ' ' && *q != delim && *q != '\n')
        ++q;
    *p = q;
}

// The separator is searched from where the number began, not from where it ended: a blank at
// the cursor ends the column at once. So columns are separated by exactly one blank, and two
// blanks in a row shift the columns; this is how the program reads tables, kept on purpose.
float AsciiReader_cls::ReadFloat(const char** p, char delim) {
    double v = strtod(*p, nullptr);
    SkipToSeparator(p, delim);
    return static_cast<float>(v);
}

int AsciiReader_cls::ReadInt(const char** p, char delim) {
    long v = strtol(*p, nullptr, 10);
    SkipToSeparator(p, delim);
    return static_cast<int>(v);
}

long long AsciiReader_cls::ReadLongLong(const char** p, char delim) {
    long long v = strtoll(*p, nullptr, 10);
    SkipToSeparator(p, delim);
    return v;
}

bool AsciiReader_cls::ReadBool(const char** p, char delim) {
    return ReadInt(p, delim) != 0;
}

char* AsciiReader_cls::GetPNewBufferFromFile(const wxString& strPath, long& size) {
    size = 0;
    FILE* fp = fopen(strPath.fn_str(), "rb");
    if (!fp)
        return nullptr;
    // A directory opens too and claims a size of 2^63 - 1: only regular files are read.
    struct stat st;
    if (fstat(fileno(fp), &st) != 0 || !S_ISREG(st.st_mode) || fseek(fp, 0, SEEK_END) != 0) {
        fclose(fp);
        return nullptr;
    }
    long len = ftell(fp);
    if (len < 0) {
        fclose(fp);
        return nullptr;
    }
    rewind(fp);
    char* buf = new char[len + 1];
    size = static_cast<long>(fread(buf, 1, len, fp));
    buf[size] = '\0';
    fclose(fp);
    return buf;
}

bool AsciiReader_cls::GetStrFullFromFile(const wxString& strName, wxString& strOut, bool bReport) {
    wxString strDir = wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath();
    wxFileName fn(strName);
    if (fn.IsRelative())
        fn.MakeAbsolute(strDir);
    wxTextFile file;
    if (!fn.FileExists() || !file.Open(fn.GetFullPath())) {
        if (bReport)
            wxLogError("Cannot read %s", fn.GetFullPath());
        return false;
    }
    strOut.clear();
    for (size_t i = 0; i < file.GetLineCount(); ++i) {
        if (i > 0)
            strOut += "\n";
        strOut += file.GetLine(i);
    }
    return true;
}
