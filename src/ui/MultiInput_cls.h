// What a number field of the window accepts: a plain number, arithmetic ("2*3+1") or a Lua
// expression ("math.sqrt(2)", "math.pi/4"), evaluated once when the field is entered. The
// result is stored as a number; a field that should follow an expression over time uses its
// group's expression instead. Main thread in practice; nothing is shared.
#pragma once

#include <wx/string.h>

class MultiInput_cls {
public:
    // False for empty text, text Lua cannot evaluate, or a result that is not a finite number.
    // A Lua error goes to the log with the context "MultiInput".
    static bool ParseNumber(const wxString& strText, double& value);
};
