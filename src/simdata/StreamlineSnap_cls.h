// One step of stream lines: every polyline of one file. The points of all lines lie one after
// another in mXYZ; line k holds the points mOffsets[k] .. mOffsets[k + 1] - 1. mValue holds one
// value per point when the file has a fourth column, and is empty otherwise.
//
// File layout (text, plain or gzip): one point per row "x y z" or "x y z value"; one or more
// blank rows end a line; "#" starts a comment that runs to the end of the row. Every row of a
// file has the same number of columns. A row with another count, a field that is not a number,
// or a file cut inside a row makes the whole file give no lines (one log line says where).
#pragma once

#include "FileSnap_cls.h"

#include <string>
#include <vector>

class StreamlineSnap_cls : public FileSnap_cls {
public:
    StreamlineSnap_cls(DataSequence_cls* pSequence, int index);
    ~StreamlineSnap_cls() override;

    int GetLineCount() const { return mOffsets.empty() ? 0 : static_cast<int>(mOffsets.size()) - 1; }
    int GetPointCount() const { return static_cast<int>(mXYZ.size() / 3); }
    int GetLinePointCount(int line) const { return mOffsets[line + 1] - mOffsets[line]; }
    bool HasValue() const { return !mValue.empty(); }
    long long GetUsedMemoryByte() const override;
    wxString GetStrInfo() const;

    // Parses the text of one file into the three arrays (cleared first). False, with the reason
    // in strWhy ("<row>: ..."), when the text is not a stream-line file; the arrays are then empty.
    static bool ParseText(const char* pText, size_t size, std::vector<int>& offsets, std::vector<float>& xyz,
                          std::vector<float>& value, wxString& strWhy);

    std::vector<int> mOffsets; // line starts, plus the end: one more than the line count
    std::vector<float> mXYZ;   // 3 per point
    std::vector<float> mValue; // 1 per point, or empty

protected:
    bool ReadFileInto(const wxString& strFile) override;
    void FreeArrays() override;
};
