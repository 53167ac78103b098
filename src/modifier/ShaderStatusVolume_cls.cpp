#include "ShaderStatusVolume_cls.h"

wxString ShaderStatusVolume_cls::ReplaceSection(const wxString& strText, const wxString& strBegin,
                                                const wxString& strEnd, const wxString& strBody) {
    const size_t begin = strText.find(strBegin);
    if (begin == wxString::npos)
        return strText;
    const size_t from = begin + strBegin.length();
    const size_t end = strText.find(strEnd, from);
    if (end == wxString::npos)
        return strText;
    return strText.substr(0, from) + "\n" + strBody + "\n" + strText.substr(end);
}
