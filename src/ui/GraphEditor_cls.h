// The graph editor, the leaf of type "GRAPH": the curves of the animated channels of the
// selected objects against time, with their keys, to select, move, insert and delete keys and
// to set each key's interpolation and ease. It follows the outliner's selection; a parameter
// group chosen elsewhere ("SelectParamGroup") is shown alone until the selection changes.
// Main thread only.
#pragma once

#include "EditorBase_cls.h"

class GraphEditor_cls : public EditorBase_cls {
public:
    explicit GraphEditor_cls(SplittableWindow_cls* pOwner);

    // The time-dependent channels of the selected objects (transform groups first, then the
    // groups of the attributes; colour curves are left to their own editor), or the members
    // of the chosen group.
    void RebuildChannels() override;
    // The group shown alone, empty for the selection's channels.
    wxString GetStrPinnedGroup() const { return mStrPinnedGroup; }

protected:
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void OnGraphChanged(bool bCommand) override;

private:
    wxString mStrPinnedGroup;
    wxString mStrPinnedSelection; // the selection when the group was chosen
    wxString GetStrSelection() const;
};
