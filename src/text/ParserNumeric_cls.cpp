#include "ParserNumeric_cls.h"

wxString ParserNumeric_cls::GetStringBlock(wxString* str) {
    size_t pos = str->find(",");
    if (pos == wxString::npos) {
        wxString strAll = *str;
        str->clear();
        return strAll;
    }
    wxString strFirst = str->substr(0, pos);
    *str = str->substr(pos + 1);
    return strFirst;
}

int ParserNumeric_cls::SplitRange(const wxString& strIn, wxString vStr[3]) {
    wxString str = strIn;
    str.Trim(true).Trim(false);
    int count = 0;
    size_t i = 0;
    while (i < str.length() && count < 3) {
        wxString strNum;
        // A "-" that starts a number is its sign, not a separator.
        if (str[i] == '-') {
            strNum += '-';
            ++i;
        }
        while (i < str.length() && str[i] != '-')
            strNum += str[i++];
        strNum.Trim(true).Trim(false);
        vStr[count++] = strNum;
        if (i < str.length() && str[i] == '-')
            ++i; // the separator
    }
    return count;
}

wxString ParserNumeric_cls::GetStrIni(wxString str) {
    wxString vStr[3];
    if (SplitRange(str, vStr) < 1)
        return wxString();
    return vStr[0];
}

wxString ParserNumeric_cls::GetStrFin(wxString str) {
    wxString vStr[3];
    if (SplitRange(str, vStr) < 2)
        return "-";
    return vStr[1];
}

wxString ParserNumeric_cls::GetStrInc(wxString str) {
    wxString vStr[3];
    if (SplitRange(str, vStr) < 3)
        return "1";
    return vStr[2];
}
