// The rule that names the file of each step of a sequence with one running number, and the count of
// the steps that exist on disk. All operations run on the main thread unless stated.
#pragma once

#include "FSBase_cls.h"

#include <wx/string.h>

class FileSequence_cls : public FSBase_cls {
public:
    FileSequence_cls() = default;
    explicit FileSequence_cls(wxString path);

    // Sets the rule from a path. An explicit field ("%05d") starts at offset; a path whose name ends in
    // digits starts at that number whatever offset says. An empty path changes nothing but the step.
    void Set(wxString path, int offset, int step);

    // The steps of Set.
    int SequenceFormatPos();
    void InitFormat(int offset);
    void SplitFormat(int pos);

    // The file name of step index. side 1 and 2 put the marker "L" or "R" of the stereo eyes into the
    // name. A non-empty script is the body of a Lua function of index that returns the number to use;
    // it is run on each call. Any thread, on a rule that no other thread changes.
    wxString GetModifiedStr(int index, int side, wxString script) const;

    // Counts the files on disk into mMaxOffset; clears mValid when the first cannot be opened. With a
    // lookup script every counted name comes through the script. Without one, when the number after
    // step 0 has no file, a stride that the numbers on disk follow becomes mStep (files written every
    // 50 steps count as one step each); where every number exists nothing changes.
    void CalcMaxOffset(bool showMessage, const wxString& script = wxEmptyString);
    // For a sequence switched off: clears mValid when the name of step 0 cannot be opened.
    void CheckSingleFileValidity();

    wxString GetFormat() const { return mFormat; }
    int GetIndexClamp(int index) const;
    int GetIndexRepeat(int index) const;

    // Gives a path without a number field the default field "%04d" ahead of its extensions and sets
    // the rule again from step 1 and offset 0; used before writing an image sequence.
    void AppendDefaultSequenceTag();

    // The constant stride of the numbers on disk that fit the format, from mOffset on; 0 when they
    // do not step evenly, or when the number field is not in the file name. Looks at the folder once.
    int FindStrideOnDisk() const;

    wxString mPath;
    wxString mHead;
    wxString mFormat;
    wxString mTail;
    bool mValid = true;
    int mOffset = -1;
    int mStep = 1;
    int mDigits = -1; // width of the number field; 0 for "%d"; -1: no number, a single file
    int mMaxOffset = -1;
};
