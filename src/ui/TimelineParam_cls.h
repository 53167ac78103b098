// The rows of the timeline: one per visible object, attribute, parameter group and parameter,
// the steps of data sequences and the scene filters under "Scene Filter". The name column shows
// each row's open/close arrow and toggles; the key area shows the key marks, the work area and
// the current time. The rows, their hit regions and what the mouse does are in the plain row
// logic; this window feeds it the mouse and draws its table. Main thread only.
#pragma once

#include "TLParamLogic_cls.h"
#include "TimelineBase_cls.h"

#include <functional>
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
    enum Id_enum { ID_TL_RENAME = 6055, ID_TL_INSERT_KEY = 6056 };

    TimelineParam_cls(wxWindow* pParent, TimelineConf_cls* pConf, std::function<void()> funcUpdateOwner);

    // Rebuilds the row table and draws it.
    void UpdateDisplay(wxDC& dc) override;
    // One row of each kind; y advances by the row height.
    void DrawItem(wxDC& dc, const TLRow_cls& row, int& y);
    void DrawSequence(wxDC& dc, const TLRow_cls& row, int y);
    void DrawKeys(wxDC& dc, const TLRow_cls& row, int y);

    // Opens the in-place value box on a channel row, holding its value at the current time.
    void ConstructValueTextCtrl(int row);
    // Opens the same box on an object row's name, to rename the object.
    void ConstructRenameTextCtrl(int row);
    // Opens the box over the first row for the ease factor of the selected keys, holding the
    // first selected key's.
    void ConstructEaseTextCtrl();
    wxTextCtrl* GetPCValueTextCtrl() const { return mpCValueText; }
    // The row a right click was on, for the items of the row menu; -1 for none.
    int mMenuRow = -1;
    // Told after each drawing: the height of all rows, of the strip, and the scroll offset.
    std::function<void(int rowsHeight, int viewHeight, int scrollY)> mFuncScrolled;
    void OnRename(wxCommandEvent& event);
    void OnInsertKey(wxCommandEvent& event);

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
    void OpenTextCtrl(int row, const wxString& strText, const wxPoint& point);

private:
    // The marks of the row being drawn, one code per pixel column (kept to spare an allocation).
    std::vector<unsigned char> mVMarkColumn;
    std::vector<TLMark_cls> mVMark;
    wxSize mGlyphSize;
    wxTextCtrl* mpCValueText = nullptr; // a child window while the box is open
    int mValueRow = -1;
    bool mbRename = false; // the open box holds a name, not a value
    bool mbEase = false;   // the open box holds the ease factor of the selected keys
    std::vector<wxPoint> mVMarkPoint;
    std::vector<int> mVMarkCount;
};
