// One node of the tree of split panels: either unsplit, holding one content panel, or split,
// holding two child nodes. The tree is written to and read from the project file as the
// layout text of the main window. Main thread only.
#pragma once

#include "Parser_cls.h"
#include "WidgetCommon_cls.h"

#include <wx/splitter.h>
#include <wx/string.h>

#include <istream>

class wxPanelEX;

class SplittableWindow_cls : public wxSplitterWindow, public Parser_cls, public WidgetCommon_cls {
public:
    // The top of the tree, a child of the frame.
    explicit SplittableWindow_cls(wxWindow* pParent);
    // A child node.
    explicit SplittableWindow_cls(wxSplitterWindow* pParent);

    // The sash keeps this much for the lower pane of a new pair, and no pane gets smaller.
    static constexpr int msLowerPaneSize = 160;
    static constexpr int msMinimumPaneSize = 80;
    // A leaf narrower (or lower) than this refuses to split side by side (or one over the other).
    static constexpr int msSeparateMin = 160;

    // The panel of an unsplit node, null when split or empty.
    wxPanelEX* GetPCPanel() const;
    bool IsTop() const { return mbTop; }
    SplittableWindow_cls* GetPCParentSWindow() const { return mpCParentSWindow; }

    // Creates the panel of that table name in this unsplit node; null when split, or when the
    // name is not one of the leaf types.
    wxPanelEX* GeneratePanel(const wxString& strTypeName, bool bShow = true);
    // Two children with panels a over b, the lower pane 160 pixels high.
    void GenerateWindows(const wxString& strTypeA, const wxString& strTypeB);
    // Puts pNew where pOld stands and keeps the child pointers in step.
    void ReplaceWindowTo(wxWindow* pOld, wxWindow* pNew);
    // Unsplits and destroys both children.
    void DestroyChildSWindows();
    // Removes a leaf; the top leaf stays, so the last panel cannot be removed.
    void DestroyPanel(wxPanelEX* pPanel);

    // Splits this unsplit leaf in two panels of the same type; false when the leaf is too small.
    bool SeparatePanel(bool bVertical);
    // Flip or swap the nearest split at or above this node; false when there is none.
    bool SeparationDirection();
    bool SeparationSwap();

    // Sets the minimum pane sizes of the subtree and returns the minimum size of this node.
    int SetMinimumSize();
    bool IsInnertiaExist();
    void UpdatePanels(const wxString& strName, bool bForce);
    void ProcAfterMath(const wxString& strWhat, const wxString& strArg);
    bool CheckAbortClicked(const wxPoint& point);
    // The first type-3 leaf that reports itself active, or null.
    wxPanelEX* GetPCActiveView3D();

    void Serialize(wxString& strOut);
    // "Panel" or "SeparatePanel::<H|V>::<sash>"; strRest is what follows the key.
    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest);
    void ProceedParsePanel(std::wistream& stream);
    void ProceedParseSplit(std::wistream& stream);

    SplittableWindow_cls* mpCChildSWindow[2] = {nullptr, nullptr}; // child windows: toolkit-owned
    SplittableWindow_cls* mpCParentSWindow = nullptr;              // null for the top
    bool mbTop = false;

private:
    void InitSplitter();
    // The main window, which recomputes minimum pane sizes on menu event 6042.
    wxWindow* GetTopFrame() const;
    // The nearest split node at or above this one, stopping at the top.
    SplittableWindow_cls* FindSplitAncestor();
    // Splits the nearest split ancestor anew: turned to the other direction, its two windows
    // swapped, or both. Null when no ancestor is split.
    SplittableWindow_cls* Resplit(bool bTurn, bool bSwap);
};
