// The scene filter page of the property panel: the chain in its order (switched-off filters
// marked), a class to add, and remove, up, down and on/off for the selected filter; below, the
// selected filter's items and the values of its groups at the current time, each set by typing a
// value; for a legend, the choice of the object whose colour curve it shows. Every change goes
// through the filter chain's commands, so it is undoable. Without a filter chain in the process
// the page stays empty and disabled. At the top, the scene's sampling: ensemble on/off with its
// sample count, motion blur on/off with its length and quality, each set through the undo road.
// Main thread only.
#pragma once

#include "wxPanelEX.h"

#include <vector>

class FilterBase_cls;
class wxButton;
class wxCheckBox;
class wxChoice;
class wxListBox;
class wxTextCtrl;

class PropertyFilter_cls : public wxPanelEX {
public:
    explicit PropertyFilter_cls(wxWindow* pParent);

    // "PROPERTY_SCENE", "PROPERTY" and "ALL" refill the page.
    void UpdatePage(const wxString& strName);
    // Refills the chain, keeping the selection by name, and the selected filter's values.
    void RefreshFromChain();

    // What the controls do; each returns false when nothing could be done.
    bool AddFilter(const wxString& strClass);
    bool RemoveSelected();
    bool MoveSelected(int delta);
    bool SetSelectedValid(bool bValid);
    // Sets entry index of the value list from the text: an item takes the text as it is, a
    // group member a number (arithmetic allowed).
    bool SetEntryFromText(int index, const wxString& strText);
    bool SetLegendTarget(const wxString& strObject);
    bool SelectFilter(const wxString& strName);
    FilterBase_cls* GetPCSelectedFilter() const;
    // Shows the ensemble's and motion blur's settings again.
    void RefreshSampling();

    wxCheckBox* mpCUseEnsemble = nullptr;
    wxTextCtrl* mpCEnsembleSampleNum = nullptr;
    wxCheckBox* mpCUseMotionBlur = nullptr;
    wxTextCtrl* mpCBlurLength = nullptr;
    wxTextCtrl* mpCBlurQuality = nullptr;
    wxCheckBox* mpCUseShadow = nullptr;
    wxTextCtrl* mpCSoftShadowSampleNum = nullptr;

    wxListBox* mpCChain = nullptr;
    wxChoice* mpCClass = nullptr;
    wxButton* mpCAdd = nullptr;
    wxButton* mpCRemove = nullptr;
    wxButton* mpCUp = nullptr;
    wxButton* mpCDown = nullptr;
    wxCheckBox* mpCValid = nullptr;
    wxListBox* mpCValues = nullptr;
    wxTextCtrl* mpCValue = nullptr;
    wxChoice* mpCTarget = nullptr;

private:
    // One line of the value list: an item (strKey with "=") or a member of a group.
    struct Entry_cls {
        wxString mStrKey;
        wxString mStrGroup;
        int mMember = -1;
    };
    void RefreshValues();
    std::vector<Entry_cls> mVEntry;
    wxString mStrSelected;
};
