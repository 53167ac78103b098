// A slice file opened for reading and closed when this goes out of scope, whichever way a
// decoder leaves.
#pragma once

#include <wx/string.h>

#include <cstdio>

class SliceFile_cls {
public:
    explicit SliceFile_cls(const wxString& strPath) : mpFile(fopen(strPath.fn_str(), "rb")) {}
    ~SliceFile_cls() {
        if (mpFile)
            fclose(mpFile);
    }
    SliceFile_cls(const SliceFile_cls&) = delete;
    SliceFile_cls& operator=(const SliceFile_cls&) = delete;

    // Null when the file did not open.
    FILE* Get() const { return mpFile; }

private:
    FILE* mpFile;
};
