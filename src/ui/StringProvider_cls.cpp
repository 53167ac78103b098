#include "StringProvider_cls.h"

#include "ClassProvider_cls.h"
#include "UiStringTable_cls.h"

#include <wx/intl.h>

wxArrayString StringProvider_cls::GetAstrList(const wxString& strList) const {
    wxArrayString a;
    for (const wxString& str : UiStringTable_cls::GetList(strList))
        a.Add(GetStr(str));
    return a;
}

wxString StringProvider_cls::GetStr(const wxString& strText) const {
    return strText.empty() ? strText : wxGetTranslation(strText);
}

wxArrayString StringProvider_cls::GetAstrListOf(const wxString& strList) {
    static const StringProvider_cls sCFallback;
    return (GpCStringProvider ? *GpCStringProvider : sCFallback).GetAstrList(strList);
}

wxString StringProvider_cls::GetStrOf(const wxString& strText) {
    static const StringProvider_cls sCFallback;
    return (GpCStringProvider ? *GpCStringProvider : sCFallback).GetStr(strText);
}
