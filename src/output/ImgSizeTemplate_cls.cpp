#include "ImgSizeTemplate_cls.h"

namespace {
struct Size_cls {
    int width, height;
};
// Entry 0 of each group stands for "Custom".
constexpr Size_cls kTable[ImgSizeTemplate_cls::msGroupNum][ImgSizeTemplate_cls::msEntryNum] = {
    {{0, 0}, {1024, 768}, {1600, 1200}, {1920, 1440}, {800, 600}, {640, 480}, {320, 240}},
    {{0, 0}, {1920, 1080}, {3840, 2160}, {7680, 4320}, {1366, 768}, {960, 540}, {640, 360}},
    {{0, 0}, {1024, 1024}, {1536, 1536}, {2048, 2048}, {4096, 4096}, {768, 768}, {512, 512}},
    {{0, 0}, {2048, 1024}, {3072, 1536}, {4096, 2048}, {1536, 768}, {1024, 512}, {512, 256}},
};

bool InTable(int group, int index) {
    return group >= 0 && group < ImgSizeTemplate_cls::msGroupNum && index >= 0 &&
           index < ImgSizeTemplate_cls::msEntryNum;
}
} // namespace

void ImgSizeTemplate_cls::GetGeometryFromIndex(int group, int index, long long& width, long long& height) {
    if (!InTable(group, index) || index == 0)
        return;
    width = kTable[group][index].width;
    height = kTable[group][index].height;
}

wxString ImgSizeTemplate_cls::GetStrGeom(int group, int index) {
    if (!InTable(group, index))
        return wxString();
    if (index == 0)
        return "Custom";
    return wxString::Format("%dx%d", kTable[group][index].width, kTable[group][index].height);
}
