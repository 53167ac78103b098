// Arithmetic typed into numeric fields: "5+1" becomes 6. Each evaluation runs on a fresh Lua
// state that lives for that one call, so the class has no state of its own.
#pragma once

#include <wx/string.h>

class LuaMiniCalc_cls {
public:
    // True if the text holds any of "+", "-", "*", "/". A lone leading minus counts, so "-3"
    // goes through Lua as well; plain "5" is left to the number parser.
    static bool IsStringExpression(const wxString& strText);
    // The value of the expression narrowed to float; 0 on any error, which is also reported
    // to the log ("...::MiniCalc::DoString::" for syntax, "...::MiniCalc::" at run time).
    // Main thread in practice, but safe anywhere: nothing is shared.
    static float GetValue(const wxString& strExpr);
};
