#include "Parser_cls.h"

wxString Parser_cls::PopStrItemFromStrLine(wxString& strLine, const wxString& strSep) {
    size_t pos = strLine.find(strSep);
    if (pos == wxString::npos) {
        wxString strAll = strLine;
        strLine.clear();
        return strAll;
    }
    wxString strFirst = strLine.substr(0, pos);
    strLine = strLine.substr(pos + strSep.length());
    return strFirst;
}

wxString Parser_cls::PopLastItemFromStrLine(wxString& strLine, const wxString& strSep) {
    int pos = FindLast(strLine, strSep);
    if (pos < 0) {
        wxString strAll = strLine;
        strLine.clear();
        return strAll;
    }
    wxString strLast = strLine.substr(pos + strSep.length());
    strLine = strLine.substr(0, pos);
    return strLast;
}

int Parser_cls::FindLast(const wxString& strLine, const wxString& strSep) {
    if (strSep.empty())
        return -1;
    size_t pos = strLine.rfind(strSep);
    return pos == wxString::npos ? -1 : static_cast<int>(pos);
}

wxString Parser_cls::GetLastItem(const wxString& strLine, const wxString& strSep) {
    int pos = FindLast(strLine, strSep);
    if (pos < 0)
        return strLine;
    return strLine.substr(pos + strSep.length());
}
