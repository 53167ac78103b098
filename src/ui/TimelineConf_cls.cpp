#include "TimelineConf_cls.h"

#include "FontProvider_cls.h"

#include <algorithm>

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
    return FontProvider_cls::GetHeight(GetFontSize());
}

int TimelineConf_cls::GetFontPointSize() const {
    return FontProvider_cls::GetPointSize(GetFontSize());
}
