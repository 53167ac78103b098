// A file picked in a dialog as the rule of its sequence: the step number in the file's name
// becomes a printf field, so that picking any one dump of a run names them all. Any thread.
#pragma once

#include <wx/string.h>

class SequencePattern_cls {
public:
    // The last run of digits in the file's name (directories are left alone) becomes "%0Nd" when
    // it is padded with a leading zero (N its length) and "%d" when it is not, since a number
    // without padding says nothing about a width: "dump.melt.0050.txt" gives
    // "dump.melt.%04d.txt", "dump.melt.500" gives "dump.melt.%d". A name without digits, or a
    // path that already holds a field, or a run wider than nine
    // digits (no field is that wide), comes back unchanged.
    static wxString GetStrPattern(const wxString& strPath);
};
