// The fixed table of image sizes of the render page: four aspect groups of seven entries, entry
// 0 of each being "Custom", which is not looked up. Any thread.
#pragma once

#include <wx/string.h>

class ImgSizeTemplate_cls {
public:
    static constexpr int msGroupNum = 4;
    static constexpr int msEntryNum = 7;

    // Leaves width and height untouched for entry 0 and for indices outside the table.
    static void GetGeometryFromIndex(int group, int index, long long& width, long long& height);
    // "1920x1080"; "Custom" for entry 0, empty outside the table.
    static wxString GetStrGeom(int group, int index);
};
