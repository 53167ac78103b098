// The entry lists of the window's choice controls, by list name: the data behind the string
// provider (StringProvider_cls), which adds the translation. The item value of an entry is its
// index. Any thread (read-only data).
#pragma once

#include <wx/string.h>

#include <vector>

class UiStringTable_cls {
public:
    // "Composite": how the images between two data frames are made; index 1 is "Image".
    // "DefaultKey": the interpolation of new keys, in the order of the "DefaultKey=" values.
    // The property pages' lists are named after the item they set ("CameraType", "BlendType",
    // "TargetType"). An unknown name gives an empty list.
    static const std::vector<wxString>& GetList(const wxString& strName);
    // The index of the text in the list, -1 when it is not there.
    static int FindInList(const wxString& strName, const wxString& strText);
};
