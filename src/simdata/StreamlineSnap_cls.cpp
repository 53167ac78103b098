#include "StreamlineSnap_cls.h"

#include "UseGZ_cls.h"

#include <wx/log.h>

#include <cstdlib>

StreamlineSnap_cls::StreamlineSnap_cls(DataSequence_cls* pSequence, int index)
    : FileSnap_cls(pSequence, 3, index) {}

StreamlineSnap_cls::~StreamlineSnap_cls() {
    // The reader writes into the arrays of this class: it must end before they go.
    WaitReadingThread(3);
}

long long StreamlineSnap_cls::GetUsedMemoryByte() const {
    return static_cast<long long>(mOffsets.capacity() * sizeof(int) +
                                  (mXYZ.capacity() + mValue.capacity()) * sizeof(float));
}

wxString StreamlineSnap_cls::GetStrInfo() const {
    return wxString::Format("Streamline %d: %s\nLines: %d  Points: %d%s", mIndex, mReadFile, GetLineCount(),
                            GetPointCount(), HasValue() ? "  with values" : "");
}

void StreamlineSnap_cls::FreeArrays() {
    std::vector<int>().swap(mOffsets);
    std::vector<float>().swap(mXYZ);
    std::vector<float>().swap(mValue);
}

bool StreamlineSnap_cls::ParseText(const char* pText, size_t size, std::vector<int>& offsets,
                                   std::vector<float>& xyz, std::vector<float>& value, wxString& strWhy) {
    offsets.clear();
    xyz.clear();
    value.clear();
    int columns = 0; // fixed by the first row with data
    bool bInLine = false;
    int row = 0;
    const char* p = pText;
    const char* pEnd = pText + size;
    auto fail = [&](const wxString& str) {
        strWhy = wxString::Format("row %d: %s", row, str);
        offsets.clear();
        xyz.clear();
        value.clear();
        return false;
    };
    while (p < pEnd && *p) {
        ++row;
        const char* pRowEnd = p;
        while (pRowEnd < pEnd && *pRowEnd && *pRowEnd != '\n')
            ++pRowEnd;
        const bool bCut = pRowEnd >= pEnd || !*pRowEnd; // the file ends inside this row
        const char* pData = p;
        const char* pStop = pRowEnd;
        for (const char* q = p; q < pRowEnd; ++q)
            if (*q == '#') {
                pStop = q;
                break;
            }
        // The numbers of the row; strtof stops at the row's end because the text past it is
        // either a newline or the end of the buffer (which holds a zero behind the data).
        float v[5];
        int n = 0;
        const char* q = pData;
        while (true) {
            while (q < pStop && (*q == ' ' || *q == '\t' || *q == '\r' || *q == ','))
                ++q;
            if (q >= pStop)
                break;
            if (n == 5)
                return fail("more than 4 values");
            char* pNext = nullptr;
            v[n] = std::strtof(q, &pNext);
            if (pNext == q || pNext > pStop)
                return fail("a field that is not a number");
            ++n;
            q = pNext;
            if (q < pStop && *q != ' ' && *q != '\t' && *q != '\r' && *q != ',')
                return fail("a field that is not a number");
        }
        p = pRowEnd + (pRowEnd < pEnd && *pRowEnd == '\n' ? 1 : 0);
        const bool bCommentOnly = pStop != pRowEnd;
        if (n == 0) {
            // A blank row ends a line; a comment row does not.
            if (!bCommentOnly && bInLine) {
                offsets.push_back(static_cast<int>(xyz.size() / 3));
                bInLine = false;
            }
            continue;
        }
        if (columns == 0) {
            if (n != 3 && n != 4)
                return fail(wxString::Format("%d values where 3 or 4 were expected", n));
            columns = n;
        } else if (n != columns) {
            if (bCut)
                return fail(wxString::Format("the file ends inside a row (%d of %d values)", n, columns));
            return fail(wxString::Format("%d values where %d were expected", n, columns));
        }
        if (!bInLine) {
            if (offsets.empty())
                offsets.push_back(static_cast<int>(xyz.size() / 3));
            bInLine = true;
        }
        xyz.insert(xyz.end(), v, v + 3);
        if (columns == 4)
            value.push_back(v[3]);
    }
    if (bInLine)
        offsets.push_back(static_cast<int>(xyz.size() / 3));
    // offsets holds the start of the first line and the end of every line: starts and ends are
    // one array because a line starts where the one before ended.
    return true;
}

bool StreamlineSnap_cls::ReadFileInto(const wxString& strFile) {
    std::string text;
    if (!UseGZ_cls::CopyToString(&text, strFile)) {
        wxLogMessage("Streamline file %s cannot be read: no lines", strFile);
        return false;
    }
    wxString strWhy;
    if (!ParseText(text.data(), text.size(), mOffsets, mXYZ, mValue, strWhy)) {
        wxLogMessage("Streamline file %s is not in the stream-line layout (%s): no lines", strFile, strWhy);
        return false;
    }
    return true;
}
