// The base of the curve editors (the graph editor of parameters and the colour-curve editor):
// the edit model and its plot, the tools they share on the panel bar (zoom, "Rescale", insert,
// delete, key type and ease), the view range as items of the panel's own list, and the
// throttle of panel updates during playback. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "GraphKeyEdit_cls.h"
#include "wxPanelEX.h"

#include <wx/stopwatch.h>

class GraphCurve_cls;
class wxPanel;
class wxSizer;
class wxChoice;
class wxTextCtrl;

// Ids of the editors' tools and menus.
enum EditorCommand_enum {
    ID_EDITOR_TICS_MODE = 5100,
    ID_EDITOR_DROP_DOWN = 5104,
    ID_EDITOR_RESCALE = 5107,
    ID_EDITOR_KEY_COLOR = 5119,
    ID_EDITOR_FLIP_COLOR = 5120,
    ID_EDITOR_SWAP_RGB = 5121,
    ID_EDITOR_NUM_PANEL = 5236,
    ID_EDITOR_KEY_TYPE = 7201, // the key type choice
    ID_EDITOR_EASE = 7202,     // the ease field
    ID_EDITOR_INSERT = 7203,
    ID_EDITOR_ALPHA = 7204,    // show or hide the A channel
    ID_EDITOR_SELECTOR = 7205, // the channel selector
    ID_EDITOR_MODE = 7206,
    ID_EDITOR_TEMPLATE_ALPHA = 7207,
    ID_EDITOR_PREV_KEY = 7208,
    ID_EDITOR_NEXT_KEY = 7209,
    ID_MENU_EDITOR_DELETE = 6029,
    ID_MENU_EDITOR_POP_FIRST = 6068, // 6068 - 6077: the pop-up actions
    ID_MENU_EDITOR_POP_LAST = 6077,
    ID_MENU_EDITOR_ZOOM_IN = 6089,
    ID_MENU_EDITOR_ZOOM_OUT = 6090,
    ID_MENU_EDITOR_COPY = 6091,
    ID_MENU_EDITOR_PASTE = 6092,
    ID_MENU_EDITOR_COPY_COLOR = 6155,
    ID_MENU_EDITOR_PASTE_COLOR = 6156
};

class EditorBase_cls : public wxPanelEX {
public:
    // The pop-up actions, offsets from ID_MENU_EDITOR_POP_FIRST.
    enum {
        POP_INSERT = 0,
        POP_DELETE,
        POP_STEP,
        POP_LINEAR,
        POP_HERMITE,
        POP_HERMITE_EASE,
        POP_FRAME,
        POP_FLIP,
        POP_SWAP,
        POP_DESELECT
    };

    EditorBase_cls(SplittableWindow_cls* pOwner, int type, bool bColor, const wxString& strListTag);

    GraphKeyEdit_cls& GetEdit() { return mCEdit; }
    GraphCurve_cls* GetPCGraph() const { return mpCGraph; }
    ConfListContainer_cls& GetList() { return mCList; }

    // The channels from the model, again; the view frames them when they are others than before.
    virtual void RebuildChannels() = 0;
    // True when updates come faster than a panel can use them: while the clock plays, one in
    // msUpdateMillis passes.
    bool IsUpdateTooFast();
    static inline long msUpdateMillis = 40; // tests widen it, so a slow machine cannot fake a pace

    // The tools, as the buttons and menus call them.
    void FrameAll();
    void ZoomView(double factor);
    void DeleteSelectedKeys();
    // 0 step, 1 linear, 2 Hermite, 3 Hermite with ease 0 (flat).
    void SetSelectedKeyType(int choice);
    // The number of the ease field becomes the ease factor of the selected keys; false for text
    // that is no number.
    bool ApplyEase();
    virtual void InsertKeys();
    // A pop-up action (POP_...).
    virtual void ProcPopAction(int action);

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;
    // The key type choice shows the type of the first selected key (empty with none).
    void UpdateKeyTypeChoice();
    // The keys of the plot: Delete removes the selected keys, Home shows them all.
    void OnGraphKey(wxKeyEvent& event);

    int mUpdateCount = 0; // updates that reached the plot

protected:
    // Its own name or "ALL", and "OUTLINER" while it follows the selection: the channels again,
    // then UpdateEditorSelf and a repaint of the plot. Dropped while they come too fast.
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    // A selection queues the outliner's name, not an editor's: an editor that follows the
    // selection listens to it.
    virtual bool IsFollowingOutliner() const { return true; }
    virtual void UpdateEditorSelf() {}
    // Puts the plot and the tool row under the panel bar; the subclass made the plot.
    void ConstructBase(GraphCurve_cls* pGraph);
    // Appends AAMin=, AAMax=, XRangeMin=, XRangeMax= to the list, after the subclass's items.
    void AddRangeItems(double y0, double y1, double x0, double x1);
    // Range items of the list <-> the plot's view.
    void StoreViewToList();
    void LoadViewFromList();
    // The names of the channels: a new set frames the view.
    void SetChannelsAndFrame(std::vector<GraphChannel_cls> vChannel);
    void SerializeSelf(wxString& strOut) override;
    virtual void AppendPopItems(wxMenu& menu);
    // After a gesture: bCommand when it pushed a command (which queues its own updates).
    virtual void OnGraphChanged(bool bCommand);
    void ShowPopMenu(const wxPoint& point);

    GraphKeyEdit_cls mCEdit;
    ConfListContainer_cls mCList;
    ConfItemFLOAT_cls mCAAMin;
    ConfItemFLOAT_cls mCAAMax;
    ConfItemFLOAT_cls mCXRangeMin;
    ConfItemFLOAT_cls mCXRangeMax;
    GraphCurve_cls* mpCGraph = nullptr; // child windows: the toolkit deletes them
    wxPanel* mpCToolPanel = nullptr;    // the row of tools under the bar
    wxSizer* mpCTools = nullptr;
    wxChoice* mpCKeyType = nullptr;
    wxTextCtrl* mpCEase = nullptr;
    wxString mStrShownTags;  // the channels the view was framed for
    bool mbViewRead = false; // a layout gave the view: the first channels do not frame it

private:
    void OnTool(wxCommandEvent& event);
    void OnMenu(wxCommandEvent& event);
    wxStopWatch mStopWatch;
    long mLastUpdate = -1000000;
};
