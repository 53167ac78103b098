// The rows of the timeline: one per visible object, attribute, parameter group and parameter,
// the steps of data sequences and the scene filters under "Scene Filter". The name column shows
// each row's open/close arrow and toggles; the key area shows the key marks, the work area and
// the current time. The rows, their hit regions and what the mouse does are in the plain row
// logic; this window feeds it the mouse and draws its table. Main thread only.
#pragma once

#include "TLParamLogic_cls.h"
#include "TimelineBase_cls.h"

#include <vector>

class wxTextCtrl;

// One key mark to draw: its pixel and its key type.
class TLMark_cls {
public:
    int mX;
    long mType;
};

class TimelineParam_cls : public TimelineBase_cls {
public:
    TimelineParam_cls(wxWindow* pParent, TimelineConf_cls* pConf, std::function<void()> funcUpdateOwner);

    // Rebuilds the row table and draws it.
    void UpdateDisplay(wxDC& dc) override;
    // One row of each kind; y advances by the row height.
    void DrawItem(wxDC& dc, const TLRow_cls& row, int& y);
    void DrawSequence(wxDC& dc, const TLRow_cls& row, int y);
    void DrawKeys(wxDC& dc, const TLRow_cls& row, int y);

    // Opens the in-place value box on a channel row, holding its value at the current time.
    void ConstructValueTextCtrl(int row);
    wxTextCtrl* GetPCValueTextCtrl() const { return mpCValueText; }

    TLParamLogic_cls mCRows;

protected:
    void OnMouse(wxMouseEvent& event) override;
    void OnMouseWheel(wxMouseEvent& event);
    void OnDoubleClick(wxMouseEvent& event);
    // Enter takes the value; Escape or leaving the box drops it.
    void OnValueInput(wxCommandEvent& event);
    void OnValueKey(wxKeyEvent& event);
    void OnValueFocus(wxFocusEvent& event);
    void CloseValueTextCtrl();

private:
    // The marks of the row being drawn, one code per pixel column (kept to spare an allocation).
    std::vector<unsigned char> mVMarkColumn;
    std::vector<TLMark_cls> mVMark;
    wxSize mGlyphSize;
    wxTextCtrl* mpCValueText = nullptr; // a child window while the box is open
    int mValueRow = -1;
    std::vector<wxPoint> mVMarkPoint;
    std::vector<int> mVMarkCount;
};
