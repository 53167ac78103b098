// What the curve editors do with keys, without a window: the channels shown, which key or curve
// lies under a pixel, the selection, and what a press, a drag and a release of the mouse make of
// them. Every edit of a key goes out as the key commands of the channels, so one undo takes it
// back; while a drag runs the keys are moved natively for the live picture and put back before
// the command is made. Main thread only.
#pragma once

#include "GraphGeom_cls.h"
#include "KeyFrame_cls.h"

#include <wx/string.h>

#include <array>
#include <vector>

class Parameter_cls;

// One curve of the editor: the channel and its command address.
struct GraphChannel_cls {
    wxString mStrTag;                  // ends at the member: <group tag>::<member>
    Parameter_cls* mpCParam = nullptr; // not owned: the group owns its channels
    wxString mStrLabel;                // "Box Position x"
    std::array<unsigned char, 3> mColor{200, 200, 200};
};

class GraphKeyEdit_cls {
public:
    // bColor: the horizontal axis is a colour curve's position, snapped to the 1/1024 grid and
    // kept in 0 .. 1 with the values; otherwise it is normalised time, snapped to frames.
    explicit GraphKeyEdit_cls(bool bColor) : mbColor(bColor) {}

    // The press of the mouse: what it started.
    enum Drag_enum { DRAG_NONE = 0, DRAG_KEYS, DRAG_BOX, DRAG_PAN };
    struct Hit_cls {
        int mChannel = -1;
        int mKey = -1;
        bool IsHit() const { return mChannel >= 0; }
    };
    // Pixels around a key's mark that still hit it, and the least motion that counts as a drag.
    static constexpr int msHitRadius = 6;
    static constexpr int msDragThreshold = 3;

    // ---- channels ----
    void SetChannels(std::vector<GraphChannel_cls> vChannel);
    const std::vector<GraphChannel_cls>& GetChannels() const { return mVChannel; }
    // The one channel that takes clicks and new keys, -1 for all.
    void SetActiveChannel(int channel) { mActiveChannel = channel; }
    int GetActiveChannel() const { return mActiveChannel; }
    // The active one (or any, with none active), unless the channel is locked ("Locked="): only
    // such channels take clicks, keys and moves.
    bool IsChannelEditable(int channel) const;
    // Keys at the same position are one stop across all channels (the gradient of a colour
    // curve): selecting or moving one takes the others along.
    void SetLinkX(bool bLink) { mbLinkX = bLink; }
    bool IsLinkX() const { return mbLinkX; }

    // ---- geometry ----
    GraphGeom_cls& GetGeom() { return mCGeom; }
    const GraphGeom_cls& GetGeom() const { return mCGeom; }
    // The key nearest to the pixel within msHitRadius, among editable channels.
    Hit_cls HitKey(int px, int py) const;
    // The editable channel whose curve passes nearest the pixel within msHitRadius, -1 if none.
    int HitCurve(int px, int py) const;
    // A position snapped as the move commands snap it: frames, or the colour grid.
    double SnapX(double x) const;
    // The view shows every key of every channel (and the whole curve range for colours).
    void FrameAll();

    // ---- selection (direct, not undoable) ----
    void DeselectAll();
    void SelectKey(int channel, int key, bool bAdd);
    // Keys of editable channels whose marks lie in the pixel rectangle.
    void SelectInBox(int x0, int y0, int x1, int y1, bool bAdd);
    int GetSelectedKeyNum() const;
    // The first selected key, or no hit.
    Hit_cls GetFirstSelected() const;
    // The position of the first selected key; false when none is selected.
    bool GetSelectedX(double& x) const;
    // Only the keys at x of the editable channels are selected (a stop of a colour curve).
    void SelectAt(double x);

    // ---- the mouse ----
    // bAdd (shift) adds to the selection or toggles a key; bInsert (ctrl) puts a key under the
    // mouse on the curve hit (or the active channel) at the mouse's value; bPan (middle button)
    // moves the view.
    void Press(int px, int py, bool bAdd, bool bInsert, bool bPan);
    // Moves the selected keys along for the picture; true when the picture changed.
    bool Drag(int px, int py);
    // Ends the gesture: a key drag becomes one move command, a box selects. True when a command
    // was pushed.
    bool Release(int px, int py);
    // Puts the keys back as they were before the drag, without a command (capture lost).
    void CancelDrag();
    Drag_enum GetDragMode() const { return mDragMode; }
    bool IsDragging() const { return mDragMode != DRAG_NONE; }
    // The box of a box selection in pixels: press point and current point.
    void GetBox(int& x0, int& y0, int& x1, int& y1) const;
    // The offset of the running key drag in model units, snapped and held inside the limits.
    void GetDragOffset(int px, int py, double& dx, double& dy) const;

    // ---- commands: one undo step each ----
    void MoveSelected(double dx, double dy);
    // A key at x with value v on the channel, which becomes time dependent in the same step.
    void InsertKey(int channel, double x, double v);
    // A key at x on every editable channel that has none there, each of its own value.
    void InsertKeysAt(double x);
    void DeleteSelected();
    // Type 0 step, 1 linear, 2 Hermite; ease is the Hermite ease factor.
    void SetSelectedType(int type, double ease);
    // The ease factor of the selected keys of the editable channels, one undo step; the type
    // stays (the factor acts on Hermite keys).
    void SetSelectedEase(double ease);

    bool IsColor() const { return mbColor; }

private:
    // The keys of each channel before the drag began.
    void SaveKeys();
    void RestoreKeys();
    // Takes along the keys at the same position in the other channels.
    void LinkSelection();

    bool mbColor = false;
    bool mbLinkX = false;
    int mActiveChannel = -1;
    std::vector<GraphChannel_cls> mVChannel;
    GraphGeom_cls mCGeom;
    Drag_enum mDragMode = DRAG_NONE;
    int mPressX = 0;
    int mPressY = 0;
    int mNowX = 0;
    int mNowY = 0;
    bool mbMoved = false; // the drag went past the threshold
    std::vector<std::vector<KeyFrame_cls>> mVVSavedKeys;
};
