#include "SequencePattern_cls.h"

namespace {

bool IsDigit(wxUniChar c) {
    return c >= '0' && c <= '9';
}

} // namespace

wxString SequencePattern_cls::GetStrPattern(const wxString& strPath) {
    // Both separators: a path typed on another system still splits at its last folder.
    const size_t slash = strPath.find_last_of("/\\");
    const size_t nameStart = slash == wxString::npos ? 0 : slash + 1;
    if (strPath.find('%', nameStart) != wxString::npos)
        return strPath;
    size_t end = strPath.length();
    while (end > nameStart && !IsDigit(strPath[end - 1]))
        --end;
    if (end == nameStart)
        return strPath;
    size_t begin = end;
    while (begin > nameStart && IsDigit(strPath[begin - 1]))
        --begin;
    const size_t width = end - begin;
    // A sequence field is at most nine wide; a longer run is left for the sequence to find.
    if (width > 9)
        return strPath;
    const wxString strField =
        (width > 1 && strPath[begin] == '0') ? wxString::Format("%%0%dd", static_cast<int>(width)) : "%d";
    return strPath.Left(begin) + strField + strPath.Mid(end);
}
