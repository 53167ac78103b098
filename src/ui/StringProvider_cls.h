// The texts of the window: the entry lists of the choice controls (from UiStringTable_cls) and
// single texts, each through the translation catalogue. The registry holds the one instance
// (GpCStringProvider); a window made before the services asks the static forms, which answer the
// same. Main thread (the catalogue is the toolkit's).
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

class StringProvider_cls {
public:
    // The list's entries translated, in item-value order; empty for an unknown list.
    wxArrayString GetAstrList(const wxString& strList) const;
    // The translated text.
    wxString GetStr(const wxString& strText) const;

    // Through the registered provider when there is one, else the same tables directly.
    static wxArrayString GetAstrListOf(const wxString& strList);
    static wxString GetStrOf(const wxString& strText);
};
