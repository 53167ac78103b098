// Base of the scene objects that show a data sequence (particles, volumes): the items that bind
// the object to its files, the check of the file sequence, and the folding of frame numbers.
// The kinds own their sequence; this base only looks at it. Main thread only.
#pragma once
#include "ConfItem_cls.h"
#include "SceneObj_cls.h"

#include <functional>

class ColorCurve_cls;
class DataSequence_cls;
class SequenceRemapBase_cls;
class ViewerClone_cls;

class DataViewerBase_cls : public SceneObj_cls {
public:
    DataViewerBase_cls(ParentObj_cls* pParent, const wxString& strClassWord);

    // Path=, UseSequence= and Script= as the sequence was last counted with them.
    bool IsPathChanged() const;
    // Sets the rule of pSeq from Path= and counts the steps on disk; "None" or an empty path
    // leaves the sequence without slots. Returns the number of steps (0 for none).
    int CheckFileSequence(DataSequence_cls& seq);
    // The same for steps that are image stacks: the first number of the path counts time steps,
    // the second the slices, which start at offsetZ. Returns the number of time steps.
    int CheckFileSequenceStack(DataSequence_cls& seq, int offsetZ);
    // The object's active "SequenceRemap_cls" modifier, when the modifier layer made one that
    // speaks to sequences; null otherwise. Not owned.
    SequenceRemapBase_cls* GetPCSequenceRemap();
    // Copies the object's items, its matrix at time, then its own attributes (the materials),
    // its modifiers (colour curves among them) and its data processes (as attribute clones, in
    // that order) into clone, for a worker to read.
    void Clone(ViewerClone_cls& clone, double time);
    // A colour curve of a data viewer, channels R, G, B, A, with the keys of preset 0 ("Red
    // Yellow"); pOwner is the object it will hang on (not owned). The caller owns the curve.
    static ColorCurve_cls* GetPNewColorCurve(SceneObj_cls* pOwner, const wxString& strName);
    // Whether an object of that class word shows data and so takes colour curves.
    static bool IsDataViewerClass(const wxString& strClass);
    // Folds a frame number into 0 .. count - 1 (clamped, or wrapped with repeat).
    static void ModFrame(int& frame, int count, bool repeat);
    // The frame preparation of a kind with two prepared sets, in its kind-table entry
    // (SLOT_PREPARE): fills the shown set for the composer's image `composite` (0 without
    // composing); false when the frame has no data.
    using PrepareDraw_fn = std::function<bool(SceneObj_cls*, int composite)>;
    // Runs the preparation that the object's kind registered; false when it registered none.
    static bool PrepareDrawByKind(SceneObj_cls* pObj, int composite);

    wxString GetStrPath() const { return mCPath.GetBodySTR(); }
    // The body of the index look-up script; empty for "None" or blank.
    wxString GetStrScript() const;

    ConfItemSTR_cls mCPath;         // "Path=": the first file of the sequence
    ConfItemBOOL_cls mCUseSequence; // "UseSequence=": off reads the one file of Path=
    ConfItemSTR_cls mCScript;       // "Script=": the index look-up script, "None" for none
    ConfItemINT_cls mCSeqOffset;    // "SeqOffset=": frame offset of the data against scene time

private:
    wxString mStrCheckedKey; // path, switch and script of the last count
    wxString GetStrCheckKey() const;
};
