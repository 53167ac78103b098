// The rows of the timeline without the toolkit's windows: the walk over the scene and the filter
// chain that makes one row per visible object, attribute, parameter group and parameter (and the
// steps of a data sequence), the hit regions of the row buttons and of the key marks, and what a
// press and a release in the rows do: open and close rows, the row toggles, key selection, the
// move of the selected keys as one command, region selection and the drag of the name column's
// edge. The row strip draws what this table holds. Main thread only.
#pragma once

#include "TLDragLogic_cls.h"

#include <wx/string.h>

#include <set>
#include <vector>

class Attribute_cls;
class DataSequence_cls;
class ParamGroup_cls;
class Parameter_cls;
class SceneObj_cls;

class TLRow_cls {
public:
    enum Kind_enum {
        ROW_OBJECT,
        ROW_SEQUENCE,
        ROW_ATTRIBUTE,
        ROW_GROUP,
        ROW_PARAM,
        ROW_FILTER_HEAD,
        ROW_FILTER
    };

    int mKind = ROW_OBJECT;
    int mDepth = 0;
    wxString mStrName;
    wxString mStrTag;
    bool mbOpenable = false;
    bool mbOpen = false;
    bool mbSelected = false; // the object (or filter) of the row is selected
    // Not owned: the model's.
    SceneObj_cls* mpCObj = nullptr;
    Attribute_cls* mpCAttr = nullptr;
    ParamGroup_cls* mpCGroup = nullptr;
    Parameter_cls* mpCParam = nullptr;
    DataSequence_cls* mpCSeq = nullptr;
    // The channels whose keys the row shows: its own, or all of its groups' time-dependent ones;
    // and their tags, in the same order.
    std::vector<Parameter_cls*> mVPCParam;
    std::vector<wxString> mVStrParamTag;
};

// A key under the mouse: the channel and the key's index.
class TLKeyRef_cls {
public:
    Parameter_cls* mpCParam = nullptr;
    int mIndex = -1;
};

class TLParamLogic_cls : public TLDragLogic_cls {
public:
    explicit TLParamLogic_cls(TimelineConf_cls* pConf);

    // What a press in the name column hit.
    enum Hit_enum {
        HIT_NONE,
        HIT_SASH,
        HIT_OPEN,
        HIT_LINK,
        HIT_EXPR,
        HIT_TIMEDEPEND,
        HIT_KEY_PREV,
        HIT_KEY_NEXT,
        HIT_KEY_TOGGLE,
        HIT_TEXT,
        HIT_KILROY,
        HIT_NAME
    };
    // Half the width in pixels of a key mark.
    static constexpr int msKeyHalf = 4;
    // The width of a row button and the indent of one level.
    static constexpr int msButton = 14;
    static constexpr int msIndent = 12;
    // The narrowest name column the sash drag allows.
    static constexpr int msSashMin = 150;

    // ---- the row table ----
    // Rebuilds the rows from the scene and the filter chain (ClearDisplayedItems first).
    void UpdateRows();
    void ClearDisplayedItems() { mVCRow.clear(); }
    int GetLineHeight() const;
    // Row index and position; the rows start at the top of the strip, moved by the scroll offset.
    int GetIndex(int y) const;
    int GetYPos(int row) const;
    // A row button's rectangle; empty when the row has no such button.
    TLRect_cls GetButtonRect(int row, int hit) const;
    int HitButton(int row, int x, int y) const;
    // The key marks of a row under x: one per channel whose key lies within msKeyHalf pixels.
    std::vector<TLKeyRef_cls> HitKeys(int row, int x) const;
    // Points the key area of the geometry at the shown range; the key area starts at SashX=.
    void UpdateGeometry(int width);

    // ---- the actions of the rows ----
    void ToggleOpen(int row);
    void ToggleLink(int row);
    void ToggleExpr(int row);
    void ToggleTimeDepend(int row);
    // Opens a group row's expression in the text editor.
    void PushText(int row);
    // Opens the rows above every marked group of the scene and the filters, so that each shows;
    // the number of marked groups.
    int OpenMarkedRows();
    // A group row's bookmark goes on or off through the group's "Kilroy=" item, undoable.
    void ToggleKilroy(int row);
    // The time goes to the neighbouring key of the row (direction 1 next, -1 previous).
    void MoveKey(int direction, int row);
    // Adds a key at the current time, or removes the one there (unless bInsertOnly).
    void ToggleKey(int row, bool bInsertOnly = false);
    // An object row's object takes the name through the rename command; false for another row,
    // an empty or unchanged name.
    bool RenameRow(int row, const wxString& strText);
    // The text of the in-place value box of a channel row: a number, or arithmetic such as "2*3",
    // set as the channel's value at the current time through its command. False when the row is
    // no channel or the text no number.
    bool ProcessInput(int row, const wxString& strText);
    // The row's object (or filter) becomes selected.
    void SelectRow(int row, bool bAdditive, bool bToggle);

    // ---- the mouse on the rows ----
    // Press: the sash, the buttons, then the key marks, then the row itself; a press on a key
    // arms the key move, a press on empty key area arms a region selection.
    void PressRows(int x, int y, bool bAdditive, bool bToggle);
    // A press with Alt on key marks changes their type instead of selecting them: with Shift
    // linear, with Ctrl step, else Hermite and linear in turn; one undo block for all the marks
    // under the pointer. False when no mark was hit or no type changed.
    bool ChangeKeyTypeAt(int x, int y, bool bShift, bool bCtrl);
    // The tag of one of the channels a row shows; empty when the row does not show it.
    wxString GetStrParamTag(int row, const Parameter_cls* pParam) const;
    // Motion with the button held; true when the strip should repaint.
    bool DragRows(int x, int y);
    // Release: the move of the selected keys by the dragged time as one command, or the region
    // selection.
    void ReleaseRows(int x, int y, bool bAdditive);
    // The keys within the rectangle of rows and pixels; without bAdditive the others lose their
    // selection first.
    void SelectItemByRegion(int rowA, int rowB, int xA, int xB, bool bAdditive);
    // Extrapolate= of every channel of the scene and the filters that has a selected key, in one
    // undo block; false when no channel changed.
    static bool SetExtrapolateOfSelectedCommand(bool bExtrapolate);
    // The same for any switch of the channels ("TimeDepend=", "Locked=", "Extrapolate=").
    static bool SetItemOfSelectedCommand(const wxString& strKey, bool bValue);
    // The ease factor of every selected key of the scene and the filters, in one undo block;
    // false when no key changed.
    static bool SetEaseOfSelectedCommand(double ease);
    // The same from the text of the ease box: a number or arithmetic; false for other text.
    static bool ProcessEaseInput(const wxString& strText);
    // The ease factor of the first selected key, or fallback when no key is selected.
    static double GetEaseOfFirstSelected(double fallback);
    // A number, or arithmetic such as "2*3"; false when the text is neither.
    static bool ParseNumber(const wxString& strText, double* pValue);
    // The selected objects become shy (hidden from the rows), or all of them lose it when they
    // all have it; one undo block. False when nothing is selected.
    static bool ToggleShyOfSelectionCommand();
    // Deletes the selected keys of the scene and of the filters in one undo block; false when
    // nothing was deleted.
    static bool DeleteSelectedKeysCommand();
    // Every key of the scene and the filters loses its selection.
    static void DeselectAllKeys();
    // The time the selected keys are dragged by, on the frame grid; 0 when no key move runs.
    double GetDraggedKeyDelta() const;

    // The step index of a data sequence at a scene frame, as the object's drawing takes it;
    // -1 when the row has no sequence.
    static int GetSequenceIndex(const TLRow_cls& row, int frame);

    std::vector<TLRow_cls> mVCRow;
    std::set<wxString> mSetOpen; // tags of the open rows; "Scene Filter" is open at first
    int mScrollY = 0;
    bool mbKeyMoveArmed = false;
    bool mbRegionArmed = false;
    bool mbSashDrag = false;
    int mPressX = 0;
    int mPressY = 0;
    int mDragX = 0;
    int mDragY = 0;

private:
    // The tags of every channel of the scene and the filters, as their commands take them.
    static std::vector<wxString> GetVStrAllParamTags();
    void AddObjectRows(SceneObj_cls* pObj, int depth);
    void AddAttributeRows(Attribute_cls* pAttr, const wxString& strTag, SceneObj_cls* pObj, int depth);
    void AddGroupRows(ParamGroup_cls* pGroup, const wxString& strTag, SceneObj_cls* pObj, int depth);
    void AddFilterRows();
    bool IsOpen(const wxString& strTag) const { return mSetOpen.count(strTag) > 0; }
};
