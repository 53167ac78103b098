#include "UiStringTable_cls.h"

#include <map>

const std::vector<wxString>& UiStringTable_cls::GetList(const wxString& strName) {
    static const std::map<wxString, std::vector<wxString>> sMapLists = {
        {"Composite", {"Data", "Image"}},
        {"DefaultKey", {"Linear", "Hermite", "Hermite Ease", "Step", "Auto"}},
    };
    static const std::vector<wxString> sVEmpty;
    auto it = sMapLists.find(strName);
    return it == sMapLists.end() ? sVEmpty : it->second;
}

int UiStringTable_cls::FindInList(const wxString& strName, const wxString& strText) {
    const std::vector<wxString>& vStr = GetList(strName);
    for (size_t i = 0; i < vStr.size(); ++i)
        if (vStr[i] == strText)
            return static_cast<int>(i);
    return -1;
}
