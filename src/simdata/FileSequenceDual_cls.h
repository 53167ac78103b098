// The rule for a sequence with two running numbers, time and slice, as in a volume stored as one
// image per slice: "s%03d_z%03d.png", or "t%03d/slice0100.png" with the trailing number as the slice.
// All operations run on the main thread unless stated.
#pragma once

#include "FSBase_cls.h"

#include <wx/string.h>

class FileSequenceDual_cls : public FSBase_cls {
public:
    FileSequenceDual_cls() = default;
    explicit FileSequenceDual_cls(wxString path);

    // offsetT and offsetZ have no effect: the numbers come from the file name or are 0. This is a
    // fixed trait of the call, kept deliberately.
    void SetDual(wxString path, int offsetT, int offsetZ, int stepT, int stepZ);

    // As the single form on any text: the first "%0Nd" field, narrowest width first. On a hit digits
    // receives the width and offset 0; otherwise both are left alone and the result is -1.
    int SequenceFormatPos(wxString text, int& digits, int& offset);
    // For a path with at most one explicit field at pos (-1 for none); the first two arguments are
    // not used.
    void InitFormat(int offsetT, int offsetZ, int pos, int digits, int offset);
    // For a path with two explicit fields.
    void SplitFormat(int pos1, int pos2);
    wxString GetFormatDual() const { return mFormat; }

    // The file name of time step indexT, slice indexZ; side and script as in the single form, the
    // script mapping the time index. Any thread, on a private copy of the rule.
    wxString GetModifiedStrDual(int indexT, int indexZ, int side, wxString script) const;

    // Number of time steps, counted at slice 0, into mMaxOffset.
    void CalcMaxOffsetDual(bool showMessage);
    // Number of slices of time step indexT into mMaxOffsetZ; stacks may differ in depth.
    void CalcMaxOffsetZ(int indexT, bool showMessage);

    wxString mPath;
    wxString mHead;
    wxString mFormat;
    wxString mTail;
    bool mValid = true;
    bool mFirstIsTime = true; // the first number field in the path is the time number; never changed
    int mOffset1 = -1;
    int mOffset2 = -1;
    int mStep1 = 1;
    int mStep2 = 1;
    int mDigits1 = -1; // -1: the field is absent
    int mDigits2 = -1;
    int mMaxOffset = -1;
    int mMaxOffsetZ = -1;

private:
    // Shared by the two counts: step 0 must open, the rest is counted by gallop.
    int CountSteps(const std::function<wxString(int)>& nameOf, bool single, bool showMessage,
                   const wxString& context);
};
