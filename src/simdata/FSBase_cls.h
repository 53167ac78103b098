// Common base of the two file-name rules: counting substrings, printing a name from a format,
// the stereo side marker, the Lua index script and the probing of files on disk.
#pragma once

#include <wx/string.h>

#include <functional>
#include <vector>

class FSBase_cls {
public:
    // Number of occurrences of pattern in text; after each hit the search resumes one character
    // behind the start of the hit, so overlapping hits count ("aaa" holds "aa" twice).
    int CountString(wxString text, wxString pattern) const;

    // Called after every existence probe of the counting operations with the path tried and whether
    // it opened. It only watches: what is probed does not depend on it. Main thread only.
    std::function<void(const wxString& path, bool opened)> mFuncProbeHook;

    // The model cannot open dialogs: the user interface installs the function that shows the
    // "File Open Failed" box. Without one the text goes to the log. Main thread only.
    using MessageFunc = std::function<void(const wxString& text, const wxString& caption)>;
    static void SetMessageFunc(MessageFunc func);

    // Prints a name from a printf-style format with the given int values and, when pMarker is not
    // null, that text for the one "%s". Behaves as the C library's printf for "%0Nd", "%d" and the
    // other int conversions, "%s" and "%%"; an unknown conversion stays as written ("100%/a.dat"),
    // a "%" at the very end is dropped, and a field that has no value left stays as written.
    // Any thread.
    static wxString FormatName(const wxString& format, const wxString* pMarker,
                               const std::vector<int>& values);

protected:
    // "L" for side 1, "R" for side 2 (the eyes of a stereo pair), empty for anything else.
    static wxString GetSideMarker(int side);

    // The name with the side marker when the format has no single "%" to put it in front of:
    // directory + "/" + name + marker, and "." + extension if there is one. The format is not printed.
    static wxString GetMarkedFileName(const wxString& format, const wxString& marker);

    // Runs the user's index script as the body of "function script(index)" on a fresh Lua state and
    // stores its result in value (a result that is not a number reads as 0). On an error, an endless
    // loop included, LuaBase_cls::CheckErrorMessage reports it under the context "FileSequence", value
    // is left alone and the result is false. Any thread.
    static bool CallIndexScript(const wxString& script, int index, int& value);

    // The position of the first "%0Nd" field with N from 1 to 9, narrowest width first, or -1.
    static int FindWidthField(const wxString& text, int& digits);

    // Strips every extension of the file name into tail ("a0012.dat.gz": base ".../a0012", tail
    // ".dat.gz") and gives base = directory + "/" + name. Returns false, with nothing assigned, when
    // base would have 1001 characters or more.
    static bool SplitBaseAndTail(const wxString& path, wxString& base, wxString& tail);

    // Length of the run of digits at the end of text; 0 when it does not end in a digit.
    static int TrailingDigitCount(const wxString& text);

    // The other form of a name: without its ".gz" when it has one, else with ".gz" added.
    static wxString GetGZTwin(const wxString& path);
    // Whether a regular file stands under the name or its gzip twin. Not reported as a probe.
    static bool ExistsPlainOrGZ(const wxString& path);

    // Tries to open path for reading and reports the probe to mFuncProbeHook.
    bool ProbeFile(const wxString& path) const;

    // Counts the steps above step 0 that exist on disk by probing steps 100 apart, then 10, then 1.
    // A probe that fails under its own name is tried once more with ".gz" added or removed.
    int CountByGallop(const std::function<wxString(int)>& nameOf) const;

    // Shows the open failure through the installed function, or logs it.
    static void ShowOpenFailed(const wxString& text);
};
