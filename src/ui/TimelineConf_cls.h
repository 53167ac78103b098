// The shared state of one timeline, which the panel passes to its strips: the list "TimeLine"
// (shown range, ruler mode, name column, row font, the optional columns) and, beside it, the
// time pressed by the last click and the update level of the running drag. A plain class.
// Main thread only.
#pragma once

#include "ConfListContainer_cls.h"

// What a running drag updates while the mouse moves.
enum TLUpdateLevel_enum {
    TL_UPDATE_IDLE = 0,
    TL_UPDATE_SLIDER = 1,
    TL_UPDATE_LOWER = 2,
    TL_UPDATE_UPPER = 3,
    TL_UPDATE_REGION = 4,
    TL_UPDATE_SLIDER_KIND4 = 5
};

class TimelineConf_cls : public ConfListContainer_cls {
public:
    // frameMax is the last frame shown at first ("AAMax=" as built).
    explicit TimelineConf_cls(int frameMax = 100);

    static constexpr int msFontSizeMax = 6;
    // The width of the name column when the list does not say.
    static constexpr int msDefaultSashX = 260;

    int GetAAMin() const { return static_cast<int>(mCAAMin.GetBodyINT()); }
    int GetAAMax() const { return static_cast<int>(mCAAMax.GetBodyINT()); }
    int GetFontSize() const { return static_cast<int>(mCFontSize.GetBodyINT()); }
    int GetSashX() const { return static_cast<int>(mCSashX.GetBodyINT()); }
    int GetTicMode() const { return static_cast<int>(mCTicMode.GetBodyINT()); }
    bool IsKilroy() const { return mCKilroy.GetBodyBOOL(); }
    bool IsTimeDepend() const { return mCTimeDepend.GetBodyBOOL(); }
    bool IsSelectOnly() const { return mCSelectOnly.GetBodyBOOL(); }

    // FontSize= plus d, kept within 0 to 6; true when it changed.
    bool Zoom(int d);
    // The row height and the point size of the row font at FontSize=.
    int GetLineHeight() const;
    int GetFontPointSize() const;
    // The number of ruler modes TicMode= steps through.
    static constexpr int msTicModeCount = 3;

    ConfItemINT_cls mCAAMin;
    ConfItemINT_cls mCAAMax;
    ConfItemINT_cls mCTicMode;
    ConfItemINT_cls mCSashX;
    ConfItemINT_cls mCFontSize;
    ConfItemBOOL_cls mCKilroy;
    ConfItemBOOL_cls mCTimeDepend;
    ConfItemBOOL_cls mCSelectOnly;

    double mPressedTime = 0.0;
    int mUpdateLevel = TL_UPDATE_IDLE;
};
