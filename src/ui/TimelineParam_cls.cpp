#include "TimelineParam_cls.h"

#include "ClassProvider_cls.h"
#include "DataSequence_cls.h"
#include "ParamGroup_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"

#include <wx/dc.h>
#include <wx/intl.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>

namespace {

const wxColour kBack(245, 245, 245);
const wxColour kNameBack(228, 228, 228);
const wxColour kKey(40, 40, 40);
const wxColour kKeySelected(255, 140, 0);
const wxColour kButtonOn(40, 90, 170);
const wxColour kButtonOff(150, 150, 150);

wxColour RowColour(const TLRow_cls& row) {
    switch (row.mKind) {
    case TLRow_cls::ROW_OBJECT:
        return row.mbSelected ? wxColour(214, 222, 240) : wxColour(200, 204, 214);
    case TLRow_cls::ROW_ATTRIBUTE:
    case TLRow_cls::ROW_FILTER:
        return row.mbSelected ? wxColour(228, 228, 210) : wxColour(214, 212, 200);
    case TLRow_cls::ROW_FILTER_HEAD:
        return wxColour(196, 210, 196);
    case TLRow_cls::ROW_SEQUENCE:
        return wxColour(222, 222, 214);
    case TLRow_cls::ROW_PARAM: {
        const auto& c = row.mbSelected ? row.mpCParam->mColorRowSelected : row.mpCParam->mColorRow;
        return wxColour(c[0], c[1], c[2]);
    }
    default:
        return row.mbSelected ? wxColour(236, 236, 236) : wxColour(220, 220, 220);
    }
}

// The outline of one key mark, appended to a batch: a square for a step, an octagon (as round as
// a circle at this size) for a Hermite key, a diamond otherwise.
void AppendKeyMark(std::vector<wxPoint>& vPoint, std::vector<int>& vCount, int x, int yMid, int half,
                   long type) {
    if (type == 0) {
        const int s = half - 1;
        vPoint.insert(vPoint.end(),
                      {{x - s, yMid - s}, {x + s, yMid - s}, {x + s, yMid + s}, {x - s, yMid + s}});
        vCount.push_back(4);
    } else if (type == 2) {
        const int c = half * 2 / 5;
        vPoint.insert(vPoint.end(), {{x - c, yMid - half},
                                     {x + c, yMid - half},
                                     {x + half, yMid - c},
                                     {x + half, yMid + c},
                                     {x + c, yMid + half},
                                     {x - c, yMid + half},
                                     {x - half, yMid + c},
                                     {x - half, yMid - c}});
        vCount.push_back(8);
    } else {
        vPoint.insert(vPoint.end(), {{x, yMid - half}, {x + half, yMid}, {x, yMid + half}, {x - half, yMid}});
        vCount.push_back(4);
    }
}

// Draws a row's marks in two fills, the outline colour at full size and the fill colour one pixel
// smaller inside it: a row may hold hundreds of marks, and filling is far cheaper than stroking.
void DrawKeyMarks(wxDC& dc, const std::vector<TLMark_cls>& vMark, int yMid, int half, bool bSelected,
                  std::vector<wxPoint>& vPoint, std::vector<int>& vCount) {
    if (vMark.empty())
        return;
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (int layer = 0; layer < 2; ++layer) {
        vPoint.clear();
        vCount.clear();
        for (const TLMark_cls& mark : vMark)
            AppendKeyMark(vPoint, vCount, mark.mX, yMid, half - layer, mark.mType);
        dc.SetBrush(wxBrush(layer == 0 ? kKey : bSelected ? kKeySelected : wxColour(250, 250, 250)));
        if (vCount.size() == 1)
            dc.DrawPolygon(vCount[0], vPoint.data());
        else
            dc.DrawPolyPolygon(static_cast<int>(vCount.size()), vCount.data(), vPoint.data(), 0, 0,
                               wxWINDING_RULE);
    }
}

void DrawKeyMark(wxDC& dc, int x, int yMid, int half, long type, bool bSelected) {
    std::vector<wxPoint> vPoint;
    std::vector<int> vCount;
    DrawKeyMarks(dc, {TLMark_cls{x, type}}, yMid, half, bSelected, vPoint, vCount);
}

// A group's bookmark: a pennant on a pole, filled when the group is marked, a faint outline where
// a mark can be set.
void DrawKilroyFlag(wxDC& dc, int cx, int y, int h, bool bMarked) {
    const int top = y + std::max(h / 5, 2);
    const int bottom = y + h - std::max(h / 5, 2);
    const int s = std::max((bottom - top) / 2, 3);
    const wxColour colour = bMarked ? wxColour(200, 40, 40) : kButtonOff;
    dc.SetPen(wxPen(colour));
    dc.DrawLine(cx - s / 2, top, cx - s / 2, bottom + 1);
    dc.SetBrush(bMarked ? wxBrush(colour) : *wxTRANSPARENT_BRUSH);
    const wxPoint flag[3] = {{cx - s / 2, top}, {cx + s, top + s / 2}, {cx - s / 2, top + s}};
    dc.DrawPolygon(3, flag);
}

} // namespace

TimelineParam_cls::TimelineParam_cls(wxWindow* pParent, TimelineConf_cls* pConf,
                                     std::function<void()> funcUpdateOwner)
    : TimelineBase_cls(pParent, TL_KIND_PARAM, pConf, std::move(funcUpdateOwner), "TimelineParam"),
      mCRows(pConf) {
    mCRows.mFuncUpdateOwner = mFuncUpdateOwner;
    Bind(wxEVT_MOUSEWHEEL, &TimelineParam_cls::OnMouseWheel, this);
    Bind(wxEVT_LEFT_DCLICK, &TimelineParam_cls::OnDoubleClick, this);
    Bind(wxEVT_MENU, &TimelineParam_cls::OnRename, this, ID_TL_RENAME);
    Bind(wxEVT_MENU, &TimelineParam_cls::OnInsertKey, this, ID_TL_INSERT_KEY);
    SetMinSize(wxSize(-1, 60));
}

void TimelineParam_cls::UpdateDisplay(wxDC& dc) {
    const wxSize size = GetClientSize();
    mCRows.UpdateGeometry(size.x);
    mCRows.UpdateRows();
    // Rows that shrank below the scroll offset pull it back; the owner's scroll bar follows.
    const int rowsHeight = static_cast<int>(mCRows.mVCRow.size()) * mCRows.GetLineHeight();
    mCRows.mScrollY = std::clamp(mCRows.mScrollY, 0, std::max(rowsHeight - size.y, 0));
    if (mFuncScrolled)
        mFuncScrolled(rowsHeight, size.y, mCRows.mScrollY);
    // The geometry of the base draws the current time and the work area over the key area.
    static_cast<TLPanelGeom_cls&>(*this) = mCRows;
    dc.SetBackground(wxBrush(kBack));
    dc.Clear();
    const int sash = mpCConf->GetSashX();
    dc.SetClippingRegion(sash, 0, size.x - sash, size.y);
    DrawWorkingArea(dc, size.y);
    dc.DestroyClippingRegion();
    wxFont font = GetFont();
    font.SetPointSize(mpCConf->GetFontPointSize());
    dc.SetFont(font);
    // The button glyphs are single letters: one measure serves them all, and the row names.
    mGlyphSize = dc.GetTextExtent("L");
    const int h = mCRows.GetLineHeight();
    int y = mCRows.GetYPos(0);
    for (const TLRow_cls& row : mCRows.mVCRow) {
        if (y + h < 0) {
            y += h;
            continue;
        }
        if (y > size.y)
            break;
        DrawItem(dc, row, y);
    }
    dc.SetPen(wxPen(wxColour(120, 120, 120)));
    dc.DrawLine(sash, 0, sash, size.y);
    dc.SetClippingRegion(sash, 0, size.x - sash, size.y);
    DrawCurrentTime(dc, size.y);
    // A region selection in progress.
    if (mCRows.mbRegionArmed) {
        dc.SetPen(wxPen(wxColour(40, 90, 170), 1, wxPENSTYLE_SHORT_DASH));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(std::min(mCRows.mPressX, mCRows.mDragX), std::min(mCRows.mPressY, mCRows.mDragY),
                         std::abs(mCRows.mDragX - mCRows.mPressX) + 1,
                         std::abs(mCRows.mDragY - mCRows.mPressY) + 1);
    }
    dc.DestroyClippingRegion();
}

void TimelineParam_cls::DrawItem(wxDC& dc, const TLRow_cls& row, int& y) {
    const int h = mCRows.GetLineHeight();
    const int sash = mpCConf->GetSashX();
    const int index = static_cast<int>(&row - mCRows.mVCRow.data());
    const int width = GetClientSize().x;
    // The name column.
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(RowColour(row)));
    dc.DrawRectangle(0, y, sash, h - 1);
    if (row.mbOpenable) {
        const TLRect_cls r = mCRows.GetButtonRect(index, TLParamLogic_cls::HIT_OPEN);
        const int cx = r.mX + r.mW / 2, cy = y + h / 2, s = std::max(h / 4, 3);
        dc.SetBrush(wxBrush(wxColour(80, 80, 80)));
        if (row.mbOpen) {
            const wxPoint down[3] = {{cx - s, cy - s / 2}, {cx + s, cy - s / 2}, {cx, cy + s / 2 + 1}};
            dc.DrawPolygon(3, down);
        } else {
            const wxPoint right[3] = {{cx - s / 2, cy - s}, {cx - s / 2, cy + s}, {cx + s / 2 + 1, cy}};
            dc.DrawPolygon(3, right);
        }
    }
    dc.SetTextForeground(row.mKind == TLRow_cls::ROW_OBJECT || row.mKind == TLRow_cls::ROW_FILTER_HEAD
                             ? wxColour(0, 0, 0)
                             : wxColour(50, 50, 60));
    const int textX = row.mDepth * TLParamLogic_cls::msIndent + TLParamLogic_cls::msIndent + 4;
    dc.DrawText(row.mStrName, textX, y + (h - mGlyphSize.y) / 2);
    // The row's buttons.
    auto button = [&](int hit, const char* pGlyph, bool bOn) {
        const TLRect_cls r = mCRows.GetButtonRect(index, hit);
        if (r.mW <= 0)
            return;
        dc.SetTextForeground(bOn ? kButtonOn : kButtonOff);
        dc.DrawText(pGlyph, r.mX + (r.mW - mGlyphSize.x) / 2, y + (h - mGlyphSize.y) / 2);
    };
    if (row.mpCGroup && row.mKind == TLRow_cls::ROW_GROUP) {
        button(TLParamLogic_cls::HIT_LINK, "L", row.mpCGroup->IsLinked());
        button(TLParamLogic_cls::HIT_EXPR, "E", row.mpCGroup->IsUseExpr());
        // Bright when the group has an expression text.
        button(TLParamLogic_cls::HIT_TEXT, "{", !row.mpCGroup->mCExpression.GetBodySTR().empty());
        const TLRect_cls rMark = mCRows.GetButtonRect(index, TLParamLogic_cls::HIT_KILROY);
        if (rMark.mW > 0)
            DrawKilroyFlag(dc, rMark.mX + rMark.mW / 2, y, h, row.mpCGroup->IsKilroy());
    }
    if (row.mpCParam)
        button(TLParamLogic_cls::HIT_TIMEDEPEND, "T", row.mpCParam->IsTimeDepend());
    button(TLParamLogic_cls::HIT_KEY_PREV, "<", true);
    button(TLParamLogic_cls::HIT_KEY_NEXT, ">", true);
    const TLRect_cls rKey = mCRows.GetButtonRect(index, TLParamLogic_cls::HIT_KEY_TOGGLE);
    if (rKey.mW > 0) {
        // Filled when the row has a key at the current time.
        const double now = GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT(false) : 0.0;
        bool bKey = false;
        for (Parameter_cls* p : row.mVPCParam)
            bKey = bKey || p->IsKeyExist(now);
        DrawKeyMark(dc, rKey.mX + rKey.mW / 2, y + h / 2, std::min(h / 3, 5), 1, bKey);
    }
    // The key area: the row's bottom line, then its steps or its keys.
    dc.SetPen(wxPen(wxColour(215, 215, 215)));
    dc.DrawLine(sash, y + h - 1, width, y + h - 1);
    if (row.mKind == TLRow_cls::ROW_SEQUENCE)
        DrawSequence(dc, row, y);
    else
        DrawKeys(dc, row, y);
    y += h;
}

void TimelineParam_cls::DrawSequence(wxDC& dc, const TLRow_cls& row, int y) {
    if (!GpCTimeCtrl || !row.mpCSeq)
        return;
    const int h = mCRows.GetLineHeight();
    const int frameMax = GpCTimeCtrl->GetFrameMax();
    if (frameMax <= 0)
        return;
    const auto& c = row.mpCSeq->mTimelineColor;
    const auto& hi = row.mpCSeq->mTimelineColorHi;
    // On disk: the sequence's colour; read: its second colour; being read: between the two.
    const wxColour colours[4] = {wxColour(245, 245, 245), wxColour(c[0], c[1], c[2]),
                                 wxColour((c[0] + hi[0]) / 2, (c[1] + hi[1]) / 2, (c[2] + hi[2]) / 2),
                                 wxColour(hi[0], hi[1], hi[2])};
    const int first = mpCConf->GetAAMin();
    const int last = mpCConf->GetAAMax();
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (int f = first; f <= last; ++f) {
        const int x0 = mCRows.GetDevCoordFromN(static_cast<double>(f) / frameMax, 0);
        const int x1 = mCRows.GetDevCoordFromN(static_cast<double>(f + 1) / frameMax, 0);
        const int state = row.mpCSeq->GetStepState(TLParamLogic_cls::GetSequenceIndex(row, f));
        dc.SetBrush(wxBrush(colours[state]));
        dc.DrawRectangle(x0, y + 2, std::max(x1 - x0 - (x1 - x0 > 3 ? 1 : 0), 1), h - 5);
    }
}

void TimelineParam_cls::DrawKeys(wxDC& dc, const TLRow_cls& row, int y) {
    const int h = mCRows.GetLineHeight();
    const int half = std::max(std::min(h / 3, TLParamLogic_cls::msKeyHalf + 1), 2);
    const int yMid = y + h / 2;
    const int sash = mpCConf->GetSashX();
    const int width = GetClientSize().x;
    const double delta = mCRows.GetDraggedKeyDelta();
    // One entry per pixel column of the key area: the marks of all channels of the row fall into
    // it, so a row of many dense channels costs one mark per column at most.
    const int columns = width - sash + 2 * half;
    if (columns <= 0)
        return;
    mVMarkColumn.assign(columns, 0);
    // The keys in the shown range, found by bisection: the rows of a zoomed timeline walk few keys.
    const double pixel =
        (mCRows.mT1 - mCRows.mT0) / std::max(width - mCRows.mLeftMargin - mCRows.mRightMargin, 1);
    const double tFirst = mCRows.GetNFromDevCoord(sash - half, 0) - pixel - std::abs(delta);
    const double tLast = mCRows.GetNFromDevCoord(width + half, 0) + pixel + std::abs(delta);
    for (Parameter_cls* p : row.mVPCParam) {
        const std::vector<KeyFrame_cls>& vKey = p->mVCKey;
        auto it = std::lower_bound(vKey.begin(), vKey.end(), tFirst,
                                   [](const KeyFrame_cls& key, double t) { return key.mX < t; });
        for (; it != vKey.end() && it->mX <= tLast; ++it) {
            const double x = it->mbSelected ? it->mX + delta : it->mX;
            const int column = mCRows.GetDevCoordFromN(x, 0) - sash + half;
            if (column < 0 || column >= columns)
                continue;
            // Type in the low bits (0 step, 1 linear, 2 Hermite), selection above; a selected mark wins.
            const unsigned char code = static_cast<unsigned char>(1 +
                                                                  (it->mType == 0   ? 0
                                                                   : it->mType == 2 ? 2
                                                                                    : 1) +
                                                                  (it->mbSelected ? 4 : 0));
            if (code > mVMarkColumn[column])
                mVMarkColumn[column] = code;
        }
    }
    // Marks that would overlap the last one drawn are left out (they stand under it); the selected
    // ones are drawn last, on top.
    for (int pass = 0; pass < 2; ++pass) {
        mVMark.clear();
        int last = -1000000;
        for (int column = 0; column < columns; ++column) {
            const unsigned char code = mVMarkColumn[column];
            if (code == 0 || ((code & 4) != 0) != (pass == 1) || column - last < 2 * half)
                continue;
            last = column;
            mVMark.push_back({column + sash - half, (code - 1) & 3});
        }
        DrawKeyMarks(dc, mVMark, yMid, half, pass == 1, mVMarkPoint, mVMarkCount);
    }
}

void TimelineParam_cls::OnMouse(wxMouseEvent& event) {
    mCRows.UpdateGeometry(GetClientSize().x);
    if (event.LeftDown() && event.AltDown()) {
        mCRows.UpdateRows();
        if (mCRows.ChangeKeyTypeAt(event.GetX(), event.GetY(), event.ShiftDown(), event.ControlDown()))
            Refresh();
    } else if (event.LeftDown()) {
        mCRows.UpdateRows();
        mCRows.PressRows(event.GetX(), event.GetY(), event.ShiftDown(), event.ControlDown());
        if (!HasCapture())
            CaptureMouse();
        Refresh();
    } else if (event.Dragging()) {
        const bool bSash = mCRows.mbSashDrag;
        if (mCRows.DragRows(event.GetX(), event.GetY())) {
            if (bSash && mFuncUpdateOwner)
                mFuncUpdateOwner();
            Refresh();
        }
    } else if (event.LeftUp()) {
        const bool bSash = mCRows.mbSashDrag;
        mCRows.ReleaseRows(event.GetX(), event.GetY(), event.ShiftDown());
        if (HasCapture())
            ReleaseMouse();
        if (bSash && mFuncUpdateOwner)
            mFuncUpdateOwner();
        Refresh();
    }
}

void TimelineParam_cls::OnMouseWheel(wxMouseEvent& event) {
    const int h = mCRows.GetLineHeight();
    const int rows = static_cast<int>(mCRows.mVCRow.size());
    const int maxScroll = std::max(rows * h - GetClientSize().y, 0);
    const int step = event.GetWheelRotation() > 0 ? -3 * h : 3 * h;
    const int scroll = std::clamp(mCRows.mScrollY + step, 0, maxScroll);
    if (scroll != mCRows.mScrollY) {
        mCRows.mScrollY = scroll;
        Refresh();
    }
}

// ---- the in-place value box -------------------------------------------------------------------

void TimelineParam_cls::ConstructValueTextCtrl(int row) {
    CloseValueTextCtrl();
    if (row < 0 || row >= static_cast<int>(mCRows.mVCRow.size()) || !mCRows.mVCRow[row].mpCParam)
        return;
    const double value = mCRows.mVCRow[row].mpCParam->GetCurrentValue();
    OpenTextCtrl(row, wxString::Format("%g", value), wxPoint(mpCConf->GetSashX() + 4, mCRows.GetYPos(row)));
}

void TimelineParam_cls::ConstructRenameTextCtrl(int row) {
    CloseValueTextCtrl();
    if (row < 0 || row >= static_cast<int>(mCRows.mVCRow.size()) ||
        mCRows.mVCRow[row].mKind != TLRow_cls::ROW_OBJECT)
        return;
    const TLRow_cls& r = mCRows.mVCRow[row];
    OpenTextCtrl(row, r.mStrName,
                 wxPoint(TLParamLogic_cls::msIndent * (r.mDepth + 1) + TLParamLogic_cls::msButton,
                         mCRows.GetYPos(row)));
    mbRename = true;
}

void TimelineParam_cls::ConstructEaseTextCtrl() {
    CloseValueTextCtrl();
    OpenTextCtrl(-1, wxString::Format("%g", TLParamLogic_cls::GetEaseOfFirstSelected(1.0)),
                 wxPoint(mpCConf->GetSashX() + 4, 0));
    mpCValueText->SetToolTip(_("Ease factor of the selected keys"));
    mbEase = true;
}

void TimelineParam_cls::OpenTextCtrl(int row, const wxString& strText, const wxPoint& point) {
    mValueRow = row;
    mbRename = false;
    mbEase = false;
    mpCValueText = new wxTextCtrl(this, wxID_ANY, strText, point, wxSize(120, -1), wxTE_PROCESS_ENTER);
    mpCValueText->Bind(wxEVT_TEXT_ENTER, &TimelineParam_cls::OnValueInput, this);
    mpCValueText->Bind(wxEVT_KEY_DOWN, &TimelineParam_cls::OnValueKey, this);
    mpCValueText->Bind(wxEVT_KILL_FOCUS, &TimelineParam_cls::OnValueFocus, this);
    mpCValueText->SetFocus();
    mpCValueText->SelectAll();
}

void TimelineParam_cls::CloseValueTextCtrl() {
    if (!mpCValueText)
        return;
    // The box may be closing from inside its own handler: it goes once that has returned.
    wxTextCtrl* pText = mpCValueText;
    mpCValueText = nullptr;
    mValueRow = -1;
    pText->Unbind(wxEVT_KILL_FOCUS, &TimelineParam_cls::OnValueFocus, this);
    pText->Hide();
    // A child of this strip: if the strip goes first, the box goes with it and the call is dropped.
    CallAfter([pText] { pText->Destroy(); });
}

void TimelineParam_cls::OnValueInput(wxCommandEvent&) {
    if (!mpCValueText)
        return;
    if (mbEase)
        TLParamLogic_cls::ProcessEaseInput(mpCValueText->GetValue());
    else if (mbRename)
        mCRows.RenameRow(mValueRow, mpCValueText->GetValue());
    else
        mCRows.ProcessInput(mValueRow, mpCValueText->GetValue());
    CloseValueTextCtrl();
}

void TimelineParam_cls::OnRename(wxCommandEvent&) {
    ConstructRenameTextCtrl(mMenuRow);
}

void TimelineParam_cls::OnInsertKey(wxCommandEvent&) {
    if (mMenuRow >= 0 && mMenuRow < static_cast<int>(mCRows.mVCRow.size())) {
        mCRows.ToggleKey(mMenuRow, true);
        Refresh();
    }
}

void TimelineParam_cls::OnValueKey(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE)
        CloseValueTextCtrl();
    else
        event.Skip();
}

void TimelineParam_cls::OnValueFocus(wxFocusEvent& event) {
    CloseValueTextCtrl();
    event.Skip();
}

void TimelineParam_cls::OnDoubleClick(wxMouseEvent& event) {
    mCRows.UpdateGeometry(GetClientSize().x);
    mCRows.UpdateRows();
    ConstructValueTextCtrl(mCRows.GetIndex(event.GetY()));
}
