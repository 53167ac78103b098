#include "TimelineConf_cls.h"

#include <algorithm>

namespace {

// Row heights and font sizes of the seven zoom steps.
const int kLineHeight[TimelineConf_cls::msFontSizeMax + 1] = {13, 16, 19, 22, 25, 29, 34};
const int kPointSize[TimelineConf_cls::msFontSizeMax + 1] = {7, 8, 10, 11, 13, 15, 18};

} // namespace

TimelineConf_cls::TimelineConf_cls(int frameMax) {
    SetTag("TimeLine");
    Add(&mCAAMin, "AAMin=", "0");
    Add(&mCAAMax, "AAMax=", wxString::Format("%d", frameMax));
    Add(&mCTicMode, "TicMode=", "0");
    Add(&mCSashX, "SashX=", wxString::Format("%d", msDefaultSashX));
    Add(&mCFontSize, "FontSize=", "1");
    Add(&mCKilroy, "Kilroy=", "0");
    Add(&mCTimeDepend, "TimeDepend=", "0");
    Add(&mCSelectOnly, "SelectOnly=", "0");
}

bool TimelineConf_cls::Zoom(int d) {
    const int size = std::clamp(GetFontSize() + d, 0, msFontSizeMax);
    if (size == GetFontSize())
        return false;
    mCFontSize.SetBodyFromData(static_cast<long long>(size));
    return true;
}

int TimelineConf_cls::GetLineHeight() const {
    return kLineHeight[std::clamp(GetFontSize(), 0, msFontSizeMax)];
}

int TimelineConf_cls::GetFontPointSize() const {
    return kPointSize[std::clamp(GetFontSize(), 0, msFontSizeMax)];
}
