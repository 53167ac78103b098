// The timeline panel (type "TIMELINE"): the play strip with the frame boxes and the column
// switches, then the axis range bar, the ruler with the time slider and the work-area bar, each
// after a spacer that keeps them aligned with the key area of the rows below. Its list "TimeLine"
// goes into the panel's block of the layout. It repaints only when its name (or "ALL") is
// delivered by the panel updates. Main thread only.
#pragma once

#include "TimelineConf_cls.h"
#include "wxPanelEX.h"

class PlayCtrl_cls;
class TimelineAA_cls;
class TimelineParam_cls;
class TimelineTics_cls;
class TimelineWA_cls;
class wxSizerItem;
class wxScrollBar;
class wxScrollEvent;
class wxTextCtrl;

enum TimelineId_enum {
    ID_TL_TICS_MODE = 5100,
    ID_TL_KILROY = 5101,
    ID_TL_TIME_DEPEND = 5102,
    ID_TL_SELECT_ONLY = 5103,
    ID_TL_FRAME_CURRENT = 5158,
    ID_TL_FRAME_MAX = 5159,
    ID_TL_MENU_DELETE = 6029,
    ID_TL_MENU_ZOOM_IN = 6089,
    ID_TL_MENU_ZOOM_OUT = 6090,
    ID_TL_MENU_EXTRAPOLATE_ON = 6113,
    ID_TL_MENU_EXTRAPOLATE_OFF = 6114,
    ID_TL_MENU_VIEW = 6117,
    ID_TL_MENU_SELECT = 6118,
    ID_TL_MENU_CHANNEL = 6119,
    ID_TL_MENU_KEY = 6121,
    ID_TL_MENU_TIMELINE = 6123,
    ID_TL_MENU_DESELECT = 6154,
    ID_TL_MENU_TIME_DEPEND = 6159,
    ID_TL_MENU_SHY = 6160,
    ID_TL_MENU_TL_IN = 6161,
    ID_TL_MENU_TL_OUT = 6162,
    ID_TL_MENU_KEY_TYPE_FIRST = 6170, // 6170 - 6173: step, linear, Hermite, Hermite with ease
    ID_TL_MENU_KEY_EASE = 6174,       // the ease factor of the selected keys, as a number
    ID_TL_MENU_OPEN_MARKED = 6175     // opens the rows down to every marked group
};

class Timeline_cls : public wxPanelEX {
public:
    explicit Timeline_cls(SplittableWindow_cls* pOwner);

    // The width of the controls between the spacer and a bar: the spacers are SashX= minus this.
    static constexpr int msSideWidth = 136;

    // FontSize= plus d within 0 to 6, then the whole panel again.
    void Zoom(int d);
    // The shown range shrinks (d > 0) or grows by half around the current frame.
    void ZoomRange(int d);
    void UpdatePanels(const wxString& strName, bool bFull);
    // The frame boxes show the clock.
    void UpdateTextCtrls();

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;

    PlayCtrl_cls* GetPCPlayCtrl() const { return mpCPlayCtrl; }
    TimelineParam_cls* GetPCParam() const { return mpCParam; }
    TimelineAA_cls* GetPCAA() const { return mpCAA; }
    TimelineWA_cls* GetPCWA() const { return mpCWA; }
    TimelineTics_cls* GetPCTics() const { return mpCTics; }
    wxTextCtrl* GetPCFrameCurrent() const { return mpCFrameCurrent; }
    wxTextCtrl* GetPCFrameMax() const { return mpCFrameMax; }
    wxScrollBar* GetPCScroll() const { return mpCScroll; }

    // ---- handlers; tests call them as the events would ----
    void OnTicsMode(wxCommandEvent& event);
    void OnKilroy(wxCommandEvent& event);
    void OnTimeDepend(wxCommandEvent& event);
    void OnSelectOnly(wxCommandEvent& event);
    void OnFrame(wxCommandEvent& event);
    void OnMenuZoom(wxCommandEvent& event);
    void OnMenuTLIn(wxCommandEvent& event);
    void OnMenuTLOut(wxCommandEvent& event);
    void OnDeselect(wxCommandEvent& event);
    void OnMenuDelete(wxCommandEvent& event);
    void OnMenuExtrapolate(wxCommandEvent& event);
    // The selected keys' channels lose their time dependency (they keep their first key's value).
    void OnMenuTimeDepend(wxCommandEvent& event);
    // The selected objects become shy, or lose it.
    void OnMenuShy(wxCommandEvent& event);
    void OnMenuKeyType(wxCommandEvent& event);
    // Opens the ease box over the rows.
    void OnMenuKeyEase(wxCommandEvent& event);
    // Shows every marked group: the column goes on and the rows above them open.
    void OnMenuOpenMarked(wxCommandEvent& event);
    // The drop-down menus of the buttons "View", "Select", "Timeline", "Channel" and "Key", by
    // the button's id; null for another id.
    wxMenu* CreateDropMenu(int id);
    // Shows the drop-down menu of the button under it.
    void OnMenuDrop(wxCommandEvent& event);
    // The menu a right click on the rows shows: zoom, range, selection, extrapolation, delete.
    wxMenu* CreateRowMenu();
    void OnRowsRightDown(wxMouseEvent& event);
    void OnKeyDown(wxKeyEvent& event);
    void OnScroll(wxScrollEvent& event);

    TimelineConf_cls mCConf;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void SerializeSelf(wxString& strOut) override { mCConf.Serialize(strOut); }

private:
    void ToggleItem(ConfItemBOOL_cls& item);
    void RefreshStrips();

    // Child windows: the toolkit deletes them.
    PlayCtrl_cls* mpCPlayCtrl = nullptr;
    TimelineAA_cls* mpCAA = nullptr;
    TimelineTics_cls* mpCTics = nullptr;
    TimelineWA_cls* mpCWA = nullptr;
    TimelineParam_cls* mpCParam = nullptr;
    wxTextCtrl* mpCFrameCurrent = nullptr;
    wxTextCtrl* mpCFrameMax = nullptr;
    wxScrollBar* mpCScroll = nullptr; // beside the rows, in pixels of the rows' height
    // The spacers in front of the three bars; owned by their sizers.
    wxSizerItem* mpCSpacer[3] = {};
    int mLastSashX = -1;
};
